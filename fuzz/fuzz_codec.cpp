// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// The coders of planes: any bytes are decoded, and what is coded comes back.
#include <cstdint>
#include <cstdlib>

#include "storage/lzo_compression.h"
#include "storage/lzw_compression.h"
#include "storage/rle_compression.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    constexpr std::size_t kLargest = 1 << 20;
    const std::size_t outBytes = data[0] * 16U + 1;
    const std::span<const std::uint8_t> bytes(data + 1, size - 1);
    (void)CRLECompression::__decompress(bytes, outBytes);
    (void)CRLECompression::__decompresschar(bytes, outBytes);
    const auto length = static_cast<std::int16_t>(bytes.size());
    (void)CRLECompression2(data[0], 2, {length, static_cast<std::int16_t>(data[1])}, bytes).Decompress();
    (void)CLZWCompression(bytes).decompress(kLargest);
    (void)CLZWCompression2(bytes).decompress(kLargest);

    const Bytes input(bytes.begin(), bytes.end());
    std::size_t streamBytes = 0;
    if (CRLECompression::__decompresschar(CRLECompression::__compresschar(input), input.size()) != input) std::abort();
    const Bytes even(input.begin(), input.end() - static_cast<std::ptrdiff_t>(input.size() % 2));
    if (CRLECompression::__decompress(CRLECompression::__compress(even), even.size()) != even) std::abort();
    if (CLZWCompression(CLZWCompression(input).compress()).decompress(kLargest) != input) std::abort();
    if (CLZWCompression2(CLZWCompression2(input).compress(streamBytes)).decompress(kLargest) != input) std::abort();
    return 0;
}
