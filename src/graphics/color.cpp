// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/color.h"

#include <cstdint>

namespace {
std::uint32_t byteOf(int value, int index) { return static_cast<std::uint32_t>(value) >> (8 * index) & 0xFF; }
int packed(std::uint32_t low, unsigned char r, unsigned char g, unsigned char b) {
    return static_cast<int>(low | static_cast<std::uint32_t>(r) << 8 | static_cast<std::uint32_t>(g) << 16 |
                            static_cast<std::uint32_t>(b) << 24);
}
int pixel(std::uint32_t bits) { return static_cast<std::int16_t>(static_cast<std::uint16_t>(bits)); }
}  // namespace

void CColor::Set(short value, _colormodel model) {
    value_ = value;
    model_ = model;
}

void CColor::Set(unsigned char r, unsigned char g, unsigned char b) {
    value_ = packed(byteOf(value_, 0), r, g, b);
    model_ = kModelRgb;
}

void CColor::Set(unsigned char r, unsigned char g, unsigned char b, unsigned char a) {
    value_ = packed(a, r, g, b);
    model_ = kModelArgb;
}

void CColor::set(int word) {
    value_ = word;
    model_ = kModelArgb;
}

int CColor::Convert(_colormodel model) const {
    const std::uint32_t red = byteOf(value_, 1);
    const std::uint32_t green = byteOf(value_, 2);
    const std::uint32_t blue = byteOf(value_, 3);
    if (model_ == kModelRgb || model_ == kModelArgb) {
        if (model == kModel15) return pixel((red >> 3) << 10 | (green >> 3) << 5 | blue >> 3);
        if (model == kModel16) return pixel((red >> 3) << 11 | (green >> 2) << 5 | blue >> 3);
    }
    return value_;
}

int CColor::GetInBPP(int bpp) const {
    switch (bpp) {
        case 15:
            return Convert(kModel15);
        case 16:
            return Convert(kModel16);
        case 24:
            return Convert(kModelRgb);
        case 32:
            return Convert(kModelArgb);
        default:
            return value_;
    }
}
