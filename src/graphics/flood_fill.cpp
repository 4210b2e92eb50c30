// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <algorithm>

#include "graphics/color.h"
#include "graphics/graphics_object.h"

namespace {

// A scanline fill with a stack of its own: a picture may be as winding as it likes.
class Filler {
public:
    Filler(std::span<const std::uint16_t> walls, std::span<std::uint16_t> target, const CXSize& size,
           std::uint16_t color, std::vector<_floodfill>& spans)
        : walls_(walls), target_(target), size_(size), color_(color), spans_(spans) {}

    CXRect fill(const CXPoint& start) {
        if (!isOpen(start.x, start.y)) return {};
        begin(start.x, start.y);
        while (!stack_.empty())
            step();
        return bounds_;
    }

private:
    // A painted span, and how far the rows beside it have been looked at.
    struct Span {
        int left, right;  // both painted
        int y;
        int side;  // 0: the row above, 1: the row below
        int x;     // the next column to look at there
    };

    bool isOpen(int x, int y) const {
        if (x < 0 || y < 0 || x >= size_.width || y >= size_.height) return false;
        const std::size_t i = index(x, y);
        return walls_[i] != 0 && target_[i] != color_;
    }

    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(size_.width) + static_cast<std::size_t>(x);
    }

    void begin(int x, int y) {
        int left = x, right = x;
        while (isOpen(left - 1, y))
            --left;
        while (isOpen(right + 1, y))
            ++right;
        for (int i = left; i <= right; ++i)
            target_[index(i, y)] = color_;
        spans_.push_back({static_cast<short>(left), static_cast<short>(y), static_cast<short>(right - left + 1)});
        const CXRect painted(left, y, right + 1, y + 1);
        if (spans_.size() == 1) {
            bounds_ = painted;
        } else {
            bounds_.Sum(painted);
        }
        stack_.push_back({left, right, y, 0, left});
    }

    // Looks at one more pixel beside the latest span. What the span before it covers is painted, and so is passed over.
    void step() {
        Span& span = stack_.back();
        if (span.x > span.right) {
            span.x = span.left;
            if (++span.side > 1) stack_.pop_back();
            return;
        }
        const int x = span.x++;
        const int y = span.side == 0 ? span.y - 1 : span.y + 1;
        if (isOpen(x, y)) begin(x, y);
    }

    std::span<const std::uint16_t> walls_;
    std::span<std::uint16_t> target_;
    CXSize size_;
    std::uint16_t color_;
    std::vector<_floodfill>& spans_;
    std::vector<Span> stack_;
    CXRect bounds_;
};

}  // namespace

CXRect CGraphicsObject::PrepareFloodFill(const CXPoint& start, const CColor& color, std::span<std::uint16_t> target,
                                         std::vector<_floodfill>& spans) {
    spans.clear();
    rare().spans.clear();
    // Spans are told in 16 bits.
    constexpr int kLargestSide = 32767;
    if (GetPixelSize() != 2 || size_.width > kLargestSide || size_.height > kLargestSide) return {};
    const auto pixels = static_cast<std::size_t>(std::max(size_.mul(), 0));
    if (data_.pixels().size() < pixels || target.size() < pixels) return {};
    Filler filler(data_.pixels(), target, size_, static_cast<std::uint16_t>(color.GetInBPP(bpp_)), spans);
    const CXRect bounds = filler.fill(start);
    rare().spans = spans;
    return bounds;
}

void CGraphicsObject::FloodFill(const CColor& color, std::span<std::uint16_t> target) {
    const auto pixel = static_cast<std::uint16_t>(color.GetInBPP(bpp_));
    for (const _floodfill& span : getFFArray()) {
        const auto begin =
            static_cast<std::size_t>(span.y) * static_cast<std::size_t>(size_.width) + static_cast<std::size_t>(span.x);
        if (begin + static_cast<std::size_t>(span.length) > target.size()) return;
        std::fill_n(target.begin() + static_cast<std::ptrdiff_t>(begin), span.length, pixel);
    }
}
