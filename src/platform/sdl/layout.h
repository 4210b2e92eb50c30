// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace sdl {

// Where the screen stands in a window, both in pixels of the display: in the middle, with bars where the shapes differ.
struct Layout {
    int left = 0, top = 0;
    int width = 0, height = 0;  // at least 1
    bool isWhole = true;        // each pixel of the screen is a square of whole pixels
};

// Whole numbers where they fill most of the window, else as large as it goes.
Layout layOut(int screenWidth, int screenHeight, int windowWidth, int windowHeight);

// A place in the window as one on the screen of that size; what lies on the bars is taken to the edge beside it.
struct ScreenPoint {
    int x = 0, y = 0;
};
ScreenPoint toScreen(const Layout& layout, int screenWidth, int screenHeight, double x, double y);

}  // namespace sdl
