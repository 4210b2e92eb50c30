// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

// Reads little-endian values from bytes that nobody vouches for.
//
// A read that doesn't fit gives 0 or an empty view and marks the reader as failed; from then on every read does. So a
// loader reads all it wants and asks `ok` once. No size is trusted before it is compared with `left`.
class ByteReader {
public:
    explicit ByteReader(std::span<const std::byte> bytes) : bytes_(bytes) {}

    bool ok() const { return ok_; }
    std::size_t position() const { return position_; }
    std::size_t left() const { return bytes_.size() - position_; }

    std::uint8_t u8();
    std::uint16_t u16();
    std::uint32_t u32();
    std::uint64_t u64();
    std::int16_t i16() { return static_cast<std::int16_t>(u16()); }
    std::int32_t i32() { return static_cast<std::int32_t>(u32()); }
    std::int64_t i64() { return static_cast<std::int64_t>(u64()); }
    double f64();

    // Views into the bytes, which live as long as those. A negative count fails.
    std::span<const std::byte> bytes(std::int64_t count);
    std::string_view text(std::int64_t count);
    // The characters up to a zero byte, which is skipped; fails when there is none.
    std::string_view textToZero();

    void skip(std::int64_t count);
    void seek(std::size_t position);  // from the start; behind the end fails

private:
    ByteReader& fail();

    std::span<const std::byte> bytes_;
    std::size_t position_ = 0;
    bool ok_ = true;
};
