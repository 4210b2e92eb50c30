// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "foundation/byte_reader.h"

#include <bit>

namespace {

template <class T>
T littleEndian(std::span<const std::byte> bytes) {
    T value = 0;
    for (std::size_t i = bytes.size(); i-- > 0;)
        value = static_cast<T>(value << 8 | std::to_integer<T>(bytes[i]));
    return value;
}

}  // namespace

ByteReader& ByteReader::fail() {
    ok_ = false;
    return *this;
}

std::span<const std::byte> ByteReader::bytes(std::int64_t count) {
    if (!ok_ || count < 0 || static_cast<std::uint64_t>(count) > left()) {
        fail();
        return {};
    }
    const auto part = bytes_.subspan(position_, static_cast<std::size_t>(count));
    position_ += part.size();
    return part;
}

std::uint8_t ByteReader::u8() {
    const auto part = bytes(1);
    return part.empty() ? std::uint8_t{0} : std::to_integer<std::uint8_t>(part[0]);
}

std::uint16_t ByteReader::u16() {
    const auto low = bytes(2);
    return low.empty()
               ? std::uint16_t{0}
               : static_cast<std::uint16_t>(std::to_integer<unsigned>(low[0]) | std::to_integer<unsigned>(low[1]) << 8);
}

std::uint32_t ByteReader::u32() { return littleEndian<std::uint32_t>(bytes(4)); }
std::uint64_t ByteReader::u64() { return littleEndian<std::uint64_t>(bytes(8)); }
double ByteReader::f64() { return std::bit_cast<double>(u64()); }

std::string_view ByteReader::text(std::int64_t count) {
    const auto part = bytes(count);
    return {reinterpret_cast<const char*>(part.data()), part.size()};
}

std::string_view ByteReader::textToZero() {
    const auto rest = bytes_.subspan(position_);
    std::size_t length = 0;
    while (length < rest.size() && rest[length] != std::byte{0})
        ++length;
    if (length == rest.size()) {
        fail();
        return {};
    }
    const std::string_view found = text(static_cast<std::int64_t>(length));
    skip(1);
    return found;
}

void ByteReader::skip(std::int64_t count) { bytes(count); }

void ByteReader::seek(std::size_t position) {
    if (!ok_ || position > bytes_.size()) {
        fail();
        return;
    }
    position_ = position;
}
