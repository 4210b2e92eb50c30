// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "text/font_collection.h"

#include <algorithm>

void CFontCollection::addFont(CSimpleFont6* font) {
    if (!font || std::ranges::any_of(fonts_, [=](const FontLink& member) { return member.get() == font; })) return;
    if (fonts_.empty()) base_ = font;
    fonts_.emplace_back(font);
}

CSimpleFont6* CFontCollection::get(const CXString& family, const CXString& style, int size) const {
    for (const FontLink& member : fonts_) {
        CSimpleFont6* font = member.get();
        if (font && font->getSize() == size && font->getFamily().equalsIgnoreCase(family) &&
            font->getStyle().equalsIgnoreCase(style))
            return font;
    }
    return nullptr;
}

int CFontCollection::drawLetter(int x, int y, char previous, char current) {
    if (!base_) return 0;
    base_->SetDestiny(GetDestiny());
    return base_->drawLetter(x, y, previous, current);
}

int CFontCollection::getLetterWidth(char previous, char current) {
    return base_ ? base_->getLetterWidth(previous, current) : 0;
}

int CFontCollection::getRealLetterWidth(char letter) { return base_ ? base_->getRealLetterWidth(letter) : 0; }
int CFontCollection::Height() const { return base_ ? base_->Height() : 0; }

void CFontCollection::setColor(int colour) {
    for (const FontLink& member : fonts_) {
        if (member) member->setColor(colour);
    }
}
