// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// The coders of planes on a typical sprite: flat areas, shaded edges and transparent surroundings. Every result is
// compared before its time counts.
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdlib>

#include "storage/lzo_compression.h"
#include "storage/lzw_compression.h"
#include "storage/rle_compression.h"

namespace {

constexpr int kSide = 256;

struct Sprite {
    Bytes pixels, alpha;
};

// A shaded disc on nothing, as a drawn figure's frame is.
const Sprite& sprite() {
    static const Sprite made = [] {
        Sprite s;
        for (int y = 0; y < kSide; ++y) {
            for (int x = 0; x < kSide; ++x) {
                const double distance = std::hypot(x - kSide / 2, y - kSide / 2);
                const unsigned shade = distance < 60   ? 0xFFE0
                                       : distance < 90 ? 0x8410 + static_cast<unsigned>(x / 8)
                                                       : 0x001F;
                const unsigned pixel = distance < 100 ? shade : 0;
                s.pixels.push_back(static_cast<std::uint8_t>(pixel));
                s.pixels.push_back(static_cast<std::uint8_t>(pixel >> 8));
                s.alpha.push_back(static_cast<std::uint8_t>(distance < 98    ? 255
                                                            : distance < 102 ? 255 - (distance - 98) * 63
                                                                             : 0));
            }
        }
        return s;
    }();
    return made;
}

void expect(bool good) {
    if (!good) std::abort();
}

void bytesDone(benchmark::State& state, const Bytes& plain) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * std::ssize(plain));
}

void rle16Decode(benchmark::State& state) {
    const Bytes& plain = sprite().pixels;
    const Bytes stream = CRLECompression::__compress(plain);
    expect(CRLECompression::__decompress(stream, plain.size()) == plain);
    for (auto _ : state)
        benchmark::DoNotOptimize(CRLECompression::__decompress(stream, plain.size()));
    bytesDone(state, plain);
}

void rle8Decode(benchmark::State& state) {
    const Bytes& plain = sprite().alpha;
    const Bytes stream = CRLECompression::__compresschar(plain);
    expect(CRLECompression::__decompresschar(stream, plain.size()) == plain);
    for (auto _ : state)
        benchmark::DoNotOptimize(CRLECompression::__decompresschar(stream, plain.size()));
    bytesDone(state, plain);
}

void rle16Code(benchmark::State& state) {
    const Bytes& plain = sprite().pixels;
    for (auto _ : state)
        benchmark::DoNotOptimize(CRLECompression::__compress(plain));
    bytesDone(state, plain);
}

void lzwDecode(benchmark::State& state) {
    const Bytes& plain = sprite().pixels;
    const Bytes stream = CLZWCompression(plain).compress();
    expect(CLZWCompression(stream).decompress(plain.size()) == plain);
    for (auto _ : state)
        benchmark::DoNotOptimize(CLZWCompression(stream).decompress(plain.size()));
    bytesDone(state, plain);
}

void lzwCode(benchmark::State& state) {
    const Bytes& plain = sprite().pixels;
    for (auto _ : state)
        benchmark::DoNotOptimize(CLZWCompression(plain).compress());
    bytesDone(state, plain);
}

void lzoDecode(benchmark::State& state) {
    const Bytes& plain = sprite().pixels;
    std::size_t length = 0;
    const Bytes stream = CLZWCompression2(plain).compress(length);
    expect(CLZWCompression2(stream).decompress(plain.size()) == plain);
    for (auto _ : state)
        benchmark::DoNotOptimize(CLZWCompression2(stream).decompress(plain.size()));
    bytesDone(state, plain);
}

}  // namespace

BENCHMARK(rle16Decode);
BENCHMARK(rle8Decode);
BENCHMARK(rle16Code);
BENCHMARK(lzwDecode);
BENCHMARK(lzwCode);
BENCHMARK(lzoDecode);

BENCHMARK_MAIN();
