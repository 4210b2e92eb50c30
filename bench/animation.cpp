// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Animations of 128 by 128 whose figure moves over nothing: reading them beside the coders alone, a step with its
// drawing, a screen full of them, and what one takes in memory.
#include <benchmark/benchmark.h>
#include <cmath>
#include <malloc.h>
#include <memory>

#include "animation/animo.h"
#include "graphics/color.h"
#include "graphics/refresh_screen.h"
#include "graphics/surface.h"
#include "support/animations.h"
#include "support/stage.h"

namespace {

constexpr int kSide = 128;
constexpr int kFrames = 200;

// A shaded disc that wanders and swells, as a drawn figure's frames do: flat areas, soft edges, much of nothing.
const std::vector<animations::Frame>& figure() {
    static const std::vector<animations::Frame> frames = [] {
        std::vector<animations::Frame> made;
        for (int i = 0; i < kFrames; ++i) {
            animations::Frame frame{kSide, kSide, {}, {}, 0, 0};
            const double radius = 30 + 12 * std::sin(i * 0.1), x0 = 64 + 15 * std::cos(i * 0.2);
            for (int y = 0; y < kSide; ++y) {
                for (int x = 0; x < kSide; ++x) {
                    const double distance = std::hypot(x - x0, y - 64);
                    const bool inside = distance < radius + 2;
                    const int shade = distance < radius * 0.7 ? 0xFD20 : 0x8410 + x / 8;
                    frame.pixels.push_back(static_cast<std::uint16_t>(inside ? shade : 0));
                    const double edge = std::clamp((radius + 2 - distance) / 4, 0.0, 1.0);
                    frame.alpha += static_cast<char>(static_cast<int>(255 * edge));
                }
            }
            made.push_back(std::move(frame));
        }
        return made;
    }();
    return frames;
}

constexpr std::int64_t kDecodedBytes = std::int64_t{kFrames} * kSide * kSide * 3;

const std::string& stored(int form) {
    static std::string bytes[5];
    std::string& wanted = bytes[form];
    if (wanted.empty()) {
        animations::Event event{"WALK", {}, 0, kFrames - 1, 0, 0, {}};
        for (int i = 0; i < kFrames; ++i)
            event.frames.push_back(i);
        wanted = animations::third("NVP", figure(), {event}, form);
    }
    return wanted;
}

void load(benchmark::State& state) {
    const std::string& bytes = stored(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        std::string reason;
        auto animation = readAnimation(nullptr, std::as_bytes(std::span(bytes)), reason);
        if (!animation) state.SkipWithError(reason.c_str());
        // Memory for what is decoded is part of the work.
        for (const auto& frame : animation->frames) {
            frame->decode();
            benchmark::DoNotOptimize(frame->getData().bytes().data());
            frame->bringBackCompressed();
        }
    }
    state.SetBytesProcessed(state.iterations() * kDecodedBytes);
}

std::optional<Bytes> decoded(const Bytes& stream, int form, bool isAlpha, std::size_t size) {
    Bytes runs = stream;
    if (form == 2 || form == 3) {
        std::optional<Bytes> plain = CLZWCompression2(stream).decompress(size * 2);
        if (!plain || form == 2) return plain;
        runs = std::move(*plain);
    }
    return isAlpha ? CRLECompression::__decompresschar(runs, size) : CRLECompression::__decompress(runs, size);
}

void coderAlone(benchmark::State& state) {
    const int form = static_cast<int>(state.range(0));
    std::vector<std::pair<Bytes, Bytes>> streams;
    for (const animations::Frame& frame : figure()) {
        const std::string data = animations::coded(pictures::plane(frame.pixels), form, false);
        const std::string alpha = animations::coded(frame.alpha, form, true);
        streams.emplace_back(Bytes(data.begin(), data.end()), Bytes(alpha.begin(), alpha.end()));
    }
    for (auto _ : state) {
        for (const auto& [data, alpha] : streams) {
            if (form == 0) {
                benchmark::DoNotOptimize(Bytes(data).data());
                benchmark::DoNotOptimize(Bytes(alpha).data());
                continue;
            }
            benchmark::DoNotOptimize(decoded(data, form, false, kSide * kSide * 2));
            benchmark::DoNotOptimize(decoded(alpha, form, true, kSide * kSide));
        }
    }
    state.SetBytesProcessed(state.iterations() * kDecodedBytes);
}

class Show : public Stage {
public:
    explicit Show(int count) {
        start();
        CWindow* window = CWindow::current();
        screen = std::make_unique<CRefreshScreen>(window, false);
        target = std::make_unique<CDirectDrawSurface>(window);
        const CColor green(static_cast<short>(0x0340), kModel16);
        screen->SetBackground(&green);
        file("Dane/S/figure.ann", stored(4));
        for (int i = 0; i < count; ++i) {
            cast.push_back(std::make_unique<CAnimo6>(window, "figure.ann"));
            cast.back()->SetGlobalPosition(i * 37 % (800 - kSide), i * 53 % (600 - kSide));
            screen->put(cast.back().get(), i % 7);
            cast.back()->Play(0, 0);
            cast.back()->SetEventFrame(0, i % kFrames);
        }
        redraw();
    }
    void redraw() {
        bool full = false;
        benchmark::DoNotOptimize(screen->Redraw(target.get(), nullptr, &full));
        screen->validate();
    }

    std::unique_ptr<CRefreshScreen> screen;
    std::unique_ptr<CDirectDrawSurface> target;
    std::vector<std::unique_ptr<CAnimo6>> cast;
};

void playing(benchmark::State& state) {
    Show show(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        for (const auto& animo : show.cast)
            animo->next();
        show.redraw();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// What a frame of `playing` has to do at least: every figure's next picture decoded and drawn, and the ground below.
void decodingAndDrawingAlone(benchmark::State& state) {
    Show show(static_cast<int>(state.range(0)));
    const CXRect whole(0, 0, 800, 600);
    int frame = 0;
    for (auto _ : state) {
        show.target->Blt(show.screen->getBackgroundIfc(), 0, 0, &whole);
        frame = (frame + 1) % kFrames;
        // Each at a picture of its own, as they play.
        for (std::size_t i = 0; i < show.cast.size(); ++i) {
            CAnimo6& animo = *show.cast[i];
            CFrame* picture = animo.GetFrame((frame + static_cast<int>(i)) % kFrames);
            picture->decode();
            picture->drawFor(animo, animo.GetGlobalPosition());
            picture->bringBackCompressed();
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void memory(benchmark::State& state) {
    Show show(0);
    for (auto _ : state) {
        const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
        CAnimo6 animo(CWindow::current(), "figure.ann");
        animo.SetDestiny(show.target.get());
        animo.Redraw();
        const std::size_t taken = mallinfo2().uordblks + mallinfo2().hblkhd - before;
        state.counters["to_file_size"] = static_cast<double>(taken) / static_cast<double>(stored(4).size());
        state.counters["file_KB"] = static_cast<double>(stored(4).size()) / 1024;
    }
}

}  // namespace

BENCHMARK(load)->Arg(0)->Arg(2)->Arg(3)->Arg(4)->Unit(benchmark::kMillisecond);
BENCHMARK(coderAlone)->Arg(0)->Arg(2)->Arg(3)->Arg(4)->Unit(benchmark::kMillisecond);
BENCHMARK(playing)->Arg(1)->Arg(100)->Unit(benchmark::kMicrosecond);
BENCHMARK(decodingAndDrawingAlone)->Arg(1)->Arg(100)->Unit(benchmark::kMicrosecond);
BENCHMARK(memory)->Iterations(3);

BENCHMARK_MAIN();
