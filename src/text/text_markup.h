// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "text/simple_font.h"

class CFontCollection;

// A piece of a text with markup in it: a run of letters, or what a tag does to those behind it.
class CTextFormatCode : public CXObject {
public:
    // The numbers are part of the interface.
    enum Kind { kStyle = 1, kRun = 2, kLineBreak = 4, kEditField = 5, kColor = 6 };

    explicit CTextFormatCode(const CXString& text) : kind_(kRun), text_(text) {}
    CTextFormatCode(CSimpleFont6* font, const CXString& tag) : kind_(kStyle), text_(tag), font_(font) {}
    // Of an edit field the value is "width,name,text", of a colour its number, of a line break nothing.
    CTextFormatCode(int kind, const CXString& value);

    int getKind() const { return kind_; }
    int getColor() const { return color_; }
    const CXString& getText() const { return text_; }  // the letters, the tag with its brackets, or a field's text
    CSimpleFont6* getFont() const { return font_.get(); }
    int getWidth() const { return width_; }            // of an edit field, in pixels
    const CXString& getName() const { return name_; }  // of an edit field

private:
    int kind_;
    int color_ = 0;
    CXString text_;
    FontLink font_;
    int width_ = 0;
    CXString name_;
};

using TextCodes = std::vector<std::unique_ptr<CTextFormatCode>>;

// Cuts a text at its tags. A style tag is resolved against the fonts, the base font being in force at the start; one
// that asks for a style that they haven't is dropped, and the font in force stays. Tags that nobody knows are text,
// less their `<`.
TextCodes parseMarkup(const CXString& text, const CFontCollection& fonts);
