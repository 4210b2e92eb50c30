// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "prosc/commands.h"

// Fonts: a TrueType font, or another that FreeType reads, rasterised into a font file.
namespace prosc {

struct FontOptions {
    int size = 16;          // of the letters, in pixels
    int colour = 0xFFFFFF;  // red, green, blue
    std::string letters;    // in UTF-8; "": all of Windows-1250 that the font has
};

// A letter takes the columns that it inks: its bearings are left out, for a text puts the same gap behind every letter.
// The font's own kerning of a pair goes into the file's table. An error for letters that aren't in Windows-1250 or not
// in the font.
Outcome fontFromOutlines(std::string_view font, const FontOptions& options);

bool isFont(std::string_view bytes);  // by the magic
Outcome fontInfo(std::string_view bytes);

}  // namespace prosc
