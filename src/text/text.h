// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "foundation/xvector.h"
#include "text/text_markup.h"

class CUnit6;

// Where a text stands in its rectangle. The name is part of the interface.
enum _justify { kJustifyLeft = 0, kJustifyRight = 1, kJustifyCenter = 2, kJustifyTop = 3, kJustifyBottom = 4 };

// One line of text, which paints itself through a font when it is drawn; it has no pixels.
//
// With a font that is a collection the text may have markup in it, and its own colour is markup, too: the text is kept
// with it. A single font shows everything as it stands, tags included, and draws with a wider gap than it measures.
// The font isn't owned; a text whose font has died shows nothing.
class CText6 : public CGraphicsObject {
public:
    CText6(CWindow* window, CUnit6* unit) : CGraphicsObject(window), unit_(unit) {}
    ~CText6() override;

    virtual CXString getText() const { return text_; }
    // Without colour tags, and for a colour other than 0 between two of them.
    virtual CXString getColoruredText(CXString text, int colour) const;  // The name is part of the interface.
    virtual void setColor(int colour);                                   // 0: the letters keep the colours of the font
    virtual int getColor() const { return color_; }

    void setFont(CSimpleFont6* font);
    CSimpleFont6* getFont() const { return font_.get(); }
    void setText(const CXString& text);
    // Moves the object; a value of the other axis leaves its coordinate as it is.
    void setJustify(const CXRect& rect, _justify horizontal, _justify vertical);
    const CXRect& getJustifyRect() const { return rect_; }

    int getLength() const;  // in pixels
    static int getLength(CSimpleFont6* font, const CXString& text) { return getLength(font, text.view()); }
    static int getLength(CSimpleFont6* font, std::string_view text);  // all in that font

    // The boxes that the text's edit fields have made, of CEditBox6. They are this text's until it is given another.
    CXVector* getEditBoxes();

    using CGraphicsObject::Move;
    void Move(int dx, int dy) override;  // moves the rectangle
    void Redraw() override;

protected:
    static CXString convTab(const CXString& text);  // a tab becomes 8 blanks
    void parseText(const CXString& text);
    void layOut(const CXSize& size);          // takes that size and goes to its place
    const CFontCollection* getFonts() const;  // null: none, or a single one

    FontLink font_;
    CXString text_;
    TextCodes codes_;  // of a collection's text
    CUnit6* unit_;     // null: nobody to make edit boxes
    int color_ = 0xFFFF;

private:
    void drawMarked(const CFontCollection& fonts);
    void drawRun(CSimpleFont6& font, std::string_view run, CXPoint& pen);

    CXRect rect_;
    _justify vertical_ = kJustifyTop;
    _justify horizontal_ = kJustifyLeft;
    std::unique_ptr<CXVector> editBoxes_;  // made when first used
};
