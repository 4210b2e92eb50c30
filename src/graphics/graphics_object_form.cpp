// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// The forms in which a graphics object's planes stand, in memory and in a file.
#include <algorithm>
#include <cstring>
#include <limits>
#include <optional>
#include <utility>

#include "graphics/graphics_object.h"
#include "graphics/pixel_format.h"
#include "storage/archive.h"
#include "storage/file.h"
#include "storage/lzo_compression.h"
#include "storage/rle_compression.h"

namespace {

std::size_t alphaSize(const CXSize& size) {
    return static_cast<std::size_t>(__get_data_size(size.width, size.height, 8));
}

}  // namespace

void CGraphicsObject::Compress(_compression form) {
    if (form != kCompressionRle || compression_ == kCompressionRle || !data_) return;
    if (data_.size() % sizeof(std::uint16_t) != 0) return;  // runs of 16-bit units would lose the last byte
    if (compression_ == kCompressionRaw) dataSize_ = GetDataSize();
    data_ = Plane(CRLECompression::__compress(data_.bytes()));
    codedSize_ = static_cast<int>(data_.size());
    if (alpha_) {
        alpha_ = Plane(CRLECompression::__compresschar(alpha_.bytes()));
        channelSizes_[3] = static_cast<int>(alpha_.size());
    }
    compression_ = kCompressionRle;
}

void CGraphicsObject::DeCompress() {
    if (compression_ != kCompressionDictionary && compression_ != kCompressionDictionaryRle) return;
    const bool toRaw = compression_ == kCompressionDictionary;
    const auto decode = [&](Plane& plane, std::size_t rawSize) {
        if (!plane) return true;
        // Runs that cost more than the raw plane, a control byte for each pixel, are the worst that a coder writes.
        const std::size_t largest = toRaw ? rawSize : rawSize * 2;
        std::optional<Bytes> decoded = CLZWCompression2(plane.bytes()).decompress(largest);
        if (!decoded || (toRaw && decoded->size() != rawSize)) return false;
        plane = Plane(std::move(*decoded));
        return true;
    };
    if (!decode(data_, static_cast<std::size_t>(GetDataSize())) || !decode(alpha_, alphaSize(size_))) {
        Flush();
        return;
    }
    compression_ = toRaw ? kCompressionRaw : kCompressionRle;
    dataSize_ = GetDataSize();
    codedSize_ = static_cast<int>(data_.size());
}

void CGraphicsObject::DeCompressRLE2() {
    if (compression_ != kCompressionRle) return;
    heldData_ = data_;
    heldAlpha_ = alpha_;
    heldBpp_ = bpp_;
    const auto rawSize = static_cast<std::size_t>(GetDataSize());
    std::optional<Bytes> data = CRLECompression::__decompress(data_.bytes(), rawSize);
    data_ = data ? Plane(std::move(*data)) : Plane();
    if (alpha_) {
        std::optional<Bytes> alpha = CRLECompression::__decompresschar(alpha_.bytes(), alphaSize(size_));
        // A picture that can't show where it is transparent shows nothing.
        if (!alpha) data_.reset();
        alpha_ = alpha ? Plane(std::move(*alpha)) : Plane();
    }
    compression_ = kCompressionRaw;
}

void CGraphicsObject::bringBackCompressed() {
    if (heldData_) {
        data_ = std::exchange(heldData_, {});
        bpp_ = heldBpp_;
        compression_ = kCompressionRle;
    }
    if (heldAlpha_) {
        alpha_ = std::exchange(heldAlpha_, {});
        compression_ = kCompressionRle;
    }
}

int CGraphicsObject::Save(const CXString& name, _compression form) {
    CFile file(window_, name, CFile::kCreateBinary);
    if (file.LastError() != 0) return file.LastError();
    Save(&file, form);
    return file.Close();
}

int CGraphicsObject::Save(CFile* file, _compression form) {
    const bool coded = compression_ == kCompressionRle;
    if (coded) DeCompressRLE2();
    CXRect part(0, 0, size_.width, size_.height);
    const bool clipped = !clip_.IsEmpty() || (clip_.Width() > 0 && clip_.Width() != size_.width) ||
                         (clip_.Height() > 0 && clip_.Height() != size_.height);
    // What a clip leaves outside of the picture was never there.
    if (clipped) part = clip_.Common(part);

    CGraphicsObject cut(nullptr);
    cut.Copy(this, part);
    const Plane& data = cut.getData();
    const Plane& alpha = cut.getAlpha();
    const CXPoint position = position_ + part.LeftTop();
    const std::int32_t header[] = {cut.size_.width,
                                   cut.size_.height,
                                   bpp_,
                                   static_cast<std::int32_t>(data.size()),
                                   0,
                                   form,
                                   static_cast<std::int32_t>(alpha.size()),
                                   position.x,
                                   position.y};
    std::vector<std::uint8_t> bytes = {'M', 'V', 'L', 0};
    for (const std::int32_t value : header) {
        for (int shift = 0; shift < 32; shift += 8)
            bytes.push_back(static_cast<std::uint8_t>(static_cast<std::uint32_t>(value) >> shift));
    }
    bytes.insert(bytes.end(), data.bytes().begin(), data.bytes().end());
    bytes.insert(bytes.end(), alpha.bytes().begin(), alpha.bytes().end());
    file->Write(bytes.data(), static_cast<int>(bytes.size()));
    if (coded) bringBackCompressed();
    return file->LastError();
}
