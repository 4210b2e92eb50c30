// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <array>
#include <memory>

#include "graphics/graphics_object.h"
#include "text/font_file.h"

class CMElement;
class CSimpleFont6;

// A link to a font that may die: it reads as null from then on. Whatever keeps a font that it doesn't own keeps one of
// these.
class FontLink {
public:
    FontLink() = default;
    FontLink(CSimpleFont6* font);  // NOLINT(google-explicit-constructor): it stands where a pointer would; null: none

    CSimpleFont6* get() const { return slot_ ? *slot_ : nullptr; }
    CSimpleFont6* operator->() const { return get(); }
    explicit operator bool() const { return get() != nullptr; }

private:
    std::shared_ptr<CSimpleFont6*> slot_;
};

// A font of bitmaps: a strip of letters with an alpha plane, which holds their shapes. A letter is its byte.
//
// The pen moves by what `drawLetter` returns: the letter's real width (its cell without the empty columns), less the
// kerning, and a gap of 2. A blank is as wide as the letter `l`, a `~` is a thin blank of 1. What measures adds the gap
// of each letter by itself.
class CSimpleFont6 : public CGraphicsObject {
public:
    static constexpr int kGap = 2;

    explicit CSimpleFont6(CWindow* window) : CGraphicsObject(window) {}
    CSimpleFont6(CWindow* window, const CXString& file);
    CSimpleFont6(CWindow* window, CMElement* element);  // FILENAME, FAMILY, STYLE, SIZE
    ~CSimpleFont6() override;

    virtual void flush();
    // Draws into the destiny with the letter's left edge at x; `previous` 0 means no kerning. The pen's advance.
    virtual int drawLetter(int x, int y, char previous, char current);
    virtual int getLetterWidth(char previous, char current);  // 0 for a letter that the font hasn't
    virtual int getRealLetterWidth(char letter);              // the same without kerning
    // The rectangle is told from the letter's left edge; without area it takes the clip away.
    virtual void SetClippingRect(char letter, CXRect rect);
    virtual void setColor(int colour);  // of all letters at once, the low 16 bits as a pixel
    virtual bool isMultifont() const { return false; }

    using CGraphicsObject::SetClippingRect;
    // A file that can't be opened or is damaged leaves the font empty, without a message; of a damaged one a line of
    // debug output tells.
    int Load(const CXString& name) override;
    int Load(CFile* file) override;
    void Redraw() override {}  // a font by itself shows nothing
    char* GetDataPtr() override;

    int findLetter(char letter) const { return places_[static_cast<unsigned char>(letter)] - 1; }  // -1: none
    int getKerning(int previous, int current) const;                                               // by index
    int getLetterCount() const { return tables_.count(); }
    const CXString& getFamily() const { return family_; }
    void setFamily(const CXString& family) { family_ = family; }
    const CXString& getStyle() const { return style_; }
    void setStyle(const CXString& style) { style_ = style; }
    int getSize() const { return fontSize_; }
    void setSize(int size) { fontSize_ = size; }
    using CGraphicsObject::setSize;

    // Compiles an animation into a font file: each event is a letter, the first character of its name, and its first
    // picture is the letter's cell. False when there is nothing to compile or the file can't be written.
    bool create(const CXString& animationFile, const CXString& fontFile);

private:
    friend class FontLink;

    int realWidth(int i) const;
    int kerningBefore(char previous, int current) const;
    void paint();

    static constexpr int kNone = -1;

    FontTables tables_;              // without the planes
    std::array<int, 256> places_{};  // index of each letter plus 1; 0: none
    CXString family_;
    CXString style_;
    int fontSize_ = 0;
    int painted_ = kNone;                  // the colour that fills the strip
    int wanted_ = kNone;                   // the one that it gets when next used
    std::shared_ptr<CSimpleFont6*> self_;  // made when first linked
};
