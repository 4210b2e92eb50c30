// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

#include "graphics/geometry.h"
#include "graphics/pixel_conversion.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes bytesOf(const Plane& plane) { return {plane.bytes().begin(), plane.bytes().end()}; }

struct Row {
    const char* what;
    int from, to;
    int width;
    Bytes pixels;
    Bytes expected;
    Bytes alpha;  // empty: none is made
};

TEST(Conversion, EveryPairOfFormats) {
    // 16-bit values stand low byte first.
    const Row rows[] = {
        {"top bits", 24, 15, 2, {0x0F, 0x17, 0xFF, 0x08, 0x08, 0x08}, {0x41, 0x7C, 0x21, 0x04}, {}},
        {"top bits, six of green", 24, 16, 2, {0x0F, 0x17, 0xFF, 0x08, 0x0C, 0x08}, {0xA1, 0xF8, 0x61, 0x08}, {}},
        {"alpha as it stands", 32, 15, 2, {0xFF, 0, 0, 10, 0, 0, 0xFF, 255}, {0x1F, 0, 0, 0x7C}, {10, 255}},
        {"alpha turned round", 32, 16, 2, {0xFF, 0, 0, 10, 0, 0, 0xFF, 255}, {0x1F, 0, 0, 0xF8}, {245, 0}},
        {"the lowest green is lost", 15, 16, 2, {0xFF, 0x7F, 0x20, 0x00}, {0x9F, 0xFF, 0x00, 0x00}, {}},
        {"bit 15 goes nowhere", 15, 16, 2, {0x40, 0x80, 0x1F, 0x00}, {0x80, 0x00, 0x1F, 0x00}, {}},
        {"the lowest green is lost", 16, 15, 2, {0xFF, 0xFF, 0x60, 0x80}, {0xFF, 0x7F, 0x20, 0x40}, {}},
        {"the odd last stays", 15, 16, 3, {0, 4, 0, 4, 0, 4}, {0, 8, 0, 8, 0, 4}, {}},
        {"the odd last stays", 16, 15, 3, {0, 8, 0, 8, 0, 8}, {0, 4, 0, 4, 0, 8}, {}},
        {"one is odd", 16, 15, 1, {0, 8}, {0, 8}, {}},
        {"channels times 8", 15, 24, 2, {0xFF, 0xFF, 0x41, 0x0C}, {0xF8, 0xF8, 0xF8, 0x08, 0x10, 0x18}, {}},
        {"green times 4", 16, 24, 2, {0xFF, 0xFF, 0x41, 0x18}, {0xF8, 0xFC, 0xF8, 0x08, 0x08, 0x18}, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.from) + " to " + std::to_string(row.to) + ": " + row.what);
        Plane data(row.pixels), alpha;
        const Plane shared = data;
        EXPECT_NE(0, __get_convert_code(row.from, row.to));
        EXPECT_TRUE(__convert_bpp(data, alpha, CXSize(row.width, 1), row.from, row.to));
        EXPECT_EQ(row.expected, bytesOf(data));
        EXPECT_EQ(row.alpha, bytesOf(alpha));
        EXPECT_EQ(row.pixels, bytesOf(shared)) << "others still show the old plane";

        // A byte too few.
        Plane shorter(Bytes(row.pixels.begin(), row.pixels.end() - 1)), before = shorter;
        Plane oldAlpha(3), keptAlpha = oldAlpha;
        EXPECT_FALSE(__convert_bpp(shorter, keptAlpha, CXSize(row.width, 1), row.from, row.to));
        EXPECT_TRUE(shorter == before && keptAlpha == oldAlpha);
        EXPECT_FALSE(__convert_bpp(shorter, keptAlpha, CXSize(0x7FFFFFFF, 0x7FFFFFFF), row.from, row.to));
    }
}

struct PassRow {
    int from, to;
    bool result;
};

TEST(Conversion, PairsThatChangeNothing) {
    constexpr PassRow kRows[] = {{16, 16, true}, {8, 8, true},   {8, 32, true},  {24, 32, true}, {16, 32, true},
                                 {32, 24, true}, {8, 16, false}, {16, 8, false}, {32, 8, false}, {24, 8, false},
                                 {8, 24, false}, {0, 16, false}, {16, 0, false}, {16, 17, false}};
    for (const PassRow& row : kRows) {
        SCOPED_TRACE(std::to_string(row.from) + " to " + std::to_string(row.to));
        Plane data(64), alpha(16);
        const Plane oldData = data, oldAlpha = alpha;
        EXPECT_EQ(0, __get_convert_code(row.from, row.to));
        EXPECT_EQ(row.result, __convert_bpp(data, alpha, CXSize(4, 4), row.from, row.to));
        EXPECT_TRUE(data == oldData && alpha == oldAlpha);
    }
    Plane none, alpha;
    EXPECT_TRUE(__convert_bpp(none, alpha, CXSize(0, 5), 24, 16)) << "there is nothing to convert";
    EXPECT_TRUE(__convert_bpp(none, alpha, CXSize(-5, 5), 24, 16));
}

}  // namespace
