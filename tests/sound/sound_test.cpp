// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/sound.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

#include "frame/resources_manager.h"
#include "platform/headless/call_thread.h"
#include "sound/script_level.h"
#include "sound/sound_object.h"
#include "sound/stream.h"
#include "structure/scene.h"
#include "support/stage.h"
#include "support/waves.h"

namespace {

std::string samples(int milliseconds, int value = 5000) { return level(value, milliseconds * 441 / 10); }

std::string sound(const std::string& name, const std::string& file, const std::string& more = "") {
    return lines(name, "SOUND",
                 "FILENAME=" + file + "\nONSTARTED={LOG^ADD(\"+\");}\nONFINISHED={LOG^ADD(\"-\");}\n" + more);
}

// What is heard of the next frames: for each whether anything is, as a digit of thousands.
std::string heard(Stage& stage, int frames) {
    std::string text;
    int loudest = 0;
    stage.platform.audio.setListener([&](std::span<const std::int16_t> out) {
        for (const std::int16_t sample : out)
            loudest = std::max(loudest, std::abs(int{sample}));
    });
    for (int i = 0; i < frames; ++i) {
        loudest = 0;
        stage.frames();
        text += static_cast<char>('0' + loudest / 1000);
    }
    stage.platform.audio.setListener({});
    return text;
}

TEST(Sound, FilesAreReadAsFarAsTheyAreSound) {
    const std::string data = level(5000, 441);
    const std::string fmt = chunk("fmt ", formatBody(1, 44100, 16));
    struct Row {
        const char* what;
        std::string bytes;
        int length;  // bytes; 0: stays silent
    };
    const Row rows[] = {
        {"plain", wave(data), 882},
        {"chunks between", riff(chunk("LIST", "abc") + fmt + chunk("fact", "") + chunk("data", data)), 882},
        {"a long format", riff(chunk("fmt ", formatBody(1, 44100, 16) + std::string(24, '\xFF')) + chunk("data", data)),
         882},
        {"more told than there is", riff(fmt + "data" + littleEndian(0xFFFFFFFF, 4) + data), 882},
        {"a part of a sample at the end", riff(fmt + "data" + littleEndian(5, 4) + data), 4},
        {"no samples", wave(""), 0},
        {"samples before the format", riff(chunk("data", data) + fmt), 0},
        {"a chunk of 4 GB", riff("LIST" + littleEndian(0xFFFFFFFF, 4) + fmt + chunk("data", data)), 0},
        {"a format that is too short", riff(chunk("fmt ", "ab") + chunk("data", data)), 0},
        {"not PCM", riff(chunk("fmt ", formatBody(1, 44100, 16, 2) + "ab") + chunk("data", data)), 0},
        {"no channels", wave(data, 0), 0},
        {"three channels", wave(data, 3), 0},
        {"a rate of 0", wave(data, 1, 0), 0},
        {"a rate that nobody hears", wave(data, 1, 0x7FFFFFF0), 0},
        {"24 bits", wave(data, 1, 44100, 24), 0},
        {"another tag", "RIFX" + wave(data).substr(4), 0},
        {"cut in its head", wave(data).substr(0, 30), 0},
        {"empty", "", 0},
    };
    Stage stage;
    for (std::size_t i = 0; i < std::size(rows); ++i)
        stage.file("Wavs/" + std::to_string(i) + ".wav", rows[i].bytes);
    stage.start();
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        SCOPED_TRACE(rows[i].what);
        CWindow* window = CWindow::current();
        CSound4 whole(window, window->GetSoundFXFullPath(CXString((std::to_string(i) + ".wav").c_str())), true);
        EXPECT_EQ(whole.isLoaded() ? whole.getDataLength() : 0, rows[i].length);
        whole.play();
        EXPECT_EQ(whole.isPlaying(), rows[i].length > 0);
        CSndStream stream(window, whole.getFileName());
        EXPECT_EQ(stream.LastError(), 0);  // the file is there
        stream.Play(true);
        EXPECT_EQ(stream.IsPlaying(), rows[i].length > 0);
        stage.platform.clock.advance(200);
    }
    EXPECT_EQ(CSndStream(CWindow::current(), "none.wav").LastError(), 2000);
    EXPECT_TRUE(stage.messages().empty());
}

TEST(Sound, SettingsOutliveTheBuffer) {
    Stage stage(lines("LOG", "STRING") + sound("A", "a.wav", "FLUSHAFTERPLAYED=TRUE"));
    stage.file("Wavs/a.wav", wave(samples(20)));
    stage.run("A^SETVOLUME(650);A^PLAY();");
    EXPECT_EQ(heard(stage, 4), "2200");
    EXPECT_FALSE(static_cast<CMC_Sound*>(stage.object("A"))->getSound()->isLoaded());
    stage.run("A^SETFREQ(22050);A^PLAY();");
    EXPECT_EQ(heard(stage, 6), "222200");
    EXPECT_EQ(stage.value("LOG"), "+-+-");
}

TEST(Sound, AnObjectMayGoOutOfItsOwnSignals) {
    struct Row {
        const char* handlers;
        const char* log;
    };
    const Row rows[] = {
        {"A:ONFINISHED={LOG^ADD(\"f\");S^REMOVE(\"A\");}", "sf"},
        {"A:ONSTARTED={LOG^ADD(\"s\");S^REMOVE(\"A\");LOG^ADD(\"r\");}", "sr"},
        {"A:ONFINISHED={LOG^ADD(\"f\");@IF(LOG^LENGTH(),<,4,{A^PLAY();});}", "sfsf"},
        {"A:ONFINISHED={LOG^ADD(\"f\");EP^RESTART();}", "sf"},
        {"A:ONFINISHED={LOG^ADD(\"f\");A^LOAD(\"none.wav\");A^PLAY();}", "sf"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.handlers);
        Stage stage(
            lines("A", "SOUND", std::string("FILENAME=a.wav\nFLUSHAFTERPLAYED=TRUE\nONSTARTED={LOG^ADD(\"s\");}")) +
            row.handlers + "\n");
        stage.level("EP", lines("LOG", "STRING"));
        stage.file("Wavs/a.wav", wave(samples(15)));
        stage.run("A^PLAY();");
        stage.frames(12);
        EXPECT_EQ(stage.value("LOG"), row.log);
    }
}

TEST(Sound, TheWholeSceneIsPausedAndGoesOn) {
    Stage stage(lines("LOG", "STRING") + sound("A", "a.wav") + sound("B", "b.wav"));
    stage.file("Wavs/a.wav", wave(samples(40)));
    stage.file("Wavs/b.wav", wave(samples(30)));
    stage.run("A^PLAY();B^PLAY();B^STOP(FALSE);");
    stage.frames(2);
    stage.run("S^PAUSE();");
    EXPECT_EQ(heard(stage, 6).substr(1), "00000");
    stage.run("S^RESUME();");
    EXPECT_EQ(heard(stage, 3), "550");
    EXPECT_EQ(stage.value("LOG"), "+++-");  // of B nothing is told: its end was silenced
}

TEST(Sound, WithoutADeviceNothingStartsAndNothingIsTold) {
    Stage stage(lines("LOG", "STRING") + sound("A", "a.wav", "PRELOAD=TRUE"));
    stage.file("Wavs/a.wav", wave(samples(20)));
    stage.platform.audio.unplug();
    stage.run("A^PLAY();A^SETPAN(0);A^PAUSE();A^RESUME();A^STOP();");
    stage.frames(5);
    EXPECT_EQ(stage.value("LOG"), "");
    EXPECT_EQ(CSndStream(CWindow::current(), CWindow::current()->GetSoundFXFullPath("a.wav")).LastError(), -997);
}

TEST(Sound, LevelsOfScriptsAreHundredthsOfADecibel) {
    struct Row {
        int script, volume, pan;
    };
    const Row rows[] = {
        {800, 0, 10000},
        {799, -4, 10000},
        {26, -3096, -2992},
        {25, -10000, -3000},
        {13, -10000, -3096},
        {12, -10000, -10000},
        {400, -1600, 0},
        {787, -52, 3096},
        {788, -48, 10000},
        {0, -10000, -10000},
        {-2147483647, -10000, -10000},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(volumeLevel(row.script), row.volume) << row.script;
        EXPECT_EQ(panLevel(row.script), row.pan) << row.script;
    }
    EXPECT_EQ(volumeLevel(2147483647), 2147483647);
}

TEST(Stream, PlaysWhatTheFileHoldsAndThenSilence) {
    Stage stage;
    stage.file("Wavs/a.wav", wave(samples(1500, 3000) + samples(210, 7000)));
    stage.start();
    CSndStream stream(CWindow::current(), CWindow::current()->GetSoundFXFullPath("a.wav"));
    ASSERT_EQ(stream.LastError(), 0);
    stream.Play(false);
    const std::string all = heard(stage, 600);
    EXPECT_EQ(all.substr(0, 175), std::string(150, '3') + std::string(21, '7') + "0000");
    // Not even what the ring held last is heard again.
    EXPECT_EQ(all.substr(175).find_first_not_of('0'), std::string::npos);
    EXPECT_TRUE(stream.FoundEnd());
    EXPECT_FALSE(stream.IsPlaying());
    stream.Close();
    EXPECT_EQ(stream.GetBitsPerSample(), 0);
}

TEST(Stream, GoesRoundWithoutAGapAndStopsGoingRoundWhenResumed) {
    Stage stage("OBJECT=S\nS:ONMUSICLOOPED={TURNS^INC();}\n" + lines("TURNS", "INTEGER"));
    stage.file("Wavs/a.wav", wave(samples(700, 3000) + samples(100, 7000)));
    stage.start();
    CSndStream stream(CWindow::current(), CWindow::current()->GetSoundFXFullPath("a.wav"));
    ASSERT_EQ(stream.LastError(), 0);
    stream.Play(true);
    const std::string turn = std::string(70, '3') + std::string(10, '7');
    const std::string all = heard(stage, 400);
    for (std::size_t i = 0; i < all.size(); ++i)
        // A frame on the edge between two levels has both.
        EXPECT_TRUE(all[i] == turn[i % 80] || all[i] == turn[(i + 1) % 80]) << i;
    // The ring holds 1200 ms more than is heard: the file was begun anew at 400, 1200, 2000, 2800 and 3600 ms.
    EXPECT_EQ(stage.value("TURNS"), "5");

    stream.Pause();
    EXPECT_EQ(heard(stage, 20).substr(1).find_first_not_of('0'), std::string::npos);
    stream.Resume();
    EXPECT_TRUE(stream.IsPlaying());
    EXPECT_FALSE(stream.IsLooped());
    stage.frames(400);
    EXPECT_FALSE(stream.IsPlaying());
}

// The refill and the device each on a thread of their own, as in a window. Worth its while under a sanitizer of
// threads.
class ThreadedAudio : public platform::Audio {
public:
    ThreadedAudio()
        : device_([this] {
              std::vector<std::int16_t> out(512);
              while (!isOver_) {
                  mixer_.mix(out);
                  heard_ += static_cast<int>(out.size());
              }
          }) {}
    ~ThreadedAudio() override {
        isOver_ = true;
        device_.join();
    }
    bool isPresent() const override { return true; }
    std::unique_ptr<platform::SoundBuffer> createBuffer(std::size_t size,
                                                        const platform::SoundFormat& format) override {
        return mixer_.createBuffer(size, format);
    }
    std::unique_ptr<platform::PeriodicCall> callEvery(std::uint32_t, std::function<void()> call) override {
        return std::make_unique<headless::CallThread>(0, std::move(call));
    }
    int heard() const { return heard_; }

private:
    headless::Mixer mixer_;
    std::atomic<bool> isOver_ = false;
    std::atomic<int> heard_ = 0;
    std::thread device_;
};

TEST(Stream, IsRefilledOnAnotherThreadWhileTheMainOneChangesIt) {
    Stage stage("OBJECT=S\nS:ONMUSICLOOPED={TURNS^INC();}\n" + lines("TURNS", "INTEGER"));
    stage.file("Wavs/a.wav", wave(samples(300)));
    stage.start();
    ThreadedAudio audio;
    platform::Platform& p = platform::current();
    platform::Platform threaded{p.clock, p.files, p.shell, p.input, p.display, audio};
    platform::install(&threaded);
    {
        CSndStream stream(CWindow::current(), CWindow::current()->GetSoundFXFullPath("a.wav"));
        ASSERT_EQ(stream.LastError(), 0);
        for (int round = 0; round < 8; ++round) {
            const int before = stream.GetProgress();
            stream.Play(round % 2 == 0);
            while (stream.GetProgress() == before && !stream.DonePlaying())
                stage.frames();
            stream.setVolume(-100 * round);
            stream.Pause();
            stream.Resume();
            stream.Pause();
            if (round == 5) stream.Open(CWindow::current()->GetSoundFXFullPath("a.wav"));
        }
        stream.Play(true);
        while (stage.value("TURNS") == "0")
            stage.frames();
    }
    platform::install(&p);
}

}  // namespace
