// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "graphics/blit.h"

namespace blit {

// What a copy reads and writes: the part of the source that it shows, cut to the bounds of both sides. Places are
// indices of pixels. Rows may still reach behind the end of a plane that is shorter than its size; walks look.
struct CopyArea {
    std::span<const std::uint8_t> source, alpha;      // alpha is empty when the source has none
    std::span<std::uint8_t> target, targetAlpha;      // they share no bytes with those two
    std::int64_t sourceAt = 0, targetAt = 0;          // of the first pixel
    std::int64_t sourceStride = 0, targetStride = 0;  // from row to row
    std::int64_t width = 0, height = 0;
    std::int64_t sourcePixels = 0, targetPixels = 0;  // that the planes hold
    std::vector<std::uint8_t> ownSource, ownAlpha;    // copies, for a picture that is drawn into itself
};

// How the parts of the family differ in what they read.
struct CopyNeeds {
    int pixelSize = 2;            // bytes
    bool alpha = false;           // the source's: pixels without a byte of it are left out
    bool clipMovesTarget = true;  // the corner of the source's clip is added to where the copy starts in the target
};

// None when a side is missing, or when what there is to show is turned inside out.
//
// A clip without area shows the whole source, yet its corner counts for the start in the target. A viewport is counted
// from the clip's corner and shows nothing outside of the clip; it doesn't move the start.
std::optional<CopyArea> copyArea(const _canvas* source, const _canvas* target, const CopyNeeds& needs);

// Calls row(sourceAt, targetAt, pixels) for every row, cut to what the planes hold.
template <class Row>
[[gnu::always_inline]] inline void eachRow(const CopyArea& area, const Row& row) {
    std::int64_t from = area.sourceAt;
    std::int64_t to = area.targetAt;
    for (std::int64_t y = 0; y < area.height; ++y) {
        const std::int64_t pixels = std::min(area.width, std::min(area.sourcePixels - from, area.targetPixels - to));
        if (pixels <= 0) return;
        row(area, from, to, pixels);
        from += area.sourceStride;
        to += area.targetStride;
    }
}

#if defined(__x86_64__)
template <class Row>
[[gnu::target("avx2")]] void walkWide(const CopyArea& area, const Row& row) {
    eachRow(area, row);
}
#endif

// The walk, compiled twice on machines whose wider vectors are optional.
template <class Row>
void walk(const CopyArea& area, const Row& row) {
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx2")) {
        walkWide(area, row);
        return;
    }
#endif
    eachRow(area, row);
}

}  // namespace blit
