// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/headless/display.h"

#include <algorithm>

namespace headless {

namespace {
constexpr int kLargestSide = 16384;
}

bool MemoryDisplay::open(int width, int height) {
    if (width < 1 || height < 1 || width > kLargestSide || height > kLargestSide) return false;
    width_ = width;
    height_ = height;
    screen_.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0);
    return true;
}

void MemoryDisplay::present(std::span<const std::uint16_t> pixels, const platform::DisplayRect& rect) {
    if (pixels.size() != screen_.size()) return;
    const int left = std::max(rect.left, 0);
    const int right = std::min(rect.right, width_);
    const int bottom = std::min(rect.bottom, height_);
    if (left >= right) return;
    for (int y = std::max(rect.top, 0); y < bottom; ++y) {
        const auto start = static_cast<std::ptrdiff_t>(y) * width_ + left;
        std::copy_n(pixels.begin() + start, right - left, screen_.begin() + start);
    }
}

}  // namespace headless
