// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "prosc/picture.h"

#include <algorithm>
#include <fmt/format.h>
#include <png.h>
#include <vector>

namespace prosc {

namespace {

constexpr unsigned kLargestSide = 16384;

Outcome wrong(std::string text) { return {std::nullopt, std::move(text)}; }

}  // namespace

bool isPng(std::string_view bytes) { return bytes.starts_with("\x89PNG"); }

std::optional<Picture> readPng(std::string_view bytes, std::string& error) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_memory(&image, bytes.data(), bytes.size())) {
        error = image.message;
        return std::nullopt;
    }
    image.format = PNG_FORMAT_BGRA;
    if (image.width > kLargestSide || image.height > kLargestSide) {
        png_image_free(&image);
        error = fmt::format("a picture of {} by {} is larger than {} by {}", image.width, image.height, kLargestSide,
                            kLargestSide);
        return std::nullopt;
    }
    std::vector<std::uint8_t> pixels(PNG_IMAGE_SIZE(image));
    if (!png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr)) {
        error = image.message;
        return std::nullopt;
    }
    const std::size_t count = pixels.size() / 4;
    Picture picture{
        {static_cast<int>(image.width), static_cast<int>(image.height)},
        Plane(count * 3), Plane(count)
    };
    bool opaque = true;
    for (std::size_t i = 0; i < count; ++i) {
        std::copy_n(&pixels[i * 4], 3, &picture.data.bytes()[i * 3]);
        picture.alpha.bytes()[i] = pixels[i * 4 + 3];
        opaque = opaque && pixels[i * 4 + 3] == 255;
    }
    if (opaque) picture.alpha.reset();
    return picture;
}

Outcome writePng(const CXSize& size, int bpp, const Plane& data, const Plane& alpha) {
    const auto count = static_cast<std::size_t>(size.mul());
    std::vector<std::uint8_t> pixels(count * 4);
    for (std::size_t i = 0; i < count; ++i) {
        std::uint8_t* pixel = &pixels[i * 4];
        const auto at = static_cast<std::int64_t>(i);
        if (bpp == 24) {
            for (int channel = 0; channel < 3; ++channel)
                pixel[channel] = data.at(at * 3 + channel);
        } else {
            const unsigned value = data.at(at * 2) | data.at(at * 2 + 1) << 8U;
            const bool five = bpp == 15;
            const auto wide = [](unsigned channel) { return static_cast<std::uint8_t>(channel << 3 | channel >> 2); };
            const unsigned green = value >> 5 & (five ? 31U : 63U);
            pixel[0] = wide(value & 31U);
            pixel[1] = five ? wide(green) : static_cast<std::uint8_t>(green << 2 | green >> 4);
            pixel[2] = wide(value >> (five ? 10U : 11U) & 31U);
        }
        pixel[3] = alpha ? alpha.at(at) : std::uint8_t{255};
    }
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    png.width = static_cast<png_uint_32>(size.width);
    png.height = static_cast<png_uint_32>(size.height);
    png.format = PNG_FORMAT_BGRA;
    png_alloc_size_t length = 0;
    if (!png_image_write_to_memory(&png, nullptr, &length, 0, pixels.data(), 0, nullptr)) return wrong(png.message);
    std::string result(length, '\0');
    if (!png_image_write_to_memory(&png, result.data(), &length, 0, pixels.data(), 0, nullptr))
        return wrong(png.message);
    result.resize(length);
    return {result, ""};
}

}  // namespace prosc
