// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "frame/timer.h"

#include <functional>
#include <gtest/gtest.h>

#include "frame/public_trash.h"
#include "frame/unit.h"
#include "frame_stage.h"

namespace {

// Notes its firings, and does whatever a test wants of it.
struct Receiver : CTimerNotificator {
    void onTimer(int id) override {
        ++heard;
        if (log) *log += std::to_string(id) + " ";
        if (then) then();
    }
    int heard = 0;
    std::string* log = nullptr;
    std::function<void()> then;
};

}  // namespace

TEST(Timer, WhenItFires) {
    const struct {
        const char* what;
        std::uint32_t start;
        unsigned period;
        std::vector<std::uint32_t> steps;  // milliseconds before each frame
        int heard;
    } rows[] = {
        {"not before its time", 1000, 10, {9}, 0},
        {"at its time", 1000, 10, {9, 1}, 1},
        {"0 is every frame", 1000, 0, {0, 0, 5}, 3},
        {"once a frame, however late", 1000, 10, {100, 1}, 1},
        {"a late frame starts a whole period", 1000, 10, {15, 9, 1}, 2},
        {"the sum of time and period wraps", 0xFFFFFFF0, 32, {1, 1}, 2},
        {"the tick count wraps with it", 0xFFFFFFF0, 8, {4, 4, 9, 1, 10}, 3},
        {"a period of the largest size is short", 5, 0xFFFFFFFF, {0}, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        FrameStage stage("", startingAt(row.start));
        CXTimer timers(stage.window.get());
        Receiver receiver;
        timers.add(1, row.period, &receiver);
        for (const std::uint32_t step : row.steps) {
            stage.platform.clock.advance(step);
            timers.domodal();
        }
        EXPECT_EQ(receiver.heard, row.heard);
        EXPECT_EQ(timers.find(1)->firings, static_cast<std::uint64_t>(row.heard));
    }
}

TEST(Timer, TheHandlersTimeDoesntCount) {
    FrameStage stage;
    CXTimer timers(stage.window.get());
    Receiver slow;
    slow.then = [&] { stage.platform.clock.advance(50); };
    timers.add(1, 20, &slow);
    stage.platform.clock.advance(20);
    timers.domodal();
    stage.platform.clock.advance(19);
    timers.domodal();
    EXPECT_EQ(slow.heard, 1);
    stage.platform.clock.advance(1);
    timers.domodal();
    EXPECT_EQ(slow.heard, 2);
}

namespace {
using InFirst = void (*)(CXTimer&, Receiver&);

void removeIt(CXTimer& timers, Receiver&) { timers.remove(1); }
void removeTheNext(CXTimer& timers, Receiver&) { timers.remove(2); }
void removeAll(CXTimer& timers, Receiver&) {
    for (int id : {1, 2, 3})
        timers.remove(id);
}
void addOne(CXTimer& timers, Receiver& other) {
    if (!timers.find(9)) timers.add(9, 0, &other);
}
void addItAnew(CXTimer& timers, Receiver& other) {
    timers.remove(1);
    timers.add(1, 0, &other);
}
void resetWhenGone(CXTimer& timers, Receiver&) {
    timers.remove(1);
    timers.reset(1);
}
void stopAll(CXTimer&, Receiver&) { CXTimer::enable(false); }
}  // namespace

TEST(Timer, ReceiversChangeTheListFromInsideACall) {
    const struct {
        const char* what;
        InFirst inFirst;
        const char* heard;  // in two frames
    } rows[] = {
        {"itself", removeIt, "1 2 3 2 3 "},
        {"a later one", removeTheNext, "1 3 1 3 "},
        {"all", removeAll, "1 "},
        {"a new one", addOne, "1 2 3 1 2 3 9 "},
        {"itself anew", addItAnew, "1 2 3 2 3 1 "},
        {"reset when gone", resetWhenGone, "1 2 3 2 3 "},
        {"stops all", stopAll, "1 2 3 "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        FrameStage stage;
        CXTimer timers(stage.window.get());
        Receiver first, other;
        first.log = other.log = &stage.log;
        first.then = [&] { row.inFirst(timers, other); };
        timers.add(1, 0, &first);
        timers.add(2, 0, &other);
        timers.add(3, 0, &other);
        timers.domodal();
        timers.domodal();
        EXPECT_EQ(stage.log, row.heard);
    }
}

TEST(Timer, SeveralOfOneIdGoFromTheFirst) {
    FrameStage stage;
    CXTimer timers(stage.window.get());
    Receiver a, b;
    timers.add(7, 0, &a);
    timers.add(7, 0, &b);
    timers.remove(8);
    timers.remove(7);
    timers.domodal();
    EXPECT_EQ(a.heard, 0);
    EXPECT_EQ(b.heard, 1);
}

TEST(Timer, WhileStoppedTimeGoesOn) {
    FrameStage stage;
    CXTimer timers(stage.window.get());
    Receiver receiver;
    timers.add(1, 10, &receiver);
    CXTimer::enable(false);
    for (int i = 0; i < 5; ++i) {
        stage.platform.clock.advance(10);
        timers.domodal();
    }
    EXPECT_EQ(timers.find(1)->firings, 0U);
    CXTimer::enable(true);
    timers.domodal();
    timers.domodal();
    EXPECT_EQ(receiver.heard, 1);
}

TEST(Timer, PauseAndResumeKeepWhatHadPassed) {
    FrameStage stage;
    CXTimer timers(stage.window.get());
    Receiver receiver;
    timers.add(1, 10, &receiver);
    stage.platform.clock.advance(7);
    timers.pause();
    stage.platform.clock.advance(500);
    timers.resume();
    stage.platform.clock.advance(2);
    timers.domodal();
    EXPECT_EQ(receiver.heard, 0);
    stage.platform.clock.advance(1);
    timers.domodal();
    EXPECT_EQ(receiver.heard, 1);
}

TEST(Timer, UnitsHearWhenTheyAreOnTheScreen) {
    constexpr int kId = 1'000'000;  // apart from those that objects have of their own
    struct TimedUnit : CUnit6 {
        using CUnit6::CUnit6;
        void onTimer(int) override { ++heard; }
        int heard = 0;
    };
    const struct {
        bool active, updated, onlyActive;
        int heard;
    } rows[] = {
        {true, true, true, 1},
        {true, false, true, 0},
        {false, true, true, 0},
        {false, false, false, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.active << row.updated << row.onlyActive);
        FrameStage stage;
        TimedUnit unit(stage.window.get(), "U");
        unit.setActivity(row.active);
        if (row.updated) unit.onInitialUpdate();
        unit.setTimer(kId, 10, row.onlyActive);
        stage.platform.clock.advance(10);
        CXTimer* timers = stage.window->GetTimerInterface();
        timers->domodal();
        EXPECT_EQ(unit.heard, row.heard);
        // Heard or not, the period is used up.
        EXPECT_EQ(timers->find(kId)->firings, 1U);
        timers->domodal();
        EXPECT_EQ(timers->find(kId)->firings, 1U);
    }
}

TEST(PublicTrash, TakesTheMarkedOnesAndSkipsTheNextOne) {
    struct Rubbish : CXObject {
        explicit Rubbish(std::string& log, char name) : log_(log), name_(name) {}
        ~Rubbish() override { log_ += name_; }
        std::string& log_;
        char name_;
    };
    FrameStage stage;
    CPublicTrash* trash = stage.window->getPublicTrashInterface();
    Rubbish kept(stage.log, 'k');
    for (const char name : {'a', 'b', 'c'}) {
        auto* rubbish = new Rubbish(stage.log, name);
        rubbish->setToDelete();
        trash->add(rubbish);
    }
    trash->add(&kept);
    stage.platform.clock.advance(9999);
    stage.window->GetTimerInterface()->domodal();
    EXPECT_EQ(stage.log, "");
    stage.platform.clock.advance(1);
    stage.window->GetTimerInterface()->domodal();
    EXPECT_EQ(stage.log, "ac");
    stage.window.reset();
    EXPECT_EQ(stage.log, "acb");
}
