// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "text/text.h"

#include <algorithm>
#include <limits>
#include <string>

#include "text/font_collection.h"

namespace {

constexpr std::string_view kTab = "        ";
constexpr int kPlainGap = 2;  // besides the font's own

int edge(int low, int high, int extent, _justify where) {
    const auto bits = [](int value) { return static_cast<std::uint32_t>(value); };
    const auto rest = static_cast<int>(bits(high) - bits(low) - bits(extent));
    return static_cast<int>(where == kJustifyCenter ? bits(low) + bits(rest / 2) : bits(high) - bits(extent));
}

}  // namespace

CText6::~CText6() = default;

CXString CText6::convTab(const CXString& text) {
    if (text.Find('\t') < 0) return text;
    std::string converted;
    for (const char c : text.view()) {
        if (c == '\t') {
            converted += kTab;
        } else {
            converted += c;
        }
    }
    return CXString(std::string_view(converted));
}

CXString CText6::getColoruredText(CXString text, int colour) const {
    text.removeTag("COLOR");
    return colour == 0 ? text : "<COLOR" + CXString::toString(colour) + ">" + text + "<COLOR>";
}

void CText6::setColor(int colour) {
    if (colour == color_) return;
    color_ = colour;
    // Of a text of several lines this lays out the whole as one; its lines get the colour with the next text.
    CText6::setText(getColoruredText(text_, colour));
}

const CFontCollection* CText6::getFonts() const {
    return font_ && font_->isMultifont() ? static_cast<const CFontCollection*>(font_.get()) : nullptr;
}

void CText6::parseText(const CXString& text) {
    codes_.clear();
    if (const CFontCollection* fonts = getFonts()) codes_ = parseMarkup(text, *fonts);
}

void CText6::layOut(const CXSize& size) {
    size_ = size;
    setJustify(rect_, horizontal_, vertical_);
    Invalidate();
}

void CText6::setFont(CSimpleFont6* font) {
    font_ = font;
    if (!font || !text_.IsString()) return;
    Invalidate();
    parseText(text_);
    layOut({getLength(), font->Height()});
}

void CText6::setText(const CXString& text) {
    if (font_) Invalidate();
    text_ = getColoruredText(convTab(text), color_);
    parseText(text_);
    if (font_) layOut({getLength(), font_->Height()});
}

void CText6::setJustify(const CXRect& rect, _justify horizontal, _justify vertical) {
    rect_ = rect;
    horizontal_ = horizontal;
    vertical_ = vertical;
    CXPoint at = position_;
    if (horizontal == kJustifyLeft) {
        at.x = rect.left;
    } else if (horizontal == kJustifyRight || horizontal == kJustifyCenter) {
        at.x = edge(rect.left, rect.right, size_.width, horizontal);
    }
    if (vertical == kJustifyTop) {
        at.y = rect.top;
    } else if (vertical == kJustifyBottom || vertical == kJustifyCenter) {
        at.y = edge(rect.top, rect.bottom, size_.height, vertical);
    }
    movedTo(at);
}

int CText6::getLength(CSimpleFont6* font, std::string_view text) {
    if (!font) return 0;
    std::int64_t length = 0;
    char previous = 0;
    for (const char letter : text) {
        length += font->getLetterWidth(previous, letter) + CSimpleFont6::kGap;
        previous = letter;
    }
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<std::int64_t>(length, Limits::min(), Limits::max()));
}

int CText6::getLength() const {
    const CFontCollection* fonts = getFonts();
    if (!fonts) return getLength(font_.get(), text_);
    CSimpleFont6* font = fonts->getBaseFont();
    CXPoint length;
    for (const auto& code : codes_) {
        if (code->getKind() == CTextFormatCode::kStyle) font = code->getFont();
        if (code->getKind() == CTextFormatCode::kRun) length = length + CXPoint(getLength(font, code->getText()), 0);
    }
    return length.x;
}

CXVector* CText6::getEditBoxes() {
    if (!editBoxes_) editBoxes_ = std::make_unique<CXVector>();
    return editBoxes_.get();
}

void CText6::Move(int dx, int dy) {
    Invalidate();
    setJustify(rect_ + CXPoint(dx, dy), horizontal_, vertical_);
    Invalidate();
}

void CText6::Redraw() {
    if (!font_ || !destiny_) return;
    if (const CFontCollection* fonts = getFonts()) {
        drawMarked(*fonts);
        return;
    }
    font_->SetDestiny(destiny_);
    CXPoint pen = position_;
    char previous = 0;
    for (const char letter : text_.view()) {
        pen = pen + CXPoint(font_->drawLetter(pen.x, pen.y, previous, letter), 0) + CXPoint(kPlainGap, 0);
        previous = letter;
    }
}

void CText6::drawMarked(const CFontCollection& fonts) {
    CSimpleFont6* font = fonts.getBaseFont();
    CXPoint pen = position_;
    for (const auto& code : codes_) {
        if (code->getKind() == CTextFormatCode::kStyle) font = code->getFont();
        if (!font) continue;
        if (code->getKind() == CTextFormatCode::kColor) font->setColor(code->getColor());
        if (code->getKind() == CTextFormatCode::kRun) drawRun(*font, code->getText().view(), pen);
    }
}

void CText6::drawRun(CSimpleFont6& font, std::string_view run, CXPoint& pen) {
    font.SetDestiny(destiny_);
    char previous = 0;
    for (const char letter : run) {
        int advance = 0;
        if (clip_.IsEmpty()) {
            advance = font.drawLetter(pen.x, pen.y, previous, letter);
        } else {
            const int left = (pen - position_).x, width = font.getRealLetterWidth(letter);
            const CXRect box = CXRect(0, 0, width, size_.height) + CXPoint(left, 0);
            const CXRect shown = width > 0 ? box.Common(clip_) : CXRect();
            if (shown.IsEmpty()) {
                advance = font.getLetterWidth(previous, letter) + CSimpleFont6::kGap;
            } else {
                if (!(shown == box)) font.SetClippingRect(letter, shown + (CXPoint() - CXPoint(left, 0)));
                advance = font.drawLetter(pen.x, pen.y, previous, letter);
                font.SetClippingRect(CXRect());
            }
        }
        pen = pen + CXPoint(advance, 0);
        previous = letter;
    }
}
