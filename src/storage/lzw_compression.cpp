// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "storage/lzw_compression.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "foundation/byte_reader.h"

namespace {

constexpr std::size_t kHeader = 12;
constexpr unsigned kClear = 256;
constexpr unsigned kFirstCode = 257;
constexpr unsigned kLastCode = 65535;
constexpr unsigned kFirstWidth = 9;
constexpr unsigned kLastWidth = 16;
constexpr unsigned kFirstResetWidth = 12;
constexpr unsigned kFrozenStep = 2048;  // codes between two looks at the ratio once the width can't grow

// The codes, packed from the lowest bit up.
class CodeWriter {
public:
    void put(unsigned code, unsigned width) {
        bits_ |= static_cast<std::uint64_t>(code) << count_;
        for (count_ += width; count_ >= 8; count_ -= 8) {
            bytes_.push_back(static_cast<std::uint8_t>(bits_));
            bits_ >>= 8;
        }
        ++codes_;
    }
    Bytes finish() {
        if (count_ > 0) bytes_.push_back(static_cast<std::uint8_t>(bits_));
        return std::move(bytes_);
    }
    std::uint32_t codes() const { return codes_; }
    void reserve(std::size_t size) { bytes_.reserve(size); }

private:
    Bytes bytes_;
    std::uint64_t bits_ = 0;
    unsigned count_ = 0;
    std::uint32_t codes_ = 0;
};

// Which code stands for a code followed by a byte. Lists of children in order of insertion, linked by index.
class Dictionary {
public:
    Dictionary() : children_(kLastCode + 1) { clear(); }

    void clear() {
        heads_.assign(kLastCode + 1, kNone);
        tails_.assign(kLastCode + 1, kNone);
    }
    // -1: none.
    std::int32_t find(unsigned prefix, std::uint8_t byte) const {
        for (std::int32_t code = heads_[prefix]; code != kNone; code = children_[static_cast<std::size_t>(code)].next) {
            if (children_[static_cast<std::size_t>(code)].byte == byte) return code;
        }
        return kNone;
    }
    void add(unsigned prefix, std::uint8_t byte, unsigned code) {
        children_[code] = {byte, kNone};
        const auto link = static_cast<std::int32_t>(code);
        if (tails_[prefix] == kNone) {
            heads_[prefix] = link;
        } else {
            children_[static_cast<std::size_t>(tails_[prefix])].next = link;
        }
        tails_[prefix] = link;
    }

private:
    static constexpr std::int32_t kNone = -1;
    struct Child {
        std::uint8_t byte;
        std::int32_t next;
    };
    std::vector<Child> children_;
    std::vector<std::int32_t> heads_, tails_;
};

class Coder {
public:
    explicit Coder(std::span<const std::uint8_t> input) : input_(input) { writer_.reserve(input.size()); }

    Bytes code(std::uint32_t& codes) {
        writer_.put(kClear, kFirstWidth);
        prefix_ = input_[0];
        std::size_t i = 1;
        while (i < input_.size()) {
            const std::uint8_t byte = input_[i++];
            ++intervalBytes_;
            if (const std::int32_t child = dictionary_.find(prefix_, byte); child >= 0) {
                prefix_ = static_cast<unsigned>(child);
                continue;
            }
            if (last_ < kLastCode) dictionary_.add(prefix_, byte, ++last_);
            writer_.put(prefix_, width_);
            ++intervalCodes_;
            --countdown_;
            prefix_ = byte;
            // A reset takes one byte more; without one it is left out, and the stream ends as usual.
            if (countdown_ == 2 && shrinksWorse() && i < input_.size()) {
                reset();
                prefix_ = input_[i++];
                continue;
            }
            if (countdown_ == 0) widen();
        }
        writer_.put(prefix_, width_);
        codes = writer_.codes();
        return writer_.finish();
    }

private:
    bool shrinksWorse() {
        const std::uint64_t outBits = width_ * intervalCodes_;
        totalIn_ += 8 * intervalBytes_;
        totalOut_ += outBits;
        // The interval may be empty right behind a widening of the codes.
        const std::uint64_t recent = outBits ? 800 * intervalBytes_ / outBits : 0;
        const std::uint64_t overall = totalOut_ ? 100 * totalIn_ / totalOut_ : 0;
        intervalBytes_ = intervalCodes_ = 0;
        return overall > recent && width_ >= kFirstResetWidth;
    }

    void reset() {
        writer_.put(prefix_, width_);
        writer_.put(kClear, width_);
        dictionary_.clear();
        width_ = kFirstWidth;
        last_ = kClear;
        countdown_ = 256;
        intervalBytes_ = intervalCodes_ = 1;
        totalIn_ = totalOut_ = 0;
    }

    void widen() {
        if (width_ < kLastWidth) {
            countdown_ = 1U << width_;
            ++width_;
        } else {
            countdown_ = kFrozenStep;
        }
        intervalBytes_ = intervalCodes_ = 0;
    }

    std::span<const std::uint8_t> input_;
    CodeWriter writer_;
    Dictionary dictionary_;
    unsigned prefix_ = 0;
    unsigned width_ = kFirstWidth;
    unsigned last_ = kClear;
    unsigned countdown_ = 256;
    std::uint64_t intervalBytes_ = 1, intervalCodes_ = 1;
    std::uint64_t totalIn_ = 0, totalOut_ = 0;
};

// Every string of the dictionary stands in what was decoded already: where the string before it began, and one byte
// more. So an entry is a place and a length, and writing a string is a copy.
class Decoder {
public:
    Decoder(std::span<const std::uint8_t> stream, std::size_t size)
        : stream_(stream), out_(size), entries_(kLastCode + 1) {}

    std::optional<Bytes> decode(std::uint32_t codes) {
        bool fresh = true;  // no code stands before, or a clear code does
        bool hasPrevious = false;
        std::size_t previousAt = 0, previousLength = 0;
        while (codes-- > 0) {
            const std::int32_t read = next();
            if (read < 0) return std::nullopt;
            const auto code = static_cast<unsigned>(read);
            if (code == kClear) {
                free_ = kFirstCode;
                width_ = kFirstWidth;
                fresh = true;
                continue;
            }
            if (fresh) {
                if (code > 255 || !literal(code)) return std::nullopt;
                fresh = false;
                hasPrevious = true;
                previousAt = at_ - 1;
                previousLength = 1;
                continue;
            }
            const std::size_t begin = at_;
            if (code < kClear) {
                if (!literal(code)) return std::nullopt;
            } else if (code < free_) {
                if (!copy(entries_[code].at, entries_[code].length)) return std::nullopt;
            } else {
                // The string before, and its first byte once more.
                if (!hasPrevious || !copy(previousAt, previousLength) || !literal(out_[previousAt]))
                    return std::nullopt;
            }
            if (free_ <= kLastCode) entries_[free_++] = {previousAt, previousLength + 1};
            previousAt = begin;
            previousLength = at_ - begin;
            if (width_ < kLastWidth && free_ > (1U << width_) - 1) ++width_;
        }
        if (at_ != out_.size()) return std::nullopt;
        return std::move(out_);
    }

private:
    struct Entry {
        std::size_t at, length;
    };

    std::int32_t next() {
        while (bitCount_ < width_) {
            if (read_ == stream_.size()) return -1;
            bits_ |= static_cast<std::uint64_t>(stream_[read_++]) << bitCount_;
            bitCount_ += 8;
        }
        const auto code = static_cast<std::int32_t>(bits_ & ((1U << width_) - 1));
        bits_ >>= width_;
        bitCount_ -= width_;
        return code;
    }
    bool literal(unsigned byte) {
        if (at_ == out_.size()) return false;
        out_[at_++] = static_cast<std::uint8_t>(byte);
        return true;
    }
    // The string may reach into what it writes: its last byte is then the first one that it writes.
    bool copy(std::size_t from, std::size_t length) {
        if (length > out_.size() - at_) return false;
        const std::uint8_t* source = out_.data() + from;
        std::uint8_t* target = out_.data() + at_;
        if (from + length <= at_) {
            std::memcpy(target, source, length);
        } else {
            for (std::size_t i = 0; i < length; ++i)
                target[i] = source[i];
        }
        at_ += length;
        return true;
    }

    std::span<const std::uint8_t> stream_;
    std::size_t read_ = 0;
    std::uint64_t bits_ = 0;
    unsigned bitCount_ = 0;
    Bytes out_;
    std::size_t at_ = 0;
    std::vector<Entry> entries_;
    unsigned free_ = kFirstCode;
    unsigned width_ = kFirstWidth;
};

}  // namespace

Bytes CLZWCompression::compress() const {
    if (data_.empty() || data_.size() > std::numeric_limits<std::int32_t>::max()) return {};
    std::uint32_t codes = 0;
    const Bytes stream = Coder(data_).code(codes);
    Bytes result;
    result.reserve(kHeader + stream.size());
    for (const std::size_t value : {data_.size(), stream.size(), static_cast<std::size_t>(codes)}) {
        for (std::size_t shift = 0; shift < 32; shift += 8)
            result.push_back(static_cast<std::uint8_t>(value >> shift));
    }
    result.insert(result.end(), stream.begin(), stream.end());
    return result;
}

std::optional<Bytes> CLZWCompression::decompress(std::size_t largest) {
    ByteReader reader(std::as_bytes(data_));
    const std::size_t size = reader.u32(), length = reader.u32();
    const std::uint32_t codes = reader.u32();
    if (!reader.ok() || size > largest || length > reader.left()) return std::nullopt;
    // A code gives at most one byte more than the longest before it, and each takes nine bits or more.
    if (static_cast<std::uint64_t>(codes) * 9 / 8 > length || size / kLastCode > codes) return std::nullopt;
    std::optional<Bytes> result = Decoder(data_.subspan(kHeader, length), size).decode(codes);
    if (result) size_ = static_cast<int>(size);
    return result;
}
