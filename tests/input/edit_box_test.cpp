// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "input/edit_box.h"

#include <functional>
#include <gtest/gtest.h>
#include <map>

#include "animation/image_object.h"
#include "frame/unit.h"
#include "graphics/refresh_screen.h"
#include "input/edit_box_object.h"
#include "storage/archive.h"
#include "storage/file.h"
#include "structure/scene.h"
#include "support/fonts.h"
#include "support/stage.h"
#include "text/font_collection.h"
#include "text/multiline_text.h"

namespace {

constexpr int kTab = 0x0F;

std::string picture(const std::string& name, int priority) {
    return lines(name, "IMAGE",
                 "FILENAME=" + name + ".img\nTOCANVAS=TRUE\nVISIBLE=TRUE\nPRIORITY=" + std::to_string(priority) + "\n");
}

std::string box(const std::string& name, const std::string& rect, const std::string& more = "") {
    return lines(name, "EDITBOX", "FONT=F\nCURSOR=CUR\nRECT=" + rect + "\n" + more);
}

// Font F with letters of 12 by 20, and the cursor CUR of 2 by 16. BG covers 100 to 200 across and 100 to 180 down.
class Desk : public Stage {
public:
    explicit Desk(const std::string& scene)
        : Stage(lines("LOG", "STRING") + lines("F", "FONT", "DEF_ARIAL_STANDARD_12=a.fnt\n") + picture("CUR", 5) +
                picture("BG", 2) + picture("KID", 3) + scene) {
        file("Dane/S/a.fnt", fonts::file({.letters = "abcl"}));
        image("CUR", 2, 16, 0, 0);
        image("BG", 100, 80, 100, 100);
        image("KID", 10, 10, 120, 150);
        Stage::scene("NEXT", "");
        start();
        frames(2);
    }
    void press(CXPoint at) { CWindow::current()->OnLButtonDown(at, 0); }
    void release(CXPoint at) { CWindow::current()->OnLButtonUp(at, 0); }
    void moveTo(CXPoint at) { CWindow::current()->OnMouseMove(at, 0); }
    void click(CXPoint at) {
        moveTo(at);
        press(at);
        release(at);
    }
    void key(int code) { CWindow::current()->OnKeyDown(code, 0); }
    // Letters, and signs that stand for keys.
    void type(const std::string& keys) {
        static const std::map<char, int> kSigns = {{'<', 0xCB}, {'>', 0xCD}, {'^', 0xC7},  {'$', 0xCF},
                                                   {'#', 0x0E}, {'!', 0xD3}, {'\n', 0x1C}, {'\x1B', 0x01}};
        for (const char c : keys) {
            const auto sign = kSigns.find(c);
            if (sign == kSigns.end()) {
                CWindow::current()->OnChar(c, 0);
            } else {
                key(sign->second);
            }
        }
    }
    std::string log() {
        std::string heard = value("LOG");
        run("LOG^SET(\"\");");
        return heard;
    }
    CGraphicsObject* graphic(const char* name) { return current()->getGraphicsObject(name); }
    CEditBox6* editBox(const char* name) {
        auto* owner = static_cast<CMC_EditBox*>(object(name));
        return owner ? owner->getEditBox() : nullptr;
    }
    static CUnit6* unit() { return CWindow::current()->GetCurrentUnit(); }

private:
    void image(const std::string& name, int width, int height, int x, int y) {
        const std::vector<std::uint16_t> pixels(static_cast<std::size_t>(width * height), 0xF800);
        file("Dane/S/" + name + ".img", pictures::nvi(width, height, pixels, "", x, y));
    }
};

std::string note(const std::string& signal, const std::string& text) {
    return signal + "={LOG^ADD(\"" + text + "\");}\n";
}

std::string focusNotes(const std::string& name) {
    return note("ONFOCUSON", name + "+") + note("ONFOCUSOFF", name + "-");
}

// Does something at each call, once.
class Meddler : public CEditBoxNotifier {
public:
    explicit Meddler(std::function<void()> meddle) : meddle_(std::move(meddle)) {}
    void onFocusOff(CEditBox6*) override {
        if (auto meddle = std::exchange(meddle_, nullptr)) meddle();
    }

private:
    std::function<void()> meddle_;
};

}  // namespace

TEST(EditBox, KeysEditAtTheCaretWithinTheWidth) {
    const struct {
        const char* what;
        const char* text;  // four letters have room
        const char* code;  // run before the keys; may be empty
        const char* keys;
        const char* after;
        int cursor;  // its x
        const char* heard;
    } rows[] = {
        {"nothing to edit", "", "", "#!<>^$", "", 100, ""},
        {"before the last", "ab", "", "<c", "acb", 124, "acb."},
        {"full: typed keys are lost", "abca", "", "b", "abca", 0, ""},
        {"cursor stays at the far edge", "abca", "", "<>", "abca", 136, ""},
        {"exactly the last", "abc", "", "a", "abca", 136, "abca."},
        {"erasing isn't told", "abc", "", "#<!", "a", 112, ""},
        {"at both ends nothing goes", "abc", "", "!^#", "abc", 100, ""},
        {"home, right, delete", "abc", "", "^>!", "ac", 112, ""},
        {"end", "abc", "", "^$#", "ab", 124, ""},
        {"enter and escape", "ab", "", "\n\x1B", "ab", 124, "ent.esc."},
        {"caret behind a shorter text", "abc", "E^SETTEXT(\"a\");", "b", "ab", 124, "ab."},
        {"and backspace there", "abc", "E^SETTEXT(\"ab\");", "#", "a", 112, ""},
        {"caret stays in a longer one", "a", "E^ADDTEXT(\"cc\");", "b", "abcc", 124, "abcc."},
        {"disabled", "ab", "E^DISABLE();", "c#", "ab", 124, ""},
        {"enabled anew: no focus", "ab", "E^ENABLE();", "c#", "ab", 124, ""},
        {"removed: typed, not heard", "ab", "S^REMOVE(\"E\");", "c", "abc", 136, ""},
        {"its font is gone: no width", "ab", "S^REMOVE(\"F\");", "cc", "abcc", 100, "abc.abcc."},
        {"its cursor is gone", "ab", "S^REMOVE(\"CUR\");", "c", "abc", -1, "abc."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Desk stage(box("E", "100,100,148,130",
                       std::string("TEXT=") + row.text + "\nONCHANGED={LOG^ADD(E^GETTEXT());LOG^ADD(\".\");}\n" +
                           note("ONENTER", "ent.") + note("ONESC", "esc.")));
        CEditBox6* edited = stage.editBox("E");
        stage.type("abc");
        stage.run(std::string("E^ACTIVE();") + row.code);
        stage.type(row.keys);
        stage.frames(1);
        EXPECT_EQ(edited->getText(), row.after);
        EXPECT_EQ(stage.log(), row.heard);
        const CGraphicsObject* cursor = stage.graphic("CUR");
        EXPECT_EQ(cursor ? cursor->GetPosition() : CXPoint(-1, -1),
                  CXPoint(row.cursor, row.cursor > 0 ? 109 : row.cursor));
    }
}

TEST(EditBox, FocusGoesByMouseTabAndScript) {
    Desk stage(box("A", "100,200,148,230", focusNotes("a")) + box("B", "200,200,248,230", focusNotes("b")));
    const CXPoint inA(110, 210), inB(210, 210), outside(500, 400);
    stage.press(inA);
    EXPECT_EQ(stage.log(), "") << "a press isn't enough";
    stage.release(inA);
    EXPECT_EQ(stage.log(), "a+");
    stage.click(inA);
    EXPECT_EQ(stage.log(), "a-a+") << "the other box sees a click outside of itself";
    stage.click(inB);
    EXPECT_EQ(stage.log(), "a-b+");
    stage.click(outside);
    EXPECT_EQ(stage.log(), "b-");
    stage.key(kTab);
    stage.key(kTab);
    stage.key(kTab);
    EXPECT_EQ(stage.log(), "a+a-b+b-a+");
    stage.run("B^ACTIVE();B^ENABLE();B^DEACTIVE();");
    EXPECT_EQ(stage.log(), "b+b-b-") << "by script: the unit isn't asked, and each call is told";
    EXPECT_TRUE(stage.editBox("A")->isActive());
    stage.run("A^DISABLE();");
    stage.click(outside);
    EXPECT_EQ(stage.log(), "a-a-") << "the unit still held it for the one with the focus";
    stage.click(inA);
    EXPECT_EQ(stage.log(), "") << "disabled";
}

TEST(EditBox, CursorBlinksWhileActive) {
    Desk stage(box("E", "100,100,148,130"));
    const CGraphicsObject* cursor = stage.graphic("CUR");
    const auto blinks = [&](int frames) {
        int count = 0;
        for (bool was = cursor->isVisible(); frames > 0; --frames) {
            stage.frames(1);
            if (cursor->isVisible() != was) ++count;
            was = cursor->isVisible();
        }
        return count;
    };
    EXPECT_EQ(blinks(100), 0);
    stage.run("E^ACTIVE();E^ACTIVE();");
    EXPECT_EQ(blinks(38), 0);
    EXPECT_EQ(blinks(84), 3) << "one period, however often it was activated";
    stage.run("E^DEACTIVE();");
    EXPECT_EQ(blinks(100), 0);
    stage.run("E^ACTIVE();S^REMOVE(\"CUR\");");
    stage.frames(100);
}

TEST(EditBox, MayVanishInItsOwnSignals) {
    for (const char* signal : {"ONFOCUSON", "ONFOCUSOFF", "ONCHANGED", "ONENTER", "ONESC"}) {
        for (const char* victims : {"E", "F", "CUR"}) {
            SCOPED_TRACE(std::string(signal) + victims);
            Desk stage(box("E", "100,100,148,130",
                           std::string(signal) + "={S^REMOVE(\"" + victims + "\");LOG^ADD(\"x\");}\n"));
            stage.click({110, 110});
            stage.type("a\n\x1B#b<");
            stage.key(kTab);
            stage.frames(50);
            EXPECT_EQ(stage.log().substr(0, 1), "x");
            EXPECT_EQ(stage.object(victims), nullptr);
        }
    }
}

TEST(EditBox, UnitMayFlushThemAtAnyMoment) {
    Desk stage(box("A", "100,200,148,230", focusNotes("a")) + box("B", "200,200,248,230"));
    fonts::Font font({});
    CFontCollection fonts(nullptr);
    CMultilineText6 text(CWindow::current(), stage.unit());
    text.setJustify({300, 50, 490, 300}, kJustifyLeft, kJustifyTop);
    fonts.addFont(&font);
    text.setFont(&fonts);
    text.setText("ab<E,36,who,start><E,36,,>");
    auto* field = static_cast<CEditBox6*>(text.getEditBoxes()->at(0));
    const CXRect area = field->getBoundingRect();
    stage.click(area.CenterPoint());
    EXPECT_TRUE(field->isActive()) << "a field of a text is a box like any other";

    // The text that loses the focus is set anew meanwhile, and the unit empties itself while it passes the focus on.
    Meddler setsText([&] { text.setText("<E,36,,>"); });
    field->addNotifier(&setsText);
    stage.unit()->activateEditBox(stage.editBox("A"));
    EXPECT_EQ(text.getEditBoxes()->size(), 1);
    Meddler flushes([&] { stage.unit()->flushEditBoxes(); });
    stage.editBox("A")->addNotifier(&flushes);
    stage.unit()->activateEditBox(stage.editBox("B"));
    EXPECT_EQ(stage.unit()->getCurrentEditBoxIndex(), -1);
    EXPECT_EQ(stage.editBox("A"), nullptr);
    EXPECT_EQ(stage.editBox("B"), nullptr);
    EXPECT_EQ(text.getEditBoxes()->size(), 0);
    text.setText("<E,36,,>");
    EXPECT_EQ(text.getEditBoxes()->size(), 1);
    text.setText("");
    stage.log();
    stage.run("A^ACTIVE();A^SETTEXT(\"x\");LOG^ADD(A^GETTEXT());A^DISABLE();");
    stage.click({110, 210});
    stage.type("a#");
    EXPECT_EQ(stage.log(), "") << "nothing is left to hear";
}

TEST(EditBox, GoesWithTheScene) {
    Desk stage(box("E", "100,100,148,130", note("ONFOCUSOFF", "-")));
    CEditBox6* edited = stage.editBox("E");
    EditBoxLink link;
    link = edited;
    stage.run("E^ACTIVE();EP^GOTO(\"NEXT\");");
    stage.frames(3);
    ASSERT_EQ(stage.current()->getName(), "NEXT");
    EXPECT_FALSE(link);
    stage.key(kTab);
    EXPECT_EQ(stage.unit()->getCurrentEditBoxIndex(), -1);
    stage.frames(100);
}

TEST(EditBox, ComesBackFromItsRecord) {
    Desk stage(box("E", "100,100,148,130", "TEXT=ab\n") + box("COPY", "1,2,3,4"));
    stage.run("E^SETTEXT(\"abc\");");
    {
        CFile file(CWindow::current(), "box.bin", CFile::kCreateBinary);
        CXArchive archive(&file, true);
        stage.object("E")->serialize(&archive);
    }
    CFile file(CWindow::current(), "box.bin", CFile::kReadBinary);
    CXArchive archive(&file, false);
    stage.object("COPY")->serialize(&archive);
    const CEditBox6* copy = stage.editBox("COPY");
    EXPECT_EQ(copy->getText(), "abc");
    EXPECT_EQ(copy->getBoundingRect(), CXRect(100, 100, 148, 130));
    EXPECT_EQ(copy->getCursor(), stage.graphic("CUR"));
    stage.unit()->prevEditBox();
    EXPECT_EQ(stage.unit()->getCurrentEditBoxIndex(), 1) << "the box of before is gone";
}

TEST(Dialog, StandsAboveAllAndIsDraggedByItsTop) {
    Desk stage(lines("D", "DIALOG") + lines("B", "BUTTON", "ENABLE=TRUE\nGFXSTANDARD=CUR\nGFXONMOVE=CUR\n"));
    CRefreshScreen* screen = CWindow::current()->GetRefreshScreenInterface();
    const auto drag = [&](CXPoint from, CXPoint to) {
        stage.moveTo(from);
        stage.press(from);
        stage.moveTo(to);
        stage.release(to);
        return stage.graphic("BG")->GetPosition();
    };
    stage.run("D^ADD(\"B\");D^ADD(\"B\");D^ADD(\"KID\");D^ADD(\"KID\");D^ADD(\"LOG\");D^ADD();D^SETBACKGROUND(\"B\");");
    EXPECT_EQ(drag({150, 110}, {160, 130}), CXPoint(100, 100)) << "no background, no strip";
    stage.run("D^SETBACKGROUND(\"BG\");");
    EXPECT_EQ(screen->GetPriority(stage.graphic("BG")), 100'000);
    EXPECT_EQ(screen->GetPriority(stage.graphic("KID")), 100'004) << "raised once";
    EXPECT_EQ(screen->GetPriority(stage.graphic("CUR")), 100'006) << "once for both states";

    EXPECT_EQ(drag({150, 130}, {160, 150}), CXPoint(110, 120)) << "the lower edge is within";
    EXPECT_EQ(stage.graphic("KID")->GetPosition(), CXPoint(130, 170));
    EXPECT_EQ(stage.graphic("CUR")->GetPosition(), CXPoint(10, 20));
    EXPECT_EQ(screen->GetPriority(stage.graphic("BG")), 100'000);
    EXPECT_EQ(drag({150, 151}, {0, 0}), CXPoint(110, 120)) << "below the strip where it is now";
    EXPECT_EQ(drag({150, 149}, {140, 149}), CXPoint(100, 120));

    stage.run("D^HIDE();D^SHOW();");
    EXPECT_FALSE(stage.graphic("BG")->isVisible());
    EXPECT_TRUE(stage.graphic("KID")->isVisible());
    EXPECT_TRUE(stage.graphic("CUR")->isVisible());
}

TEST(Dialog, OutlivesAllThatItHolds) {
    for (const char* victim : {"BG", "KID", "B", "CUR", "D"}) {
        for (const bool inDrag : {false, true}) {
            SCOPED_TRACE(victim + std::to_string(inDrag));
            Desk stage(lines("D", "DIALOG") + lines("B", "BUTTON", "ENABLE=TRUE\nGFXSTANDARD=CUR\n"));
            stage.run("D^SETBACKGROUND(\"BG\");D^ADD(\"KID\");D^ADD(\"B\");");
            const std::string removal = "S^REMOVE(\"" + std::string(victim) + "\");";
            if (!inDrag) stage.run(removal);
            stage.press({150, 110});
            stage.moveTo({160, 120});
            if (inDrag) stage.run(removal);
            stage.moveTo({170, 130});
            stage.release({170, 130});
            stage.run("D^HIDE();D^SHOW();D^SETBACKGROUND(\"KID\");D^SETBACKGROUND(\"BG\");");
            stage.press({150, 110});
            stage.moveTo({160, 120});
            stage.frames(2);
            EXPECT_EQ(stage.object(victim), nullptr);
        }
    }
}
