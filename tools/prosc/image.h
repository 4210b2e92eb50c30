// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string_view>

#include "prosc/commands.h"
#include "prosc/picture.h"

// Pictures: PNG into .img and back.
namespace prosc {

struct ImageOptions {
    int bpp = 24;              // 15, 16 or 24
    std::string form = "raw";  // or "lzw" or "lzo"
    int x = 0, y = 0;          // where it stands on the screen
};

// An alpha plane is written when the picture isn't opaque everywhere.
Outcome imageFromPng(std::string_view png, const ImageOptions& options);
// 8 bits a channel; a 5-bit channel's upper bits are repeated below.
Outcome pngFromImage(std::string_view bytes);

bool isImage(std::string_view bytes);  // by its magic
Outcome imageInfo(std::string_view bytes);

// Pictures of other programs, as far as applications read them.
bool isTarga(std::string_view name);  // by its ending alone
Outcome targaInfo(std::string_view bytes);
bool isPhotoshop(std::string_view bytes);  // by its magic
Outcome photoshopInfo(std::string_view bytes);

}  // namespace prosc
