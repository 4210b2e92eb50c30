// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "input/keyboard.h"

#include <gtest/gtest.h>

#include "input/keyboard_object.h"
#include "support/stage.h"

namespace {

constexpr int kKeyA = 0x1E, kEscape = 0x01, kShift = 0x36, kMinus = 0x0C, kUp = 0xC8, kFive = 0x06;

class Desk : public Stage {
public:
    explicit Desk(const std::string& handlers) : Stage(lines("LOG", "STRING") + lines("K", "KEYBOARD", handlers)) {
        start();
    }
    // Moves the key and lets that many polls pass, 10 ms each.
    void key(int code, bool down, int polls = 1) {
        platform.input.setKey(code, down);
        for (int i = 0; i < polls; ++i) {
            frames(1);
            CWindow::current()->getKeyboardInterface()->tick();
        }
    }
    std::string log() {
        std::string heard = value("LOG");
        run("LOG^SET(\"\");");
        return heard;
    }
};

std::string note(const std::string& signal, const std::string& text) {
    return signal + "={LOG^ADD(\"" + text + "\");}\n";
}

const std::string kHandlers = note("ONKEYDOWN", "d") + note("ONKEYDOWN^ESC", "E") + note("ONKEYUP", "u") +
                              note("ONKEYUP^UP", "U") + "ONCHAR={LOG^ADD(K^GETLATESTKEY());}\n" +
                              note("ONCHAR^5", "five");

}  // namespace

TEST(KeyboardObject, TellsTheWordThenTheKeyThenTheCharacter) {
    Desk stage(kHandlers);
    const auto press = [&](int code) {
        stage.key(code, true);
        stage.key(code, false);
        return stage.log();
    };
    EXPECT_EQ(press(kEscape), "Eu");
    EXPECT_EQ(press(kUp), "dU");
    EXPECT_EQ(press(kMinus), "du") << "neither word nor character";
    EXPECT_EQ(press(kKeyA), "dau");
    EXPECT_EQ(press(kFive), "dfiveu");
    stage.key(kShift, true);
    EXPECT_EQ(press(kKeyA), "ddAu");
    stage.platform.input.setCapsLock(true);
    EXPECT_EQ(press(kKeyA), "dau") << "both undo each other";
    EXPECT_EQ(press(kFive), "dfiveu");
    stage.run("K^DISABLE();");
    EXPECT_EQ(press(kKeyA), "");
    stage.run("LOG^ADD(K^GETLATESTKEY());");
    EXPECT_EQ(stage.log(), "5");
}

TEST(KeyboardObject, AnswersByNameOnlyWhileEnabled) {
    Desk stage(note("ONKEYDOWN", "d"));
    stage.run("K^SETAUTOREPEAT(FALSE);");
    stage.key(kKeyA, true, 40);
    EXPECT_EQ(stage.log(), "d");
    stage.run("LOG^ADD(K^ISKEYDOWN(\"a\"));LOG^ADD(K^ISKEYDOWN(\"b\"));LOG^ADD(K^ISKEYDOWN());");
    EXPECT_EQ(stage.log(), "TRUEFALSETRUE");
    stage.run("K^DISABLE();LOG^ADD(K^ISKEYDOWN(\"A\"));LOG^ADD(K^ISKEYDOWN());");
    EXPECT_EQ(stage.log(), "FALSETRUE");
}

TEST(KeyboardObject, ScriptsMayRemoveItInsideItsSignals) {
    for (const char* signal : {"ONKEYDOWN", "ONCHAR^a", "ONCHAR", "ONKEYUP", "ONDONE"}) {
        Desk stage(std::string(signal) + "={S^REMOVE(\"K\");LOG^ADD(\"x\");}\n" + note("ONKEYUP^ESC", "never"));
        stage.key(kKeyA, true);
        stage.key(kKeyA, false);
        stage.run("S^REMOVE(\"K\");");
        stage.key(kEscape, true);
        stage.key(kEscape, false);
        EXPECT_EQ(stage.log().substr(0, 1), "x") << signal;
        EXPECT_EQ(stage.object("K"), nullptr);
    }
}
