// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <cstring>

// What a copy does to the pixels of one row.
//
// Everything is plain arithmetic in 16 bits with choices instead of branches, so that compilers turn the loops into
// vectors of 16-bit lanes. Functions are always inlined: they take the instruction set of the loop that uses them.
namespace blit {

using Pixel = std::uint16_t;

// The fields of a pixel as blends see them: blue is always bits 0 to 4. What `kKept` leaves out is 0 in a blended
// pixel.
struct Fields15 {
    static constexpr int kGreenShift = 5, kGreenMask = 0x1F, kRedShift = 10, kKept = 0x7FFF;
};
struct Fields16 {
    static constexpr int kGreenShift = 5, kGreenMask = 0x3F, kRedShift = 11, kKept = 0xFFFF;
};
// 16 bits of which the lowest green bit doesn't count.
struct Fields16OddBitless {
    static constexpr int kGreenShift = 6, kGreenMask = 0x1F, kRedShift = 11, kKept = 0xFFDF;
};

// All bits for true. Choices are spelt as masks because conditions come out as twice the instructions.
[[gnu::always_inline]] inline Pixel mask(bool is) { return static_cast<Pixel>(-static_cast<int>(is)); }

[[gnu::always_inline]] inline Pixel chosen(Pixel mask, Pixel set, Pixel clear) {
    return static_cast<Pixel>((set & mask) | (clear & ~mask));
}

// By how much the channel `from` moves towards `to` at a weight of `weight` in 256, rounded down.
[[gnu::always_inline]] inline int step(int from, int to, int weight) {
    const auto difference = static_cast<std::int16_t>(to - from);
    return static_cast<std::int16_t>(difference * weight) >> 8;  // 63 * 255 fits
}

// Every channel ends inside of its field, so the steps are added to the whole pixel: nothing is carried over. Without
// weight there are no steps, and the target is kept whole.
template <class Fields>
[[gnu::always_inline]] inline Pixel blended(Pixel source, Pixel target, Pixel weight) {
    const int blue = step(target & 0x1F, source & 0x1F, weight);
    const int green = step((target >> Fields::kGreenShift) & Fields::kGreenMask,
                           (source >> Fields::kGreenShift) & Fields::kGreenMask, weight);
    const int red = step((target >> Fields::kRedShift) & 0x1F, (source >> Fields::kRedShift) & 0x1F, weight);
    const auto kept = static_cast<Pixel>(target & (Fields::kKept | mask(weight == 0)));
    return static_cast<Pixel>(kept + blue + (static_cast<Pixel>(green) << Fields::kGreenShift) +
                              (static_cast<Pixel>(red) << Fields::kRedShift));
}

// Transparent pixels are kept, opaque ones copied whole.
template <class Fields>
struct AlphaRule {
    static constexpr bool kCopiesOpaque = true;
    [[gnu::always_inline]] Pixel operator()(Pixel source, Pixel target, Pixel alpha) const {
        const Pixel between = blended<Fields>(source, target, alpha);
        return chosen(mask(alpha == 255), source, between);
    }
};

struct MaskRule {
    static constexpr bool kCopiesOpaque = true;
    [[gnu::always_inline]] Pixel operator()(Pixel source, Pixel target, Pixel alpha) const {
        return chosen(mask(alpha == 0), target, source);
    }
};

// Alpha times a constant opacity. Even both at 255 don't copy.
template <class Fields>
struct AlphaOpacityRule {
    static constexpr bool kCopiesOpaque = false;
    Pixel opacity;
    [[gnu::always_inline]] Pixel operator()(Pixel source, Pixel target, Pixel alpha) const {
        const auto weight = static_cast<Pixel>(static_cast<Pixel>(alpha * opacity) >> 8);
        return blended<Fields>(source, target, weight);
    }
};

// Sprites are mostly runs of transparent and of opaque pixels: whole blocks of either are told apart first.
constexpr std::int64_t kBlock = 32;
enum class Block { kTransparent, kOpaque, kMixed };

[[gnu::always_inline]] inline std::uint64_t eightAlphas(const std::uint8_t* alpha) {
    std::uint64_t result;
    std::memcpy(&result, alpha, sizeof(result));
    return result;
}

[[gnu::always_inline]] inline Block blockOf(const std::uint8_t* alpha) {
    const std::uint64_t a = eightAlphas(alpha), b = eightAlphas(alpha + 8);
    const std::uint64_t c = eightAlphas(alpha + 16), d = eightAlphas(alpha + 24);
    if ((a | b | c | d) == 0) return Block::kTransparent;
    return (a & b & c & d) == ~std::uint64_t{0} ? Block::kOpaque : Block::kMixed;
}

template <class Rule>
[[gnu::always_inline]] inline void blendPixels(const Rule& rule, const Pixel* __restrict source,
                                               const std::uint8_t* __restrict alpha, Pixel* __restrict target,
                                               std::int64_t pixels) {
    for (std::int64_t i = 0; i < pixels; ++i)
        target[i] = rule(source[i], target[i], alpha[i]);
}

// A row by a rule that keeps what is transparent; source, alpha and target share no bytes.
template <class Rule>
[[gnu::always_inline]] inline void blendRow(const Rule& rule, const Pixel* source, const std::uint8_t* alpha,
                                            Pixel* target, std::int64_t pixels) {
    std::int64_t at = 0;
    for (; at + kBlock <= pixels; at += kBlock) {
        const Block block = blockOf(alpha + at);
        if (block == Block::kTransparent) continue;
        if (Rule::kCopiesOpaque && block == Block::kOpaque) {
            std::memcpy(target + at, source + at, kBlock * sizeof(Pixel));
        } else {
            blendPixels(rule, source + at, alpha + at, target + at, kBlock);
        }
    }
    if (at == 0 || at == pixels) {
        blendPixels(rule, source + at, alpha + at, target + at, pixels - at);
        return;
    }
    // What is left is shorter than a block: the last block of the row is drawn with what is done already transparent.
    const std::int64_t done = at + kBlock - pixels;
    at = pixels - kBlock;
    std::uint8_t rest[kBlock];
    for (std::int64_t i = 0; i < kBlock; ++i)
        rest[i] = static_cast<std::uint8_t>(i < done ? 0 : alpha[at + i]);
    blendPixels(rule, source + at, rest, target + at, kBlock);
}

template <class Fields>
[[gnu::always_inline]] inline void blendRowEvenly(const Pixel* __restrict source, Pixel* __restrict target,
                                                  Pixel opacity, std::int64_t pixels) {
    for (std::int64_t i = 0; i < pixels; ++i)
        target[i] = blended<Fields>(source[i], target[i], opacity);
}

// The target's alpha after a picture with `alpha` was drawn over it: the sum, 255 at most.
[[gnu::always_inline]] inline void addAlphaRow(const std::uint8_t* __restrict alpha,
                                               std::uint8_t* __restrict targetAlpha, std::int64_t pixels) {
    for (std::int64_t i = 0; i < pixels; ++i) {
        const auto sum = static_cast<std::uint8_t>(alpha[i] + targetAlpha[i]);
        targetAlpha[i] = sum < alpha[i] ? std::uint8_t{255} : sum;
    }
}

}  // namespace blit
