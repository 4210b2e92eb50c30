// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/animo.h"

#include <gtest/gtest.h>

#include "animation/animation_manager.h"
#include "animation/random_sound_fx.h"
#include "graphics/refresh_screen.h"
#include "graphics/surface.h"
#include "support/animations.h"
#include "support/stage.h"

namespace {

// Writes down what it hears: S, the index of each frame, F.
class Diary : public CPlayableObserver {
public:
    bool onPlayableStarted(CPlayable*) override { return text += 'S', false; }
    bool onPlayableTick(CPlayable* playable) override {
        text += std::to_string(dynamic_cast<CAnimo*>(playable)->GetCurrentFrameInSequence());
        return false;
    }
    bool onPlayableFinished(CPlayable*) override { return text += 'F', false; }
    std::string take() { return std::exchange(text, ""); }

    std::string text;
};

class Cinema : public Stage {
public:
    Cinema() {
        start();
        window = CWindow::current();
        screen = window->GetRefreshScreenInterface();
    }
    std::unique_ptr<CAnimo6> load(const std::string& bytes) {
        file("Dane/S/a.ann", bytes);
        return std::make_unique<CAnimo6>(window, "a.ann");
    }
    // Of `count` frames, over the events.
    std::unique_ptr<CAnimo6> make(int count, const std::vector<animations::Event>& events, unsigned flags = 0) {
        return load(animations::third("NVP", animations::sheet(count), events, 4, flags));
    }

    CWindow* window = nullptr;
    CRefreshScreen* screen = nullptr;
};

}  // namespace

TEST(Animo, StepsThroughItsEvent) {
    struct Run {
        const char* what;
        animations::Event event;
        int start;  // the index that it begins at
        bool backward;
        int steps;
        const char* diary;
        unsigned flags = 0;
    };
    const animations::Event plain = {"A", {0, 1, 2}, 0, 0, 0, 0, {}};
    const auto loop = [](int start, int end, int count, unsigned flags = 0) {
        return animations::Event{"A", {0, 1, 2, 3, 4, 5}, start, end, count, flags, {}};
    };
    const Run runs[] = {
        {"to the end", plain, 0, false, 4, "12F"},
        {"a loop without end", loop(2, 4, 0), 0, false, 8, "12342342"},
        {"a loop of two passes goes one frame on", loop(2, 4, 2), 0, false, 9, "1234234F5"},
        {"a loop from the first frame", loop(0, 1, 0), 0, false, 4, "1010"},
        {"a loop that ends with the event stays", loop(1, 5, 1), 0, false, 6, "12345F"},
        {"there and back", loop(1, 3, 0, kPingPong), 0, false, 8, "12321232"},
        {"a silent loop of sound leaves a frame out at each step", loop(1, 2, 0, kLoopWithSound), 0, false, 5, "124F"},
        {"backward", plain, 2, true, 3, "10F"},
        {"backward in a loop", loop(2, 4, 0), 4, true, 6, "324324"},
        {"backward with a silent loop of sound", loop(2, 4, 0, kLoopWithSound), 3, true, 3, "21F4"},
        {"backward to a silent loop's beginning", loop(1, 4, 0, kLoopWithSound), 1, true, 1, "F4"},
        {"the last event of those that lead on", plain, 0, false, 4, "1222", kNextEvent},
    };
    Cinema stage;
    for (const Run& run : runs) {
        SCOPED_TRACE(run.what);
        Diary diary;
        const auto animo = stage.make(6, {run.event}, run.flags);
        animo->Play(0, 0);
        animo->SetEventFrame(0, run.start);
        animo->SetDirection(run.backward ? CAnimo::kBackward : CAnimo::kForward);
        animo->addNotifier(&diary);
        for (int i = 0; i < run.steps && animo->IsPlaying(); ++i)
            animo->next();
        EXPECT_EQ(diary.text, run.diary);
    }
    const auto chained = stage.make(6, {plain, {"B", {3, 4}, 0, 0, 0, 0, {}}}, kNextEvent);
    chained->Play("a");
    for (int i = 0; i < 4; ++i)
        chained->next();
    EXPECT_EQ(chained->getCurrentEventName(), "B");
    EXPECT_EQ(chained->Current(), 4);
}

TEST(Animo, PlaysWhenItMay) {
    Cinema stage;
    Diary diary;
    const auto animo =
        stage.make(3, {{"A", {0, 1}, 0, 0, 0, kNoRestart, {}}, {"HIDES", {2}, 0, 0, 0, kHideAtStop, {}}});
    animo->addNotifier(&diary);
    animo->Play("nothing of that name");
    animo->Play(7, 0);
    EXPECT_EQ(diary.take(), "");
    animo->Visible(false);
    animo->setFPS(0);
    animo->play();
    EXPECT_EQ(diary.take(), "0S");
    EXPECT_TRUE(animo->isVisible()) << "what plays is seen";
    EXPECT_EQ(animo->GetFPS(), 15);
    animo->Play("hides");
    EXPECT_EQ(diary.take(), "") << "refused while this event plays";
    animo->Pause();
    EXPECT_TRUE(animo->isPaused());
    animo->Play("hides");
    EXPECT_EQ(diary.take(), "0S") << "and not while it only rests";
    animo->stop(true);
    EXPECT_EQ(diary.take(), "F");
    EXPECT_FALSE(animo->isVisible());
    EXPECT_FALSE(animo->isPlaying() || animo->isPaused());
    animo->stop(false);
    animo->Continue();
    EXPECT_EQ(diary.take(), "F") << "there is no frame behind the only one";
}

TEST(Animo, KeepsToItsRate) {
    struct Rate {
        int fps, steps;
    };
    // In 300 ms, with frames of 10 ms: the first step at once, then each at the first frame that isn't too early.
    for (const Rate rate : {Rate{15, 5}, Rate{50, 15}, Rate{30, 8}, Rate{100, 30}, Rate{1000, 30}, Rate{5000, 30}}) {
        Cinema stage;
        const auto animo = stage.make(2, {{"A", {0, 1}, 0, 1, 0, 0, {}}});
        animo->setFPS(rate.fps);
        Diary diary;
        animo->Play(0, 0);
        animo->addNotifier(&diary);
        stage.frames(30);
        EXPECT_EQ(std::ssize(diary.take()), rate.steps) << rate.fps;
        stage.window->getAnimationManagerInterface()->pause();
        stage.frames(100);
        EXPECT_EQ(diary.take(), "");
        stage.window->getAnimationManagerInterface()->resume();
        stage.frames(1);
        EXPECT_EQ(diary.take().size(), 1U) << "lost time isn't made up";
    }
}

TEST(Animo, StandsWhereItsFrameAndRecordSay) {
    Cinema stage;
    const auto animo = stage.make(2, {{"A", {0, 1, 7}, 0, 0, 0, 0, {{5, 6, "", "", 255}, {-1, -2, "", "", 100}}}});
    EXPECT_EQ(animo->GetPosition(), CXPoint(15, 26));
    animo->setAnchor(2, 3);
    animo->SetGlobalPosition(100, 200);
    EXPECT_EQ(animo->GetPosition(), CXPoint(113, 223));
    EXPECT_EQ(animo->GetBoundingBox(), CXRect(113, 223, 117, 226));
    animo->SetEventFrame(0, 1);
    EXPECT_EQ(animo->GetPosition(), CXPoint(107, 215));
    EXPECT_EQ(animo->GetOpacity(), 100);
    animo->SetEventFrame(0, 0);
    EXPECT_EQ(animo->GetOpacity(), 100) << "once it is below 255 it stays";
    animo->SetEventFrame(0, 2);
    EXPECT_EQ(animo->Current(), 0) << "no such picture";
    EXPECT_EQ(animo->GetCurrentFrameInSequence(), 2);
    animo->SetClippingRect({1, 1, 3, 9});
    EXPECT_EQ(animo->GetBoundingBox(), CXRect(109, 218, 111, 220));
    animo->SetPosition(7, 8);
    EXPECT_EQ(animo->GetFrame(1)->GetFramePosition(), CXPoint(7, 8)) << "every frame's own place is lost";
    EXPECT_EQ(animo->GetPosition(), CXPoint(105, 205));
}

TEST(Animo, OnlyTheFrameOnTheScreenIsDecoded) {
    Cinema stage;
    const auto animo = stage.make(4, {{"A", {0, 1, 2, 3}, 0, 0, 0, 0, {}}});
    CDirectDrawSurface target(stage.window);
    animo->SetDestiny(&target);
    const std::unique_ptr<CAnimo6> twin(static_cast<CAnimo6*>(animo->clone()));
    twin->SetDestiny(&target);
    twin->SetGlobalPosition(100, 0);
    const auto decoded = [&] {
        int count = 0;
        for (int i = 0; i < 4; ++i)
            count += animo->GetFrame(i)->getCompression() == kCompressionRaw ? 1 : 0;
        return count;
    };
    for (int i = 0; i < 4; ++i) {
        animo->SetEventFrame(0, i);
        animo->Redraw();
        animo->Redraw();
        EXPECT_EQ(decoded(), 1);
        EXPECT_EQ(target.pixels()[20 * 800 + 10], i + 1);
    }
    twin->Redraw();
    EXPECT_EQ(decoded(), 2) << "a clone stands at a frame of its own";
    EXPECT_EQ(target.pixels()[20 * 800 + 110], 1);
    animo->FlipH();
    EXPECT_EQ(decoded(), 0) << "turned and coded again";
    EXPECT_EQ(animo->GetFrame(3)->GetFramePosition(), CXPoint(10, 20)) << "drawing left the frame's place alone";
    animo->Flush();
    EXPECT_EQ(animo->GetNOF(), 0);
    twin->Redraw();
    EXPECT_EQ(twin->GetNOF(), 4) << "the clone keeps what it shares";
}

TEST(Animo, FramesAreThereWhenTheyAreNeeded) {
    Cinema stage;
    const auto animo = stage.make(2, {{"A", {0, 1}, 0, 0, 0, 0, {}}});
    animo->toRelease(true);
    animo->Play(0, 0);
    animo->hide();
    EXPECT_FALSE(animo->hasFrames());
    stage.frames(20);
    animo->show();
    EXPECT_EQ(animo->GetNOF(), 2);

    CAnimo6 late(stage.window);
    late.setFilename("a.ann");
    late.Play("a");
    EXPECT_TRUE(late.IsPlaying()) << "read by Play";
    CAnimo6 missing(stage.window);
    missing.setFilename("nosuch.ann");
    missing.play();
    EXPECT_FALSE(missing.IsPlaying());
    EXPECT_NE(stage.messages().back().text.find("nosuch.ann"), std::string::npos);
    const auto broken = stage.load("NVP");
    EXPECT_EQ(broken->GetNOF(), 0);
    EXPECT_NE(stage.debugLines().back().find("a.ann: byte"), std::string::npos);
    broken->play();
    broken->Next();
    broken->Redraw();
}

TEST(Animo, SoundsOfFramesHaveTheirFolderOnce) {
    Cinema stage;
    stage.window->SetSoundFXPath("C:\\fx");
    const auto animo =
        stage.make(1, {{"A", {0, 0}, 0, 0, 0, 0, {{0, 0, "", "a.wav;b.wav;D:\\c.wav;C:\\fx\\d.wav", 255}}}});
    animo->Play(0, 0);
    auto* sounds = dynamic_cast<CRandomSoundFX*>(animo->getCurrentSound());
    ASSERT_NE(sounds, nullptr);
    std::string names;
    for (const auto& sound : sounds->getSounds())
        names += std::string(sound->getFileName().view()) + "|";
    EXPECT_EQ(names, "C:\\fx\\a.wav|C:\\fx\\b.wav|D:\\c.wav|C:\\fx\\d.wav|");
    animo->ClearWAVEntry(0, 0);
    EXPECT_EQ(animo->getCurrentSound(), nullptr);
    const auto streamed = stage.make(1, {{"A", {0}, 0, 0, 0, 0, {{0, 0, "", "a.wav", 255}}}}, kStreamedSounds);
    streamed->Play(0, 0);
    EXPECT_EQ(streamed->getCurrentSound(), nullptr) << "no sound is opened ahead";
}

TEST(Animo, IsBuiltAndTakenApartInMemory) {
    Cinema stage;
    CAnimo animo(stage.window);
    for (int i = 0; i < 4; ++i) {
        CGraphicsObject picture(stage.window, {3, 2}, 16);
        picture.SetPosition(i, 0);
        animo.AddFrame(&picture);
    }
    _annEventInfo3 event;
    event.name = "run";
    event.frames = {3, 1, 2, 1, 0};
    event.loopStart = 2;
    event.loopEnd = 4;
    animo.AddEvent(event);
    event.name = "other";
    event.frames = {1};
    animo.AddEvent(event);
    animo.SetEventFrame(0, 4);
    animo.RemoveFrame(1);
    EXPECT_EQ(animo.GetNOFInEvent("run"), 3);
    EXPECT_EQ(animo.GetNOFInEvent("other"), 0);
    CXPoint loop;
    animo.GetLoop(0, loop);
    EXPECT_EQ(loop, CXPoint(2, 2));
    EXPECT_EQ(animo.GetCurrentFrameInSequence(), 2);
    animo.SetEventFrame(0, 0);
    EXPECT_EQ(animo.getCurrFramePosition(), CXPoint(3, 0)) << "frame 3 has become frame 2";
    animo.ExchangeFrames(0, 2);
    EXPECT_EQ(animo.getCurrFramePosition(), CXPoint(0, 0));
    animo.RemoveEvent(0);
    EXPECT_EQ(animo.getCurrentEventName(), "other");
    animo.RemoveAllFrames();
    animo.RemoveAllEvents();
    EXPECT_EQ(CXPoint(animo.GetNOF(), animo.GetNOE()), CXPoint(0, 0));
}
