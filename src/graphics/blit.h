// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <span>

#include "graphics/geometry.h"

// One side of a copy from one picture to another of the same format. The name is part of the interface.
struct _canvas {
    std::span<std::uint8_t> data;   // pixels, rows without gaps
    std::span<std::uint8_t> alpha;  // a byte a pixel; empty: none
    int bpp = 0;
    int x = 0, y = 0;  // where the source's top left pixel falls in the target; 0, 0 in the target
    int width = 0, height = 0;
    CXRect clip;  // in the source: its clipping rectangle; in the target: the source's viewport; without area: none
};
