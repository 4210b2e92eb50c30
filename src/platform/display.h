// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <span>

namespace platform {

struct DisplayRect {
    int left = 0, top = 0, right = 0, bottom = 0;  // right and bottom excluded
};

// The screen: 16-bit pixels, row by row, top row first, without gaps.
class Display {
public:
    virtual ~Display() = default;

    // Makes a screen of that size, all black. False when the display can't.
    virtual bool open(int width, int height) = 0;
    virtual int width() const = 0;
    virtual int height() const = 0;
    // 15: 0RRRRRGGGGGBBBBB, 16: RRRRRGGGGGGBBBBB.
    virtual int bitsPerPixel() const = 0;

    // Copies the rectangle of `pixels`, a picture of the screen's size, to the screen. Clipped to the screen.
    virtual void present(std::span<const std::uint16_t> pixels, const DisplayRect& rect) = 0;

    // What the screen shows; empty before `open`.
    virtual std::span<const std::uint16_t> screen() const = 0;
};

}  // namespace platform
