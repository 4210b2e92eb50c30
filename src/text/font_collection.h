// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <vector>

#include "text/simple_font.h"

// Fonts of one family in several styles and sizes, which stands where a single font would. It draws and measures with
// its base font; texts take the others out of it by style. Members aren't owned, and drop out when they die.
class CFontCollection : public CSimpleFont6 {
public:
    explicit CFontCollection(CWindow* window) : CSimpleFont6(window) {}

    void addFont(CSimpleFont6* font);  // unless it is a member; the first one ever becomes the base font
    void setBaseFont(CSimpleFont6* font) { base_ = font; }
    CSimpleFont6* getBaseFont() const { return base_.get(); }  // null: none
    // The first of that family and style in any case of letters, and of exactly that size; null: none.
    CSimpleFont6* get(const CXString& family, const CXString& style, int size) const;

    // All answer 0 without a base font.
    int drawLetter(int x, int y, char previous, char current) override;
    int getLetterWidth(char previous, char current) override;
    int getRealLetterWidth(char letter) override;
    int Height() const override;
    void setColor(int colour) override;  // of every member
    bool isMultifont() const override { return true; }

private:
    std::vector<FontLink> fonts_;
    FontLink base_;
};
