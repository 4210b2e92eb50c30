// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/graphics_object.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <set>
#include <utility>
#include <vector>

#include "graphics/color.h"
#include "graphics/pixel_format.h"
#include "support/stage.h"

namespace {

using Pixels = std::vector<std::uint16_t>;
using Alpha = std::vector<std::uint8_t>;

Plane planeOf(const Pixels& pixels) {
    Plane plane(pixels.size() * 2);
    std::copy(pixels.begin(), pixels.end(), plane.pixels().begin());
    return plane;
}

Pixels pixelsOf(const CGraphicsObject& object) {
    return {object.getData().pixels().begin(), object.getData().pixels().end()};
}

Alpha alphaOf(const CGraphicsObject& object) {
    return {object.getAlpha().bytes().begin(), object.getAlpha().bytes().end()};
}

// Pixels 1, 2, 3, ... and alpha 101, 102, ...
void number(CGraphicsObject& object, const CXSize& size, bool withAlpha = true) {
    Pixels pixels(static_cast<std::size_t>(size.mul()));
    std::iota(pixels.begin(), pixels.end(), 1);
    Alpha alpha(pixels.size());
    std::iota(alpha.begin(), alpha.end(), 101);
    object.setPlanes(size, 16, planeOf(pixels), withAlpha ? Plane(alpha) : Plane());
}

}  // namespace

TEST(GraphicsObject, CoversWhatLiesInItsDestinyAndItsClip) {
    const struct {
        const char* what;
        CXPoint position;
        CXRect clip;
        bool hasDestiny;
        CXRect box;
    } rows[] = {
        {"as it stands", {5, 6}, {}, false, {5, 6, 25, 16}},
        {"never left of or above the destiny", {-5, -6}, {}, false, {0, 0, 15, 4}},
        {"cut at the destiny's far edges", {90, 45}, {}, true, {90, 45, 100, 50}},
        {"a clip goes along", {5, 6}, {2, 3, 10, 8}, false, {7, 9, 15, 14}},
        {"a clip without width is none", {5, 6}, {3, 3, 3, 8}, false, {5, 6, 25, 16}},
        {"a clip outside of it covers nothing", {5, 6}, {30, 30, 40, 40}, false, {0, 0, 0, 0}},
    };
    CGraphicsObject destiny(nullptr, {100, 50}, 16);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        CGraphicsObject object(nullptr, {20, 10}, 16);
        object.SetPosition(row.position);
        object.SetClippingRect(row.clip);
        if (row.hasDestiny) object.SetDestiny(&destiny);
        EXPECT_EQ(object.GetBoundingBox(), row.box);
    }
}

TEST(GraphicsObject, IsNearByTheShareOfItsBox) {
    CGraphicsObject object(nullptr, {10, 10}, 16), empty(nullptr);
    object.SetPosition(100, 100);
    const struct {
        CXRect rect;
        int percent;
        bool near;
    } rows[] = {
        {{105, 100, 200, 110}, 50, true}, {{105, 100, 200, 110}, 51, false}, {{0, 0, 5, 5}, 0, true},
        {{0, 0, 5, 5}, 1, false},         {{104, 104, 110, 110}, 36, true},  {{104, 104, 110, 110}, 37, false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(object.isNear(row.rect, row.percent), row.near) << row.rect.left << ", " << row.percent << " %";
    EXPECT_FALSE(empty.isNear(CXRect(0, 0, 5, 5), 0)) << "nothing is no part of it";
}

TEST(GraphicsObject, TakesTheAnchorOffPositionsToCome) {
    CGraphicsObject object(nullptr, {10, 10}, 16);
    object.SetPosition(50, 60);
    object.setAnchor(10, 20);
    EXPECT_EQ(object.GetPosition(), CXPoint(50, 60));
    object.SetPosition(100, 100);
    EXPECT_EQ(object.GetPosition(), CXPoint(90, 80));
    object.Move(1, 1);
    EXPECT_EQ(object.GetPosition(), CXPoint(91, 81)) << "moving counts from where it is";
}

TEST(GraphicsObject, FlipsRowsAndColumnsInEveryForm) {
    const Pixels upsideDown = {5, 6, 3, 4, 1, 2}, leftToRight = {2, 1, 4, 3, 6, 5}, both = {6, 5, 4, 3, 2, 1};
    for (const bool coded : {false, true}) {
        SCOPED_TRACE(coded ? "coded" : "raw");
        CGraphicsObject object(nullptr);
        number(object, {2, 3});
        if (coded) object.Compress(kCompressionRle);
        const auto see = [&](const Pixels& wanted) {
            ASSERT_EQ(object.getCompression(), coded ? kCompressionRle : kCompressionRaw);
            if (coded) object.DeCompressRLE2();
            EXPECT_EQ(pixelsOf(object), wanted);
            Alpha alpha;
            for (const std::uint16_t pixel : wanted)
                alpha.push_back(static_cast<std::uint8_t>(pixel + 100));
            EXPECT_EQ(alphaOf(object), alpha);
            if (coded) object.bringBackCompressed();
        };
        object.FlipH();
        see(upsideDown);
        object.FlipV();
        see(both);
        object.FlipH();
        see(leftToRight);
        object.FlipH();
        object.resetFlips();
        see({1, 2, 3, 4, 5, 6});
        EXPECT_FALSE(object.isFlippedH() || object.isFlippedV());
    }
}

TEST(GraphicsObject, SharesPlanesWithItsClonesUntilOneGetsOthers) {
    CGraphicsObject object(nullptr);
    number(object, {2, 3});
    object.SetPosition(7, 8);
    const std::unique_ptr<CGraphicsObject> clone(static_cast<CGraphicsObject*>(object.clone()));
    EXPECT_EQ(clone->GetPosition(), CXPoint(7, 8)) << "a fresh clone stands where its source stands";
    object.FlipV();
    EXPECT_EQ(pixelsOf(*clone), (Pixels{2, 1, 4, 3, 6, 5}));
    object.Flush();
    EXPECT_EQ(pixelsOf(*clone), (Pixels{2, 1, 4, 3, 6, 5})) << "the last of them frees the planes";
    clone->Convert(15);
    EXPECT_EQ(clone->getBpp(), 15);
}

TEST(GraphicsObject, CopiesTheClippedPartDeeply) {
    CGraphicsObject object(nullptr), copy(nullptr), part(nullptr);
    number(object, {4, 3});
    object.setFileName("a.img");
    object.SetPosition(20, 30);
    object.SetClippingRect({1, 1, 3, 3});
    object.Compress(kCompressionRle);
    copy.Copy(&object);
    EXPECT_EQ(copy.Size(), CXSize(2, 2));
    EXPECT_EQ(pixelsOf(copy), (Pixels{6, 7, 10, 11}));
    EXPECT_EQ(alphaOf(copy), (Alpha{106, 107, 110, 111}));
    EXPECT_TRUE(copy.GetClippingRect().IsEmpty());
    EXPECT_EQ(copy.GetPosition(), CXPoint(20, 30));
    EXPECT_STREQ(copy.getFileName().c_str(), "a.imgcopy");
    EXPECT_EQ(object.getCompression(), kCompressionRle) << "the source is coded as before";
    part.Copy(&object, {2, 0, 9, 1});
    EXPECT_EQ(pixelsOf(part), (Pixels{3, 4})) << "what lies outside of the source isn't there";
    EXPECT_EQ(part.GetPosition(), CXPoint(2, 0));
}

TEST(GraphicsObject, StampsAlphaAndTakesTheLastStampBack) {
    CGraphicsObject object(nullptr), mask(nullptr);
    number(object, {4, 4});
    const Alpha before = alphaOf(object);
    mask.setPlanes({2, 2}, 16, planeOf({0, 0, 0, 0}), Plane(Alpha{1, 2, 3, 4}));
    object.mergeAlpha({1, 1}, &mask);
    EXPECT_EQ(alphaOf(object), (Alpha{101, 102, 103, 104, 105, 1, 2, 108, 109, 3, 4, 112, 113, 114, 115, 116}));
    object.mergeAlpha({3, 3}, &mask);
    EXPECT_EQ(alphaOf(object).back(), 1) << "cut at the edge";
    EXPECT_EQ(alphaOf(object)[5], 106) << "the first stamp is undone";
    object.mergeAlpha({-1, 0}, &mask);
    EXPECT_EQ(alphaOf(object)[0], 1) << "left of the picture the mask still begins with its first byte";
    EXPECT_EQ(alphaOf(object)[4], 2) << "and its rows are as long as what is covered";
    object.restoreAlpha(&mask);
    EXPECT_EQ(alphaOf(object), before);

    CGraphicsObject small(nullptr), opaque(nullptr);
    number(small, {1, 1});
    number(opaque, {4, 4}, false);
    object.mergeAlpha({2, 2}, &mask);
    small.restoreAlpha(&mask);
    EXPECT_EQ(alphaOf(small), (Alpha{101})) << "a stamp that lies outside of another object";
    opaque.mergeAlpha({0, 0}, &mask);
    EXPECT_FALSE(opaque.getAlpha());
}

TEST(GraphicsObject, TurnsPixelsGrayByFormat) {
    const struct {
        int bpp;
        std::uint16_t pixel, gray;
    } rows[] = {
        {16, 0xF800, 10 | 10 << 6 | 10 << 11}, {16, 0x07E0, 10 | 10 << 6 | 10 << 11}, {16, 0x0020, 0},
        {15, 0x7C1F, 20 | 20 << 5 | 20 << 10}, {15, 0xFFFF, 31 | 31 << 5 | 31 << 10},
    };
    for (const auto& row : rows) {
        CGraphicsObject object(nullptr, {1, 1}, row.bpp, planeOf({row.pixel}));
        object.ToGrayScale();
        EXPECT_EQ(pixelsOf(object)[0], row.gray) << row.bpp << " bits, " << row.pixel;
    }
    CGraphicsObject object(nullptr, {2, 1}, 15, planeOf({0x0001, 0x7FFF}));
    object.InvertColors();
    EXPECT_EQ(pixelsOf(object), (Pixels{0x7FFE, 0}));
}

TEST(GraphicsObject, ScalesToTheNearestPixel) {
    CGraphicsObject object(nullptr);
    number(object, {3, 2});
    object.Scale(2, 1.5);
    EXPECT_EQ(object.Size(), CXSize(6, 3));
    EXPECT_EQ(pixelsOf(object), (Pixels{1, 1, 2, 2, 3, 3, 1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6}));
    EXPECT_EQ(alphaOf(object)[17], 106);
    object.Scale(1e9, 1e9);
    EXPECT_EQ(object.Size(), CXSize(6, 3)) << "a size that nothing could hold";
    number(object, {5, 4});
    object.Scale2x();
    EXPECT_EQ(object.Size(), CXSize(2, 2));
    EXPECT_EQ(pixelsOf(object), (Pixels{1, 3, 11, 13}));
}

TEST(GraphicsObject, SplitsAndJoinsChannels) {
    const std::vector<std::uint8_t> bytes = {10, 20, 30, 40, 50, 60, 70, 80, 90, 255, 254, 253};
    CGraphicsObject object(nullptr, {2, 2}, 24, Plane(bytes));
    object.Split();
    EXPECT_FALSE(object.getData());
    EXPECT_EQ(object.GetChannelSize(3), 4);
    EXPECT_EQ(object.GetPixel(kChannelRed, {1, 1}), 253);
    EXPECT_EQ(object.GetPixel(kChannelBlue, {0, 1}), 70);
    EXPECT_EQ(object.GetPixel(kChannelGreen, {2, 1}), 0) << "beyond the plane";
    object.JoinChannels();
    EXPECT_EQ(std::vector<std::uint8_t>(object.getData().bytes().begin(), object.getData().bytes().end()), bytes);

    const std::vector<std::uint8_t> joined = object.Join2Channels();
    ASSERT_EQ(joined.size(), 16U);
    EXPECT_EQ(joined[12], 255);
    EXPECT_EQ(joined[15], 0) << "no alpha plane";
    object.SplitOn2(std::vector<std::uint8_t>{1, 2, 3, 4, 5, 6, 7, 8, 9}, 100);
    EXPECT_EQ(object.getData().size(), 6U) << "no more pixels than there are";
    EXPECT_EQ(alphaOf(object), (Alpha{4, 8}));
}

// Against a plain search of the region.
TEST(GraphicsObject, FloodsTheRegionRoundAPoint) {
    std::mt19937 random(3);
    for (int round = 0; round < 100; ++round) {
        const CXSize size(1 + static_cast<int>(random() % 30), 1 + static_cast<int>(random() % 30));
        const auto index = [&](int x, int y) { return static_cast<std::size_t>(y * size.width + x); };
        Pixels walls(static_cast<std::size_t>(size.mul())), target(walls.size());
        for (std::uint16_t& wall : walls)
            wall = random() % 3 == 0 ? 0 : 9;
        const CXPoint start(static_cast<int>(random() % 30), static_cast<int>(random() % 30));

        std::set<std::pair<int, int>> wanted;
        std::vector<CXPoint> open = {start};
        while (!open.empty()) {
            const CXPoint p = open.back();
            open.pop_back();
            if (p.x < 0 || p.y < 0 || p.x >= size.width || p.y >= size.height || walls[index(p.x, p.y)] == 0) continue;
            if (!wanted.insert({p.x, p.y}).second) continue;
            for (const CXPoint& step : {CXPoint(1, 0), CXPoint(-1, 0), CXPoint(0, 1), CXPoint(0, -1)})
                open.push_back(p + step);
        }

        CGraphicsObject object(nullptr, size, 16, planeOf(walls));
        const CColor color(static_cast<short>(0x55), kModel16), other(static_cast<short>(0x66), kModel16);
        std::vector<_floodfill> spans;
        const CXRect bounds = object.PrepareFloodFill(start, color, target, spans);
        std::set<std::pair<int, int>> painted;
        for (int y = 0; y < size.height; ++y) {
            for (int x = 0; x < size.width; ++x) {
                if (target[index(x, y)] == 0x55) painted.insert({x, y});
            }
        }
        ASSERT_EQ(painted, wanted) << "round " << round;
        for (const auto& [x, y] : painted)
            ASSERT_TRUE(x >= bounds.left && x < bounds.right && y >= bounds.top && y < bounds.bottom);
        object.FloodFill(other, target);
        EXPECT_EQ(std::count(target.begin(), target.end(), 0x66), std::ssize(wanted))
            << "the spans hold each pixel once";
    }
}

TEST(GraphicsObject, FloodsALongWindingRegion) {
    // A snake of corridors through half a million pixels: no stack of calls would hold it.
    const CXSize size(1000, 500);
    Pixels walls(static_cast<std::size_t>(size.mul()), 1), target(walls.size());
    for (int y = 1; y < size.height; y += 2) {
        const int gap = y / 2 % 2 == 0 ? size.width - 1 : 0;
        for (int x = 0; x < size.width; ++x)
            walls[static_cast<std::size_t>(y * size.width + x)] = x == gap ? 1 : 0;
    }
    CGraphicsObject object(nullptr, size, 16, planeOf(walls));
    std::vector<_floodfill> spans;
    const CColor color(static_cast<short>(7), kModel16);
    EXPECT_EQ(object.PrepareFloodFill({0, 0}, color, target, spans), CXRect(0, 0, 1000, 500));
    EXPECT_EQ(std::count(target.begin(), target.end(), 7), std::count(walls.begin(), walls.end(), 1));
}

TEST(GraphicsObject, TellsItsObserversOnceEach) {
    class Watcher : public CInvalidateObserver {
    public:
        void onInvalidate(CGraphicsObject* object, const CXRect*) override {
            ++invalidated;
            if (leave) object->removeInvalidateObserver(leave);
        }
        void onDestroy(CGraphicsObject*) override { ++destroyed; }
        int invalidated = 0, destroyed = 0;
        CInvalidateObserver* leave = nullptr;
    };
    Stage stage;
    stage.start();
    Watcher first, second;
    first.leave = &second;
    {
        CGraphicsObject object(CWindow::current(), {4, 4}, 16);
        object.addInvalidateObserver(&first);
        object.addInvalidateObserver(&first);
        object.addInvalidateObserver(&second);
        object.Invalidate();
        EXPECT_TRUE(object.isInvalidated());
        EXPECT_FALSE(object.isInvalidated()) << "read and cleared";
    }
    EXPECT_EQ(first.invalidated, 1);
    EXPECT_EQ(second.invalidated, 0) << "taken out before its turn";
    EXPECT_EQ(first.destroyed, 1);
    EXPECT_EQ(second.destroyed, 0);
}

TEST(GraphicsObject, DrawsCodedPlanesAndKeepsThemCoded) {
    CGraphicsObject object(nullptr), destiny(nullptr, {4, 4}, 16);
    number(object, {4, 4}, false);
    object.Compress(kCompressionRle);
    object.SetDestiny(&destiny);
    object.Redraw();
    EXPECT_EQ(object.getCompression(), kCompressionRle);
    EXPECT_EQ(pixelsOf(destiny)[15], 16);
    object.Flush();
    object.Redraw();
    EXPECT_EQ(pixelsOf(destiny)[15], 16) << "nothing is drawn without pixels";
}

TEST(PixelFormat, GivesNoSizeToWhatNothingCouldHold) {
    EXPECT_EQ(__get_data_size(65536, 65536, 16), 0);
    EXPECT_EQ(__get_data_size(-1, 5, 16), 0);
    EXPECT_EQ(__get_data_size(7, 5, 24), 105);
    EXPECT_EQ(__get_data_size(7, 5, 32), 0);
    EXPECT_EQ(GetRealBpp(4), 16);
    EXPECT_EQ(GetRealBpp(16), 0);
    EXPECT_EQ(GetFlagBpp(15), 2);
}
