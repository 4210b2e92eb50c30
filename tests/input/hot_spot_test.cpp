// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "input/hot_spot.h"

#include <functional>
#include <gtest/gtest.h>
#include <optional>

#include "frame/frame_stage.h"
#include "frame/unit.h"
#include "graphics/graphics_object.h"

namespace {

const CXRect kHere(10, 10, 20, 20);
const CXPoint kIn(15, 15), kOut(99, 99);

// Notes its name and a letter for each event; `does` may destroy it.
struct Spot : CHotSpot {
    Spot(FrameStage& stage, char called, const CXRect& rect = kHere, int priority = 0)
        : CHotSpot(stage.window.get()), log(stage.log), name(called) {
        SetActiveRect(rect);
        setPriority(priority);
    }
    int tell(char event) {
        log += {name, event, ' '};
        const int answer = result;
        if (const auto toDo = does) toDo(event);
        return answer;
    }
    int OnMouseMove(CXPoint, int, void*) override { return tell('m'); }
    int OnFocusOn(CXPoint, int, void*) override { return tell('f'); }
    int OnFocusOff(CXPoint, int, void*) override { return tell('o'); }
    int OnLButtonDown(CXPoint, int, void*) override { return tell('d'); }
    int OnLButtonUp(CXPoint, int, void*) override { return tell('u'); }
    int OnRButtonDown(CXPoint, int, void*) override { return tell('r'); }

    std::string& log;
    char name;
    int result = 0;
    std::function<void(char)> does;
};

struct HotSpots : testing::Test, FrameStage {
    // What is told of the event at each of the points; behind each its result, unless that is 0, and a bar.
    std::string after(_event event, std::initializer_list<CXPoint> points) {
        log.clear();
        for (const CXPoint& point : points) {
            const int answer = CHotSpot::OnMouseEvent(event, point, 77);
            log += (answer != 0 ? std::to_string(answer) : "") + '|';
        }
        return log;
    }
    std::string pressed(const std::vector<int>& priorities, int min, int max) {
        std::vector<std::unique_ptr<Spot>> spots;
        for (const int priority : priorities)
            spots.push_back(std::make_unique<Spot>(*this, static_cast<char>('A' + spots.size()), kHere, priority));
        CHotSpot::setMinPriority(min);
        CHotSpot::setMaxPriority(max);
        return after(kLeftDown, {kIn}).substr(0, 1);
    }
};

}  // namespace

TEST_F(HotSpots, TheHighestWithinTheRangeIsHitAndOfEqualsTheLatest) {
    EXPECT_EQ(pressed({0, 0}, 0, 10'000'000) + pressed({2, 1}, 0, 9) + pressed({3, 5, 5, 4}, 0, 9), "BAC");
    EXPECT_EQ(pressed({3, 5}, 0, 4) + pressed({3, 5}, 0, 5) + pressed({3, 5}, 5, 9) + pressed({3, 5}, 6, 9), "ABB|");
    EXPECT_EQ(pressed({-1}, -9, 9) + pressed({10'000'001}, 0, 10'000'000), "||");
}

TEST_F(HotSpots, TheDisabledAndThoseOfASleepingUnitLetTheEventThrough) {
    Spot low(*this, 'L'), high(*this, 'H', kHere, 9);
    CUnit6 unit(window.get(), "U");
    high.setUnit(&unit);
    EXPECT_EQ(after(kLeftDown, {kIn}), "Ld |");
    unit.setActivity(true);
    EXPECT_EQ(after(kLeftDown, {kIn}), "Hd |");
    high.Enable(false);
    EXPECT_EQ(after(kLeftDown, {kIn}), "Ld |");
}

TEST_F(HotSpots, ARectangleGoesBeforeThePixels) {
    CGraphicsObject opaque(window.get(), {4, 3}, 16), holed(window.get(), {2, 2}, 16);
    holed.setPlanes({2, 2}, 16, Plane(8), Plane(std::vector<std::uint8_t>{0, 1, 255, 0}));
    opaque.SetPosition(100, 50);
    holed.SetPosition(100, 50);
    const auto hits = [&](const CXRect& rect, CGraphicsObject* graphic, std::initializer_list<CXPoint> points) {
        CHotSpot spot(window.get());
        spot.SetActiveRect(rect);
        spot.Set(graphic, kMouseMove, 0);
        std::string text;
        for (const CXPoint& point : points)
            text += spot.TestHit(point) ? '1' : '0';
        return text;
    };
    EXPECT_EQ(hits(kHere, &opaque, {{20, 10}, {21, 10}, {101, 51}}), "100");
    EXPECT_EQ(hits({10, 10, 10, 20}, &opaque, {{10, 15}, {101, 51}, {99, 50}}), "010") << "no width";
    EXPECT_EQ(hits({}, &holed, {{100, 50}, {101, 50}, {100, 51}, {101, 51}}), "0110");
    EXPECT_EQ(hits({}, nullptr, {{0, 0}}), "0");
}

TEST_F(HotSpots, FocusFollowsThePoint) {
    Spot low(*this, 'L', {0, 0, 100, 100}), high(*this, 'H', {40, 40, 60, 60}, 5);
    const CXPoint onLow(1, 1), onBoth(50, 50), beside(101, 101);
    EXPECT_EQ(after(kMouseMove, {onLow, {2, 1}, onBoth, onLow}), "Lm Lf |Lm |Hm Hf |Ho Lm |") << "the lower keeps it";
    CHotSpot::setMinPriority(3);
    EXPECT_EQ(after(kMouseMove, {onBoth, beside, onLow}), "Hm Hf |Lo Ho ||") << "the range counts for what is found";
    CHotSpot::setMinPriority(0);
    after(kMouseMove, {onLow, onBoth});
    low.result = 1;
    EXPECT_EQ(after(kMouseMove, {beside, beside}), "Lo |Ho |") << "above 0 ends the walk";
    after(kMouseMove, {onBoth});
    high.Enable(false);
    EXPECT_EQ(after(kMouseMove, {beside}), "|") << "what is disabled loses nothing";
}

TEST_F(HotSpots, APressGivesFocusAndAReleaseTakesIt) {
    Spot a(*this, 'A'), b(*this, 'B', {30, 10, 40, 20});
    b.result = 6;
    EXPECT_EQ(after(kLeftDown, {kIn}), "Ad |");
    EXPECT_EQ(after(kMouseMove, {kIn}), "Am |");
    EXPECT_EQ(after(kLeftUp, {{35, 15}, kIn, kOut}), "Bu 6|Au ||") << "goes to what is there";
    EXPECT_EQ(after(kMouseMove, {kIn}), "Am Af |");
    EXPECT_EQ(after(static_cast<_event>(3), {kIn}), "77|") << "no event that is known";
}

TEST_F(HotSpots, ARightPressGoesThroughTheListUntilOneTakesIt) {
    Spot a(*this, 'A', kHere, -5), off(*this, 'X'), b(*this, 'B', kHere, 9), c(*this, 'C'), d(*this, 'D', kHere, 10);
    off.Enable(false);
    CHotSpot::setMinPriority(8);
    a.result = -1;
    c.result = 2;
    EXPECT_EQ(after(kRightDown, {kIn}), "Ar Br Cr 2|");
    EXPECT_TRUE(a.hasFocus() && c.hasFocus() && !d.hasFocus() && !off.hasFocus());
}

TEST_F(HotSpots, TheCursorIsActiveOverThem) {
    Spot spot(*this, 'A');
    std::string kinds;
    const auto look = [&] { kinds += "maw"[static_cast<int>(platform.input.cursor())]; };
    for (const _event event : {kMouseMove, kLeftDown, kMouseMove, kRightDown, kMouseMove}) {
        after(event, {kIn});
        look();
    }
    spot.Enable(false);  // it has the focus
    look();
    spot.Enable(true);
    after(kMouseMove, {kOut});
    look();
    window->BeginWaitCursor();
    spot.EnableCursor(false);
    after(kMouseMove, {kIn, kOut});
    spot.Enable(false);
    look();
    spot.EnableCursor(true);
    spot.Enable(true);
    spot.Enable(false);
    look();
    EXPECT_EQ(kinds, "amamaamwm");
}

// One at the address of another that was destroyed a moment ago is not the other.
TEST_F(HotSpots, HandlersMakeAndDestroyThem) {
    std::optional<Spot> a, b;
    a.emplace(*this, 'A');
    b.emplace(*this, 'B');
    a->does = [&](char) { b.emplace(*this, 'b'); };
    EXPECT_EQ(after(kRightDown, {kIn}), "Ar |") << "the new one waits for the next event";
    a->does = [&](char) { a.emplace(*this, 'a'); };
    EXPECT_EQ(after(kRightDown, {kIn, kIn}), "Ar br |br ar |") << "its own end doesn't end the walk";

    a->does = [&](char) { b.reset(); };
    b->does = [&](char) { a.reset(); };
    EXPECT_EQ(after(kMouseMove, {kOut}), "bo |") << "both had the focus";
    b->does = [&](char) { b.emplace(*this, 'c'); };
    EXPECT_EQ(after(kMouseMove, {kIn, kIn}), "bm |cm cf |") << "no focus for one that is gone";
    b->does = [&](char) { b.reset(); };
    EXPECT_EQ(after(kLeftDown, {kIn, kIn}), "cd ||");
}

TEST_F(HotSpots, StandInTheListOfTheirApplication) {
    std::optional<Spot> owner;
    owner.emplace(*this, 'A').result = 4;
    CHotSpot child(window.get(), &*owner, kLeftDown, 3);
    child.SetActiveRect(kHere);
    EXPECT_EQ(window->OnLButtonDown(kIn, 0), 4) << "the child isn't listed";
    CHotSpot::done();
    EXPECT_EQ(after(kLeftDown, {kIn}), "|");
    Spot later(*this, 'B');
    owner.reset();
    EXPECT_EQ(after(kLeftDown, {kIn}), "Bd |");
}
