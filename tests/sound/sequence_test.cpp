// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/sequence.h"

#include <gtest/gtest.h>

#include "animation/animo.h"
#include "sound/sequence_file.h"
#include "sound/sequence_object.h"
#include "sound/sound.h"
#include "sound/speaking_animation.h"
#include "structure/scene.h"
#include "support/animations.h"
#include "support/stage.h"

namespace {

// Silence of that length: 16 bits, one channel, 8000 samples a second.
std::string wave(int milliseconds) {
    const std::int64_t size = milliseconds * 16;
    std::string bytes = "RIFF";
    pictures::put(bytes, 36 + size, 4);
    bytes += "WAVEfmt ";
    pictures::put(bytes, 16, 4);
    pictures::put(bytes, 1, 2);
    pictures::put(bytes, 1, 2);
    pictures::put(bytes, 8000, 4);
    pictures::put(bytes, 16000, 4);
    pictures::put(bytes, 2, 2);
    pictures::put(bytes, 16, 2);
    bytes += "data";
    pictures::put(bytes, size, 4);
    return bytes + std::string(static_cast<std::size_t>(size), '\0');
}

animations::Event event(const std::string& name, const std::vector<int>& frames) {
    return {name, frames, 0, 0, 0, 0, {}};
}

std::string note(const std::string& text) { return "{LOG^ADD(\"" + text + "\");}\n"; }

// SQ tells "S." and "F." for the whole and "x+." and "x-." for the elements a to d, k and n; more lines come in front
// of these, so that theirs are replaced.
std::string sequence(const std::string& file, const std::string& more = "", const std::string& name = "SQ") {
    std::string handlers = more;
    const auto add = [&](const std::string& key, const std::string& text) {
        if (more.find(key + "=") == std::string::npos) handlers += key + "=" + note(text);
    };
    add("ONSTARTED", "S.");
    add("ONFINISHED", "F.");
    for (const std::string step : {"a", "b", "c", "d", "k", "n"}) {
        const std::string upper(1, static_cast<char>(step[0] - 'a' + 'A'));
        add("ONSTARTED^" + upper, step + "+.");
        add("ONFINISHED^" + upper, step + "-.");
    }
    return lines(name, "SEQUENCE", "FILENAME=" + file + "\n" + handlers);
}

std::string simple(const std::string& name, const std::string& file) {
    return "NAME " + name + "\n" + name + " FILENAME " + file + "\n" + name + " TYPE SIMPLE\n";
}

const std::string kRoot = "NAME t\nt TYPE SEQUENCE\nt SEQEVENT GO 1\n";
const std::string kTwo = simple("a", "A.WAV") + simple("b", "B.WAV") + kRoot + "a ADD t\nb ADD t\n";
const std::string kActs = "NAME a\na FILENAME HERO\na EVENT T_1\na TYPE SIMPLE\n" + kRoot + "a ADD t\n";
const std::string kSpeech =
    "NAME k\nk TYPE SPEAKING\nk ANIMOFN HERO\nk WAVFN VOICE\nk PREFIX T\n" + kRoot + "k ADD t\n";

// Sounds A to C of 35 ms, L of 200; HERO, whose mouth "T_1" takes 100 ms, T_START 50; VOICE, the sound L.
class Theatre : public Stage {
public:
    explicit Theatre(const std::string& text, const std::string& more = "", const std::string& rest = "")
        : Stage(lines("LOG", "STRING") +
                lines("HERO", "ANIMO", "FILENAME=hero.ann\nTOCANVAS=TRUE\nVISIBLE=TRUE\nFPS=20\n") +
                lines("VOICE", "SOUND", "FILENAME=L.WAV\n") + sequence("t.seq", more) + rest) {
        for (const char* name : {"A", "B", "C"})
            file(std::string("Wavs/") + name + ".WAV", wave(35));
        file("Wavs/L.WAV", wave(200));
        file("Dane/S/hero.ann", animations::third("NVP", animations::sheet(2),
                                                  {event("IDLE", {0}), event("T_START", {1}), event("T_1", {0, 1}),
                                                   event("T_END", {0}), event("T_STOP", {1})}));
        file("Dane/S/t.seq", text);
        scene("U", lines("LOG", "STRING"));
        start();
    }
    std::string log() { return value("LOG"); }
    CPlayable* root() { return static_cast<CMC_Sequence*>(object("SQ"))->getSequence(); }
    CSequencedPlayable* tree() { return static_cast<CSequencedPlayable*>(root()); }
};

}  // namespace

TEST(Sequence, AFileIsReadLineByLine) {
    const std::string a = simple("a", "A.WAV");
    const struct {
        const char* what;
        std::string text, heard;
    } rows[] = {
        {"separators, a comment, line ends of two bytes, lone separators",
         "NAME=a\r\n:\r\n \r\n#NAME t\r\n==\r\na:FILENAME = A.WAV\r\na TYPE:SIMPLE\r\nNAME t\r\nt=TYPE=SEQUENCE\r\n"
         "t SEQEVENT GO=1\r\na:ADD:t",
         "S.a+.F.a-."},
        {"a line of an undeclared name", kRoot + "a FILENAME A.WAV\na TYPE SIMPLE\na ADD t\n", "S."},
        {"the file name behind the type", "NAME a\na TYPE SIMPLE\na FILENAME A.WAV\n" + kRoot + "a ADD t\n", "S."},
        {"an extension in small letters", simple("a", "A.wav") + kRoot + "a ADD t\n", "S."},
        {"added before the parent is made", a + "NAME t\na ADD t\n" + kRoot, "S."},
        {"the parent is ROOT, which is none here", a + kRoot + "a ADD\n", "S."},
        {"the root by another case of letters", a + "NAME T\nT TYPE SEQUENCE\na ADD T\n", ""},
        {"declared twice", a + "NAME a\n" + kRoot + "NAME t\na ADD t\n", "S.a+.F.a-."},
        {"the last child isn't waited for either", a + "a WAIT FALSE\n" + kRoot + "a ADD t\n", "S.a+.F.a-."},
        {"an odd wait, an odd mode", a + "a WAIT no\n" + kRoot + "t MODE ANY\na ADD t\na ADD t\n",
         "S.a+.F.a-.a+.F.a-."},
        {"a sound as root", "NAME t\nt FILENAME A.WAV\nt TYPE SIMPLE\nt SEQEVENT GO 1\n", "S.F."},
        {"a missing sound is stepped over", simple("b", "NONE.WAV") + a + kRoot + "b ADD t\na ADD t\n", "S.a+.F.a-."},
        {"its own child", a + kRoot + "t ADD t\na ADD t\n", "S.a+.F.a-."},
        {"its own grandchild", a + kRoot + "NAME n\nn TYPE SEQUENCE\nn ADD t\nt ADD n\na ADD n\nn ADD n\na ADD t\n",
         "S.n+.a+.F.n-.a-.a+.F.a-."},
        {"a circle away from the root", "NAME x\nx TYPE SEQUENCE\nx ADD x\n" + a + kRoot + "a ADD t\n", "S.a+.F.a-."},
        {"two parents", a + "NAME n\nn TYPE SEQUENCE\na ADD n\n" + kRoot + "n ADD t\nn ADD t\na ADD t\n",
         "S.n+.a+.F.n-.a-.n+.a+.F.n-.a-.a+.F.a-."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Theatre stage(row.text);
        stage.run("SQ^PLAY(\"GO\");");
        stage.frames(60);
        EXPECT_EQ(stage.log(), row.heard);
        stage.run("SQ^HIDE();SQ^SHOW();S^REMOVE(\"SQ\");");
        stage.frames(2);
    }
}

TEST(Sequence, WhatCannotBeReadDoesNothing) {
    for (const char* file : {"t.seq", "none.seq", ""}) {
        SCOPED_TRACE(file);
        Theatre stage("NAME x\n", "FILENAME=" + std::string(file) + "\n");
        stage.run(
            "SQ^PLAY(\"GO\");SQ^PLAY(\"GO\",\"1\");SQ^STOP();SQ^PAUSE();SQ^RESUME();SQ^SHOW();SQ^HIDE();"
            "SQ^SETVOLUME(1);SQ^SETPAN(1);SQ^SETFREQ(1);SQ^PLAY();"
            "LOG^ADD(SQ^ISPLAYING());LOG^ADD(\"[\");LOG^ADD(SQ^GETPLAYING());LOG^ADD(SQ^GETEVENTNAME());");
        stage.frames(12);
        EXPECT_EQ(stage.log(), "FALSE[");
    }
    Theatre stage("");
    stage.file("Dane/S/t.seq", kTwo);
    stage.run("SQ^PLAY(\"GO\");");
    EXPECT_EQ(stage.log(), "S.a+.") << "a failed load is tried again";
}

TEST(Sequence, DigitsSelectChildren) {
    const struct {
        int child;
        char digit;
    } digits[] = {{0, '1'}, {8, '9'}, {9, 'A'}, {33, 'Y'}, {34, 'Z'}, {35, 'a'}, {60, 'z'}, {61, '0'}, {-1, '0'}};
    for (const auto& [child, digit] : digits)
        EXPECT_EQ(CMultimediaSequenceCreator::getParameter(child), digit) << child;

    // 62 children, all of them the same sequence of a, b and c.
    std::string text = simple("a", "A.WAV") + simple("b", "B.WAV") + simple("c", "C.WAV") +
                       "NAME n\nn TYPE SEQUENCE\nn MODE PARAMETER\na ADD n\nb ADD n\nc ADD n\n" + kRoot +
                       "t MODE PARAMETER\nt SEQEVENT OPEN XxyX\nt SEQEVENT Mixed z3\n";
    for (int i = 0; i < 61; ++i)
        text += "n ADD t\n";
    text += "c ADD t\n";
    const struct {
        const char* what;
        std::string code, heard;
        bool playing;
    } rows[] = {
        {"a parameter of one digit stops at the inner one", "SQ^PLAY(\"GO\");", "S.n+.", true},
        {"the last digit, the key in other letters", "SQ^PLAY(\"mixed\");", "S.n+.c+.", true},
        {"a new value under the exact key alone", "SQ^PLAY(\"MIXED\",\"12\");", "S.n+.c+.", true},
        {"the new value", "SQ^PLAY(\"Mixed\",\"12\");", "S.n+.b+.", true},
        {"no child", "SQ^PLAY(\"GO\",\"0\");", "S.", true},
        {"stopped with no child", "SQ^PLAY(\"GO\",\"0\");SQ^STOP();", "S.", false},
        {"an unknown event", "SQ^PLAY(\"NO\");", "S.", true},
        {"an array in the open places", "NUMBERS^ADD(60,1,7);SQ^PLAY(\"OPEN\",\"NUMBERS\");", "S.n+.b+.", true},
        {"an array longer than the pattern", "NUMBERS^ADD(0,0,0,0,0,0);SQ^PLAY(\"OPEN\",\"NUMBERS\");", "S.n+.a+.",
         true},
        {"an array that leaves places open", "NUMBERS^ADD(0);SQ^PLAY(\"OPEN\",\"NUMBERS\");", "S.n+.", true},
        {"an object that is no array", "SQ^PLAY(\"GO\",\"HERO\");", "S.n+.", true},
        {"too many are none", "SQ^PLAY(\"GO\",\"{1\");", "S.c+.", true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Theatre stage(text, "", lines("NUMBERS", "ARRAY"));
        stage.run(row.code);
        EXPECT_EQ(stage.log(), row.heard);
        EXPECT_EQ(stage.root()->isPlaying(), row.playing);
        if (row.what == rows[1].what) {
            EXPECT_EQ(stage.tree()->get("12")->getName(), CXString("b"));
            EXPECT_EQ(stage.tree()->get("19")->getName(), CXString("n"));
        }
    }
}

TEST(Sequence, StopsAndRests) {
    const struct {
        const char* what;
        std::string text, more, code;
        int frames;
        std::string heard;
    } rows[] = {
        {"paused, it takes no step", kTwo, "", "SQ^PLAY(\"GO\");SQ^PAUSE();", 40, "S.a+."},
        {"resumed", kTwo, "", "SQ^PLAY(\"GO\");SQ^PAUSE();SQ^RESUME();", 40, "S.a+.a+.F.a-.b+.F.b-."},
        {"played anew while paused", kTwo, "", "SQ^PLAY(\"GO\");SQ^PAUSE();SQ^PLAY(\"GO\");", 40,
         "S.a+.S.a+.F.a-.b+.F.b-."},
        {"stopped from its start", kTwo, "ONSTARTED={LOG^ADD(\"S.\");SQ^STOP();}\n", "SQ^PLAY(\"GO\");", 40, "S."},
        {"stopped from a step's start", kTwo, "ONSTARTED^A={LOG^ADD(\"a+.\");SQ^STOP();}\n", "SQ^PLAY(\"GO\");", 40,
         "S.a+.F.a-."},
        {"no plain signal for an element", kTwo, "ONSTARTED^A={}\nONSTARTED^B={}\n", "SQ^PLAY(\"GO\");", 40,
         "S.F.a-.F.b-."},
        {"a silent stop", kTwo, "", "SQ^PLAY(\"GO\");SQ^STOP(FALSE);", 40, "S.a+."},
        {"an event is stopped and tells it", kActs, "", "SQ^PLAY(\"GO\");SQ^STOP();", 2, "S.a+.F.a-."},
        {"an event is stopped silently", kActs, "", "SQ^PLAY(\"GO\");SQ^STOP(FALSE);", 2, "S.a+."},
        {"a stop within the end that it tells", kActs, "ONFINISHED={LOG^ADD(\"F.\");SQ^STOP();}\n",
         "SQ^PLAY(\"GO\");SQ^STOP();", 2, "S.a+.F.a-."},
        {"played again by the end of a stop", kActs, "ONFINISHED^A={SQ^PLAY(\"GO\");SQ^PAUSE();}\n",
         "SQ^PLAY(\"GO\");SQ^STOP();LOG^ADD(SQ^ISPLAYING());", 2, "S.a+.F.S.a+.TRUE"},
        {"an animation that isn't there any more", kActs, "", "S^REMOVE(\"HERO\");SQ^PLAY(\"GO\");", 20, "S.a+."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Theatre stage(row.text, row.more);
        stage.run(row.code);
        stage.frames(row.frames);
        EXPECT_EQ(stage.log(), row.heard);
    }
}

TEST(Sequence, AMouthMovesWhileTheSoundRuns) {
    const auto mouth = [](const std::string& more) { return kSpeech + more; };
    const struct {
        const char* what;
        std::string text, heard;
    } rows[] = {
        {"two events and their end", mouth(""), "S.k+.111F.k-."},
        {"a start that is awaited", mouth("k STARTING TRUE\n"), "S.k+.s111F.k-."},
        {"an end, after which it is told no more", mouth("k ENDING TRUE\n"), "S.k+.111F.k-.e"},
        {"no such start: at once", mouth("k PREFIX NO\nk STARTING TRUE\n"), "S.k+."},
        {"no sound", mouth("k WAVFN none.wav\n"), "S.k+.F.k-."},
        {"an element that is no sound", mouth("k WAVFN t\n"), "S.k+.F.k-."},
        {"no animation", mouth("k ANIMOFN none.ANN\n"), "S.k+.F.k-."},
        {"a sound of the file itself, which has no parent", simple("a", "A.WAV") + mouth("k WAVFN a\n"),
         "S.k+.S.1F.k-.a-."},
    };
    const std::string told =
        "HERO:ONSTARTED^T_1=" + note("1") + "HERO:ONSTARTED^T_START=" + note("s") + "HERO:ONSTARTED^T_END=" + note("e");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Theatre stage(row.text, "", told);
        stage.run("SQ^PLAY(\"GO\");");
        stage.frames(70);
        const std::string heard = stage.log();
        EXPECT_EQ(heard.substr(0, row.heard.size()), row.heard) << heard;
    }
}

// Each deed is done at the first signal, at the second, and so on, in a scene entered anew.
TEST(Sequence, HandlersMayTakeAnythingAway) {
    const std::string nested = simple("a", "A.WAV") + "a WAIT FALSE\n" + simple("b", "B.WAV") +
                               "NAME n\nn TYPE SEQUENCE\na ADD n\nb ADD n\n" + kRoot + "n ADD t\na ADD t\n";
    const std::string deeds[] = {
        "S^REMOVE(\"SQ\");",
        "S^REMOVE(\"HERO\");",
        "S^REMOVE(\"VOICE\");",
        "S^REMOVE(\"SQ\");S^REMOVE(\"HERO\");S^REMOVE(\"VOICE\");",
        "EP^GOTO(\"U\");",
        "HERO^LOAD(\"hero2.ann\");",
        "SQ^PLAY(\"GO\");",
        "SQ^STOP();SQ^PLAY(\"GO\");",
        "SQ^PAUSE();SQ^RESUME();SQ^HIDE();SQ^SHOW();",
        "HERO^STOP();VOICE^STOP();",
    };
    constexpr int kMoments = 9;
    std::string handlers, blocks = lines("N", "INTEGER") + code("DEC", "N^DEC();") + lines("DONE", "INTEGER");
    for (const char* signal : {"ONSTARTED", "ONFINISHED"}) {
        for (const char* element : {"", "^A", "^K", "^N"})
            handlers += std::string(signal) + element + "=DEC\n";
        blocks += "VOICE:" + std::string(signal) + "=DEC\nHERO:" + signal + "=DEC\n";
    }
    for (std::size_t i = 0; i < std::size(deeds); ++i)
        blocks += code("DEED" + std::to_string(i), "DONE^INC();" + deeds[i]);
    int done = 0;
    for (const std::string& text : {nested, kActs, kSpeech + "k STARTING TRUE\nk ENDING TRUE\n"}) {
        Theatre stage(text, handlers, blocks + "HERO:ONFRAMECHANGED=DEC\n");
        stage.file("Dane/S/hero2.ann", animations::third("NVP", animations::sheet(1), {event("T_1", {0, 0, 0})}));
        for (std::size_t deed = 0; deed < std::size(deeds); ++deed) {
            for (int moment = 1; moment <= kMoments; ++moment) {
                SCOPED_TRACE(std::to_string(moment) + ": " + deeds[deed]);
                stage.run("N^SET(" + std::to_string(moment) + ");N^ADDBEHAVIOUR(\"ONCHANGED$0\",\"DEED" +
                          std::to_string(deed) + "\");SQ^PLAY(\"GO\");");
                stage.frames(25);
                done += stage.value("DONE") != "0";
                stage.run("SQ^STOP();HERO^STOP();VOICE^PLAY();HERO^PLAY(\"T_1\");");
                stage.frames(2);
                stage.run("EP^GOTO(\"S\");");
                stage.frames(1);
                EXPECT_EQ(stage.value("DONE"), "0");
            }
        }
    }
    EXPECT_GT(done, 150);
}

// What plays from its own signals comes to an end, be it that the nesting is cut off.
TEST(Sequence, HandlersMayPlayItForEver) {
    for (const char* moment : {"ONSTARTED", "ONSTARTED^K", "ONFINISHED^K"}) {
        SCOPED_TRACE(moment);
        const std::string again = std::string(moment) + "={LOG^ADD(\".\");SQ^STOP();SQ^PLAY(\"GO\");}\n";
        Theatre stage(kSpeech, again, "HERO:ONSTARTED={HERO^STOP();}\n");
        stage.run("SQ^PLAY(\"GO\");");
        stage.frames(3);
        EXPECT_FALSE(stage.log().empty());
    }
}

// A sequence that is gone is heard no more by the sounds and animations that it shared, nor by its successor's.
TEST(Sequence, SharedMediaOutliveATree) {
    Theatre stage(kTwo, "", sequence("u.seq", "ONSTARTED^A={LOG^ADD(\"u+.\");}\n", "SQ2"));
    stage.file("Dane/S/u.seq", simple("a", "A.WAV") + "NAME u\nu TYPE SEQUENCE\nu SEQEVENT GO 1\na ADD u\n");
    stage.run("SQ2^PLAY(\"GO\");");
    stage.frames(20);
    EXPECT_EQ(stage.log(), "S.u+.F.a-.");
    stage.run("LOG^SET(\"\");SQ2^PLAY(\"GO\");S^REMOVE(\"SQ2\");");
    stage.frames(20);
    stage.run("SQ^PLAY(\"GO\");");
    stage.frames(40);
    EXPECT_EQ(stage.log(), "S.u+.S.F.b+.F.b-.");
}

TEST(Sequence, WhatStandsBelowIsFoundOnce) {
    Theatre stage("NAME a\na FILENAME HERO\na EVENT T_1\na TYPE SIMPLE\n" + kSpeech +
                  "NAME n\nn TYPE SEQUENCE\na ADD n\nk ADD n\nn ADD t\na ADD t\n" + simple("b", "B.WAV") + "b ADD n\n");
    CSequencedPlayable* tree = stage.tree();
    ASSERT_EQ(tree->getAllAnimations().size(), 1U);
    const CAnimo* hero = tree->getAllAnimations()[0];
    EXPECT_EQ(tree->getAllOfType(CSpeakingAnimation::kType).size(), 1U);
    EXPECT_EQ(tree->getAllOfType(CSound4::kType).size(), 1U);
    EXPECT_EQ(tree->getAllOfType(CSequencedPlayable::kType).size(), 1U);
    EXPECT_EQ(tree->getPosition(1).x, 10);
    EXPECT_EQ(tree->getPosition(0).x, 0) << "none plays";
    tree->move(5, 0);
    EXPECT_EQ(hero->GetPosition().x, 15) << "once";
    stage.run("SQ^HIDE();");
    EXPECT_FALSE(hero->isVisible());
    stage.run("SQ^SHOW();HERO^PLAY(\"T_1\");");
    EXPECT_TRUE(hero->isVisible());
    EXPECT_EQ(tree->getPosition(0).x, 15);

    stage.run("HERO^STOP();NAMES^ADD(\"x\");S^GETPLAYINGSEQ(\"NAMES\");S^GETPLAYINGSEQ(\"HERO\");");
    tree->seek(-2);
    EXPECT_TRUE(hero->IsPlaying());
    EXPECT_EQ(tree->previous(), 1);
}

TEST(Sequence, ASceneTellsWhichPlay) {
    Theatre stage(kTwo, "", sequence("t.seq", "", "SQ2") + lines("NAMES", "ARRAY"));
    stage.run("SQ2^PLAY(\"GO\");S^GETPLAYINGSEQ(\"NAMES\");S^GETPLAYINGSEQ(\"HERO\");S^GETPLAYINGSEQ();");
    stage.run("LOG^SET(NAMES^GETSIZE());LOG^ADD(NAMES^GET(0));");
    EXPECT_EQ(stage.log(), "1SQ2");
}

// As deep, and as wide, as a file of 100,000 lines makes it.
TEST(Sequence, LargeFiles) {
    constexpr int kElements = 33'000;
    const auto name = [](int i) { return i == 0 ? std::string("t") : "e" + std::to_string(i); };
    std::string deep, wide;
    for (int i = 0; i < kElements; ++i) {
        deep += "NAME " + name(i) + "\n" + name(i) + " TYPE SEQUENCE\n";
        if (i > 0) deep += name(i) + " ADD " + name(i - 1) + "\n";
        wide += "t ADD t\n:\na ADD t\n";
    }
    deep += name(0) + " ADD " + name(kElements - 1) + "\n";
    for (const std::string& text : {deep, simple("a", "NONE.WAV") + kRoot + wide}) {
        Theatre stage(text);
        stage.run("SQ^PLAY(\"GO\");SQ^HIDE();SQ^SHOW();SQ^PAUSE();SQ^RESUME();");
        EXPECT_TRUE(stage.tree()->getAllAnimations().empty());
        stage.frames(30);
        stage.run("SQ^STOP();S^REMOVE(\"SQ\");");
    }
}
