// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/blit.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

#include "graphics/graphics_object.h"
#include "support/reference_blit.h"

namespace {

using reference::Rule;
using Bytes = std::vector<std::uint8_t>;
using Pixels = std::vector<unsigned>;

Bytes bytesOf(const Pixels& pixels) {
    Bytes result(2 * pixels.size());
    for (std::size_t i = 0; i < pixels.size(); ++i)
        reference::store(result, static_cast<std::int64_t>(i), pixels[i]);
    return result;
}

Pixels pixelsOf(const Bytes& bytes) {
    Pixels result;
    for (std::size_t i = 0; i < bytes.size() / 2; ++i)
        result.push_back(reference::load(bytes, static_cast<std::int64_t>(i)));
    return result;
}

bool copyBy(Rule rule, const _canvas* source, const _canvas* target, int opacity) {
    switch (rule) {
        case Rule::kCopy:
        case Rule::kCopy24:
            return CGraphicsObject::__copy(source, target);
        case Rule::kAlpha:
            return CGraphicsObject::__copy_alpha(source, target);
        case Rule::kMask:
            return CGraphicsObject::__copy_alpha_as_mask(source, target);
        case Rule::kToCanvas:
            return CGraphicsObject::copyToCanvas(source, target);
        default:
            return CGraphicsObject::__copy_blend(source, target, opacity);
    }
}

// Both sides of a copy with planes of their own, between bytes that nobody may touch.
class Sides {
public:
    struct Planes {
        Bytes data, alpha;
    };

    Sides(const Planes& source, int width, int height, const Planes& target, int targetWidth, int targetHeight, int bpp)
        : target_(target), fastData_(guarded(target.data)), fastAlpha_(guarded(target.alpha)), slow_(target) {
        source_ = source;
        from.data = source_.data;
        from.alpha = source_.alpha;
        from.bpp = bpp;
        from.width = width;
        from.height = height;
        width_ = targetWidth;
        height_ = targetHeight;
    }
    Sides(const Sides&) = delete;
    Sides& operator=(const Sides&) = delete;

    // The first difference between the copy and the reference, or ""; starts from the same target each time.
    std::string compare(Rule rule, int opacity) {
        fastData_ = guarded(target_.data);
        fastAlpha_ = guarded(target_.alpha);
        slow_ = target_;
        const auto inner = [](Bytes& bytes) {
            const std::span<std::uint8_t> all(bytes);
            return all.subspan(kGuard, all.size() - 2 * kGuard);
        };
        const _canvas fast{inner(fastData_), inner(fastAlpha_), from.bpp, 0, 0, width_, height_, view};
        const _canvas slow{slow_.data, slow_.alpha, from.bpp, 0, 0, width_, height_, view};
        const bool expected = reference::draw(rule, from, slow, opacity);
        if (copyBy(rule, &from, &fast, opacity) != expected) return "the result isn't that";
        for (const Bytes* bytes : {&fastData_, &fastAlpha_}) {
            for (std::size_t i = 0; i < kGuard; ++i) {
                if ((*bytes)[i] != kGuardByte || (*bytes)[bytes->size() - 1 - i] != kGuardByte) return "a wild write";
            }
        }
        const std::string text = reference::firstDifference(slow_.data, fast.data, width_, from.bpp == 24 ? 3 : 2);
        if (!text.empty()) return text;
        const std::string alpha = reference::firstDifference(slow_.alpha, fast.alpha, width_, 1);
        return alpha.empty() ? alpha : "alpha of " + alpha;
    }

    bool drewSomething() const { return slow_.data != target_.data; }

    _canvas from;
    CXRect view;

private:
    static constexpr std::size_t kGuard = 64;
    static constexpr std::uint8_t kGuardByte = 0xA5;

    static Bytes guarded(const Bytes& inner) {
        Bytes result(inner.size() + 2 * kGuard, kGuardByte);
        std::copy(inner.begin(), inner.end(), result.begin() + kGuard);
        return result;
    }

    Planes source_, target_;
    Bytes fastData_, fastAlpha_;
    Planes slow_;
    int width_ = 0, height_ = 0;
};

// A column for every weight, a row for every pair of channel values; blue, green and red differ, so that nothing may
// be carried from one to the other.
Sides::Planes allPairs(int bpp, bool source) {
    const unsigned greens = bpp == 15 ? 32 : 64;
    const int red = bpp == 15 ? 10 : 11;
    Sides::Planes planes;
    for (unsigned s = 0; s < greens; ++s) {
        for (unsigned t = 0; t < greens; ++t) {
            const unsigned value = source ? s : t, other = source ? t : s;
            // Bit 15 of 15-bit pixels has no meaning, yet copies carry it and blends drop it.
            const unsigned unused = bpp == 15 ? (value & 1) << 15 : 0;
            const unsigned pixel = (value & 31) | value << 5 | (other & 31) << red | unused;
            for (unsigned weight = 0; weight < 256; ++weight) {
                planes.data.push_back(static_cast<std::uint8_t>(pixel));
                planes.data.push_back(static_cast<std::uint8_t>(pixel >> 8));
                planes.alpha.push_back(static_cast<std::uint8_t>(source ? weight : s * 16 + t));
            }
        }
    }
    return planes;
}

TEST(Blit, AllChannelsAtAllWeights) {
    for (const int bpp : {15, 16}) {
        SCOPED_TRACE(bpp);
        const int rows = bpp == 15 ? 32 * 32 : 64 * 64;
        Sides sides(allPairs(bpp, true), 256, rows, allPairs(bpp, false), 256, rows, bpp);
        EXPECT_EQ("", sides.compare(Rule::kAlpha, 255)) << "alpha";
        EXPECT_EQ("", sides.compare(Rule::kMask, 255)) << "alpha as mask";
        EXPECT_EQ("", sides.compare(Rule::kToCanvas, 255)) << "to a canvas";
        EXPECT_EQ("", sides.compare(Rule::kAlphaBlend, 255)) << "alpha and opacity";
    }
}

TEST(Blit, AllOpacities) {
    std::mt19937 random(7);
    for (const int bpp : {15, 16}) {
        // Every pair of greens once, with any reds and blues; alpha from 0 to 255 again and again.
        Sides::Planes source, target;
        for (unsigned i = 0; i < 64 * 64; ++i) {
            for (Sides::Planes* planes : {&source, &target}) {
                const unsigned green = planes == &source ? i / 64 : i % 64;
                const unsigned pixel = (static_cast<unsigned>(random()) & (bpp == 15 ? 0xFC1F : 0xF81F)) |
                                       (bpp == 15 ? green / 2 : green) << 5;
                planes->data.push_back(static_cast<std::uint8_t>(pixel));
                planes->data.push_back(static_cast<std::uint8_t>(pixel >> 8));
            }
            source.alpha.push_back(static_cast<std::uint8_t>(i));
        }
        Sides plain({source.data, {}}, 64, 64, target, 64, 64, bpp);
        Sides withAlpha(source, 64, 64, target, 64, 64, bpp);
        for (int opacity = 0; opacity < 256; ++opacity) {
            SCOPED_TRACE(std::to_string(bpp) + " bits, opacity " + std::to_string(opacity));
            ASSERT_EQ("", plain.compare(Rule::kBlend, opacity));
            ASSERT_EQ("", withAlpha.compare(Rule::kAlphaBlend, opacity));
        }
    }
}

class Dice {
public:
    int between(int least, int most) { return std::uniform_int_distribution<int>(least, most)(random_); }
    bool oneIn(int n) { return between(1, n) == 1; }

    // Runs of transparent, opaque and mixed bytes, longer and shorter than the blocks that copies look at.
    Bytes alpha(std::size_t size) {
        Bytes result;
        while (result.size() < size) {
            const int kind = between(0, 2), length = between(1, 90);
            for (int i = 0; i < length; ++i)
                result.push_back(static_cast<std::uint8_t>(kind == 0 ? 0 : kind == 1 ? 255 : between(0, 255)));
        }
        result.resize(size);
        return result;
    }

    Bytes noise(std::size_t size) {
        Bytes result(size);
        for (std::uint8_t& byte : result)
            byte = static_cast<std::uint8_t>(random_());
        return result;
    }

    // Mostly a part of the picture; now and then none, turned inside out, far away or larger than anything.
    CXRect rect(int width, int height) {
        const int kind = between(0, 9);
        constexpr int kFar = std::numeric_limits<int>::max();
        if (kind < 2) return {};
        if (kind == 2) return CXRect(between(-9, 9), between(-9, 9), between(-9, 9), between(-9, 9));
        if (kind == 3) return CXRect(3, 2, 3, 9);  // without area
        if (kind == 4) {
            const int edges[] = {-kFar - 1, -kFar, -1, 0, 1, kFar - 1, kFar};
            return CXRect(edges[between(0, 6)], edges[between(0, 6)], edges[between(0, 6)], edges[between(0, 6)]);
        }
        const int left = between(-4, width), top = between(-4, height);
        return CXRect(left, top, between(left, width + 4), between(top, height + 4));
    }

    // Now and then shorter than it should be.
    Bytes cut(Bytes bytes) {
        if (oneIn(8)) bytes.resize(static_cast<std::size_t>(between(0, static_cast<int>(bytes.size()))));
        return bytes;
    }

private:
    std::mt19937 random_{20};
};

TEST(Blit, AnySizesPlacesClipsAndPlanes) {
    constexpr Rule kRules[] = {Rule::kCopy,  Rule::kCopy24,     Rule::kAlpha,   Rule::kMask,
                               Rule::kBlend, Rule::kAlphaBlend, Rule::kToCanvas};
    Dice dice;
    int drawn = 0;
    for (int turn = 0; turn < 6000; ++turn) {
        const Rule rule = kRules[dice.between(0, 6)];
        const int bpp = rule == Rule::kCopy24 ? 24 : dice.between(15, 16);
        const int width = dice.oneIn(9) ? 1 : dice.between(1, 150), height = dice.between(1, 9);
        const bool sameSize = dice.oneIn(4);  // copies of whole rows
        const int targetWidth = sameSize ? width : dice.between(1, 150),
                  targetHeight = sameSize ? height : dice.between(1, 9);
        const auto pixels = static_cast<std::size_t>(width * height);
        const auto targetPixels = static_cast<std::size_t>(targetWidth * targetHeight);
        const std::size_t size = bpp == 24 ? 3 : 2;
        const bool alpha = rule != Rule::kCopy && rule != Rule::kCopy24 && rule != Rule::kBlend &&
                           !(rule == Rule::kToCanvas && dice.oneIn(3));
        Sides::Planes source{dice.cut(dice.noise(pixels * size)), alpha ? dice.cut(dice.alpha(pixels)) : Bytes()};
        if (alpha && source.alpha.empty()) source.alpha.push_back(0);
        Sides sides(source, width, height,
                    {dice.cut(dice.noise(targetPixels * size)), dice.cut(dice.noise(targetPixels))}, targetWidth,
                    targetHeight, bpp);
        if (!dice.oneIn(3)) {
            sides.from.x = dice.oneIn(20) ? std::numeric_limits<int>::min() : dice.between(-width, targetWidth);
            sides.from.y = dice.oneIn(20) ? std::numeric_limits<int>::max() : dice.between(-height, targetHeight);
        }
        if (!dice.oneIn(3)) sides.from.clip = dice.rect(width, height);
        if (dice.oneIn(3)) sides.view = dice.rect(width, height);
        ASSERT_EQ("", sides.compare(rule, dice.between(0, 255)))
            << "turn " << turn << ", rule " << static_cast<int>(rule) << ", " << bpp << " bits, " << width << "x"
            << height << " at " << sides.from.x << ", " << sides.from.y << " into " << targetWidth << "x"
            << targetHeight << ", clip " << sides.from.clip.left << " " << sides.from.clip.top << " "
            << sides.from.clip.right << " " << sides.from.clip.bottom << ", viewport " << sides.view.left << " "
            << sides.view.top << " " << sides.view.right << " " << sides.view.bottom;
        drawn += sides.drewSomething();
    }
    EXPECT_GT(drawn, 2000) << "the turns hardly draw anything";
}

struct PixelRow {
    const char* what;
    Rule rule;
    int bpp;
    unsigned source;
    int alpha;  // -1: none
    unsigned target;
    int opacity;
    unsigned expected;
};

constexpr PixelRow kPixelRows[] = {
    {"opaque is copied with the lowest green bit", Rule::kAlpha, 16, 0x0020, 255, 0xFFFF, 255, 0x0020},
    {"alpha 254 loses the lowest green bit", Rule::kAlpha, 16, 0xFFFF, 254, 0xFFFF, 255, 0xFFDF},
    {"transparent keeps it", Rule::kAlpha, 16, 0xFFFF, 0, 0x0020, 255, 0x0020},
    {"opaque is copied with bit 15", Rule::kAlpha, 15, 0x8001, 255, 0x0000, 255, 0x8001},
    {"a blend has no bit 15", Rule::kAlpha, 15, 0xFFFF, 254, 0xFFFF, 255, 0x7FFF},
    {"transparent keeps bit 15", Rule::kAlpha, 15, 0x0000, 0, 0x8000, 255, 0x8000},
    {"31 over 0 by 255 is 30", Rule::kBlend, 16, 0x001F, -1, 0x0000, 255, 0x001E},
    {"0 over 31 by 255 is 0", Rule::kBlend, 16, 0x0000, -1, 0x001F, 255, 0x0000},
    {"six bits of green: 63 over 0 by 255 is 62", Rule::kBlend, 16, 0x07E0, -1, 0x0000, 255, 0x07C0},
    {"opacity 0 draws nothing", Rule::kBlend, 15, 0xFFFF, -1, 0x8000, 0, 0x8000},
    {"opaque at 128 weighs 127: 4 becomes 1", Rule::kAlphaBlend, 15, 0x0004, 255, 0x0000, 128, 0x0001},
    {"alpha 1 at 255 weighs nothing", Rule::kAlphaBlend, 15, 0xFFFF, 1, 0x8000, 255, 0x8000},
    {"any alpha is opaque to a mask", Rule::kMask, 16, 0xABCD, 1, 0x1234, 255, 0xABCD},
    {"but none isn't", Rule::kMask, 16, 0xABCD, 0, 0x1234, 255, 0x1234},
};

TEST(Blit, PixelsByHand) {
    for (const PixelRow& row : kPixelRows) {
        SCOPED_TRACE(row.what);
        Bytes source = bytesOf({row.source}), target = bytesOf({row.target});
        Bytes alpha;
        if (row.alpha >= 0) alpha.push_back(static_cast<std::uint8_t>(row.alpha));
        const _canvas from{source, alpha, row.bpp, 0, 0, 1, 1, {}};
        const _canvas to{target, {}, row.bpp, 0, 0, 1, 1, {}};
        EXPECT_TRUE(copyBy(row.rule, &from, &to, row.opacity));
        EXPECT_EQ(Pixels{row.expected}, pixelsOf(target));
    }
}

TEST(Blit, AlphaOfACanvasGrows) {
    Bytes source = bytesOf({1, 2, 3, 4}), target = bytesOf({9, 9, 9, 9});
    Bytes alpha = {0, 100, 255, 200}, targetAlpha = {7, 8, 9, 100};
    const _canvas from{source, alpha, 16, 0, 0, 4, 1, {}};
    const _canvas to{target, targetAlpha, 16, 0, 0, 4, 1, {}};
    EXPECT_TRUE(CGraphicsObject::copyToCanvas(&from, &to));
    EXPECT_EQ((Bytes{7, 108, 255, 255}), targetAlpha);
    EXPECT_TRUE(CGraphicsObject::__copy_blend(&from, &to, 200));
    EXPECT_EQ((Bytes{7, 108, 255, 255}), targetAlpha) << "opacity leaves it alone";

    targetAlpha = {7, 8, 9, 100};
    const _canvas opaque{source, {}, 16, 1, 0, 4, 1, CXRect(1, 0, 3, 1)};
    EXPECT_TRUE(CGraphicsObject::copyToCanvas(&opaque, &to));
    EXPECT_EQ((Bytes{7, 8, 255, 255}), targetAlpha);
}

struct PlaceRow {
    const char* what;
    CXRect clip;
    CXRect view;
    int x, y;
    bool result;
    Pixels expected;  // 4x3
};

// A source of 3x2, 1 2 3 over 4 5 6.
TEST(Blit, PlacesByHand) {
    const PlaceRow rows[] = {
        {"as it is", {}, {}, 0, 0, true, {1, 2, 3, 0, 4, 5, 6, 0, 0, 0, 0, 0}},
        {"moved out at the top left", {}, {}, -1, -1, true, {5, 6, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        {"moved out at the bottom right", {}, {}, 2, 2, true, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 2}},
        {"a clip stays in its place", CXRect(1, 1, 3, 2), {}, 0, 0, true, {0, 0, 0, 0, 0, 5, 6, 0, 0, 0, 0, 0}},
        {"a viewport goes to the corner", {}, CXRect(1, 1, 3, 2), 0, 0, true, {5, 6, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        {"a clip without area shows all, moved",
         CXRect(1, 1, 1, 5),
         {},
         0,
         0,
         true,
         {0, 0, 0, 0, 0, 1, 2, 3, 0, 4, 5, 6}},
        {"a clip reaches out of the source",
         CXRect(-1, -1, 2, 9),
         {},
         0,
         0,
         true,
         {1, 2, 0, 0, 4, 5, 0, 0, 0, 0, 0, 0}},
        {"a clip inside out", CXRect(2, 0, 1, 2), {}, 0, 0, false, Pixels(12)},
        {"a viewport inside out", {}, CXRect(0, 2, 1, 0), 0, 0, false, Pixels(12)},
    };
    for (const PlaceRow& row : rows) {
        SCOPED_TRACE(row.what);
        Bytes source = bytesOf({1, 2, 3, 4, 5, 6}), target(2 * 12);
        const _canvas from{source, {}, 16, row.x, row.y, 3, 2, row.clip};
        const _canvas to{target, {}, 16, 0, 0, 4, 3, row.view};
        EXPECT_EQ(row.result, CGraphicsObject::__copy(&from, &to));
        EXPECT_EQ(row.expected, pixelsOf(target));
    }
    // With 3 bytes a pixel the clip doesn't move the start.
    Bytes source = {1, 1, 1, 2, 2, 2, 3, 3, 3}, target(9);
    const _canvas from{source, {}, 24, 0, 0, 3, 1, CXRect(1, 0, 3, 1)};
    const _canvas to{target, {}, 24, 0, 0, 3, 1, {}};
    EXPECT_TRUE(CGraphicsObject::__copy(&from, &to));
    EXPECT_EQ((Bytes{2, 2, 2, 3, 3, 3, 0, 0, 0}), target);
}

TEST(Blit, OtherFormatsAndMissingSides) {
    Bytes source(64, 1), alpha(16, 255), target(64), targetAlpha(16);
    for (const int bpp : {0, 1, 2, 4, 8, 24, 32}) {
        SCOPED_TRACE(bpp);
        const _canvas from{source, alpha, bpp, 0, 0, 4, 4, {}};
        const _canvas to{target, targetAlpha, bpp, 0, 0, 4, 4, {}};
        EXPECT_TRUE(CGraphicsObject::__copy_alpha(&from, &to));
        EXPECT_TRUE(CGraphicsObject::__copy_blend(&from, &to, 100));
        EXPECT_TRUE(CGraphicsObject::copyToCanvas(&from, &to));
        EXPECT_TRUE(bpp == 24 || CGraphicsObject::__copy(&from, &to));
        EXPECT_EQ(Bytes(64), target);
        EXPECT_EQ(Bytes(16), targetAlpha);
    }
    const _canvas side{source, alpha, 16, 0, 0, 4, 4, {}};
    for (const Rule rule : {Rule::kCopy, Rule::kAlpha, Rule::kMask, Rule::kBlend, Rule::kToCanvas}) {
        EXPECT_FALSE(copyBy(rule, nullptr, &side, 255));
        EXPECT_FALSE(copyBy(rule, &side, nullptr, 255));
    }
}

// Rows are read before the ones that overlap them are written.
TEST(Blit, APictureIntoItself) {
    Pixels pixels(40 * 3);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = static_cast<unsigned>(i);
    const Bytes before = bytesOf(pixels);
    for (const Rule rule : {Rule::kCopy, Rule::kAlpha, Rule::kToCanvas}) {
        Bytes picture = before, expected = before, alpha(120, 255), expectedAlpha = alpha;
        Bytes copy = before, copyOfAlpha = alpha;
        _canvas from{picture, alpha, 16, 1, 1, 40, 3, {}};
        const _canvas to{picture, alpha, 16, 0, 0, 40, 3, {}};
        EXPECT_TRUE(copyBy(rule, &from, &to, 255));
        from.data = copy;
        from.alpha = copyOfAlpha;
        EXPECT_TRUE(reference::draw(rule, from, {expected, expectedAlpha, 16, 0, 0, 40, 3, {}}, 255));
        EXPECT_EQ("", reference::firstDifference(expected, picture, 40, 2));
    }
}

}  // namespace
