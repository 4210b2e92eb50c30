// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/host/picture.h"

#include <png.h>

namespace host {

namespace {

std::uint8_t fromFive(unsigned channel) { return static_cast<std::uint8_t>((channel << 3) | (channel >> 2)); }
std::uint8_t fromSix(unsigned channel) { return static_cast<std::uint8_t>((channel << 2) | (channel >> 4)); }

}  // namespace

std::vector<std::uint8_t> rgbOf(const platform::Display& display) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(display.screen().size() * 3);
    const bool hasFiveBitsOfGreen = display.bitsPerPixel() == 15;
    for (const unsigned pixel : display.screen()) {
        bytes.push_back(fromFive((pixel >> (hasFiveBitsOfGreen ? 10 : 11)) & 0x1F));
        bytes.push_back(hasFiveBitsOfGreen ? fromFive((pixel >> 5) & 0x1F) : fromSix((pixel >> 5) & 0x3F));
        bytes.push_back(fromFive(pixel & 0x1F));
    }
    return bytes;
}

bool writePng(const std::string& file, const platform::Display& display) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(display.width());
    image.height = static_cast<png_uint_32>(display.height());
    image.format = PNG_FORMAT_RGB;
    return png_image_write_to_file(&image, file.c_str(), 0, rgbOf(display).data(), 0, nullptr) != 0;
}

std::uint64_t hashOf(const platform::Display& display) {
    constexpr std::uint64_t kPrime = 0x100000001B3;
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const std::uint16_t pixel : display.screen()) {
        hash = (hash ^ (pixel & 0xFFU)) * kPrime;
        hash = (hash ^ (pixel >> 8U)) * kPrime;
    }
    return hash;
}

}  // namespace host
