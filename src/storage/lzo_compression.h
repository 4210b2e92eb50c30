// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <optional>

#include "storage/compression.h"

// The newer stored form of planes: the size that comes out, the length of the stream, and an LZO1X stream.
class CLZWCompression2 : public CCompression {
public:
    using CCompression::CCompression;

    // The header of 8 bytes and the stream, whose length alone goes to `streamBytes`. Empty and 0 when that failed.
    Bytes compress(std::size_t& streamBytes) const;
    // None for a damaged stream, and for one that says it gives more than `largest` bytes.
    std::optional<Bytes> decompress(std::size_t largest);
};
