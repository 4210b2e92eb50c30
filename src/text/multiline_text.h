// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "text/text.h"

// A text that is broken into lines at blanks, as wide as the rectangle that it is justified in, and at carriage returns
// when its font is a collection. The lines start at one x: the block is justified as a whole.
//
// Each line is a text of its own with its markup. The lines are drawn closer together than the height tells.
class CMultilineText6 : public CText6 {
public:
    CMultilineText6(CWindow* window, CUnit6* unit) : CText6(window, unit) {}
    ~CMultilineText6() override;

    // Takes the lines away, and the edit boxes out of the unit. Those that the unit has flushed are gone already.
    virtual void flush();

    int getLength() const;  // of the longest line
    int getHeight() const;
    void setFont(CSimpleFont6* font);  // breaks the text anew
    void setText(const CXString& text);
    // Takes the file's lines for its text; 0. A file that isn't there leaves no text. Line ends within the file are
    // none in the text: only blanks break it.
    int Load(const CXString& name) override;
    using CGraphicsObject::Load;
    void Redraw() override;

    int getLineCount() const { return static_cast<int>(lines_.size()); }
    const CText6* getLine(int i) const;  // null: the mark of a line break, or no such line

private:
    struct Break;

    void splitText();
    void splitMultiText(const CFontCollection& fonts);
    void addLine(std::string_view text);
    // At that place in the block, from its left edge, in that row.
    void makeEditBox(const CTextFormatCode& field, CSimpleFont6* font, int left, int row);

    std::vector<std::unique_ptr<CText6>> lines_;  // null marks a line break
};
