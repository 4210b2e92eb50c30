// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>

struct CXSize;

// The formats of a pixel are named by their bits: 8, 15, 16, 24 and 32. Drawing knows 15 (0RRRRRGGGGGBBBBB) and 16
// (RRRRRGGGGGGBBBBB); 24 is blue, green, red, and 32 has alpha behind them. The names are part of the interface.

int __get_pixel_size(int bpp);  // in bytes; 0 for anything but 8, 15, 16 and 24
// Width times height times that size; 0 for a size that isn't positive or passes 2^31 - 1.
int __get_data_size(int width, int height, int bpp);

// Between a format and the flag that stands for it in stored files: 1, 2, 4, 8 for 8, 15, 16, 24. 0: none.
int GetRealBpp(int flag);
int GetFlagBpp(int bpp);
