// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "input/button.h"

#include <gtest/gtest.h>

#include "animation/image.h"
#include "animation/image_object.h"
#include "frame/unit.h"
#include "graphics/refresh_screen.h"
#include "input/button_object.h"
#include "input/switch_button.h"
#include "sound/sound.h"
#include "sound/sound_object.h"
#include "storage/archive.h"
#include "storage/file.h"
#include "structure/scene.h"
#include "support/pictures.h"
#include "support/stage.h"
#include "support/waves.h"

namespace {

std::string picture(const std::string& name, const std::string& file, int priority) {
    return lines(name, "IMAGE",
                 "FILENAME=" + file + "\nTOCANVAS=TRUE\nVISIBLE=TRUE\nPRIORITY=" + std::to_string(priority) + "\n");
}

// Each signal of the button notes its letter; `more` comes first and goes before these.
std::string button(const std::string& more, const std::string& name = "B") {
    std::string text = "ENABLE=TRUE\n" + more;
    const std::pair<const char*, const char*> notes[] = {{"FOCUSON", "f"},  {"FOCUSOFF", "o"},   {"CLICKED", "c"},
                                                         {"RELEASED", "r"}, {"ACTION", "a"},     {"STARTDRAGGING", "S"},
                                                         {"DRAGGING", "D"}, {"ENDDRAGGING", "E"}};
    for (const auto& [signal, letter] : notes) {
        if (more.find("ON" + std::string(signal) + "=") == std::string::npos)
            text += "ON" + std::string(signal) + "={LOG^ADD(\"" + letter + "\");}\n";
    }
    return lines(name, "BUTTON", text);
}

// Pictures of 10 by 10, all at y 10: UP at x 10 and priority 3, OVER there and 4, DOWN there and 5, FAR at x 50; the
// left column of CUT, at x 90, is transparent. SND and CLICK are sounds that note "+" and "!" when they start.
class Desk : public Stage {
public:
    explicit Desk(const std::string& scene, const std::string& second = "")
        : Stage(lines("LOG", "STRING") + picture("UP", "up.img", 3) + picture("OVER", "over.img", 4) +
                picture("DOWN", "down.img", 5) + picture("FAR", "far.img", 6) + picture("CUT", "cut.img", 6) +
                lines("SND", "SOUND", "FILENAME=a.wav\nONSTARTED={LOG^ADD(\"+\");}\n") +
                lines("CLICK", "SOUND", "FILENAME=b.wav\nONSTARTED={LOG^ADD(\"!\");}\n") + scene) {
        const std::vector<std::uint16_t> pixels(100, 0xF800);
        std::string alpha;
        for (int i = 0; i < 100; ++i)
            alpha += i % 10 == 0 ? '\0' : '\xFF';
        for (const char* name : {"up", "over", "down"})
            file(std::string("Dane/S/") + name + ".img", pictures::nvi(10, 10, pixels, "", 10, 10));
        file("Dane/S/far.img", pictures::nvi(10, 10, pixels, "", 50, 10));
        file("Dane/S/cut.img", pictures::nvi(10, 10, pixels, alpha, 90, 10));
        for (const char* name : {"a", "b", "c"})
            file(std::string("Wavs/") + name + ".wav", wave(::level(1000, 4410)));
        if (!second.empty()) this->scene("T", second);
        frames(2);
    }
    // Events at y 15: "m12" moves to x 12, "d" and "u" are the left button, "r" the right one.
    void act(const std::string& events) {
        CWindow* window = CWindow::current();
        for (std::size_t at = 0; at < events.size(); at = events.find_first_not_of(' ', events.find(' ', at))) {
            const CXPoint point(std::stoi(events.substr(at + 1)), 15);
            if (events[at] == 'm') window->OnMouseMove(point, 0);
            if (events[at] == 'd') window->OnLButtonDown(point, 0);
            if (events[at] == 'u') window->OnLButtonUp(point, 0);
            if (events[at] == 'r') window->OnRButtonDown(point, 0);
        }
    }
    std::string log() {
        const std::string heard = value("LOG");
        run("LOG^SET(\"\");");
        return heard;
    }
    std::string after(const std::string& events) {
        act(events);
        return log();
    }
    CButton& at(const std::string& name = "B") { return *static_cast<CMC_Button*>(object(name))->getButton(); }
    CImage* image(const std::string& name) { return static_cast<CMC_Image*>(object(name))->getImage(); }
    // Which of the three pictures are in view.
    std::string shown() {
        std::string text;
        for (const char* name : {"UP", "OVER", "DOWN"})
            text += image(name)->CGraphicsObject::isVisible() ? name[0] : '-';
        return text;
    }
    CUnit6* unit() { return current()->getUnit(); }
};

const std::string kThree = "GFXSTANDARD=UP\nGFXONMOVE=OVER\nGFXONCLICK=DOWN\n";

}  // namespace

TEST(Button, ShowsThePictureOfItsState) {
    const struct {
        const char* what;
        const char* before;  // script; FREEZE and KEEP are the two settings that no script reaches
        const char* events;
        const char* after;
        const char* shown;
    } rows[] = {
        {"idle", "", "", "", "U--"},
        {"over", "", "m12", "", "-O-"},
        {"pressed", "", "m12 d12", "", "--D"},
        {"released", "", "m12 d12 u12", "", "U--"},
        {"and over again", "", "m12 d12 u12 m13", "", "-O-"},
        {"pressed without having come", "", "d12", "", "U-D"},
        {"left while pressed", "", "m12 d12 m40", "", "U--"},
        {"a second press", "", "m12 d12 d12 m13", "", "--D"},
        {"disabled over it", "", "m12", "B^DISABLE();", "---"},
        {"enabled again", "", "m12", "B^DISABLE();B^ENABLE();", "U--"},
        {"still in view", "", "m12 d12", "B^DISABLEBUTVISIBLE();", "U--"},
        {"frozen", "FREEZE", "m12 m40", "", "-O-"},
        {"disabled it thaws", "FREEZE", "m12", "B^DISABLE();B^ENABLE();", "U--"},
        {"the standard one stays", "KEEP", "m12", "", "UO-"},
        {"no on-click graphic", "B^SETONCLICK(\"\");DOWN^HIDE();", "m12 d12", "", "-O-"},
        {"no on-move graphic", "B^SETONMOVE(\"none\");OVER^HIDE();", "m12", "", "U--"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Desk desk(button(kThree));
        const std::string before = row.before;
        if (before == "FREEZE") {
            desk.at().Freeze(true);
        } else if (before == "KEEP") {
            desk.at().HideStandardWhileOnMove(false);
        } else {
            desk.run(before);
        }
        desk.act(row.events);
        desk.run(row.after);
        EXPECT_EQ(desk.shown(), row.shown);
    }
    Desk disabled(lines("B", "BUTTON", kThree));
    EXPECT_EQ(disabled.shown(), "---");
}

TEST(Button, TellsWhatHappensToIt) {
    const struct {
        const char* what;
        const char* events;
        const char* log;
    } rows[] = {
        {"a click", "m12 m13 d13 u13 m12 m40", "fcrafo"},
        {"released beside it", "m12 d12 m40 u40", "fco"},
        {"released on it after a press elsewhere", "d40 u12", "ra"},
        {"two presses", "d12 d12 u12", "ccra"},
        {"the other button", "r12 m12 m40", "o"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(Desk(button("RECT=10,10,20,20\n")).after(row.events), row.log);
    }
    Desk desk(button(kThree));
    desk.unit()->setActivity(false);
    EXPECT_EQ(desk.after("m12 d12 u12"), "") << "its unit sleeps";
    desk.unit()->setActivity(true);
    desk.act("m12");
    desk.unit()->setActivity(false);
    EXPECT_EQ(desk.after("m40"), "fo");
    EXPECT_EQ(desk.shown(), "-O-") << "told, and nothing else";
}

TEST(Button, SoundsStartOnce) {
    const std::string sounds = "GFXSTANDARD=UP\nGFXONMOVE=OVER\nSNDONMOVE=SND\nSNDONCLICK=CLICK\n";
    Desk desk(button(sounds));
    EXPECT_EQ(desk.after("m12 d12 u12 m13 m40 m12"), "+f!crafo+f") << "coming back from a press is no coming";
    const CSound4* sound = desk.at().GetSOOnMove();
    EXPECT_TRUE(sound->IsPlaying());
    desk.act("m40");
    EXPECT_FALSE(sound->IsPlaying());
    desk.log();
    desk.at().SetPlaySoundOnlyWhenSilence(true);
    EXPECT_EQ(desk.after("m12"), "f");
    desk.at().LockSound(true);
    EXPECT_EQ(desk.after("d12 u12"), "cra");
    EXPECT_EQ(Desk(button(sounds + "DRAGGABLE=TRUE\n")).after("d12 m20 u20"), "S!cDE");
    EXPECT_EQ(Desk(button("GFXSTANDARD=UP\nSNDONMOVE=UP\nSNDONCLICK=none\n")).after("m12 d12"), "fc");
    Desk quick(button(sounds));
    quick.at().Force(true);
    EXPECT_EQ(quick.log(), "!");
}

TEST(Button, AnswersOnItsShape) {
    const struct {
        const char* what;
        std::string keys;
        const char* code;
        const char* hits;  // at x 12, 22, 52, 90 and 91
    } rows[] = {
        {"the standard graphic", "GFXSTANDARD=UP\n", "", "10000"},
        {"its transparent part", "GFXSTANDARD=CUT\n", "", "00001"},
        {"it moves", "GFXSTANDARD=UP\n", "UP^MOVE(40,0);", "00100"},
        {"a rectangle", "GFXSTANDARD=UP\nRECT=20,10,24,20\n", "", "01000"},
        {"that of a graphic", "GFXSTANDARD=UP\nRECT=FAR\n", "FAR^MOVE(-30,0);", "00100"},
        {"no rectangle", "GFXSTANDARD=UP\nRECT=none\n", "", "10000"},
        {"accent", "GFXSTANDARD=UP\nACCENT=CUT\n", "", "00001"},
        {"a rectangle before the accent", "RECT=20,10,24,20\nACCENT=CUT\n", "", "01000"},
        {"accent by script", "GFXSTANDARD=UP\n", "B^ACCENT(\"FAR\");B^ACCENT(\"none\");", "00100"},
        {"rectangle by numbers", "GFXSTANDARD=UP\n", "B^SETRECT(20,10,24,20);", "01000"},
        {"by name, and by none", "GFXSTANDARD=UP\n", "B^SETRECT(\"FAR\");B^SETRECT(\"none\");", "00100"},
        {"away with it", "GFXSTANDARD=UP\nRECT=FAR\n", "B^SETSTD(\"UP\");B^SETRECT(0,0,0,0);", "00000"},
        {"new standard graphic", "GFXSTANDARD=UP\n", "B^SETSTD(\"FAR\",TRUE);", "00100"},
        {"none any more", "GFXSTANDARD=UP\n", "B^SETSTD(\"none\");", "00000"},
        {"nothing at all", "", "", "00000"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Desk desk(button(row.keys + "ONCLICKED={LOG^ADD(\"1\");}\n"));
        desk.run(row.code);
        std::string hits;
        for (const char* press : {"d12", "d22", "d52", "d90", "d91"})
            hits += desk.after(press).empty() ? '0' : '1';
        EXPECT_EQ(hits, row.hits);
    }
}

TEST(Button, StandsWhereItsPictureStands) {
    Desk desk(button("GFXSTANDARD=UP\nPRIORITY=90\n", "A") + button("GFXSTANDARD=OVER\n") +
              button("RECT=FAR\nPRIORITY=8\n", "C") + lines("BARE", "IMAGE", "FILENAME=down.img\n"));
    EXPECT_EQ(desk.at("A").getPriority() * 100 + desk.at("B").getPriority() * 10 + desk.at("C").getPriority(), 348);
    EXPECT_TRUE(desk.at("B").getHotSpot()->TestHit({12, 15}));
    desk.run("UP^SETPRIORITY(7);C^SETPRIORITY(5);C^SETSTD(\"OVER\",TRUE);");
    EXPECT_EQ(desk.at("A").getPriority() * 10 + desk.at("C").getPriority(), 74);
    desk.run("A^SETSTD(\"FAR\",TRUE);");
    EXPECT_EQ(CWindow::current()->GetRefreshScreenInterface()->GetPriority(desk.image("UP")), -1);
    desk.run("B^SETSTD(\"UP\");LOG^ADD(B^GETSTD());LOG^ADD(B^GETONMOVE());LOG^ADD(B^GETPRIORITY());");
    EXPECT_EQ(desk.log(), "UPUNKNOWN71") << "one that isn't on the screen is put there";
}

TEST(Button, IsDraggedByTheUnit) {
    const std::string where =
        "LOG^ADD(S^GETDRAGGEDNAME());LOG^ADD(UP^GETPOSITIONX());LOG^ADD(\"-\");LOG^ADD(B^GETPRIORITY());";
    Desk desk(button(kThree + "DRAGGABLE=TRUE\nONSTARTDRAGGING={LOG^ADD(\"S\");" + where +
                     "}\nONENDDRAGGING={LOG^ADD(\"E\");" + where + "}\n"));
    EXPECT_EQ(desk.after("m12 d12"), "fSUP10-10000c");
    EXPECT_TRUE(desk.unit()->isDragging());
    EXPECT_EQ(desk.after("d12"), "") << "it is off meanwhile";
    EXPECT_EQ(desk.after("m20 m30 u30"), "DDEUP28-3");
    desk.run("LOG^ADD(S^GETDRAGGEDNAME());");
    EXPECT_EQ(desk.log(), "");
    EXPECT_EQ(desk.shown(), "U-D") << "a press that has no release, until the pointer leaves";
    EXPECT_EQ(desk.after("m60"), "o");
    EXPECT_EQ(desk.shown(), "U--");

    Desk other(button("GFXSTANDARD=UP\nRECT=10,10,20,20\nDRAG=FAR\nDRAGGABLE=TRUE\n"));
    other.act("d12 m20");
    other.run("LOG^ADD(S^GETDRAGGEDNAME());LOG^ADD(FAR^GETPOSITIONX());B^DISABLEDRAGGING();");
    EXPECT_EQ(other.log(), "ScDFAR58");
    EXPECT_EQ(other.after("u20 d12 m14 u14"), "Ecra") << "and dragged no more";
}

TEST(Button, ReturnsACodeByItsKeys) {
    enum { A = 0x1E, B = 0x30, C = 0x2E, kShift = 0x2A };
    const struct {
        const char* what;
        const char* keys;
        std::vector<int> typed;
        int code;
    } rows[] = {
        {"a word", "ab", {A, B}, 7},
        {"behind another letter", "AB", {C, A, B}, 7},
        {"a letter between", "AB", {A, C, B}, 0},
        {"a key without a character between", "AB", {A, kShift, B}, 7},
        {"in the other order", "AB", {B, A}, 0},
        {"any", "<any>", {kShift}, 7},
        {"none", "", {A, B}, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Desk desk(button(kThree));
        desk.at().setHotKey(row.keys);
        desk.at().setRetCode(7);
        for (const int key : row.typed)
            CWindow::current()->OnKeyDown(key, 0);
        EXPECT_EQ(desk.unit()->getRetCode(), row.code);
    }
    Desk desk(button(kThree));
    desk.at().setHotKey("A");
    CWindow::current()->OnKeyDown(A, 0);
    desk.at().setRetCode(3);
    EXPECT_EQ(desk.unit()->getRetCode(), 0) << "it had no code to give";
    desk.act("d12 u12");
    EXPECT_EQ(desk.unit()->getRetCode(), 3);
    desk.unit()->setRetCode(0);
    desk.run("S^REMOVE(\"B\");");
    CWindow::current()->OnKeyDown(A, 0);
    EXPECT_EQ(desk.unit()->getRetCode(), 0);
}

TEST(Button, LivesThroughWhatItsHandlersRemove) {
    const std::string drag = kThree + "DRAGGABLE=TRUE\nSNDONMOVE=SND\nSNDONCLICK=CLICK\n";
    const std::string plain = kThree + "SNDONMOVE=SND\nSNDONCLICK=CLICK\n";
    const std::string all = "m12 d12 m14 u14 m40 m12 d12 u12 m13 m40 m12";
    const struct {
        const char* what;
        std::string keys;
        const char* log;
    } rows[] = {
        {"itself as it gets the focus", plain + "ONFOCUSON={S^REMOVE(\"B\");}\n", "+"},
        {"itself as it is pressed", plain + "ONCLICKED={LOG^ADD(\"c\");S^REMOVE(\"B\");LOG^ADD(\"-\");}\n", "+f!c-"},
        {"itself as it is released", plain + "ONRELEASED={S^REMOVE(\"B\");}\n", "+f!c"},
        {"itself as it acts", plain + "ONACTION={S^REMOVE(\"B\");}\n", "+f!cr"},
        {"itself as it is left", plain + "ONFOCUSOFF={S^REMOVE(\"B\");}\n", "+f!craf!craf"},
        {"itself, of a drag", drag + "ONSTARTDRAGGING={S^REMOVE(\"B\");}\n", "+f"},
        {"itself, dragged", drag + "ONDRAGGING={S^REMOVE(\"B\");}\n", "+fS!c"},
        {"itself, dropped", drag + "ONENDDRAGGING={S^REMOVE(\"B\");}\n", "+fS!cD"},
        {"the dragged graphic", drag + "ONDRAGGING={S^REMOVE(\"UP\");}\n", "+fS!co"},
        {"by its sound", kThree + "SNDONMOVE=KILLER\n", ""},
        {"by its click", kThree + "DRAGGABLE=TRUE\nSNDONCLICK=KILLER\n", "fS"},
        {"all graphics", plain + "ONFOCUSON={S^REMOVE(\"UP\");S^REMOVE(\"OVER\");S^REMOVE(\"DOWN\");}\n", "+o"},
        {"another picture", plain + "ONCLICKED={UP^LOAD(\"none.img\");OVER^LOAD(\"far.img\");}\n", "+f!o"},
        {"a new button of its name", plain + "ONCLICKED={S^CREATEOBJECT(\"BUTTON\",\"B\");B^SETSTD(\"UP\");}\n",
         "+f!o"},
        {"presses itself", "GFXSTANDARD=UP\nONCLICKED={MOUSE^CLICK(12,15);}\n", "frafrafof"},
        {"drags the screen", "DRAG=CO\nRECT=UP\nDRAGGABLE=TRUE\n", "fScDEofScEof"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Desk desk(lines("MOUSE", "MOUSE") + lines("CO", "CANVAS_OBSERVER") +
                  lines("KILLER", "SOUND", "FILENAME=c.wav\nONSTARTED={S^REMOVE(\"B\");S^REMOVE(\"KILLER\");}\n") +
                  button(row.keys));
        desk.act(all);
        EXPECT_EQ(desk.value("LOG"), row.log);
        EXPECT_FALSE(desk.unit()->isDragging());
        EXPECT_EQ(desk.current()->getDraggedName(), "");
        desk.frames(3);
    }
}

TEST(Button, GoesWithItsScene) {
    for (const char* signal : {"ONFOCUSON", "ONCLICKED", "ONSTARTDRAGGING", "ONDRAGGING", "ONENDDRAGGING"}) {
        SCOPED_TRACE(signal);
        Desk desk(button(kThree + "DRAGGABLE=TRUE\n" + signal + "={EP^GOTO(\"T\");}\n"), lines("X", "STRING"));
        desk.act("m12 d12 m14");
        desk.frames(2);
        desk.act("m16 u16 d12 u12");
        desk.act("m12 d12 m14 u14");
        desk.frames(2);
        EXPECT_EQ(desk.current()->getName(), "T");
        EXPECT_FALSE(desk.unit()->isDragging());
    }
}

TEST(Button, IsMadeByScriptAndRemovedByIt) {
    Desk desk(button("GFXSTANDARD=FAR\n", "OLD"));
    const auto count = [&] { return desk.current()->getElementsNo(); };
    const int before = count();
    for (const char* word : {"button", "IMAGE", "", "BUTTONS", "MULTIIMAGE"})
        desk.run(std::string("S^CREATEOBJECT(\"") + word + "\",\"N\");");
    desk.run("S^CREATEOBJECT();");
    EXPECT_EQ(count(), before);
    desk.run("S^CREATEOBJECT(\"BUTTON\",\"N\");");
    EXPECT_EQ(count(), before + 1);
    EXPECT_EQ(desk.after("d12 u12"), "") << "it has neither shape nor handlers";
    desk.run("N^SETSTD(\"UP\");N^SETONCLICK(\"DOWN\");N^ENABLEDRAGGING();");
    desk.act("d12");
    EXPECT_EQ(desk.shown(), "UOD");
    EXPECT_FALSE(desk.unit()->isDragging()) << "it has no unit";
    desk.run("S^REMOVE(\"N\");");
    EXPECT_EQ(count(), before);
    EXPECT_TRUE(desk.image("UP")->getData()) << "graphics are the scene's";
    EXPECT_EQ(CHotSpot::OnMouseEvent(kLeftDown, {12, 15}, 0), 0);

    desk.run("S^CREATEOBJECT(\"BUTTON\",\"OLD\");S^CREATEOBJECT(\"BUTTON\",\"UP\");S^CREATEOBJECT(\"BUTTON\",\"\");");
    EXPECT_EQ(count(), before + 1) << "the names that exist change hands";
    EXPECT_EQ(desk.after("d52"), "c") << "and who bore them live on";
    desk.run("S^REMOVE(\"OLD\");S^REMOVE(\"UP\");S^CREATEOBJECT(\"BUTTON\",\"S\");S^REMOVE(\"S\");");
    desk.frames(2);
}

TEST(Button, KeepsItsRecordAndHasClones) {
    Desk desk(button(kThree + "SNDONCLICK=CLICK\nDRAGGABLE=TRUE\nRECT=10,10,20,20\nDRAG=FAR\nPRIORITY=9\n") +
              lines("C", "BUTTON"));
    CFile file(CWindow::current(), "button.bin", CFile::kCreateBinary);
    CXArchive storing(&file, true);
    desk.object("B")->serialize(&storing);
    file.Seek(0, SEEK_SET);
    CXArchive archive(&file, false);
    desk.object("C")->serialize(&archive);
    EXPECT_TRUE(archive.ok());
    const CButton& read = desk.at("C");
    EXPECT_TRUE(read.IsEnabled() && read.IsDraggingEnabled());
    EXPECT_EQ(read.GetOnClick(), desk.image("DOWN"));
    EXPECT_EQ(read.GetSOOnClick(), static_cast<CMC_Sound*>(desk.object("CLICK"))->getSound());
    EXPECT_EQ(read.GetDragging(), desk.image("FAR"));

    desk.run("B^CLONE(1);B^DISABLE();S^REMOVE(\"C\");UP^SHOW();");
    EXPECT_EQ(desk.after("m12 d12 m20"), "fS!cD") << "the clone is on and has the handlers";
    desk.run("S^REMOVE(\"B_1\");");
    EXPECT_TRUE(desk.image("UP")->getData());
}

TEST(SwitchButton, ChangesItsStateAtEachClick) {
    Desk desk("");
    CSwitchButton button(CWindow::current(), {}, 5, nullptr, 0);
    CSound4* const a = static_cast<CMC_Sound*>(desk.object("SND"))->getSound();
    CSound4* const b = static_cast<CMC_Sound*>(desk.object("CLICK"))->getSound();
    button.setUnit(desk.unit());
    button.SetOnMove(desk.image("OVER"), nullptr);
    button.SetOnClickA(desk.image("UP"), a);
    button.SetOnClickB(desk.image("DOWN"), b);
    EXPECT_EQ(desk.shown(), "U--");
    desk.act("m12");
    EXPECT_EQ(desk.shown(), "-O-");
    desk.act("d12 u12");
    EXPECT_EQ(desk.shown() + desk.log(), "--D!");
    desk.act("m12 m40 d12 m40 u40");
    EXPECT_TRUE(button.getState()) << "a press alone does nothing";
    EXPECT_EQ(desk.shown(), "--D");
    desk.act("d12 u12");
    EXPECT_EQ(desk.shown() + desk.log(), "U--+");
    EXPECT_TRUE(a->IsPlaying() && !b->IsPlaying());
    button.Freeze(true);
    button.Force(true);
    EXPECT_FALSE(button.getState());
    button.Enable(false);
    EXPECT_EQ(desk.shown(), "---");
    button.Enable(true);
    button.EnableDragging(true);
    desk.act("d12 m20 u20");
    EXPECT_EQ(desk.image("UP")->GetPosition(), CXPoint(18, 10));
}
