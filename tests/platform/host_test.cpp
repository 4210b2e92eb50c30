// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// The host as a process, seen from outside.
#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/headless/headless.h"
#include "platform/host/outputs.h"
#include "platform/host/picture.h"
#include "support/pictures.h"

namespace fs = std::filesystem;

namespace {

std::string contentOf(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

constexpr const char* kDefinition =
    "OBJECT=APP\nAPP:TYPE=APPLICATION\nAPP:EPISODES=EP\nAPP:STARTWITH=EP\nAPP:PATH=APP\n"
    "OBJECT=EP\nEP:TYPE=EPISODE\nEP:SCENES=S\nEP:STARTWITH=S\nEP:PATH=EP\n"
    "OBJECT=S\nS:TYPE=SCENE\nS:PATH=S\n";

struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
};

// A folder with an application "app" in it, from which the host is called.
class Host : public testing::Test {
protected:
    Host() { write("app/Dane/application.def", kDefinition); }

    fs::path at(const std::string& path) const { return fs::path(disk_.folder()) / path; }
    void write(const std::string& path, std::string_view content) { ASSERT_TRUE(disk_.write(path, content)); }
    void scene(std::string_view text) { write("app/Dane/S/S.cnv", text); }

    // Words between blanks.
    Outcome run(const std::string& line) const {
        std::vector<std::string> words{PROSCENIUM_HOST};
        std::istringstream stream(line);
        for (std::string word; stream >> word;)
            words.push_back(word);
        std::vector<char*> arguments;
        for (std::string& word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        const pid_t child = fork();
        if (child == 0) {
            if (chdir(disk_.folder().c_str()) != 0) _exit(126);
            dup2(open("out", O_WRONLY | O_CREAT | O_TRUNC, 0600), 1);
            dup2(open("err", O_WRONLY | O_CREAT | O_TRUNC, 0600), 2);
            execv(arguments[0], arguments.data());
            _exit(127);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(at("out")), contentOf(at("err"))};
    }

    void expectRefusal(const std::string& line, const std::string& named) const {
        SCOPED_TRACE(line);
        const Outcome result = run(line);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_NE(result.err.find(named), std::string::npos) << result.err;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    }

    headless::HeadlessPlatform disk_;
};

}  // namespace

TEST_F(Host, FoldersThatHoldNoApplicationAreRefused) {
    write("file", "");
    fs::create_directory(at("empty"));
    fs::create_directory(at("nodef"));
    write("nodef/DANE/readme.txt", "");
    fs::create_directories(at("odd/Dane/application.def"));
    expectRefusal("nosuch --headless", "nosuch");
    expectRefusal("file --headless", "file");
    expectRefusal("empty --headless", "empty");
    expectRefusal("nodef --headless", "nodef");
    expectRefusal("odd --headless", "odd");
    if (geteuid() == 0) GTEST_SKIP() << "nothing is forbidden to root";
    fs::permissions(at("app/Dane"), fs::perms(0));
    expectRefusal("app --headless", "Dane");
    fs::permissions(at("app/Dane"), fs::perms(0755));
}

TEST_F(Host, FoldersAreKnownInAnyCaseOfLetters) {
    write("up/DANE/APPLICATION.DEF", kDefinition);
    const Outcome result = run("up --headless --frames 1");
    EXPECT_EQ(result.status, 0) << result.err;
}

TEST_F(Host, FilesOfOptionsAreTriedBeforeAnythingRuns) {
    scene("OBJECT=__INIT__\n__INIT__:TYPE=BEHAVIOUR\n__INIT__:CODE={@MSGBOX(\"ran\");}\n");
    write("bad.txt", "1 move 2 3\n1 mouve 2 3\n");
    write("kept.png", "kept");
    expectRefusal("app --headless --input nosuch.txt", "nosuch.txt");
    expectRefusal("app --headless --input app", "app");
    expectRefusal("app --headless --input bad.txt", "bad.txt:2");
    expectRefusal("app --headless --record nosuch/r.txt", "nosuch/r.txt");
    expectRefusal("app --headless --hashes app", "app");
    expectRefusal("app --headless --shot 1:kept.png --shot 1:nosuch/a.png", "nosuch/a.png");
    EXPECT_EQ(contentOf(at("kept.png")), "kept");
    EXPECT_FALSE(fs::exists(at("r.txt")));
}

TEST_F(Host, AFullDiskIsTold) {
    if (!fs::exists("/dev/full")) GTEST_SKIP();
    const Outcome result = run("app --headless --frames 3 --hashes /dev/full");
    EXPECT_EQ(result.status, 2);
    EXPECT_NE(result.err.find("/dev/full"), std::string::npos) << result.err;
}

TEST_F(Host, LeavesAfterTheFramesOrWhenClosed) {
    write("in.txt", "2 move 1 2\n4 close\n5 move 0 0\n");
    EXPECT_EQ(run("app --headless --frames 3 --hashes h.txt --input in.txt --record r.txt").status, 0);
    const std::string three = contentOf(at("h.txt"));
    EXPECT_EQ(std::count(three.begin(), three.end(), '\n'), 3);

    const Outcome closed =
        run("app --headless --hashes h.txt --input in.txt --record r.txt --shot 3:3.png --shot 4:4.png");
    EXPECT_EQ(closed.status, 0) << closed.err;
    EXPECT_EQ(contentOf(at("h.txt")), three) << "the frame of the close is not run";
    EXPECT_TRUE(fs::exists(at("3.png")));
    EXPECT_FALSE(fs::exists(at("4.png")));
    EXPECT_NE(closed.err.find("4.png"), std::string::npos) << closed.err;

    const std::string record = contentOf(at("r.txt"));
    EXPECT_TRUE(record.ends_with("\n2 move 1 2\n4 close\n")) << record;
    EXPECT_EQ(run("app --headless --input r.txt --record again.txt --hashes h2.txt").status, 0);
    EXPECT_EQ(contentOf(at("h2.txt")), three);
    const std::string again = contentOf(at("again.txt"));
    EXPECT_TRUE(again.ends_with("\n2 move 1 2\n4 close\n")) << again;
}

TEST_F(Host, WithoutADisplayItSaysSoAndHowToGoOn) {
    // What a desktop's libraries leave behind is theirs.
    setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
    setenv("SDL_VIDEODRIVER", "nosuch", 1);
    const Outcome result = run("app");
    unsetenv("SDL_VIDEODRIVER");
    unsetenv("ASAN_OPTIONS");
    EXPECT_NE(result.status, 0);
    EXPECT_NE(result.err.find("--headless"), std::string::npos) << result.err;
    EXPECT_EQ(contentOf(at("app/application.ini")), "") << "nothing was played";
}

TEST_F(Host, EveryEventComesInAndARecordPlaysTheRunAgain) {
    write("app/Dane/S/p.img", pictures::nvi(8, 8, std::vector<std::uint16_t>(64, 0xFFFF)));
    // Each event leaves its mark in the log and, by how far it moves the picture, on the screen. A click by script is
    // the script's: it must not be recorded.
    std::string text =
        "OBJECT=LOG\nLOG:TYPE=STRING\nLOG:TOINI=TRUE\nLOG:VALUE=-\n"
        "OBJECT=P\nP:TYPE=IMAGE\nP:FILENAME=p.img\nP:TOCANVAS=TRUE\nP:VISIBLE=TRUE\nOBJECT=M\nM:TYPE=MOUSE\n";
    const char* const signals[] = {"ONMOVE",           "ONCLICK^LEFT",   "ONRELEASE^LEFT", "ONDBLCLICK",
                                   "ONRELEASE^MIDDLE", "ONCLICK^MIDDLE", "ONCLICK^RIGHT",  "ONRELEASE^RIGHT"};
    for (std::size_t i = 0; i < std::size(signals); ++i) {
        const std::string mark = std::to_string(i);
        text += std::string("M:") + signals[i] + "={LOG^ADD(\"" + mark + "\");P^MOVE(" + mark + ",M^GETPOSY());" +
                (i == 7 ? "M^CLICK(1,2);" : "") + "}\n";
    }
    scene(text);
    const std::string events =
        "2 move 3 1\n3 ldown 3 4\n3 lup 3 4\n4 ldbl 3 4\n4 active 0\n5 mdown 3 4\n6 mup 3 4\n6 keydown 30\n"
        "7 active 1\n7 rdown 3 4\n8 rup 3 4\n8 keyup 30\n9 capslock 1\n9 move -5 2\n10 close\n";
    write("in.txt", events);
    EXPECT_EQ(run("app --headless --input in.txt --record r.txt --hashes h.txt").status, 0);
    const std::string values = contentOf(at("app/application.ini"));
    EXPECT_NE(values.find("LOG=-0123546710\r\n"), std::string::npos) << values;
    const std::string record = contentOf(at("r.txt"));
    EXPECT_TRUE(record.ends_with("\n" + events)) << record;

    fs::remove(at("app/application.ini"));
    EXPECT_EQ(run("app --headless --input r.txt --record again.txt --hashes again.h").status, 0);
    EXPECT_EQ(contentOf(at("app/application.ini")), values);
    EXPECT_TRUE(contentOf(at("again.txt")).ends_with("\n" + events)) << contentOf(at("again.txt"));
    const std::string hashes = contentOf(at("h.txt"));
    EXPECT_EQ(contentOf(at("again.h")), hashes);
    std::string changes, former;
    std::istringstream stream(hashes);
    for (std::string number, hash; stream >> number >> hash; former = hash)
        if (hash != former) changes += number + " ";
    EXPECT_EQ(changes, "1 2 3 7 8 9 ") << "an event shows in its own frame, unless the window is inactive";
}

TEST_F(Host, MessagesComeOutAsOneLineOfUtf8) {
    scene("OBJECT=__INIT__\n__INIT__:TYPE=BEHAVIOUR\n__INIT__:CODE={@MSGBOX(\"za\xBF\xF3\xB3\xE6\",\"b\");}\n");
    const Outcome result = run("app --headless --frames 1");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.out.find("message: Message: za\xC5\xBC\xC3\xB3\xC5\x82\xC4\x87, b\n"), std::string::npos)
        << result.out;
}

TEST_F(Host, ADisplayThatCannotBeMadeIsStatusOne) {
    for (const char* size : {"-res 640", "-res 0 0", "-res -5 100", "-res 99999 99999", "-window -res 0 0"}) {
        SCOPED_TRACE(size);
        const Outcome result = run("app --headless --frames 1 " + std::string(size));
        EXPECT_EQ(result.status, 1);
        EXPECT_NE(result.err.find("display"), std::string::npos) << result.err;
    }
    EXPECT_EQ(run("app --headless --frames 1 -window -res 64 48 --shot last:s.png").status, 0);
    EXPECT_EQ(contentOf(at("s.png")).substr(16, 8), std::string("\0\0\0\x40\0\0\0\x30", 8)) << "the picture's size";
}

TEST_F(Host, TheApplicationsLastWordsAreWritten) {
    // The handler stands a level above, for one in the scene may be gone before the object that it is of.
    write("app/Dane/EP/EP.cnv", "OBJECT=DIE\nDIE:TYPE=BEHAVIOUR\nDIE:CODE={@MSGBOX(\"done\");}\n");
    scene(
        "OBJECT=N\nN:TYPE=INTEGER\nN:TOINI=TRUE\nN:VALUE=1\n"
        "OBJECT=A\nA:TYPE=STRING\nA:ONDONE=DIE\n"
        "OBJECT=__INIT__\n__INIT__:TYPE=BEHAVIOUR\n__INIT__:CODE={N^SET(7);}\n");
    const Outcome result = run("app --headless --frames 2 --config my.ini");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.out.find("message: Message: done\n"), std::string::npos) << result.out;
    EXPECT_NE(contentOf(at("app/my.ini")).find("7"), std::string::npos);
}

TEST_F(Host, TheDemoPlaysToItsEndAndAlwaysAlike) {
    for (const char* copy : {"one", "two"})
        fs::copy(PROSCENIUM_DEMO, at(copy), fs::copy_options::recursive);
    const Outcome result = run("one --headless --hashes one.txt");
    EXPECT_EQ(result.status, 0) << result.err;
    const std::string values = contentOf(at("one/application.ini"));
    EXPECT_NE(values.find("FOUND=25\r\n"), std::string::npos) << values;
    EXPECT_NE(values.find("LIST=2.3.5.7.11.13."), std::string::npos) << values;
    EXPECT_NE(values.find("-found\r\n"), std::string::npos) << values;
    EXPECT_NE(values.find("COUNTDOWN=321\r\n"), std::string::npos) << values;
    const std::string hashes = contentOf(at("one.txt"));
    const auto frames = std::count(hashes.begin(), hashes.end(), '\n');
    EXPECT_LT(frames, 2900) << "it leaves by itself";

    EXPECT_EQ(run("two --headless --hashes two.txt").status, 0);
    EXPECT_EQ(contentOf(at("two/application.ini")), values);
    EXPECT_EQ(contentOf(at("two.txt")), hashes);
    EXPECT_EQ(run("two --headless").status, 0);
    EXPECT_NE(contentOf(at("two/application.ini")).find("TIMESPLAYED=2\r\n"), std::string::npos);

    // Who clicks on the lantern needn't wait until the figure has found it.
    write("clicks.txt", "500 ldown 400 500\n530 move 690 460\n540 ldown 690 460\n");
    EXPECT_EQ(run("two --headless --input clicks.txt --hashes three.txt").status, 0);
    const std::string clicked = contentOf(at("three.txt"));
    EXPECT_LT(std::count(clicked.begin(), clicked.end(), '\n'), frames - 300);
}

TEST(Picture, ChannelsCanBeReadBack) {
    for (const int depth : {15, 16}) {
        headless::MemoryDisplay display(depth);
        ASSERT_TRUE(display.open(256, depth == 15 ? 128 : 256));
        std::vector<std::uint16_t> pixels(display.screen().size());
        for (std::size_t i = 0; i < pixels.size(); ++i)
            pixels[i] = static_cast<std::uint16_t>(i);
        display.present(pixels, {0, 0, 256, 256});
        const std::vector<std::uint8_t> rgb = host::rgbOf(display);
        ASSERT_EQ(rgb.size(), pixels.size() * 3);
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            const unsigned red = rgb[3 * i];
            const unsigned green = rgb[3 * i + 1];
            const unsigned blue = rgb[3 * i + 2];
            const unsigned back = depth == 15 ? (red >> 3) << 10 | (green >> 3) << 5 | blue >> 3
                                              : (red >> 3) << 11 | (green >> 2) << 5 | blue >> 3;
            ASSERT_EQ(back, i) << depth;
        }
        EXPECT_EQ(rgb[rgb.size() - 3], 255) << "white is white";
        EXPECT_EQ(rgb.back(), 255);
    }
}

TEST(Picture, PresentIsClippedToTheScreen) {
    headless::MemoryDisplay display(16);
    ASSERT_TRUE(display.open(3, 2));
    const std::vector<std::uint16_t> pixels{1, 2, 3, 4, 5, 6};
    display.present(pixels, {1, 1, 2, 2});
    EXPECT_EQ(std::vector<std::uint16_t>(display.screen().begin(), display.screen().end()),
              (std::vector<std::uint16_t>{0, 0, 0, 0, 5, 0}));
    display.present(pixels, {2, -9, 99, 1});
    display.present(pixels, {2, 0, 1, 2});
    display.present(std::vector<std::uint16_t>(5, 9), {0, 0, 3, 2});
    EXPECT_EQ(std::vector<std::uint16_t>(display.screen().begin(), display.screen().end()),
              (std::vector<std::uint16_t>{0, 0, 3, 0, 5, 0}));
    // FNV-1a over the bytes 0 0 0 0 3 0 0 0 5 0 0 0, by another program.
    EXPECT_EQ(host::hashOf(display), 0x937273CA255E7903U);
}
