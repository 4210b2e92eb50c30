// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/sdl/layout.h"

#include <gtest/gtest.h>

namespace {

struct Case {
    const char* what;
    int width, height;  // of the window
    sdl::Layout wanted;
};

}  // namespace

TEST(Layout, KeepsTheShapeInTheMiddle) {
    const Case cases[] = {
        {"its own size", 800, 600, {0, 0, 800, 600, true}},
        {"a little more", 840, 700, {20, 50, 800, 600, true}},
        {"twice", 1600, 1200, {0, 0, 1600, 1200, true}},
        {"a wide display", 1920, 1080, {240, 0, 1440, 1080, false}},
        {"a large one", 3840, 2160, {720, 180, 2400, 1800, true}},
        {"a tall window", 400, 900, {0, 300, 400, 300, false}},
        {"a pixel", 1, 1, {0, 0, 1, 1, false}},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.what);
        const sdl::Layout got = sdl::layOut(800, 600, row.width, row.height);
        EXPECT_EQ(got.left, row.wanted.left);
        EXPECT_EQ(got.top, row.wanted.top);
        EXPECT_EQ(got.width, row.wanted.width);
        EXPECT_EQ(got.height, row.wanted.height);
        EXPECT_EQ(got.isWhole, row.wanted.isWhole);
    }
}

TEST(Layout, EveryPixelOfTheScreenIsFoundAgain) {
    for (const int size : {300, 600, 1080, 1800}) {
        const sdl::Layout layout = sdl::layOut(800, 600, size * 16 / 9, size);
        for (int x = 0; x < 800; ++x) {
            const double middle = layout.left + (x + 0.5) * layout.width / 800;
            ASSERT_EQ(sdl::toScreen(layout, 800, 600, middle, size / 2.0).x, x) << size;
        }
        const sdl::ScreenPoint outside = sdl::toScreen(layout, 800, 600, -5, size + 5);
        EXPECT_EQ(outside.x, 0) << "the bars belong to the edge";
        EXPECT_EQ(outside.y, 599);
    }
}
