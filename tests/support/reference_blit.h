// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <span>
#include <string>

#include "graphics/blit.h"

// The copies from picture to picture a second time, pixel by pixel and channel by channel, as slow and as plain as
// possible. It goes over the target and asks of every pixel where it comes from; it shares no code with the library.
namespace reference {

enum class Rule { kCopy, kCopy24, kAlpha, kMask, kBlend, kAlphaBlend, kToCanvas };

inline unsigned channel(int target, int source, int weight) {
    return static_cast<std::uint16_t>(target * 256 + (source - target) * weight) >> 8;
}

struct Field {
    unsigned mask;
    int shift;
};

// Fields that are not listed come out as 0.
inline unsigned blendFields(std::span<const Field> fields, unsigned source, unsigned target, int weight) {
    unsigned result = 0;
    for (const Field& field : fields) {
        const unsigned value = channel(static_cast<int>((target & field.mask) >> field.shift),
                                       static_cast<int>((source & field.mask) >> field.shift), weight);
        result |= (value << field.shift) & field.mask;
    }
    return result;
}

inline unsigned blendPixel(int bpp, bool allOfGreen, unsigned source, unsigned target, int weight) {
    static constexpr Field k15[] = {{0x001F, 0}, {0x03E0, 5}, {0x7C00, 10}};
    static constexpr Field k16[] = {{0x001F, 0}, {0x07E0, 5}, {0xF800, 11}};
    static constexpr Field k16Coarse[] = {{0x001F, 0}, {0x07C0, 6}, {0xF800, 11}};
    return blendFields(bpp == 15 ? k15 : allOfGreen ? k16 : k16Coarse, source, target, weight);
}

inline unsigned load(std::span<const std::uint8_t> plane, std::int64_t pixel) {
    const auto at = static_cast<std::size_t>(2 * pixel);
    return plane[at] | static_cast<unsigned>(plane[at + 1]) << 8;
}

inline void store(std::span<std::uint8_t> plane, std::int64_t pixel, unsigned value) {
    const auto at = static_cast<std::size_t>(2 * pixel);
    plane[at] = static_cast<std::uint8_t>(value);
    plane[at + 1] = static_cast<std::uint8_t>(value >> 8);
}

inline void drawPixel(Rule rule, const _canvas& source, const _canvas& target, std::int64_t from, std::int64_t to,
                      int opacity) {
    const std::int64_t size = rule == Rule::kCopy24 ? 3 : 2;
    const auto holds = [](std::span<const std::uint8_t> plane, std::int64_t index, std::int64_t bytes) {
        return (index + 1) * bytes <= static_cast<std::int64_t>(plane.size());
    };
    if (!holds(source.data, from, size) || !holds(target.data, to, size)) return;
    if (rule == Rule::kCopy24) {
        for (std::int64_t i = 0; i < 3; ++i)
            target.data[static_cast<std::size_t>(3 * to + i)] = source.data[static_cast<std::size_t>(3 * from + i)];
        return;
    }

    int alpha = 255;
    const bool readsAlpha = rule == Rule::kAlpha || rule == Rule::kMask || rule == Rule::kAlphaBlend ||
                            (rule == Rule::kToCanvas && !source.alpha.empty());
    if (readsAlpha) alpha = holds(source.alpha, from, 1) ? source.alpha[static_cast<std::size_t>(from)] : 0;
    if (rule == Rule::kMask && alpha != 0) alpha = 255;
    const unsigned pixel = load(source.data, from), old = load(target.data, to);
    if (rule == Rule::kBlend || rule == Rule::kAlphaBlend) {
        const int weight = rule == Rule::kBlend ? opacity : (alpha * opacity) >> 8;
        if (weight != 0) store(target.data, to, blendPixel(source.bpp, true, pixel, old, weight));
        return;
    }
    if (alpha == 0) return;
    store(target.data, to, alpha == 255 ? pixel : blendPixel(source.bpp, false, pixel, old, alpha));
    if (rule == Rule::kToCanvas && holds(target.alpha, to, 1)) {
        std::uint8_t& sum = target.alpha[static_cast<std::size_t>(to)];
        sum = static_cast<std::uint8_t>(alpha == 255 ? 255 : std::min(sum + alpha, 255));
    }
}

// False, and nothing is drawn, when what there is to show is turned inside out.
inline bool draw(Rule rule, const _canvas& source, const _canvas& target, int opacity) {
    const CXRect& clip = source.clip;
    const CXRect& view = target.clip;
    std::int64_t left = 0, top = 0, right = source.width, bottom = source.height;  // what is shown of the source
    if (clip.left != clip.right && clip.top != clip.bottom) {
        left = clip.left;
        top = clip.top;
        right = clip.right;
        bottom = clip.bottom;
    }
    std::int64_t startX = source.x, startY = source.y;  // where its corner goes
    if (rule != Rule::kCopy24) {
        startX += clip.left;
        startY += clip.top;
    }
    if (view.left != view.right && view.top != view.bottom) {
        const bool clipped = left != 0 || top != 0 || right != source.width || bottom != source.height;
        const std::int64_t clipRight = right, clipBottom = bottom;
        right = left + view.right;
        bottom = top + view.bottom;
        left += view.left;
        top += view.top;
        if (clipped) {
            right = std::min(right, clipRight);
            bottom = std::min(bottom, clipBottom);
        }
    }
    if (right < left || bottom < top) return false;

    for (std::int64_t y = 0; y < target.height; ++y) {
        for (std::int64_t x = 0; x < target.width; ++x) {
            const std::int64_t fromX = left + x - startX, fromY = top + y - startY;
            if (fromX < left || fromX >= right || fromY < top || fromY >= bottom) continue;
            if (fromX < 0 || fromX >= source.width || fromY < 0 || fromY >= source.height) continue;
            drawPixel(rule, source, target, fromY * source.width + fromX, y * target.width + x, opacity);
        }
    }
    return true;
}

// "" or where the first difference is.
inline std::string firstDifference(std::span<const std::uint8_t> expected, std::span<const std::uint8_t> got, int width,
                                   int pixelSize) {
    if (expected.size() != got.size()) return "sizes differ";
    const auto at = std::mismatch(expected.begin(), expected.end(), got.begin()).first - expected.begin();
    if (at == static_cast<std::ptrdiff_t>(expected.size())) return "";
    const std::ptrdiff_t pixel = at / pixelSize, first = pixel * pixelSize;
    std::string result = "pixel (" + std::to_string(pixel % std::max(width, 1)) + ", " +
                         std::to_string(pixel / std::max(width, 1)) + "), bytes";
    for (std::ptrdiff_t i = first; i < first + pixelSize && i < static_cast<std::ptrdiff_t>(expected.size()); ++i) {
        char text[32];
        std::snprintf(text, sizeof(text), " %02X (not %02X)", got[static_cast<std::size_t>(i)],
                      expected[static_cast<std::size_t>(i)]);
        result += text;
    }
    return result;
}

}  // namespace reference
