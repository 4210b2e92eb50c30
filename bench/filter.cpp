// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Each filter on a picture of 800x600 with alpha: a step of a running effect, an operation with its result.
#include <benchmark/benchmark.h>
#include <memory>

#include "animation/animated_filter.h"
#include "animation/static_effects.h"
#include "support/stage.h"

namespace {

constexpr int kWidth = 800, kHeight = 600;

std::unique_ptr<CGraphicsObject> makePicture() {
    auto picture = std::make_unique<CGraphicsObject>(CWindow::current(), CXSize(kWidth, kHeight), 16);
    Plane pixels(kWidth * kHeight * 2), alpha(kWidth * kHeight);
    for (std::size_t i = 0; i < alpha.size(); ++i) {
        pixels.pixels()[i] = static_cast<std::uint16_t>(i * 40503);
        alpha.bytes()[i] = static_cast<std::uint8_t>(i % kWidth < 700 ? 255 : 0);
    }
    picture->setPlanes({kWidth, kHeight}, 16, pixels, alpha);
    return picture;
}

std::uint64_t sumOf(const CGraphicsObject& picture) {
    std::uint64_t sum = 0;
    for (const std::uint16_t pixel : picture.getData().pixels())
        sum = sum * 31 + pixel;
    return sum;
}

void running(benchmark::State& state, const char* action) {
    Stage stage(lines("EAST", "VECTOR", "SIZE=2\nVALUE=1,0\n") + lines("WAY", "PATH", "NODES=EAST\n"));
    stage.start();
    const auto picture = makePicture();
    auto filter = makeAnimatedFilter(action, CWindow::current(), stage.current());
    for (const auto& [key, value] : {
             std::pair("FACTOR", "5"), {"PATHDEF", "WAY" },
               {"LOOPED",  "TRUE"}
    })
        filter->setProperty(key, value);
    filter->link(picture.get(), nullptr);
    filter->start(picture.get());
    const std::uint64_t before = sumOf(*picture) + static_cast<std::uint64_t>(picture->GetPosition().x) +
                                 static_cast<std::uint64_t>(picture->GetOpacity());
    for (int i = 0; i < 12; ++i)
        filter->onTimer(0);
    const std::uint64_t after = sumOf(*picture) + static_cast<std::uint64_t>(picture->GetPosition().x) +
                                static_cast<std::uint64_t>(picture->GetOpacity());
    if (before == after) state.SkipWithError("the effect does nothing");
    for (auto _ : state)
        filter->onTimer(0);
}

void operation(benchmark::State& state, const char* action, const char* key, const char* value) {
    Stage stage;
    stage.start();
    const auto source = makePicture();
    const StaticEffect* effect = findStaticEffect(action);
    StaticProperties chosen(effect->classId);
    chosen.setProperty(key, value);
    const auto apply = [&] {
        CGraphicsObject picture(nullptr, *source);
        effect->apply(picture, chosen);
        benchmark::DoNotOptimize(picture.getData().bytes().data());
        return sumOf(picture) + static_cast<std::uint64_t>(picture.Size().width);
    };
    if (apply() == sumOf(*source) + kWidth) state.SkipWithError("the operation does nothing");
    for (auto _ : state) {
        CGraphicsObject picture(nullptr, *source);
        effect->apply(picture, chosen);
        benchmark::DoNotOptimize(picture.getData().bytes().data());
    }
}

BENCHMARK_CAPTURE(running, FADEINOUT, "FADEINOUT")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(running, PATH, "PATH")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(running, WATER, "WATER")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(operation, COLORCHANNEL, "COLORCHANNEL", "CHANNELS", "RB")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(operation, GRAYSCALE, "GRAYSCALE", "", "")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(operation, NEGATIVE, "NEGATIVE", "", "")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(operation, BLUR_3, "BLUR", "SIZE", "3")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(operation, BLUR_15, "BLUR", "SIZE", "15")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(operation, ROTATE, "ROTATE", "ANGLE", "30")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(operation, SCALE, "SCALE", "FACTORX", "1.5")->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
