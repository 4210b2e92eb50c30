// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "storage/rle_compression.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::size_t kLongestRun = 127;
constexpr std::size_t kShortestRepeat = 4;
constexpr std::uint8_t kRepeat = 0x80;

template <std::size_t kUnit>
class Coder {
public:
    explicit Coder(std::span<const std::uint8_t> input) : input_(input), count_(input.size() / kUnit) {
        stream_.reserve(input.size() + input.size() / kLongestRun + 1);
    }

    Bytes code() {
        std::size_t i = 0;
        while (i < count_) {
            if (i + 1 < count_ && same(i, i + 1)) {
                closeLiterals(i);
                std::size_t run = 2;
                while (run < kLongestRun && i + run < count_ && same(i, i + run))
                    ++run;
                if (run < kShortestRepeat) {
                    literals(i, run);
                } else {
                    stream_.push_back(static_cast<std::uint8_t>(kRepeat | run));
                    units(i, 1);
                }
                i += run;
            } else {
                if (pending_ == kLongestRun) closeLiterals(i);
                ++pending_;
                ++i;
            }
        }
        closeLiterals(count_);
        return std::move(stream_);
    }

private:
    bool same(std::size_t a, std::size_t b) const {
        return std::memcmp(&input_[a * kUnit], &input_[b * kUnit], kUnit) == 0;
    }
    void units(std::size_t from, std::size_t count) {
        const auto begin = input_.begin() + static_cast<std::ptrdiff_t>(from * kUnit);
        stream_.insert(stream_.end(), begin, begin + static_cast<std::ptrdiff_t>(count * kUnit));
    }
    void literals(std::size_t from, std::size_t count) {
        stream_.push_back(static_cast<std::uint8_t>(count));
        units(from, count);
    }
    // The pending literals stand right before `end`.
    void closeLiterals(std::size_t end) {
        if (pending_ > 0) literals(end - pending_, pending_);
        pending_ = 0;
    }

    std::span<const std::uint8_t> input_;
    std::size_t count_;
    std::size_t pending_ = 0;
    Bytes stream_;
};

template <std::size_t kUnit>
std::optional<Bytes> decode(std::span<const std::uint8_t> stream, std::size_t outBytes) {
    // The best packet is a repeat; what can't be there takes no memory.
    if (stream.size() / (1 + kUnit) * kLongestRun * kUnit + stream.size() < outBytes) return std::nullopt;
    Bytes result(outBytes);
    std::uint8_t* out = result.data();
    std::size_t left = outBytes;
    const std::uint8_t* in = stream.data();
    std::size_t inLeft = stream.size();
    while (left > 0) {
        if (inLeft == 0) return std::nullopt;
        const std::uint8_t control = *in++;
        --inLeft;
        const std::size_t run = control & kLongestRun;
        const std::size_t bytes = std::min(run * kUnit, left);
        if ((control & kRepeat) != 0) {
            if (inLeft < kUnit) return std::nullopt;
            if constexpr (kUnit == 1) {
                std::memset(out, *in, bytes);
            } else {
                std::uint16_t unit;
                std::memcpy(&unit, in, kUnit);
                for (std::size_t i = 0; i + kUnit <= bytes; i += kUnit)
                    std::memcpy(out + i, &unit, kUnit);
                if (bytes % kUnit != 0) out[bytes - 1] = *in;
            }
            in += kUnit;
            inLeft -= kUnit;
        } else {
            if (inLeft < bytes) return std::nullopt;
            std::memcpy(out, in, bytes);
            in += bytes;
            inLeft -= bytes;
        }
        out += bytes;
        left -= bytes;
    }
    return result;
}

}  // namespace

Bytes CRLECompression::__compress(std::span<const std::uint8_t> units16) { return Coder<2>(units16).code(); }
Bytes CRLECompression::__compresschar(std::span<const std::uint8_t> bytes) { return Coder<1>(bytes).code(); }

std::optional<Bytes> CRLECompression::__decompress(std::span<const std::uint8_t> stream, std::size_t outBytes) {
    return decode<2>(stream, outBytes);
}

std::optional<Bytes> CRLECompression::__decompresschar(std::span<const std::uint8_t> stream, std::size_t outBytes) {
    return decode<1>(stream, outBytes);
}

CRLECompression2::CRLECompression2(int width, int height, std::vector<std::int16_t> rowLengths,
                                   std::span<const std::uint8_t> data)
    : CCompression(data), width_(width), height_(height), rowLengths_(std::move(rowLengths)) {}

std::optional<Bytes> CRLECompression2::Decompress(int) const {
    if (width_ <= 0 || height_ <= 0 || rowLengths_.size() < static_cast<std::size_t>(height_)) return std::nullopt;
    const std::size_t size = static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_);
    constexpr std::size_t kBestPacket = 129;
    if (data_.size() / 2 * kBestPacket + data_.size() < size) return std::nullopt;
    Bytes result;
    result.reserve(size);
    std::size_t rowBegin = 0;
    for (int row = 0; row < height_; ++row) {
        const std::int16_t length = rowLengths_[static_cast<std::size_t>(row)];
        if (length < 0 || static_cast<std::size_t>(length) > data_.size() - rowBegin) return std::nullopt;
        const std::size_t end = rowBegin + static_cast<std::size_t>(length);
        std::size_t at = rowBegin;
        while (at < end) {
            const auto control = static_cast<std::int8_t>(data_[at++]);
            const std::size_t count = static_cast<std::size_t>(control >= 0 ? control : -control) + 1;
            const std::size_t stored = control >= 0 ? count : 1;
            if (stored > end - at) return std::nullopt;
            if (control >= 0) {
                const auto from = data_.begin() + static_cast<std::ptrdiff_t>(at);
                result.insert(result.end(), from, from + static_cast<std::ptrdiff_t>(count));
            } else {
                result.insert(result.end(), count, data_[at]);
            }
            at += stored;
            if (result.size() > size) break;
        }
        rowBegin = end;
    }
    if (result.size() < size) return std::nullopt;
    result.resize(size);
    return result;
}
