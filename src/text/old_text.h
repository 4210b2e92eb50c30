// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "graphics/graphics_object.h"
#include "text/text.h"

class CFont5;

// The older pair of texts, which draw through a font of pictures. Fonts aren't owned and must outlive the drawing.

// One line. Its position is where its rectangle starts; justification is an offset from there.
class CText5 : public CGraphicsObject {
public:
    explicit CText5(CWindow* window) : CGraphicsObject(window) {}
    CText5(CWindow* window, const CXString& text);
    CText5(CWindow* window, const CXString& text, const CXPoint& position);
    CText5(CWindow* window, const CXString& text, const CXRect& rect, _justify horizontal, _justify vertical);

    void setText(const CXString& text);
    const CXString& getText() const { return text_; }
    void setFont(CFont5* font);
    void setDefaultFont();  // the application's
    void setSpaceWidth(int width);
    int getSpaceWidth() const { return spaceWidth_; }
    void setJustify(const CXRect& rect, _justify horizontal, _justify vertical);
    // What each letter is wide, and the space behind it; a blank is as wide as an `A`, without space.
    int getLengthInPixels() const;
    void Redraw() override;

private:
    void measure();

    CXString text_;
    CXRect rect_;
    _justify horizontal_ = kJustifyLeft;
    _justify vertical_ = kJustifyTop;
    CFont5* font_ = nullptr;
    CXPoint offset_;  // of the letters, by justification
    int spaceWidth_ = 0;
};

// A text broken into lines at blanks.
class CMultilineText5 : public CGraphicsObject {
public:
    explicit CMultilineText5(CWindow* window) : CGraphicsObject(window) {}

    void setFont(CFont5* font);
    void setDefaultFont();
    void setText(const CXString& text, const CXRect& rect);
    // Each line in the rectangle by itself; vertically only the centre is known, for the whole block.
    void setJustify(const CXRect& rect, _justify horizontal, _justify vertical);
    void setSpaceWidth(int width);
    void setLineSpacing(int spacing);
    int getHeightInPixels() const;
    int getLineCount() const { return static_cast<int>(lines_.size()); }
    const CText5* getLine(int i) const;  // null: no such line

    using CGraphicsObject::SetPosition;
    void SetPosition(int x, int y) override;  // of the first line
    using CGraphicsObject::Move;
    void Move(int dx, int dy) override;
    CXRect GetBoundingBox() const override;
    void Redraw() override;

private:
    int lineStep() const;
    void placeLines();

    std::vector<std::unique_ptr<CText5>> lines_;
    CFont5* font_ = nullptr;
    int spaceWidth_ = 0;
    int lineSpacing_ = 0;
};
