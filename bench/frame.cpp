// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Whole frames of the compositor: moving pictures with alpha over a background, and a screen on which nothing changes.
#include <benchmark/benchmark.h>
#include <memory>

#include "graphics/color.h"
#include "graphics/refresh_screen.h"
#include "graphics/surface.h"
#include "support/stage.h"

namespace {

constexpr int kSide = 64;

class Scene {
public:
    explicit Scene(int count) {
        stage_.start();
        CWindow* window = CWindow::current();
        screen = std::make_unique<CRefreshScreen>(window, false);
        target_ = std::make_unique<CDirectDrawSurface>(window);
        const CColor green(static_cast<short>(0x0340), kModel16);
        screen->SetBackground(&green);
        for (int i = 0; i < count; ++i) {
            auto object = std::make_unique<CGraphicsObject>(window, CXSize(kSide, kSide), 16);
            Plane alpha(kSide * kSide);
            for (std::size_t k = 0; k < alpha.size(); ++k)
                alpha.bytes()[k] = static_cast<std::uint8_t>(k % kSide < 8 ? k * 31 : 255);
            object->setPlanes({kSide, kSide}, 16, object->getData(), alpha);
            object->SetPosition(i * 37 % 736, i * 53 % 536);
            screen->put(object.get(), i % 7);
            objects.push_back(std::move(object));
        }
    }

    void frame() {
        bool full = false;
        benchmark::DoNotOptimize(screen->Redraw(target_.get(), nullptr, &full));
        screen->validate();
    }

private:
    Stage stage_;

public:
    std::unique_ptr<CRefreshScreen> screen;
    std::vector<std::unique_ptr<CGraphicsObject>> objects;

private:
    std::unique_ptr<CDirectDrawSurface> target_;
};

void movingSprites(benchmark::State& state) {
    Scene scene(static_cast<int>(state.range(0)));
    int step = 1;
    for (auto _ : state) {
        for (const auto& object : scene.objects)
            object->Move(step, 0);
        step = -step;
        scene.frame();
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * state.range(0) * kSide * kSide);
}

void idleFrame(benchmark::State& state) {
    Scene scene(static_cast<int>(state.range(0)));
    scene.frame();
    for (auto _ : state)
        scene.frame();
}

}  // namespace

BENCHMARK(movingSprites)->Arg(25)->Arg(50)->Arg(100)->Arg(200)->Unit(benchmark::kMicrosecond);
BENCHMARK(idleFrame)->Arg(1000)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
