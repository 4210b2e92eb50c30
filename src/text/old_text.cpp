// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "text/old_text.h"

#include <algorithm>

#include "foundation/string_tokenizer.h"
#include "frame/application.h"
#include "frame/window.h"
#include "text/font.h"

namespace {

constexpr int kBlankCloser = 3;   // the pen's step over a blank, less than the width of an `A`
constexpr int kLetterCloser = 1;  // and over a letter, less than its width

CFont5* defaultFontOf(CWindow* window) {
    const CApplication* application = window ? window->GetApplicationInterface() : nullptr;
    return application ? application->getDefaultFont() : nullptr;
}

}  // namespace

CText5::CText5(CWindow* window, const CXString& text) : CGraphicsObject(window), text_(text) {}

CText5::CText5(CWindow* window, const CXString& text, const CXPoint& position) : CText5(window, text) {
    placeAt(position);
}

CText5::CText5(CWindow* window, const CXString& text, const CXRect& rect, _justify horizontal, _justify vertical)
    : CText5(window, text) {
    placeAt(rect.LeftTop());
    setJustify(rect, horizontal, vertical);
}

void CText5::measure() {
    size_ = {getLengthInPixels(), font_ ? font_->getAlphabetHeight() : 0};
    setJustify(rect_, horizontal_, vertical_);
}

void CText5::setText(const CXString& text) {
    Invalidate();
    text_ = text;
    measure();
    Invalidate();
}

void CText5::setFont(CFont5* font) {
    font_ = font;
    measure();
}

void CText5::setDefaultFont() { setFont(defaultFontOf(window_)); }

void CText5::setSpaceWidth(int width) {
    spaceWidth_ = width;
    measure();
}

int CText5::getLengthInPixels() const { return font_ ? font_->getLengthInPixels(text_, spaceWidth_) : 0; }

void CText5::setJustify(const CXRect& rect, _justify horizontal, _justify vertical) {
    rect_ = rect;
    horizontal_ = horizontal;
    vertical_ = vertical;
    const CXPoint rest = CXPoint(rect.Width(), rect.Height()) - CXPoint(size_);
    offset_ = {};
    if (horizontal == kJustifyRight) offset_.x = rest.x;
    if (horizontal == kJustifyCenter) offset_.x = rest.x / 2;
    if (vertical == kJustifyBottom) offset_.y = rest.y;
    if (vertical == kJustifyCenter) offset_.y = rest.y / 2;
}

void CText5::Redraw() {
    if (!isVisible() || !font_ || !destiny_) return;
    font_->setDestiny(destiny_);
    CXPoint pen = position_ + offset_;
    for (const char letter : text_.view()) {
        if (letter == ' ') {
            pen = pen + CXPoint(font_->getLetterWidth('A') - kBlankCloser, 0);
        } else {
            pen = pen + CXPoint(font_->drawLetter(pen, letter) - kLetterCloser, 0) + CXPoint(spaceWidth_, 0);
        }
    }
    // The font outlives the destiny.
    font_->setDestiny(nullptr);
}

const CText5* CMultilineText5::getLine(int i) const {
    return i >= 0 && i < getLineCount() ? lines_[static_cast<std::size_t>(i)].get() : nullptr;
}

int CMultilineText5::lineStep() const { return (font_ ? font_->getAlphabetHeight() : 0) + lineSpacing_; }

int CMultilineText5::getHeightInPixels() const {
    return lines_.empty() ? 0 : lineStep() * getLineCount() - lineSpacing_;
}

void CMultilineText5::placeLines() {
    CXPoint at = position_;
    size_ = {0, getHeightInPixels()};
    for (const auto& line : lines_) {
        line->placeAt(at);
        at = at + CXPoint(0, lineStep());
        size_.width = std::max(size_.width, line->getLengthInPixels());
    }
}

void CMultilineText5::setFont(CFont5* font) {
    font_ = font;
    for (const auto& line : lines_)
        line->setFont(font);
    placeLines();
}

void CMultilineText5::setDefaultFont() { setFont(defaultFontOf(window_)); }

void CMultilineText5::setText(const CXString& text, const CXRect& rect) {
    Invalidate();
    lines_.clear();
    placeAt(rect.LeftTop());
    const auto add = [this](const CXString& line) {
        lines_.push_back(std::make_unique<CText5>(window_, line));
        lines_.back()->setSpaceWidth(spaceWidth_);
        lines_.back()->setFont(font_);
    };
    const auto widthOf = [this](const CXString& part) {
        return font_ ? font_->getLengthInPixels(part, spaceWidth_) : 0;
    };
    CXString line;
    CXPoint width;
    CStringTokenizer words(text, " ");
    while (words.hasMoreTokens()) {
        const CXString word = words.nextToken();
        if (line.IsString()) {
            const CXPoint wider = width + CXPoint(widthOf(" " + word), 0);
            if (wider.x <= rect.Width()) {
                line += " " + word;
                width = wider;
                continue;
            }
            add(line);
        }
        line = word;
        width = {widthOf(word), 0};
    }
    if (line.IsString()) add(line);
    placeLines();
    Invalidate();
}

void CMultilineText5::setJustify(const CXRect& rect, _justify horizontal, _justify vertical) {
    placeAt(rect.LeftTop());
    if (vertical == kJustifyCenter) placeAt(position_ + CXPoint(0, (rect.Height() - getHeightInPixels()) / 2));
    placeLines();
    for (const auto& line : lines_)
        line->setJustify(rect, horizontal, kJustifyTop);
}

void CMultilineText5::setSpaceWidth(int width) {
    spaceWidth_ = width;
    for (const auto& line : lines_)
        line->setSpaceWidth(width);
    placeLines();
}

void CMultilineText5::setLineSpacing(int spacing) {
    lineSpacing_ = spacing;
    placeLines();
}

void CMultilineText5::SetPosition(int x, int y) {
    CGraphicsObject::SetPosition(x, y);
    placeLines();
}

void CMultilineText5::Move(int dx, int dy) {
    CGraphicsObject::Move(dx, dy);
    placeLines();
}

CXRect CMultilineText5::GetBoundingBox() const {
    if (lines_.empty()) return CGraphicsObject::GetBoundingBox();
    CXRect box = lines_.front()->GetBoundingBox();
    for (const auto& line : lines_)
        box.Sum(line->GetBoundingBox());
    return box;
}

void CMultilineText5::Redraw() {
    if (!isVisible() || !destiny_) return;
    for (const auto& line : lines_) {
        line->SetDestiny(destiny_);
        line->Redraw();
    }
}
