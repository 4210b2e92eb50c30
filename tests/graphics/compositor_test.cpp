// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "graphics/canvas_observer.h"
#include "graphics/color.h"
#include "graphics/refresh_region.h"
#include "graphics/refresh_screen.h"
#include "graphics/surface.h"
#include "support/stage.h"

namespace {

using Random = std::mt19937;

int below(Random& random, int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

// A screen of its own, of the window's size, and the surface that it is painted into.
class Screen {
public:
    Screen() {
        stage.start();
        window = CWindow::current();
        screen = std::make_unique<CRefreshScreen>(window, false);
        target = std::make_unique<CDirectDrawSurface>(window);
    }
    ~Screen() { objects.clear(); }

    CGraphicsObject* add(const CXRect& box, std::uint16_t pixel, int priority = 0, int alpha = -1) {
        const CXSize size(box.Width(), box.Height());
        auto object = std::make_unique<CGraphicsObject>(window, size, 16);
        std::fill(object->getData().pixels().begin(), object->getData().pixels().end(), pixel);
        if (alpha >= 0) {
            Plane plane(static_cast<std::size_t>(size.mul()));
            std::fill(plane.bytes().begin(), plane.bytes().end(), static_cast<std::uint8_t>(alpha));
            object->setPlanes(size, 16, object->getData(), plane);
        }
        object->SetPosition(box.left, box.top);
        screen->put(object.get(), priority);
        objects.push_back(std::move(object));
        return objects.back().get();
    }

    // A frame, as the window makes it: painted, then shown and the list emptied.
    bool refresh() {
        bool full = false;
        const bool changed = screen->Redraw(target.get(), nullptr, &full);
        screen->validate();
        return changed;
    }

    std::vector<std::uint16_t> shown() const { return {target->pixels().begin(), target->pixels().end()}; }
    std::uint16_t at(int x, int y) const { return target->pixels()[static_cast<std::size_t>(y * 800 + x)]; }

    Stage stage;
    CWindow* window = nullptr;
    std::unique_ptr<CRefreshScreen> screen;
    std::unique_ptr<CDirectDrawSurface> target;
    std::vector<std::unique_ptr<CGraphicsObject>> objects;
};

}  // namespace

TEST(RefreshRegion, HoldsEveryPixelOnce) {
    Random random(11);
    for (int round = 0; round < 200; ++round) {
        constexpr int kSide = 40;
        CRefreshRegion region;
        region.removeAll();
        std::vector<int> wanted(kSide * kSide);
        const int count = 1 + below(random, 8);
        for (int i = 0; i < count; ++i) {
            const int left = below(random, kSide - 1), top = below(random, kSide - 1);
            const CXRect rect(left, top, left + 1 + below(random, kSide - left), top + 1 + below(random, kSide - top));
            region.addRect(&rect);
            for (int y = rect.top; y < std::min(rect.bottom, kSide); ++y) {
                for (int x = rect.left; x < std::min(rect.right, kSide); ++x)
                    wanted[static_cast<std::size_t>(y * kSide + x)] = 1;
            }
        }
        std::vector<int> held(wanted.size());
        for (int i = 0; i < region.size(); ++i) {
            const CXRect& rect = *region.rectAt(i);
            ASSERT_FALSE(rect.IsEmpty());
            for (int y = rect.top; y < std::min(rect.bottom, kSide); ++y) {
                for (int x = rect.left; x < std::min(rect.right, kSide); ++x)
                    ++held[static_cast<std::size_t>(y * kSide + x)];
            }
        }
        ASSERT_EQ(held, wanted) << "round " << round;
    }
}

TEST(RefreshRegion, KnowsTheWholeScreenByItsNumbersAlone) {
    CRefreshRegion region;
    EXPECT_TRUE(region.isWhole()) << "a new list";
    EXPECT_EQ(region.size(), 1);
    EXPECT_EQ(region.rectAt(0), nullptr);
    region.removeAll();
    const CXRect part(10, 10, 20, 20), nearly(0, 0, 800, 599), whole(0, 0, 800, 600);
    region.addRect(&part);
    region.addRect(&nearly);
    EXPECT_FALSE(region.isWhole());
    EXPECT_EQ(region.size(), 1) << "what lies inside is taken in";
    region.addRect(&whole);
    EXPECT_TRUE(region.isWhole());
    region.addRect(&part);
    EXPECT_EQ(region.size(), 1) << "behind the whole screen nothing is added";
}

// Whatever happens between two frames, painting the parts that changed gives what painting everything would. Objects
// with a clip of their own are drawn beyond the parts, and so are left out.
TEST(Compositor, PaintsPartsAsItWouldPaintEverything) {
    Random random(7);
    Screen s;
    const CColor green(static_cast<short>(0x0340), kModel16);
    s.screen->SetBackground(&green);
    for (int i = 0; i < 14; ++i) {
        const int left = below(random, 300) - 40, top = below(random, 200) - 40;
        const int alpha = i % 3 == 0 ? -1 : below(random, 256);
        s.add({left, top, left + 1 + below(random, 90), top + 1 + below(random, 70)},
              static_cast<std::uint16_t>(random()), below(random, 5) - 1, alpha);
    }
    CDirectDrawSurface fresh(s.window);
    for (int frame = 0; frame < 150; ++frame) {
        for (int i = below(random, 3); i >= 0; --i) {
            CGraphicsObject* object = s.objects[static_cast<std::size_t>(below(random, 14))].get();
            switch (below(random, 6)) {
                case 0:
                    object->Move(below(random, 41) - 20, below(random, 31) - 15);
                    break;
                case 1:
                    object->Visible(!object->isVisible());
                    break;
                case 2:
                    object->Invalidate();
                    object->SetPosition(below(random, 300) - 30, below(random, 200) - 30);
                    object->Invalidate();
                    break;
                case 3:
                    s.screen->SetPriority(object, below(random, 5) - 1);
                    object->Invalidate();
                    break;
                case 4:
                    object->SetOpacity(below(random, 256));
                    object->Invalidate();
                    break;
                default:
                    object->Invalidate();
                    break;
            }
        }
        s.refresh();
        const std::vector<std::uint16_t> parts = s.shown();
        bool full = false;
        s.screen->Invalidate(static_cast<const CXRect*>(nullptr));
        s.screen->Redraw(&fresh, nullptr, &full);
        s.screen->validate();
        const std::vector<std::uint16_t> whole(fresh.pixels().begin(), fresh.pixels().end());
        const auto differs = std::mismatch(parts.begin(), parts.end(), whole.begin());
        ASSERT_EQ(differs.first, parts.end()) << "frame " << frame << ", pixel " << differs.first - parts.begin();
    }
}

TEST(Compositor, TellsWhetherThereIsSomethingToShow) {
    Screen s;
    CGraphicsObject* object = s.add({10, 10, 20, 20}, 0x1111);
    EXPECT_TRUE(s.refresh()) << "the first frame is a whole one";
    EXPECT_FALSE(s.refresh());
    object->Invalidate();
    s.screen->validate();
    object->getData().pixels()[0] = 0x2222;
    EXPECT_FALSE(s.refresh()) << "no rectangle is left";
    EXPECT_EQ(s.at(10, 10), 0x2222) << "an invalidated object is drawn all the same";
    const CXRect outside(800, 0, 900, 100), touching(-5, 5, 0, 9);
    s.screen->Invalidate(&outside);
    s.screen->Invalidate(&touching);
    EXPECT_FALSE(s.refresh()) << "outside of the screen";
}

TEST(Compositor, LaysTheLaterOfEqualPrioritiesOnTop) {
    Screen s;
    CGraphicsObject* first = s.add({0, 0, 10, 10}, 1, 3);
    s.add({0, 0, 10, 10}, 2, 3);
    s.screen->SetFlags(first, 77);
    s.refresh();
    EXPECT_EQ(s.at(5, 5), 2);
    EXPECT_EQ(s.screen->GetFlags(first), 77);
    s.screen->SetPriority(first, 3);
    EXPECT_FALSE(s.refresh()) << "a new priority invalidates nothing";
    EXPECT_EQ(s.screen->GetFlags(first), 0);
    first->Invalidate();
    s.refresh();
    EXPECT_EQ(s.at(5, 5), 1);
}

TEST(Compositor, OutlivesAndIsOutlivedByItsObjects) {
    Screen s;
    CGraphicsObject* leaving = s.add({0, 0, 10, 10}, 1);
    s.refresh();
    *s.screen >> leaving;
    EXPECT_FALSE(s.refresh()) << "leaving invalidates nothing";
    leaving->Visible(false);
    EXPECT_TRUE(s.refresh()) << "the object still knows its screen";
    s.add({30, 30, 40, 40}, 2);
    s.objects.pop_back();
    s.refresh();
    s.screen.reset();
    leaving->Invalidate();
    s.target.reset();
    EXPECT_EQ(leaving->GetBoundingBox(), CXRect(0, 0, 10, 10)) << "what it was drawn into is gone, too";
}

TEST(Compositor, DrawsAnObjectWithItsOwnClipOnceARefresh) {
    Screen s;
    CGraphicsObject* veil = s.add({0, 0, 100, 100}, 0xFFFF, 0, 128);
    veil->SetClippingRect({0, 0, 90, 90});
    s.refresh();
    const CXRect one(0, 0, 10, 10), two(50, 50, 60, 60);
    // The target isn't painted over by a background: a second drawing would show.
    const CColor black(static_cast<short>(0), kModel16);
    s.target->Fill(&black);
    (void)veil->isInvalidated();
    s.screen->Invalidate(&one);
    s.screen->Invalidate(&two);
    s.refresh();
    EXPECT_EQ(s.at(5, 5), s.at(80, 80));
    EXPECT_NE(s.at(5, 5), 0);
    EXPECT_EQ(s.at(95, 95), 0);
}

TEST(Compositor, FindsTheTopmostObjectAtAPoint) {
    Screen s;
    CGraphicsObject* low = s.add({0, 0, 50, 50}, 1, 1);
    CGraphicsObject* clear = s.add({0, 0, 50, 50}, 2, 5, 0);
    CGraphicsObject* hidden = s.add({0, 0, 50, 50}, 3, 9);
    CGraphicsObject* negative = s.add({100, 0, 150, 50}, 4, -2);
    hidden->Visible(false);
    const struct {
        const char* what;
        int x, y;
        bool visibleOnly;
        int from, to;
        bool ignoreAlpha;
        CGraphicsObject* found;
    } rows[] = {
        {"transparent ones are passed over", 10, 10, true, -1, -1, false, low},
        {"unless alpha is ignored", 10, 10, true, -1, -1, true, clear},
        {"hidden ones count when asked for", 10, 10, false, -1, -1, false, hidden},
        {"the highest priority allowed", 10, 10, false, -1, 8, true, clear},
        {"the lowest priority allowed", 10, 10, true, 2, -1, false, nullptr},
        {"both bounds included", 10, 10, true, 1, 1, false, low},
        {"the right and bottom edges belong to it", 50, 50, true, -1, -1, false, low},
        {"one pixel further doesn't", 51, 50, true, -1, -1, false, nullptr},
        {"a negative priority is never found", 110, 10, true, -1, -1, false, nullptr},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(s.screen->getGraphicsAt(row.x, row.y, row.visibleOnly, row.from, row.to, row.ignoreAlpha), row.found);
    }
    EXPECT_TRUE(negative->isVisible());
}

TEST(Compositor, ScrollsBackgroundsBySizeAndPosition) {
    const struct {
        const char* what;
        CXSize size;
        CXPoint position;
        CXPoint seen[2];  // which pixel of the background stands in the corners of the screen
    } rows[] = {
        {"wider: goes on from its left", {1000, 600}, {350, 0}, {{350, 0}, {149, 599}}},
        {"wider: inside", {1000, 600}, {150, 0}, {{150, 0}, {949, 599}}},
        {"wider: a negative position counts from the right", {1000, 600}, {-50, 0}, {{950, 0}, {749, 599}}},
        {"higher: goes on from its top", {800, 900}, {0, 400}, {{0, 400}, {799, 99}}},
        {"higher: inside", {800, 900}, {0, 300}, {{0, 300}, {799, 899}}},
        {"both: an offset", {1000, 700}, {120, 30}, {{120, 30}, {919, 629}}},
        {"neither: as it is", {800, 600}, {0, 0}, {{0, 0}, {799, 599}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Screen s;
        auto background = std::make_unique<CDirectDrawSurface>(s.window, row.size, 16, true);
        const auto pixel = [](const CXPoint& p) { return static_cast<std::uint16_t>(p.x * 7 + p.y * 129); };
        for (int y = 0; y < row.size.height; ++y) {
            for (int x = 0; x < row.size.width; ++x)
                background->getData().pixels()[static_cast<std::size_t>(y * row.size.width + x)] = pixel({x, y});
        }
        background->SetPosition(row.position);
        s.screen->setBackground(std::move(background));
        s.refresh();
        EXPECT_EQ(s.at(0, 0), pixel(row.seen[0]));
        EXPECT_EQ(s.at(799, 599), pixel(row.seen[1]));
    }
}

TEST(Compositor, TellsItsObserversInOrderOnceEnabled) {
    class Log : public CCanvasObserver {
    public:
        void onInitialUpdate() override { heard += "initial "; }
        void onUpdate() override { heard += "update "; }
        void onUpdated() override { heard += "updated "; }
        void onWindowFocusOn() override { heard += "on "; }
        void onWindowFocusOff() override { heard += "off "; }
        std::string heard;
    };
    Screen s;
    Log log;
    s.screen->addNotifier(&log);
    s.screen->addNotifier(&log);
    s.add({0, 0, 5, 5}, 1);
    s.refresh();
    EXPECT_EQ(log.heard, "") << "not enabled";
    s.screen->enableNotifyFlag(true);
    s.refresh();
    s.screen->onFocusOff();
    s.screen->onFocusOn();
    s.screen->Empty();
    s.refresh();
    EXPECT_EQ(log.heard, "update updated off on ") << "an empty screen tells of no drawing";
}

TEST(Surface, CentresASourceThatIsSmallerThanThePart) {
    Screen s;
    CDirectDrawSurface source(s.window, {10, 10}, 16, false);
    const CColor red(static_cast<short>(0x7800), kModel16);
    source.Fill(&red);
    const CXRect wider(0, 0, 30, 8), inside(5, 5, 10, 10);
    s.target->Blt(&source, 100, 100, &wider);
    EXPECT_EQ(s.at(10, 0), 0x7800) << "the middle of the part, not its place";
    EXPECT_EQ(s.at(9, 0), 0);
    EXPECT_EQ(s.at(100, 100), 0);
    s.target->Blt(&source, 797, 597, &inside);
    EXPECT_EQ(s.at(799, 599), 0x7800) << "cut at the edge of the target";
}
