// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/pixel_format.h"

#include <cstdint>
#include <limits>

namespace {

struct FlagRow {
    int flag;
    int bpp;
};

constexpr FlagRow kFlags[] = {
    {1,     8 },
    {2,     15},
    {4,     16},
    {8,     24},
    {0x100, 2 },
    {0x200, 4 }
};

}  // namespace

int __get_pixel_size(int bpp) {
    if (bpp == 15 || bpp == 16) return 2;
    if (bpp == 24) return 3;
    return bpp == 8 ? 1 : 0;
}

int __get_data_size(int width, int height, int bpp) {
    if (width <= 0 || height <= 0) return 0;
    const std::int64_t area = static_cast<std::int64_t>(width) * height;
    if (area > std::numeric_limits<int>::max()) return 0;
    const std::int64_t size = area * __get_pixel_size(bpp);
    return size > std::numeric_limits<int>::max() ? 0 : static_cast<int>(size);
}

int GetRealBpp(int flag) {
    for (const FlagRow& row : kFlags) {
        if (row.flag == flag) return row.bpp;
    }
    return 0;
}

int GetFlagBpp(int bpp) {
    for (const FlagRow& row : kFlags) {
        if (row.bpp == bpp) return row.flag;
    }
    return 0;
}
