// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/sdl/layout.h"

#include <algorithm>
#include <cmath>

namespace sdl {

namespace {

constexpr double kWorthIt = 0.8;  // of what a smooth picture would fill

int along(double place, int begin, int length, int pixels) {
    const int pixel = static_cast<int>(std::floor((place - begin) * pixels / length));
    return std::clamp(pixel, 0, pixels - 1);
}

}  // namespace

Layout layOut(int screenWidth, int screenHeight, int windowWidth, int windowHeight) {
    const double largest =
        std::min(static_cast<double>(windowWidth) / screenWidth, static_cast<double>(windowHeight) / screenHeight);
    const double whole = std::floor(largest);
    Layout layout;
    layout.isWhole = whole >= 1 && whole >= largest * kWorthIt;
    const double scale = layout.isWhole ? whole : largest;
    layout.width = std::max(static_cast<int>(std::lround(screenWidth * scale)), 1);
    layout.height = std::max(static_cast<int>(std::lround(screenHeight * scale)), 1);
    layout.left = (windowWidth - layout.width) / 2;
    layout.top = (windowHeight - layout.height) / 2;
    return layout;
}

ScreenPoint toScreen(const Layout& layout, int screenWidth, int screenHeight, double x, double y) {
    return {along(x, layout.left, layout.width, screenWidth), along(y, layout.top, layout.height, screenHeight)};
}

}  // namespace sdl
