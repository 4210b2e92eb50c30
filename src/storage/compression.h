// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "foundation/xobject.h"
#include "storage/compression_form.h"

using Bytes = std::vector<std::uint8_t>;

// The base of the coders: the bytes to work on, which stay the caller's.
class CCompression : public CXObject {
public:
    explicit CCompression(std::span<const std::uint8_t> data) : data_(data), size_(static_cast<int>(data.size())) {}

    virtual Bytes Compress(int&) { return {}; }  // nothing in any of them: each has entries of its own
    virtual void setData(std::span<const std::uint8_t> data) { data_ = data; }
    virtual int GetSize() { return size_; }  // in bytes; of a dictionary coder, once it has decoded, what came out

protected:
    std::span<const std::uint8_t> data_;
    int size_;
};
