// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <optional>

#include "storage/compression.h"

// Runs of 16-bit units and of bytes: the form in which frames lie in memory.
//
// A stream is a sequence of packets. A control byte n below 128 stands before n units; one of 128 + n stands before one
// unit that is repeated n times.
class CRLECompression : public CCompression {
public:
    using CCompression::CCompression;

    // The names are part of the interface. An odd last byte of 16-bit units is left out.
    static Bytes __compress(std::span<const std::uint8_t> units16);
    static Bytes __compresschar(std::span<const std::uint8_t> bytes);
    // Exactly `outBytes` bytes, what a last packet holds beyond them cut off. None for a stream that ends before.
    static std::optional<Bytes> __decompress(std::span<const std::uint8_t> stream, std::size_t outBytes);
    static std::optional<Bytes> __decompresschar(std::span<const std::uint8_t> stream, std::size_t outBytes);
};

// The rows of layered foreign pictures, each with its length in the stream. A control byte c of 0 or more stands before
// c + 1 bytes, a negative one before one byte that is repeated 1 - c times.
class CRLECompression2 : public CCompression {
public:
    // A length a row.
    CRLECompression2(int width, int height, std::vector<std::int16_t> rowLengths, std::span<const std::uint8_t> data);

    // Width times height bytes. None for a stream that holds less, or whose rows reach behind its end.
    std::optional<Bytes> Decompress(int = 0) const;

private:
    int width_;
    int height_;
    std::vector<std::int16_t> rowLengths_;
};
