// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "graphics/geometry.h"
#include "graphics/plane.h"

// What a font file holds, in memory: a strip of cells of equal width, one a letter, and tables about them. All numbers
// are little-endian; docs/formats/font.md tells the file byte by byte.
struct FontTables {
    CXSize size;                       // of the strip, in pixels
    int bpp = 16;                      // 15 or 16
    std::vector<char> letters;         // in strip order
    std::vector<std::int8_t> kerning;  // letters times letters: a row for the letter before, a column for this one
    std::vector<std::int8_t> left;     // empty columns at the left of each cell
    std::vector<std::int8_t> right;    // and at the right
    Plane pixels;                      // two bytes a pixel; null for a strip without area
    Plane alpha;

    int count() const { return static_cast<int>(letters.size()); }
    int cellWidth() const { return letters.empty() ? 0 : size.width / count(); }
};

// A letter before it stands in a strip.
struct FontCell {
    char letter = 0;
    std::vector<std::uint16_t> pixels;  // row by row, as large as the cell
    std::vector<std::uint8_t> alpha;
};

// Reads a font file. None for a damaged one: `reason` then tells the place and what is wrong. The magic isn't looked
// at, and a depth that isn't 15 counts as 16: a pixel has two bytes whatever the header says.
std::optional<FontTables> readFont(std::span<const std::byte> bytes, std::string& reason);

std::vector<std::uint8_t> writeFont(const FontTables& font);

// A font of these cells, each of that size. The outermost rows and columns of a cell are left empty. Its offsets and
// kerning come from its alpha plane.
FontTables compileFont(const std::vector<FontCell>& cells, const CXSize& cell, int bpp);
