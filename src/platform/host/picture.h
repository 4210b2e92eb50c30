// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/display.h"

namespace host {

// The screen as red, green, blue bytes, row by row. A channel's upper bits are repeated below, so that the 16-bit pixel
// can be read back exactly.
std::vector<std::uint8_t> rgbOf(const platform::Display& display);

// Writes the screen as PNG; false when it can't.
bool writePng(const std::string& file, const platform::Display& display);

// FNV-1a, of 64 bits, over the screen's pixels, low byte first.
std::uint64_t hashOf(const platform::Display& display);

}  // namespace host
