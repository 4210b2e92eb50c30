// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/playable.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>

#include "sound/random_playable.h"
#include "support/stage.h"

namespace {

// Plays until it is told to stop.
class Toy : public CPlayable {
public:
    explicit Toy(CWindow* window = nullptr) : CPlayable(window) {}
    using CPlayable::play;
    void play() override {
        status_ = 1;
        played += "[" + std::string(getParam().view()) + "]";
        notify(1);
    }
    void stop(bool tell) override {
        status_ = 0;
        if (tell) notify(3);
    }
    void pause() override { status_ |= 2; }
    void resume() override { status_ &= ~2; }
    void seek(int) override {}
    bool playRandomEvent() override {
        play();
        return true;
    }
    std::string played;
};

class Ear : public CPlayableObserver, public CRandomPlayableNotifier {
public:
    Ear(std::string& log, char name, bool answer = false) : log_(log), name_(name), answer_(answer) {}
    bool onPlayableStarted(CPlayable*) override { return hear('s'); }
    bool onPlayableTick(CPlayable*) override { return hear('t'); }
    bool onPlayableFinished(CPlayable*) override { return hear('f'); }
    bool onRandomPlayableStarted(CPlayable*, int run) override { return hear(static_cast<char>('0' + run)); }
    bool onRandomPlayableFinished(CPlayable*, int) override {
        hear('e');
        return again;
    }
    std::function<void()> then;
    bool again = false;

private:
    bool hear(char what) {
        log_ += {name_, what};
        if (then) then();
        return answer_;
    }
    std::string& log_;
    char name_;
    bool answer_;
};

}  // namespace

TEST(Playable, TellsItsObserversInOrderAndTheGenericOneLast) {
    std::string log;
    Toy toy;
    Ear a(log, 'a', true), b(log, 'b'), last(log, 'z', true);
    EXPECT_TRUE(toy.notify(3)) << "nobody objects";
    toy.addNotifier(&a);
    toy.addNotifier(&b);
    toy.addNotifier(&a);
    EXPECT_FALSE(toy.notify(1)) << "the last one's answer";
    toy.setGenericNotifier(&last);
    EXPECT_TRUE(toy.notify(2));
    EXPECT_TRUE(toy.notify(9));
    EXPECT_EQ(log, "asbsatbtzt");

    log.clear();
    a.then = [&] {
        toy.removeNotifier(&a);
        toy.removeNotifier(&b);
    };
    toy.notify(3);
    EXPECT_EQ(log, "afzf") << "one that has left is told nothing";
    toy.addNotifier(&b);
    toy.setNotifier(&a);
    log.clear();
    a.then = nullptr;
    toy.notify(1);
    EXPECT_EQ(log, "aszs") << "the list holds one observer alone";
}

TEST(Playable, FindsEventsInAnyCaseButSetsThemExactly) {
    Toy toy;
    toy.addEvent("walk", "1");
    toy.addEvent("WALK", "2");
    toy.CPlayable::play("WALK");
    toy.setParameter("Walk", "3");
    toy.setParameter("walk", "4");
    toy.CPlayable::play("Walk");
    toy.CPlayable::play("RUN");
    EXPECT_EQ(toy.played, "[1][4][]");
    EXPECT_STREQ(toy.getLastPlayedEvent().c_str(), "RUN");
    EXPECT_EQ(toy.next(), -1) << "a seek that moves nothing";
}

TEST(RandomPlayable, RunsAsOftenAsItsListenersLetIt) {
    std::string log;
    Stage stage;
    stage.start();
    stage.frames(60);  // where the tick count may wrap, timers fire at once
    CWindow* window = CWindow::current();
    Ear ear(log, 'r', true);
    Toy toy(window), event(window);
    CRandomPlayable random(window, nullptr);
    random.addNotifier(&ear);
    random.add(&toy, 0.5, 1, "");
    event.addEvent("IDLE", "7");
    random.add(&event, 0, 1, "idle");
    stage.frames(99);
    EXPECT_EQ(log, "");
    stage.frames(1);
    EXPECT_EQ(log, "r1r1") << "a wait below a second ends with the first one";
    EXPECT_EQ(toy.played, "[]");
    EXPECT_EQ(event.played, "[7]");
    stage.frames(300);
    EXPECT_EQ(log, "r1r1") << "what plays isn't started again";
    toy.stop(true);
    stage.frames(100);
    EXPECT_EQ(log, "r1r1rer1") << "its runs are over; they are counted anew";
    ear.again = true;
    toy.stop(true);
    stage.frames(100);
    EXPECT_EQ(log, "r1r1rer1rer2") << "once more by the listener's wish";

    log.clear();
    ear.then = [&] { random.remove(&toy); };
    toy.stop(true);
    stage.frames(300);
    EXPECT_EQ(log, "re") << "removed from inside its own end";
}

TEST(RandomPlayable, IsIdleOnceRefusedAndForgetsWhatIsGone) {
    std::string log;
    Stage stage;
    stage.start();
    CWindow* window = CWindow::current();
    Ear no(log, 'n');
    CRandomPlayable random(window, nullptr);
    random.addNotifier(&no);
    auto toy = std::make_unique<Toy>(window);
    random.add(toy.get(), 0, 5, "");
    stage.frames(500);
    EXPECT_EQ(log, "n1") << "refused once, and no new wait";
    auto other = std::make_unique<Toy>(window);
    random.add(other.get(), 0, 5, "");
    other.reset();
    toy.reset();
    stage.frames(200);
    EXPECT_EQ(log, "n1");
}
