// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Stored pictures, built from their byte tables.
namespace pictures {

inline void put(std::string& bytes, std::int64_t value, int count) {
    for (int i = 0; i < count; ++i)
        bytes += static_cast<char>(i < 8 ? static_cast<std::uint64_t>(value) >> (8 * i) : 0);
}

inline std::string plane(const std::vector<std::uint16_t>& pixels) {
    std::string bytes;
    for (const std::uint16_t pixel : pixels)
        put(bytes, pixel, 2);
    return bytes;
}

// The packed form, around planes in any form.
inline std::string nvi(int width, int height, const std::string& data, const std::string& alpha = "", int x = 0,
                       int y = 0, int bpp = 16, int compression = 0) {
    std::string bytes("NVI\0", 4);
    put(bytes, width, 2);
    put(bytes, height, 2);
    put(bytes, bpp, 1);
    put(bytes, static_cast<std::int64_t>(data.size()), 4);
    put(bytes, static_cast<std::int64_t>(alpha.size()), 4);
    put(bytes, x, 2);
    put(bytes, y, 2);
    put(bytes, compression, 4);
    bytes.append(12, '\0');
    return bytes + data + alpha;
}

inline std::string nvi(int width, int height, const std::vector<std::uint16_t>& pixels, const std::string& alpha = "",
                       int x = 0, int y = 0) {
    return nvi(width, height, plane(pixels), alpha, x, y);
}

// The long form.
inline std::string mvl(int width, int height, const std::string& data, const std::string& alpha = "", int x = 0,
                       int y = 0, int bpp = 16) {
    std::string bytes("MVL\0", 4);
    for (const std::int64_t value :
         {static_cast<std::int64_t>(width), static_cast<std::int64_t>(height), static_cast<std::int64_t>(bpp),
          static_cast<std::int64_t>(data.size()), std::int64_t{0}, std::int64_t{0},
          static_cast<std::int64_t>(alpha.size()), static_cast<std::int64_t>(x), static_cast<std::int64_t>(y)})
        put(bytes, value, 4);
    return bytes + data + alpha;
}

}  // namespace pictures
