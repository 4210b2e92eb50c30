// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <vector>

#include "platform/display.h"

namespace headless {

// A screen in memory.
class MemoryDisplay : public platform::Display {
public:
    explicit MemoryDisplay(int bitsPerPixel) : bitsPerPixel_(bitsPerPixel) {}

    // Refuses sides below 1 and above 16384.
    bool open(int width, int height) override;
    int width() const override { return width_; }
    int height() const override { return height_; }
    int bitsPerPixel() const override { return bitsPerPixel_; }
    void present(std::span<const std::uint16_t> pixels, const platform::DisplayRect& rect) override;
    std::span<const std::uint16_t> screen() const override { return screen_; }

private:
    int bitsPerPixel_;
    int width_ = 0;
    int height_ = 0;
    std::vector<std::uint16_t> screen_;
};

}  // namespace headless
