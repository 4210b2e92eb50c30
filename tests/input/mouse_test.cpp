// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "input/mouse.h"

#include <gtest/gtest.h>

#include "support/stage.h"

namespace {

class Desk : public Stage {
public:
    explicit Desk(const std::string& mouse, const std::string& more = "")
        : Stage(lines("LOG", "STRING") + lines("M", "MOUSE", mouse) + more) {
        start();
        window = CWindow::current();
        window->SetActiveCursor(&icons_[0]);
        window->SetWaitCursor(&icons_[1]);
    }
    std::string log() {
        std::string heard = value("LOG");
        run("LOG^SET(\"\");");
        return heard;
    }
    std::string places() {
        for (const char* place : {"POSX", "POSY", "LASTCLICKPOSX", "LASTCLICKPOSY"})
            run(std::string("LOG^ADD(M^GET") + place + "());LOG^ADD(\".\");");
        return log();
    }

    CWindow* window;

private:
    int icons_[2] = {};
};

std::string notes(const std::string& signal, const std::string& text) {
    return signal + "={LOG^ADD(\"" + text + ".\");}\n";
}

}  // namespace

TEST(Mouse, TellsTheButtonFirstAndThenWithoutIt) {
    constexpr int (CWindow::*kEvents[])(CXPoint, int) = {
        &CWindow::OnMouseMove, &CWindow::OnLButtonDown, &CWindow::OnLButtonUp, &CWindow::OnMButtonDown,
        &CWindow::OnMButtonUp, &CWindow::OnRButtonDown, &CWindow::OnRButtonUp, &CWindow::OnLButtonDblClk};
    Desk stage(notes("ONMOVE", "move") + notes("ONCLICK", "click") + notes("ONCLICK^LEFT", "left") +
               notes("ONRELEASE", "up") + notes("ONRELEASE^MIDDLE", "midup") + notes("ONDBLCLICK", "dbl"));
    for (const char* heard : {"move.left.up.click.midup.click.up.dbl.", ""}) {
        for (const auto event : kEvents)
            (*stage.window.*event)({1, 2}, 0);
        EXPECT_EQ(stage.log(), heard);
        stage.run("M^DISABLE();");
    }
}

TEST(Mouse, KeepsItsPlacesWithoutHandlers) {
    Desk stage("");
    stage.window->OnMouseMove({10, 20}, 0);
    stage.window->OnLButtonDown({30, 40}, 0);
    stage.window->OnRButtonDown({50, 60}, 0);
    EXPECT_EQ(stage.places(), "10.20.30.40.") << "a press is no move, and the left button alone clicks";
    stage.run("M^DISABLE();");
    stage.window->enableMouse(true);
    stage.window->OnMouseMove({1, 1}, 0);
    EXPECT_EQ(stage.places(), "10.20.30.40.") << "it is off itself, too";
    stage.run("M^ENABLE();");
    stage.window->OnMouseMove({1, 1}, 0);
    stage.platform.shell.setClientArea({100, 200, 800, 600});
    stage.run("M^MOVE(-3,4);");
    EXPECT_EQ(stage.places(), "98.205.30.40.") << "the desktop's place";
    EXPECT_EQ(CXPoint(stage.platform.input.pointerX(), stage.platform.input.pointerY()), CXPoint(98, 205));
}

TEST(Mouse, GovernsTheCursor) {
    Desk stage("");
    std::string kinds;
    for (const char* script : {"SET(\"WAIT\")", "SET(\"ACTIVE\")", "SET(\"NONE\")", "SET(\"ARROW\")", "DISABLE()",
                               "SET(\"ARROW\")", "ENABLE()"}) {
        stage.run(std::string("M^") + script + ";");
        kinds += "maw"[static_cast<int>(stage.platform.input.cursor())];
    }
    EXPECT_EQ(kinds, "waamwwm");
    stage.window->LockCursor();
    stage.run("M^DISABLE();M^HIDE();M^HIDE();M^SHOW();");
    EXPECT_EQ(stage.platform.input.cursor(), platform::CursorKind::main) << "another one is in force";
    EXPECT_EQ(stage.platform.input.showCount(), -1);
}

TEST(Mouse, ClicksByItself) {
    Desk stage(notes("ONCLICK^LEFT", "left") + notes("ONCLICK^MIDDLE", "middle") + notes("ONCLICK^RIGHT", "right") +
               notes("ONRELEASE", "released"));
    stage.run("M^CLICK(7,8);M^CLICK(1,2,\"MIDDLE\");M^CLICK(3,4,\"RIGHT\");M^CLICK(5,6,\"LEFT\");M^CLICK(9,9,\"X\");");
    EXPECT_EQ(stage.log() + stage.places(), "left.middle.right.left.0.0.5.6.");
    stage.run("M^DISABLE();M^CLICK(1,1);");
    EXPECT_EQ(stage.log(), "") << "as a real press";
}

TEST(Mouse, SurvivesItsHandlers) {
    Desk stage(
        "ONCLICK^LEFT={N^INC();M^CLICK(1,1);N^ADD(1000000);}\nONCLICK^RIGHT={S^REMOVE(\"M\");LOG^ADD(\"x\");}\n"
        "ONMOVE={LOG^ADD(\"m\");}\nONDONE={M^CLICK(1,1,\"MIDDLE\");LOG^ADD(\"d\");}\nONCLICK={LOG^ADD(\"c\");}\n",
        lines("N", "INTEGER", "VALUE=0\n"));
    stage.window->OnLButtonDown({1, 1}, 0);
    const int count = std::stoi(stage.value("N"));
    EXPECT_GT(count % 1000000, 10) << "it clicked itself until that was enough";
    EXPECT_EQ(count / 1000000, count % 1000000) << "and came back from each";
    stage.window->OnRButtonDown({1, 1}, 0);
    stage.window->OnMouseMove({1, 1}, 0);
    EXPECT_EQ(stage.log(), "cdx") << "it hears its own last click and nothing behind it";
}
