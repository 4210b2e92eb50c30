// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <optional>

#include "storage/compression.h"

// The older stored form of planes: a dictionary coder with codes of 9 to 16 bits, least significant bit first, behind a
// header of the size that comes out, the length of the code stream and the number of codes.
//
// Codes below 256 are bytes, 256 clears the dictionary, those above stand for strings. The coder clears it when the
// latest stretch of the input shrank worse than all since the last time, but not before codes of 12 bits.
class CLZWCompression : public CCompression {
public:
    using CCompression::CCompression;

    Bytes compress() const;  // with the header; empty for no input
    // None for a stream that is damaged, or that says it gives more than `largest` bytes. A number of codes below those
    // that are there ends the decoding.
    std::optional<Bytes> decompress(std::size_t largest);
};
