// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// What sound takes of its own time: mixing many voices, and keeping a stream's ring filled.
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstring>
#include <memory>
#include <vector>

#include "platform/headless/mixer.h"
#include "sound/stream.h"
#include "support/stage.h"
#include "support/waves.h"

namespace {

constexpr int kVoices = 64;
constexpr int kSamplesAtOnce = 512;

// 64 voices at 44,100, each another form of sound, or one form for all.
void mix(benchmark::State& state) {
    const int rate = static_cast<int>(state.range(0)), channels = static_cast<int>(state.range(1));
    const int bits = static_cast<int>(state.range(2));
    headless::Mixer mixer;
    std::vector<std::unique_ptr<platform::SoundBuffer>> voices;
    for (int i = 0; i < kVoices; ++i) {
        const platform::SoundFormat format{channels, rate, bits};
        auto voice = mixer.createBuffer(static_cast<std::size_t>(format.blockAlign()) * 30000, format);
        const auto [all, none] = voice->lock(0, voice->size());
        for (std::size_t k = 0; k < all.size(); ++k)
            all[k] = static_cast<std::byte>(k * 7 + static_cast<std::size_t>(i));
        voice->unlock();
        voice->setVolume(-100 * (i % 8));
        voice->setPan(100 * (i % 5));
        voice->play(true);
        voices.push_back(std::move(voice));
    }
    std::vector<std::int16_t> out(2 * kSamplesAtOnce);
    mixer.mix(out);
    for (auto _ : state) {
        mixer.mix(out);
        benchmark::DoNotOptimize(out.data());
    }
    // Samples made in a second of work, against those that a second needs.
    const double samples = static_cast<double>(state.iterations()) * kSamplesAtOnce;
    state.counters["share_of_core"] = benchmark::Counter(samples / headless::Mixer::kFrequency,
                                                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(mix)->ArgNames({"rate", "channels", "bits"})->Args({44100, 2, 16})->Args({22050, 1, 16})->Args({11025, 1, 8});

// A refill of 50 milliseconds of stereo music, with the mixing of that time.
void refill(benchmark::State& state) {
    Stage stage;
    std::string samples;
    for (int i = 0; i < 44100 * 5; ++i)
        samples += littleEndian(static_cast<std::uint32_t>(i * 31), 4);
    stage.file("Wavs/music.wav", wave(samples, 2));
    stage.start();
    CSndStream stream(CWindow::current(), CWindow::current()->GetSoundFXFullPath("music.wav"));
    if (state.range(0) != 0) stream.Play(true);
    for (auto _ : state)
        stage.platform.audio.advance(CSndStream::kRefillPeriod);
    state.counters["share_of_50_ms"] = benchmark::Counter(static_cast<double>(state.iterations()) * 0.05,
                                                          benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(refill)->ArgName("playing")->Arg(1)->Arg(0);

}  // namespace

BENCHMARK_MAIN();
