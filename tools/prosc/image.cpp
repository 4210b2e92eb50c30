// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "prosc/image.h"

#include <algorithm>
#include <fmt/format.h>
#include <png.h>
#include <vector>

#include "animation/image.h"
#include "graphics/pixel_conversion.h"
#include "graphics/pixel_format.h"
#include "storage/lzo_compression.h"
#include "storage/lzw_compression.h"

namespace prosc {

namespace {

constexpr unsigned kLargestSide = 16384;

Outcome wrong(std::string text) { return {std::nullopt, std::move(text)}; }

// What a picture holds: colours as blue, green, red, and alpha unless it is opaque.
struct Picture {
    CXSize size;
    Plane data, alpha;
};

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

void append(std::string& bytes, std::int64_t value, int count) {
    for (int i = 0; i < count; ++i)
        bytes += static_cast<char>(static_cast<std::uint64_t>(value) >> (8 * i));
}

void append(std::string& bytes, std::span<const std::uint8_t> plane) {
    bytes.append(reinterpret_cast<const char*>(plane.data()), plane.size());
}

Bytes raw(const Plane& plane) { return {plane.bytes().begin(), plane.bytes().end()}; }

Bytes lzoOf(const Plane& plane) {
    std::size_t length = 0;
    return plane ? CLZWCompression2(plane.bytes()).compress(length) : Bytes();
}

std::string longForm(const Picture& picture, const ImageOptions& options, const Bytes& data, const Bytes& alpha) {
    std::string bytes("MVL\0", 4);
    const std::int64_t header[] = {picture.size.width, picture.size.height, options.bpp, std::ssize(data), 0, 0,
                                   std::ssize(alpha),  options.x,           options.y};
    for (const std::int64_t value : header)
        append(bytes, value, 4);
    append(bytes, data);
    append(bytes, alpha);
    return bytes;
}

std::string packedForm(const Picture& picture, const ImageOptions& options, const Bytes& data, const Bytes& alpha) {
    std::string bytes("NVI\0", 4);
    append(bytes, picture.size.width, 2);
    append(bytes, picture.size.height, 2);
    append(bytes, options.bpp, 1);
    append(bytes, std::ssize(data), 4);
    append(bytes, std::ssize(alpha), 4);
    append(bytes, options.x, 2);
    append(bytes, options.y, 2);
    append(bytes, kCompressionDictionary, 4);
    bytes.append(12, '\0');
    append(bytes, data);
    append(bytes, alpha);
    return bytes;
}

std::span<const std::byte> bytesOf(std::string_view text) { return std::as_bytes(std::span(text.data(), text.size())); }

const char* formName(_compression form) {
    if (form == kCompressionRaw) return "raw";
    return form == kCompressionRle ? "runs" : "a dictionary coder's stream of runs";
}

}  // namespace

bool isPng(std::string_view bytes) { return bytes.starts_with("\x89PNG"); }

bool isImage(std::string_view bytes) {
    return bytes.starts_with(std::string_view("MVL\0", 4)) || bytes.starts_with(std::string_view("NVI\0", 4));
}

Outcome imageFromPng(std::string_view png, const ImageOptions& options) {
    std::string error;
    std::optional<Picture> picture = readPng(png, error);
    if (!picture) return wrong(error);
    if (picture->size.mul() < 4 && options.bpp != 24)
        return wrong("fewer than four pixels are kept with 24 bits alone");
    Plane noAlpha;
    if (!__convert_bpp(picture->data, noAlpha, picture->size, 24, options.bpp)) return wrong("an unknown format");
    if (options.form == "lzo") return {longForm(*picture, options, lzoOf(picture->data), lzoOf(picture->alpha)), ""};
    if (options.form == "lzw") {
        const Bytes alpha = picture->alpha ? CLZWCompression(picture->alpha.bytes()).compress() : Bytes();
        return {packedForm(*picture, options, CLZWCompression(picture->data.bytes()).compress(), alpha), ""};
    }
    return {longForm(*picture, options, raw(picture->data), raw(picture->alpha)), ""};
}

Outcome pngFromImage(std::string_view bytes) {
    std::string reason;
    std::optional<CImage::Stored> stored = CImage::parse(bytesOf(bytes), reason);
    if (!stored) return wrong(reason);
    CImage image(nullptr);
    image.setPlanes(stored->size, stored->bpp, stored->data, stored->alpha, stored->compression);
    image.DeCompress();
    image.DeCompressRLE2();
    if (!image.getData()) return wrong("the planes don't decode");

    const auto count = static_cast<std::size_t>(stored->size.mul());
    std::vector<std::uint8_t> pixels(count * 4);
    for (std::size_t i = 0; i < count; ++i) {
        std::uint8_t* pixel = &pixels[i * 4];
        const auto at = static_cast<std::int64_t>(i);
        if (stored->bpp == 24) {
            for (int channel = 0; channel < 3; ++channel)
                pixel[channel] = image.getData().at(at * 3 + channel);
        } else {
            const unsigned value = image.getData().at(at * 2) | image.getData().at(at * 2 + 1) << 8U;
            const bool five = stored->bpp == 15;
            const auto wide = [](unsigned channel) { return static_cast<std::uint8_t>(channel << 3 | channel >> 2); };
            const unsigned green = value >> 5 & (five ? 31U : 63U);
            pixel[0] = wide(value & 31U);
            pixel[1] = five ? wide(green) : static_cast<std::uint8_t>(green << 2 | green >> 4);
            pixel[2] = wide(value >> (five ? 10U : 11U) & 31U);
        }
        pixel[3] = image.getAlpha() ? image.getAlpha().at(at) : std::uint8_t{255};
    }
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    png.width = static_cast<png_uint_32>(stored->size.width);
    png.height = static_cast<png_uint_32>(stored->size.height);
    png.format = PNG_FORMAT_BGRA;
    png_alloc_size_t size = 0;
    if (!png_image_write_to_memory(&png, nullptr, &size, 0, pixels.data(), 0, nullptr)) return wrong(png.message);
    std::string result(size, '\0');
    if (!png_image_write_to_memory(&png, result.data(), &size, 0, pixels.data(), 0, nullptr)) return wrong(png.message);
    result.resize(size);
    return {result, ""};
}

Outcome imageInfo(std::string_view bytes) {
    std::string reason;
    const std::optional<CImage::Stored> stored = CImage::parse(bytesOf(bytes), reason);
    if (!stored) return wrong(reason);
    return {fmt::format("image, form {}, {} by {}, {} bits, at ({}, {})\n  planes in memory: {}\n  alpha: {}\n",
                        stored->form, stored->size.width, stored->size.height, stored->bpp, stored->position.x,
                        stored->position.y, formName(stored->compression), stored->alpha ? "yes" : "no"),
            ""};
}

}  // namespace prosc
