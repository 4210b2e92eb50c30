// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "graphics/geometry.h"
#include "graphics/plane.h"
#include "prosc/commands.h"

// PNG files against the planes of pictures.
namespace prosc {

// What a PNG file holds: colours as blue, green, red, and alpha unless it is opaque.
struct Picture {
    CXSize size;
    Plane data, alpha;
};

std::optional<Picture> readPng(std::string_view bytes, std::string& error);
// Raw planes of 15, 16 or 24 bits become 8 bits a channel. A narrower channel's upper bits are repeated below, so that
// cutting them off gives the same pixel again; bit 15 of a 15-bit pixel is no part of its colour and is lost.
Outcome writePng(const CXSize& size, int bpp, const Plane& data, const Plane& alpha);

bool isPng(std::string_view bytes);

}  // namespace prosc
