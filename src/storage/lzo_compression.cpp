// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "storage/lzo_compression.h"

#include <algorithm>
#include <limits>
#include <lzo/lzo1x.h>

#include "foundation/byte_reader.h"

namespace {

constexpr std::size_t kHeader = 8;

void putSize(Bytes& bytes, std::size_t at, std::size_t size) {
    for (std::size_t i = 0; i < 4; ++i)
        bytes[at + i] = static_cast<std::uint8_t>(size >> (8 * i));
}

}  // namespace

Bytes CLZWCompression2::compress(std::size_t& streamBytes) const {
    streamBytes = 0;
    if (data_.size() > std::numeric_limits<std::int32_t>::max() / 2 || lzo_init() != LZO_E_OK) return {};
    // What the coder's makers give as the worst case of data that doesn't shrink.
    Bytes result(kHeader + data_.size() + data_.size() / 16 + 67);
    Bytes workMemory(LZO1X_1_MEM_COMPRESS);
    lzo_uint length = 0;
    if (lzo1x_1_compress(data_.data(), data_.size(), result.data() + kHeader, &length, workMemory.data()) != LZO_E_OK)
        return {};
    putSize(result, 0, data_.size());
    putSize(result, 4, length);
    result.resize(kHeader + length);
    streamBytes = length;
    return result;
}

std::optional<Bytes> CLZWCompression2::decompress(std::size_t largest) {
    ByteReader reader(std::as_bytes(data_));
    const std::size_t size = reader.u32(), length = reader.u32();
    // A stream's byte gives at most some 255 bytes, so a size that can't be true takes no memory.
    if (!reader.ok() || size > largest || length > reader.left() || size / 256 > length) return std::nullopt;
    if (lzo_init() != LZO_E_OK) return std::nullopt;
    Bytes result(size);
    lzo_uint got = size;
    const int status = lzo1x_decompress_safe(data_.data() + kHeader, length, result.data(), &got, nullptr);
    if (status != LZO_E_OK || got != size) return std::nullopt;
    size_ = static_cast<int>(size);
    return result;
}
