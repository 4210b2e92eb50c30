// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/pixel_conversion.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include "graphics/geometry.h"

namespace {

enum Code { kNone, k24To15, k24To16, k32To15, k32To16, k15To16, k16To15, k15To24, k16To24 };

struct CodeRow {
    int from;
    int to;
    Code code;
};

constexpr CodeRow kCodes[] = {
    {24, 15, k24To15},
    {24, 16, k24To16},
    {32, 15, k32To15},
    {32, 16, k32To16},
    {15, 16, k15To16},
    {16, 15, k16To15},
    {15, 24, k15To24},
    {16, 24, k16To24}
};

std::uint16_t pixel15(const std::uint8_t* bytes) {
    return static_cast<std::uint16_t>((bytes[2] >> 3) << 10 | (bytes[1] >> 3) << 5 | bytes[0] >> 3);
}

std::uint16_t pixel16(const std::uint8_t* bytes) {
    return static_cast<std::uint16_t>((bytes[2] >> 3) << 11 | (bytes[1] >> 2) << 5 | bytes[0] >> 3);
}

// From 24 or 32 bits.
Plane narrowed(const Plane& data, std::size_t count, std::size_t pixelSize, bool to15) {
    Plane result(count * sizeof(std::uint16_t));
    const std::span<std::uint16_t> pixels = result.pixels();
    const std::uint8_t* bytes = data.bytes().data();
    for (std::size_t i = 0; i < count; ++i, bytes += pixelSize)
        pixels[i] = to15 ? pixel15(bytes) : pixel16(bytes);
    return result;
}

// The alpha of 32-bit pixels, xor `turned`.
Plane alphaOf(const Plane& data, std::size_t count, std::uint8_t turned) {
    Plane result(count);
    const std::span<const std::uint8_t> bytes = data.bytes();
    for (std::size_t i = 0; i < count; ++i) {
        result.bytes()[i] = static_cast<std::uint8_t>(bytes[4 * i + 3] ^ turned);
    }
    return result;
}

// Between 15 and 16 bits. The lowest green bit of the wider form is lost, and so is the lowest of the narrower.
Plane shifted(const Plane& data, std::size_t count, bool to16) {
    Plane result = data.copy();
    const std::span<std::uint16_t> pixels = result.pixels().first(count - count % 2);
    for (std::uint16_t& pixel : pixels) {
        const int upper = pixel & 0xFFC0;
        pixel = static_cast<std::uint16_t>((pixel & 0x1F) | (to16 ? upper << 1 : upper >> 1));
    }
    return result;
}

Plane widened(const Plane& data, std::size_t count, bool from15) {
    Plane result(3 * count);
    const std::span<const std::uint16_t> pixels = data.pixels();
    std::uint8_t* bytes = result.bytes().data();
    for (std::size_t i = 0; i < count; ++i, bytes += 3) {
        const int pixel = pixels[i];
        bytes[0] = static_cast<std::uint8_t>((pixel & 0x1F) << 3);
        bytes[1] = static_cast<std::uint8_t>(from15 ? (pixel >> 5 & 0x1F) << 3 : (pixel >> 5 & 0x3F) << 2);
        bytes[2] = static_cast<std::uint8_t>((pixel >> (from15 ? 10 : 11) & 0x1F) << 3);
    }
    return result;
}

}  // namespace

int __get_convert_code(int from, int to) {
    for (const CodeRow& row : kCodes) {
        if (row.from == from && row.to == to) return row.code;
    }
    return kNone;
}

bool __convert_bpp(Plane& data, Plane& alpha, const CXSize& size, int from, int to) {
    if (from == to || to == 32 || (from == 32 && to == 24)) return true;
    const int code = __get_convert_code(from, to);
    if (code == kNone) return false;
    if (size.width <= 0 || size.height <= 0) return true;  // no pixels

    const std::size_t pixelSize = from == 32 ? 4 : from == 24 ? 3 : 2;
    const std::size_t count = static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
    if (data.size() / pixelSize < count) return false;
    switch (code) {
        case k24To15:
        case k24To16:
            data = narrowed(data, count, pixelSize, to == 15);
            break;
        case k32To15:
        case k32To16:
            alpha = alphaOf(data, count, to == 15 ? 0 : 255);
            data = narrowed(data, count, pixelSize, to == 15);
            break;
        case k15To16:
        case k16To15:
            data = shifted(data, count, to == 16);
            break;
        default:
            data = widened(data, count, from == 15);
            break;
    }
    return true;
}
