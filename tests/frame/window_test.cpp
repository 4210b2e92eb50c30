// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "frame/window.h"

#include <algorithm>
#include <climits>
#include <functional>
#include <gtest/gtest.h>

#include "frame/application.h"
#include "frame/error.h"
#include "frame/message.h"
#include "frame/timer.h"
#include "frame/unit.h"
#include "frame/unit_container.h"
#include "frame_stage.h"
#include "graphics/refresh_screen.h"
#include "graphics/surface.h"
#include "input/hot_spot.h"
#include "input/key_listener.h"
#include "input/keyboard.h"
#include "input/mouse_listener.h"
#include "storage/big_file.h"

namespace {

// Writes its name and what it heard into a log, does what a test wants, and takes the events that the test names.
struct Mouse : CMouseListener {
    Mouse(std::string& to, const char* called, const char* taken = "") : log(to), name(called), takes(taken) {}
    bool onMouseMove(CXPoint) override { return hear("move"); }
    bool onClick(int button, CXPoint) override { return hear("click" + std::to_string(button)); }
    bool onClick(CXPoint) override { return hear("click"); }
    bool onRelease(int button, CXPoint) override { return hear("release" + std::to_string(button)); }
    bool onRelease(CXPoint) override { return hear("release"); }
    bool onDblClick(CXPoint) override { return hear("double"); }
    void onSetFocus() override { hear("focus"); }

    bool hear(const std::string& what) {
        log += name + (says ? ":" + what : "") + " ";
        if (then) then();
        return what == takes;
    }

    std::string& log;
    std::string name;
    std::string takes;
    bool says = true;
    std::function<void()> then;
};

struct Keys : CKeyListener {
    Keys(std::string& to, const char* called) : log(to), name(called) {}
    void onChar(unsigned char c) override { hear(std::string("char") + static_cast<char>(c)); }
    void onKeyDown(int key) override { hear("down" + std::to_string(key)); }
    void onKeyUp(int key) override { hear("up" + std::to_string(key)); }
    void hear(const std::string& what) {
        log += name + what + " ";
        if (then) then();
    }

    std::string& log;
    std::string name;
    std::function<void()> then;
};

using Event = int (CWindow::*)(CXPoint, int);

}  // namespace

TEST(Window, WhatEachMouseEventTellsAListener) {
    const struct {
        Event event;
        const char* takes;
        const char* heard;
    } rows[] = {
        {&CWindow::OnMouseMove, "", "a:move b:move "},
        {&CWindow::OnMouseMove, "move", "a:move "},
        {&CWindow::OnLButtonDown, "", "a:click a:click0 b:click b:click0 "},
        {&CWindow::OnLButtonDown, "click", "a:click "},
        {&CWindow::OnLButtonDown, "click0", "a:click a:click0 "},
        {&CWindow::OnLButtonUp, "release0", "a:release a:release0 "},
        {&CWindow::OnLButtonDblClk, "double", "a:double "},
        {&CWindow::OnMButtonDown, "", "a:click1 b:click1 "},
        {&CWindow::OnMButtonUp, "release1", "a:release1 "},
        {&CWindow::OnRButtonDown, "click", "a:click2 b:click2 "},
        {&CWindow::OnRButtonUp, "", "a:release2 b:release2 "},
    };
    for (const auto& row : rows) {
        FrameStage stage;
        Mouse a(stage.log, "a", row.takes), b(stage.log, "b");
        stage.window->registerMouseListener(&b, 1);
        stage.window->registerMouseListener(&a, 2);
        EXPECT_EQ((*stage.window.*row.event)({1, 2}, 3), 0);
        EXPECT_EQ(stage.log, row.heard);

        stage.log.clear();
        stage.window->enableMouse(false);
        EXPECT_EQ((*stage.window.*row.event)({1, 2}, 3), 0);
        EXPECT_EQ(stage.log, "");
    }
}

namespace {
struct Three {
    CWindow& window;
    Mouse &a, &b, &c;
};
using InB = void (*)(Three&);

void leave(Three& t) { t.window.removeMouseListener(&t.b); }
void takeOutA(Three& t) { t.window.removeMouseListener(&t.a); }
void registerAAnew(Three& t) {
    t.window.removeMouseListener(&t.a);
    t.window.registerMouseListener(&t.a, 0);
}
void bringCToTheTop(Three& t) { t.window.registerMouseListener(&t.c, 9); }
}  // namespace

TEST(Window, MouseListenersByPriorityAndWhatTheyDoToEachOther) {
    const struct {
        const char* what;
        int a, b, c;  // priorities, in this order of registration
        InB inB;
        const char* heard;
    } rows[] = {
        {"highest first", 1, 3, 2, nullptr, "b c a "},
        {"of equals the later", 5, 5, 5, nullptr, "c b a "},
        {"the ends of int", INT_MAX, INT_MIN, 0, nullptr, "a c b "},
        {"leaves itself", 1, 2, 3, leave, "c b a c a "},
        {"takes out a lower one", 1, 2, 3, takeOutA, "c b c b "},
        {"a new one waits", 1, 2, 3, registerAAnew, "c b c b "},
        {"one more for the next", 1, 2, 3, bringCToTheTop, "c b a c c b a "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        FrameStage stage;
        Mouse a(stage.log, "a"), b(stage.log, "b"), c(stage.log, "c");
        a.says = b.says = c.says = false;
        Three three{*stage.window, a, b, c};
        stage.window->registerMouseListener(&a, row.a);
        stage.window->registerMouseListener(&b, row.b);
        stage.window->registerMouseListener(&c, row.c);
        if (row.inB) b.then = [&] { row.inB(three); };
        stage.window->OnMouseMove({0, 0}, 0);
        if (row.inB) stage.window->OnMouseMove({0, 0}, 0);
        EXPECT_EQ(stage.log, row.heard);
    }
}

TEST(Window, AListenerThatLeavesBetweenItsTwoCallsHearsNoMore) {
    FrameStage stage;
    auto gone = std::make_unique<Mouse>(stage.log, "a");
    gone->then = [&] { stage.window->removeMouseListener(gone.get()); };
    stage.window->registerMouseListener(gone.get(), 1);
    stage.window->OnLButtonDown({0, 0}, 0);
    EXPECT_EQ(stage.log, "a:click ");
}

TEST(Window, MouseCaptionGoesAboveAll) {
    FrameStage stage;
    Mouse a(stage.log, "a", "move"), b(stage.log, "b", "move");
    stage.window->registerMouseListener(&a, 5);
    stage.window->registerMouseListener(&b, 6);
    stage.window->setMouseCaption(&b);
    EXPECT_EQ(stage.log, "");
    stage.window->setMouseCaption(&a);
    EXPECT_EQ(stage.log, "b:focus a:focus ");
    stage.log.clear();
    stage.window->OnMouseMove({0, 0}, 0);
    EXPECT_EQ(stage.log, "a:move ");
    // Its former entry is gone, so it leaves the list in one step.
    stage.window->removeMouseListener(&a);
    stage.window->OnMouseMove({0, 0}, 0);
    EXPECT_EQ(stage.log, "a:move b:move ");
}

TEST(Window, KeysReachListenersInOrderOfRegistration) {
    FrameStage stage;
    Keys a(stage.log, "a"), b(stage.log, "b");
    stage.window->registerKeyListener(&a);
    stage.window->registerKeyListener(&b);
    EXPECT_EQ(stage.window->OnKeyDown(30, 0), 0);
    EXPECT_EQ(stage.log, "") << "without an application";

    struct Host : CApplication {
        using CApplication::CApplication;
        int OnKeyDown(int key, int) override { return key == 30 ? 7 : 0; }
    };
    Host host(stage.window.get(), "", "", stage.commandLine.get());
    stage.window->enableMouse(false);
    EXPECT_EQ(stage.window->OnKeyDown(30, 0), 7);
    a.then = [&] { stage.window->removeKeyListener(&b); };
    EXPECT_EQ(stage.window->OnKeyDown(31, 0), 0);
    EXPECT_EQ(stage.log, "adown30 bdown30 adown31 ");
}

TEST(Keyboard, PressesRepeatsAndReleases) {
    const struct {
        const char* what;
        bool repeat;
        std::vector<int> steps;  // milliseconds before each poll; the key is down but in the last one
        const char* heard;
    } rows[] = {
        {"pressed and let go", true, {0, 10}, "d u "},
        {"first repeat after 200", true, {0, 199, 1, 1}, "d d u "},
        {"then every 10 at most", true, {0, 200, 9, 1, 10, 1}, "d d d d u "},
        {"one a poll, however late", true, {0, 1000, 1000, 1}, "d d d u "},
        {"no repeat when switched off", false, {0, 300, 300, 1}, "d u "},
    };
    struct Counter : CKeyListener {
        void onKeyDown(int) override { log += "d "; }
        void onKeyUp(int) override { log += "u "; }
        std::string log;
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        FrameStage stage("", startingAt(0));
        CApplication application(stage.window.get(), "", "", stage.commandLine.get());
        Counter counter;
        stage.window->registerKeyListener(&counter);
        CKeyboard* keyboard = stage.window->getKeyboardInterface();
        keyboard->setAutoRepeat(row.repeat);
        stage.platform.input.setKey(0x3B, true);
        for (std::size_t i = 0; i < row.steps.size(); ++i) {
            stage.platform.clock.advance(static_cast<std::uint32_t>(row.steps[i]));
            if (i + 1 == row.steps.size()) stage.platform.input.setKey(0x3B, false);
            keyboard->tick();
        }
        EXPECT_EQ(counter.log, row.heard);
    }
}

TEST(Keyboard, WhichCharacterAKeyGives) {
    const struct {
        int key;
        bool capsLock;
        int shift;  // that is down; 0: none
        const char* character;
    } rows[] = {
        {0x1E, false, 0, "a"},    {0x1E, true, 0, "A"},  {0x1E, false, 0x2A, "A"}, {0x1E, true, 0x36, "a"},
        {0x10, false, 0, "q"},    {0x19, false, 0, "p"}, {0x26, false, 0, "l"},    {0x32, false, 0, "m"},
        {0x02, false, 0x2A, "1"}, {0x0A, true, 0, "9"},  {0x0B, false, 0, "0"},    {0x39, true, 0x2A, " "},
        {0x1A, false, 0, ""},     {0x27, false, 0, ""},  {0x33, false, 0, ""},     {0x4F, false, 0, ""},
        {0x01, false, 0, ""},
    };
    struct Typed : CKeyListener {
        void onChar(unsigned char c) override { text += static_cast<char>(c); }
        std::string text;
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.key << " " << row.capsLock << " " << row.shift);
        FrameStage stage;
        Typed typed;
        stage.window->registerKeyListener(&typed);
        stage.platform.input.setCapsLock(row.capsLock);
        if (row.shift) stage.platform.input.setKey(row.shift, true);
        stage.platform.input.setKey(row.key, true);
        stage.window->getKeyboardInterface()->tick();
        EXPECT_EQ(typed.text, row.character);
    }
}

TEST(Keyboard, WhichNameMeansWhichKey) {
    const struct {
        int down;
        const char* name;
        bool pressed;
    } rows[] = {
        {0x1E, "a", true},     {0x1E, "Anything", true}, {0x30, "a", false},    {0xCB, "LEFT", true},
        {0x26, "left", false}, {0x26, "lefty", true},    {0x36, "shift", true}, {0x36, "lshift", false},
        {0x9D, "Ctrl", true},  {0x38, "ralt", false},    {0x39, "space", true}, {0x39, " ", false},
        {0x0B, "0", true},     {0x1C, "enter", false},   {0x00, "", false},     {0x00, "?", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        FrameStage stage;
        stage.platform.input.setKey(row.down, true);
        stage.window->getKeyboardInterface()->tick();
        EXPECT_EQ(stage.window->getKeyboardInterface()->isKeyPressed(row.name), row.pressed);
        EXPECT_TRUE(stage.window->getKeyboardInterface()->isAnyKeyPressed());
    }
}

TEST(Window, MessagesGoRoundOnce) {
    struct Party : CXObject {
        explicit Party(std::string& to) : log(to) {}
        int processMessage(CMessage* message) override {
            log += "p" + std::to_string(message->getCode()) + " ";
            if (more) window->postMessage(new CMessage(this, this, 99, 0, 0, false));
            more = false;
            return message->getParameter1() + message->getParameter2();
        }
        void notifyMessageReceive(CMessage* message) override {
            log += "n" + std::to_string(message->getResult()) + " ";
        }
        std::string& log;
        CWindow* window = nullptr;
        bool more = false;
    };
    FrameStage stage;
    Party sender(stage.log), receiver(stage.log);
    receiver.window = stage.window.get();
    receiver.more = true;
    stage.window->postMessage(new CMessage(&sender, &receiver, 1, 20, 3, true));
    stage.window->postMessage(new CMessage(&sender, &receiver, 2, 0, 0, false));
    stage.window->postMessage(new CMessage(nullptr, nullptr, 3, 0, 0, true));
    stage.window->processMessages();
    EXPECT_EQ(stage.log, "p1 n23 p2 p99 ");
    stage.window->processMessages();
    EXPECT_EQ(stage.log, "p1 n23 p2 p99 ");
    stage.window->postMessage(new CMessage(&sender, &receiver, 4, 0, 0, true));  // dies with the window
}

TEST(Window, ErrorsAreShownInPolish) {
    const struct {
        int word;
        const char* text;  // null: no message
    } rows[] = {
        {0, nullptr},
        {-998,
         "Nieprawid\xB3owe dzia\xB3"
         "anie karty graficznej."},
        {-997,
         "Nieprawid\xB3owe dzia\xB3"
         "anie karty d\x9Fwi\xEAkowej."},
        {2000,
         "Nieznany b\xB3\xB9"
         "d krytyczny."},
    };
    for (const auto& row : rows) {
        FrameStage stage;
        stage.window->setErrorCode(row.word);
        stage.window->ShowError();
        const auto& messages = stage.platform.shell.messages();
        ASSERT_EQ(messages.size(), row.text ? 1U : 0U);
        if (row.text) {
            EXPECT_EQ(messages[0].text, row.text);
        }
    }
}

TEST(Window, AMissingFileIsOfferedToTheUnitFirst) {
    struct Proud : CUnit6 {
        using CUnit6::CUnit6;
        bool quitOnError(CXObject* source) override { return source->isToDelete(); }
    };
    FrameStage stage;
    CUnitContainer6 container(stage.window.get());
    stage.window->SetUnitContainer(&container);
    Proud unit(stage.window.get(), "U");
    container.setCurrentUnit(&unit);

    CXObject source;
    stage.window->QuitOnError(&source, "a.ann");
    EXPECT_TRUE(stage.platform.shell.messages().empty()) << "no file is missing";
    source.setErrorCode(kErrorNotFound);
    stage.window->QuitOnError(&source, "a.ann");
    ASSERT_EQ(stage.platform.shell.messages().size(), 1U);
    EXPECT_EQ(stage.platform.shell.messages()[0].text,
              "Wyst\xB9pi\xB3 b\xB3\xB9"
              "d krytyczny, plik: a.ann nie zosta\xB3 odnaleziony.");
    EXPECT_EQ(stage.platform.shell.messages()[0].flags, 0x10U);
    source.setToDelete();
    stage.window->QuitOnError(&source, "a.ann");
    EXPECT_EQ(stage.platform.shell.messages().size(), 1U);
}

TEST(Window, CursorsAndTheirLock) {
    FrameStage stage;
    using platform::CursorKind;
    const auto shown = [&] { return stage.platform.input.cursor(); };
    stage.window->BeginActiveCursor();
    EXPECT_EQ(shown(), CursorKind::active);
    stage.window->LockCursor();
    stage.window->enableMouse(false);
    EXPECT_EQ(shown(), CursorKind::active);
    stage.window->UnLockCursor();
    stage.window->enableMouse(false);
    EXPECT_EQ(shown(), CursorKind::wait);
    stage.window->SetActiveCursor(nullptr);
    stage.window->BeginActiveCursor();
    EXPECT_EQ(shown(), CursorKind::wait) << "a null cursor changes nothing";
    stage.window->SetCursor(&stage.cursors[0]);
    EXPECT_EQ(shown(), CursorKind::main);
    stage.window->LockCursor();
    stage.window->HideCursor();
    EXPECT_EQ(stage.platform.input.showCount(), -1) << "hiding takes no notice of the lock";
}

TEST(Window, AFrameWithoutFocusRunsTheApplicationAlone) {
    struct Host : CApplication {
        using CApplication::CApplication;
        bool domodal() override { return ++runs == 4; }
        int runs = 0;
    };
    struct Ticks : CTimerNotificator {
        void onTimer(int) override { ++heard; }
        int heard = 0;
    };
    FrameStage stage;
    Host host(stage.window.get(), "", "", stage.commandLine.get());
    Ticks ticks;
    stage.window->GetTimerInterface()->add(1'000'000, 0, &ticks);
    ASSERT_EQ(stage.window->CreateSurface(), 0);

    EXPECT_FALSE(stage.frames(1));
    EXPECT_EQ(std::pair(ticks.heard, host.runs), std::pair(0, 1));
    stage.window->OnActivateApp(true);
    EXPECT_FALSE(stage.frames(1));
    EXPECT_EQ(std::pair(ticks.heard, host.runs), std::pair(1, 2));
    EXPECT_EQ(stage.window->Tick(), 0);
    EXPECT_EQ(std::pair(ticks.heard, host.runs), std::pair(2, 2));
    stage.window->quit();
    EXPECT_TRUE(stage.frames(1)) << "the frame in which somebody quits is the last one";
    EXPECT_EQ(host.runs, 3);
}

TEST(Window, AUnitsFirstFrameIsAFullOneAndSoIsTheNext) {
    struct Watched : CUnit6 {
        Watched(CWindow* w, std::string& to) : CUnit6(w, "W"), log(to) {}
        void onInitialUpdate() override {
            log += "i ";
            CUnit6::onInitialUpdate();
        }
        void onCanvasRefreshed() override { log += "r "; }
        std::string& log;
    };
    for (const char* switches : {"", "-window", "-pf"}) {
        SCOPED_TRACE(switches);
        FrameStage stage(switches);
        CWindow& window = *stage.window;
        // The client area lies somewhere on the desktop, which the display knows nothing of.
        stage.platform.shell.setClientArea({100, 50, 640, 480});
        ASSERT_EQ(window.isWindowMode() ? window.CreateSurface() : window.SetDisplayMode(640, 480, 16), 0);
        CUnitContainer6 container(&window);
        window.SetUnitContainer(&container);
        Watched unit(&window, stage.log);
        container.setCurrentUnit(&unit);
        window.Activate(true);
        auto* screen = reinterpret_cast<std::uint16_t*>(window.GetScreenPtr());
        const auto shows = [&](std::uint16_t colour) {
            const auto pixels = stage.platform.display.screen();
            return std::all_of(pixels.begin(), pixels.end(), [=](std::uint16_t p) { return p == colour; });
        };

        for (const auto colour : {std::uint16_t{0x1111}, std::uint16_t{0x2222}}) {
            std::fill_n(screen, 640 * 480, colour);
            stage.frames(1);
            EXPECT_TRUE(shows(colour));
        }
        EXPECT_EQ(stage.log, "i r ");
        if (window.GetSurface()->IsFlippingEnabled()) continue;

        // From now on only what changed is shown.
        std::fill_n(screen, 640 * 480, 0x3333);
        stage.frames(1);
        EXPECT_TRUE(shows(0x2222));
        const CXRect empty(5, 5, 5, 90), changed(1, 2, 3, 4);
        window.Invalidate(&empty);
        window.Invalidate(&changed);
        stage.frames(1);
        const auto pixels = stage.platform.display.screen();
        EXPECT_EQ(std::count(pixels.begin(), pixels.end(), 0x3333), 4);
        EXPECT_EQ(pixels[2 * 640 + 1], 0x3333);
    }
}

TEST(Window, ADisplayThatCantBeHadIsAnError) {
    FrameStage stage;
    EXPECT_EQ(stage.window->SetDisplayMode(0, 480, 16), kErrorGraphics);
    EXPECT_EQ(stage.window->LastError(), kErrorGraphics);
    EXPECT_EQ(stage.window->GetRefreshScreenInterface(), nullptr);
    // Nothing of this needs a screen.
    stage.window->Invalidate();
    stage.window->Activate(true);
    stage.frames(1);
    EXPECT_EQ(stage.window->GetScreenPtr(), nullptr);
}

TEST(Window, FilesOfTheDisk) {
    FrameStage stage;
    stage.platform.write("one.txt", "1");
    stage.platform.write("sub/two.txt", "22");
    CWindow& window = *stage.window;
    EXPECT_FALSE(window.FileExists("one.txt")) << "that asks a big file alone";
    EXPECT_FALSE(window.DirExists("sub"));

    _finddata_t found;
    const int files = window.FindFirst("*.TXT", &found);
    EXPECT_EQ(found.name, "one.txt");
    EXPECT_EQ(window.FindNext(files, &found), -1);
    EXPECT_EQ(window.FindNext(files, &found), -1) << "behind the end";
    found.attrib = 0x10;
    EXPECT_NE(window.FindFirst("*", &found), -1);
    EXPECT_EQ(found.name, "sub") << "folders alone";
    EXPECT_EQ(window.FindFirst("none.*", &found), -1);

    EXPECT_EQ(window.ChDir("nowhere"), -1);
    EXPECT_EQ(window.ChDir("SUB"), 0);
    const CXString folder = window.GetCurrentDirectoryA();
    char buffer[8] = "xxxxxxx";
    window.GetCurrentDirectoryA(4, buffer);
    EXPECT_EQ(std::string(buffer), std::string(folder.view().substr(0, 3)));
    EXPECT_EQ(buffer[4], 'x');
}

TEST(Window, MusicNeedsSoundAndMusic) {
    const struct {
        const char* switches;
        bool tried;
    } rows[] = {
        {"", true},
        {"-nosound", false},
        {"-nomusic", false},
    };
    for (const auto& row : rows) {
        FrameStage stage(row.switches);
        stage.window->StartMusic("a.wav", true);
        EXPECT_FALSE(stage.window->isMusicPlaying());
        EXPECT_EQ(stage.window->IsSoundOn() && stage.window->IsMusicOn(), row.tried);
    }
}

TEST(Window, KeyCodes) {
    const struct {
        int vk, lParam, code;
    } rows[] = {
        {0x0D, 0, -50},        {0x10, 0x1D0001, -45}, {0x10, 0x2A0001, -44}, {0x11, 0x2A0001, -48},
        {0x11, 0x1D0001, -47}, {0x28, 0, -40},        {0x41, 0, 0x41},
    };
    for (const auto& row : rows)
        EXPECT_EQ(CWindow::__get_virtualkey_code(row.vk, row.lParam), row.code);
}

TEST(Window, TheSecondOneInAProcessStartsAsTheFirstDid) {
    std::string first;
    for (int run = 0; run < 2; ++run) {
        FrameStage stage("", speaking(run == 0 ? "0415" : ""));
        stage.platform.write("Dane/x", "");
        EXPECT_EQ(CWindow::current(), stage.window.get());
        std::string state = std::to_string(CXTimer::isEnabled()) + std::to_string(CWindow::isPaused()) +
                            std::to_string(CHotSpot::getMinPriority()) + std::to_string(CHotSpot::getMaxPriority());
        EXPECT_EQ(CWindow::getEXEPath(), CXString(stage.platform.files.currentFolder()) + "\\");
        if (run == 0) first = state;
        EXPECT_EQ(state, first);

        stage.window->CreateSurface();
        stage.window->Activate(true);
        stage.window->ChDir("Dane");
        stage.frames(2);
        CXTimer::enable(false);
        CWindow::pause();
        CHotSpot::setMinPriority(5);
        CHotSpot::setMaxPriority(6);
        stage.window.reset();
        EXPECT_EQ(CWindow::current(), nullptr);
    }
}
