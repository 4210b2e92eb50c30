// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/targa.h"

#include <algorithm>
#include <vector>

#include "animation/foreign_picture.h"
#include "foundation/byte_reader.h"
#include "graphics/pixel_format.h"
#include "storage/file.h"

namespace {

constexpr int kBpp = 24;
constexpr int kMostBytes = 1 << 28;  // of a picture

// The size that a header tells; none, and why, for a picture that isn't read.
std::optional<CXSize> sizeIn(std::span<const std::byte> header, std::string& reason) {
    ByteReader reader(header);
    const int idLength = reader.u8();
    reader.skip(11);
    CXSize size;
    size.width = reader.i16();
    size.height = reader.i16();
    const int bpp = reader.u8();
    const int bytes = __get_data_size(size.width, size.height, kBpp);
    if (!reader.ok() || header.size() < CTarga::kHeaderBytes) {
        reason = "the header is cut off";
    } else if (idLength != 0) {
        reason = "byte 0: it has an ID field";
    } else if (bpp != kBpp) {
        reason = "byte 16: " + std::to_string(bpp) + " bits a pixel, not 24";
    } else if (bytes <= 0 || bytes > kMostBytes) {
        reason = "byte 12: a size without pixels or too large";
    } else {
        return size;
    }
    return std::nullopt;
}

}  // namespace

CTarga::CTarga(CWindow* window) : CGraphicsObject(window) {}
CTarga::CTarga(CWindow* window, const CXString& name) : CTarga(window) { CTarga::Load(name); }

std::optional<CTarga::Stored> CTarga::parse(std::span<const std::byte> bytes, std::string& reason) {
    const std::optional<CXSize> size = sizeIn(bytes.first(std::min(bytes.size(), kHeaderBytes)), reason);
    if (!size) return std::nullopt;
    const auto count = static_cast<std::size_t>(__get_data_size(size->width, size->height, kBpp));
    if (bytes.size() - kHeaderBytes < count) {
        reason = "byte 18: the pixels are cut off";
        return std::nullopt;
    }
    Stored stored;
    std::copy_n(bytes.begin(), kHeaderBytes, stored.header.begin());
    stored.size = *size;
    const auto* first = reinterpret_cast<const std::uint8_t*>(bytes.data()) + kHeaderBytes;
    stored.data = Plane(std::vector<std::uint8_t>(first, first + count));
    return stored;
}

int CTarga::Load(const CXString& name) { return loadForeign(*this, name); }

int CTarga::Load(CFile* file) {
    // No more than the picture is read: it may stand among other things.
    std::vector<std::byte> bytes = file->readRest(static_cast<int>(kHeaderBytes));
    std::string reason;
    if (const std::optional<CXSize> size = sizeIn(bytes, reason)) {
        const std::vector<std::byte> pixels = file->readRest(__get_data_size(size->width, size->height, kBpp));
        bytes.insert(bytes.end(), pixels.begin(), pixels.end());
    }
    std::optional<Stored> stored = parse(bytes, reason);
    if (!stored) {
        setPlanes({}, 0, {}, {});
        tellForeign(*file, reason);
        return 0;
    }
    header_ = stored->header;
    setPlanes(stored->size, kBpp, std::move(stored->data), {});
    FlipH();
    return 0;
}
