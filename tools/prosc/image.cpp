// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "prosc/image.h"

#include <algorithm>
#include <fmt/format.h>
#include <vector>

#include "animation/image.h"
#include "animation/photoshop.h"
#include "animation/targa.h"
#include "graphics/pixel_conversion.h"
#include "graphics/pixel_format.h"
#include "platform/headless/code_page.h"
#include "storage/lzo_compression.h"
#include "storage/lzw_compression.h"

namespace prosc {

namespace {

Outcome wrong(std::string text) { return {std::nullopt, std::move(text)}; }

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
    return writePng(stored->size, stored->bpp, image.getData(), image.getAlpha());
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

bool isTarga(std::string_view name) {
    constexpr std::string_view kExtension = ".tga";
    return name.size() >= kExtension.size() &&
           headless::foldCase(name.substr(name.size() - kExtension.size())) == kExtension;
}

Outcome targaInfo(std::string_view bytes) {
    std::string reason;
    const std::optional<CTarga::Stored> stored = CTarga::parse(bytesOf(bytes), reason);
    if (!stored) return wrong(reason);
    return {fmt::format("TGA picture, {} by {}, 24 bits\n", stored->size.width, stored->size.height), ""};
}

bool isPhotoshop(std::string_view bytes) { return bytes.starts_with("8BPS"); }

Outcome photoshopInfo(std::string_view bytes) {
    std::string reason;
    const auto layers = CPSD::parse(nullptr, bytesOf(bytes), reason);
    if (!layers) return wrong(reason);
    std::string text = fmt::format("Photoshop picture, layers: {}\n", layers->size());
    for (const CPSD::Layer& layer : *layers)
        text += fmt::format("  \"{}\", {} by {}, at ({}, {}), channels: {}, alpha: {}\n",
                            headless::toUtf8(layer.name.view()), layer.Width(), layer.Height(), layer.left, layer.top,
                            layer.channels.size(), layer.picture->getAlpha() ? "yes" : "no");
    return {text, ""};
}

}  // namespace prosc
