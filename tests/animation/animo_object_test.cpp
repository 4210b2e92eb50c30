// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/animo_object.h"

#include <gtest/gtest.h>

#include "animation/animo.h"
#include "animation/image.h"
#include "graphics/refresh_screen.h"
#include "storage/archive.h"
#include "storage/file.h"
#include "structure/scene.h"
#include "support/animations.h"
#include "support/stage.h"

namespace {

// A scene with walk.ann, 4 by 3 at (10, 20): "Walk" of three frames, the first named "Left", and "Turn" of one.
class Troupe : public Stage {
public:
    explicit Troupe(const std::string& scene) : Stage(lines("LOG", "STRING") + scene) {
        const std::vector<animations::Event> events = {
            {"Walk", {0, 1, 2}, 0, 0, 0, 0, {{0, 0, "Left", "", 255}}},
            {"Turn", {3}, 0, 0, 0, 0, {}},
            {"ONCLICK", {1, 2}, 0, 0, 0, 0, {}},
            {"ONFOCUSON", {2}, 0, 0, 0, 0, {}},
            {"ONFOCUSOFF", {3}, 0, 0, 0, 0, {}},
            {"ONNOEVENT", {0}, 0, 0, 0, 0, {}},
        };
        file("Dane/S/walk.ann", animations::third("NVP", animations::sheet(4), events, 4));
        file("Dane/S/other.ann",
             animations::third("NVI", animations::sheet(2, 6, 6), {{"Go", {0, 1}, 0, 0, 0, 0, {}}}));
        file("Dane/S/mask.img", pictures::nvi(2, 1, std::vector<std::uint16_t>(2), std::string("\x80\x01")));
        start();
    }
    CAnimo6* animo(const std::string& name) { return static_cast<CMC_Animo*>(object(name))->getAnimo(); }
    std::string log() {
        const std::string heard = value("LOG");
        run("LOG^SET(\"\");");
        return heard;
    }
    // The log of what the code tells about itself.
    std::string told(const std::string& code) {
        run(code);
        return log();
    }
};

std::string actor(const std::string& name, const std::string& more = "", const std::string& file = "walk.ann") {
    return lines(name, "ANIMO", "FILENAME=" + file + "\nTOCANVAS=TRUE\nVISIBLE=TRUE\nPRIORITY=4\n" + more);
}

std::string note(const std::string& text) { return "{LOG^ADD(\"" + text + "\");}\n"; }

}  // namespace

TEST(AnimoObject, TheFirstHandlerThatFitsIsRun) {
    struct Chain {
        const char* what;
        std::string handlers, code, heard;
    };
    const std::string steps = "A^PLAY(\"walk\");A^NEXTFRAME();A^STOP();";
    const Chain chains[] = {
        {"everything", "ONFRAMECHANGED=" + note("f") + "ONSTARTED=" + note("s") + "ONFINISHED=" + note("e"), steps,
         "fsfe"},
        {"by event", "ONSTARTED^WALK=" + note("W") + "ONSTARTED=" + note("s") + "ONFINISHED^TURN=" + note("T"), steps,
         "W"},
        {"by frame",
         "ONFRAMECHANGED^LEFT=" + note("L") + "ONFRAMECHANGEDFRAME^1=" + note("1") +
             "ONFRAMECHANGED^WALK=" + note("w") + "ONFRAMECHANGED=" + note("f"),
         steps + "A^NEXTFRAME();", "L1f"},
        {"by event in capitals for a named frame alone",
         "ONFRAMECHANGED^WALK=" + note("w") + "ONFRAMECHANGED=" + note("f"), steps, "wf"},
        {"without notice", "ONFINISHED=" + note("e"), "A^PLAY(\"Walk\");A^STOP(FALSE);", ""},
    };
    for (const Chain& chain : chains) {
        Troupe stage(actor("A", chain.handlers));
        EXPECT_EQ(stage.told(chain.code), chain.heard) << chain.what;
    }
}

TEST(AnimoObject, EventsAndFramesAreNumbersOrNames) {
    Troupe stage(actor("A") + lines("N", "INTEGER", "VALUE=1\n"));
    struct Question {
        const char* code;
        const char* answer;
    };
    const Question questions[] = {
        {"A^SETFRAME(\"Turn\",0);LOG^ADD(A^GETFRAME());LOG^ADD(A^GETEVENTNAME());", "3Turn"},
        {"A^SETFRAME(N,0);LOG^ADD(A^GETFRAME());", "3"},
        {"A^SETFRAME(0,\"LEFT\");LOG^ADD(A^GETFRAMENO());LOG^ADD(A^GETFRAMENAME());", "0Left"},
        {"A^SETFRAME(\"walk\",\"default\");LOG^ADD(A^GETCFRAMEINEVENT());", "1"},
        {"LOG^ADD(A^GETFRAMENAME(\"WALK\",2));LOG^ADD(A^GETFRAMENO(0,-3));LOG^ADD(A^GETFRAMENO(\"walk\",\"left\"));",
         "Default20"},
        {"LOG^ADD(A^GETNOFINEVENT(0));LOG^ADD(A^GETNOFINEVENT(\"turn\"));LOG^ADD(A^GETNOFINEVENT(\"none\"));", "310"},
        {"A^SETFRAMENAME(\"TURN\",0,\"here\");LOG^ADD(A^GETFRAMENAME(1,0));", "here"},
        {"A^SETFRAME(2);LOG^ADD(A^GETFRAME());A^SETFRAME(99);LOG^ADD(A^GETFRAME());A^SETFRAME();LOG^ADD(A^GETFRAME());",
         "220"},
        {"A^SETFRAME(\"none\",\"none\");A^SETFRAME(-1,-1);LOG^ADD(A^GETFRAMENO(9,9));LOG^ADD(A^GETEVENTNAME(77));",
         "-1"},
        {"A^PLAY(\"walk\");LOG^ADD(A^ISPLAYING());LOG^ADD(A^ISPLAYING(\"WALK\"));LOG^ADD(A^ISPLAYING(\"turn\"));A^STOP("
         ");",
         "TRUETRUEFALSE"},
        {"A^SETPOSITION(100,200);LOG^ADD(A^GETPOSITIONX());LOG^ADD(\"_\");LOG^ADD(A^GETPOSITIONY(1));", "110_200"},
        {"LOG^ADD(A^GETCENTERX());LOG^ADD(\"_\");LOG^ADD(A^GETCURRFRAMEPOSY());LOG^ADD(A^GETMAXWIDTH());", "112_204"},
    };
    for (const Question& question : questions)
        EXPECT_EQ(stage.told(question.code), question.answer) << question.code;
    EXPECT_EQ(stage.current()->getGraphicsObject("A#left"), stage.animo("A")->GetFrame(0));
    EXPECT_EQ(stage.current()->getGraphicsObjectName(stage.animo("A")), "A");
}

TEST(AnimoObject, LooksAtAndChangesDecodedPixels) {
    Troupe stage(actor("A") + lines("M", "IMAGE", "FILENAME=mask.img\n"));
    const std::string look = "LOG^ADD(A^GETPIXEL(11,20));LOG^ADD(A^GETALPHA(11,20));LOG^ADD(\"|\");";
    EXPECT_EQ(stage.told(look), "1-1|") << "planes that are coded in memory";
    EXPECT_EQ(
        stage.told("A^MERGEALPHA(1,0,\"M\");" + look + "A^SETFRAME(1);A^SETFRAME(0);" + look + "A^FLIPV();" + look),
        "1-128|1-128|11|")
        << "a stamp stays when another frame was shown";
    EXPECT_EQ(stage.told("LOG^ADD(A^GETALPHA(9,20));LOG^ADD(A^GETPIXEL(10,23));"), "00") << "outside";
}

TEST(AnimoObject, IsAButtonWithEventsOfItsOwn) {
    Troupe stage(
        actor("A", "ASBUTTON=TRUE\nFPS=10\nONCLICK=" + note("c") + "ONFOCUSON=" + note("f") +
                       "ONFOCUSOFF=" + note("o") + "ONRELEASE^RIGHT=" + note("R")) +
        actor("B", "ASBUTTON=TRUE\nONFIRSTFRAME=TRUE\nONCLICK=" + note("b") + "ONSTARTED=" + note("s"), "other.ann"));
    CWindow* window = CWindow::current();
    const auto event = [&] { return std::string(stage.animo("A")->getCurrentEventName().view()); };
    window->OnMouseMove({10, 20}, 0);
    EXPECT_EQ(event() + stage.log(), "ONFOCUSONf");
    window->OnLButtonDown({14, 23}, 0);
    EXPECT_EQ(event() + stage.log(), "ONCLICKbc") << "edges count; both are listening";
    window->OnMouseMove({30, 30}, 0);
    EXPECT_EQ(event() + stage.log(), "ONCLICKo") << "a click plays to its end";
    window->OnRButtonUp({12, 21}, 0);
    EXPECT_EQ(stage.log(), "R");
    stage.run("A^SETASBUTTON(TRUE,FALSE);");
    EXPECT_EQ(event(), "ONNOEVENT");
    CWindow::pause();
    window->OnLButtonDown({12, 21}, 0);
    CWindow::resume();
    EXPECT_EQ(stage.log(), "") << "nothing is pressed in a pause";
    stage.run("B^SETFRAME(1);B^SETPOSITION(100,0);A^HIDE();");
    window->OnLButtonDown({12, 24}, 0);
    EXPECT_EQ(stage.log(), "b") << "the first frame's box, where the file has it";
}

TEST(AnimoObject, ExchangesItsAnimation) {
    Troupe stage(actor("A", "ONFRAMECHANGED=" + note("a")) + actor("B", "ONFRAMECHANGED=" + note("b")));
    EXPECT_EQ(stage.animo("A"), stage.animo("B"));
    EXPECT_EQ(stage.told("A^NEXTFRAME();"), "ab") << "one animation, heard by both";
    const CAnimo6* before = stage.animo("A");
    EXPECT_EQ(stage.told("A^LOAD(\"WALK.ann\");A^LOAD(\"other.ann\");B^NEXTFRAME();LOG^ADD(A^GETPRIORITY());"), "b4");
    EXPECT_NE(stage.animo("A"), before);
    EXPECT_EQ(stage.told("A^NEXTFRAME();"), "a");

    EXPECT_EQ(stage.told("A^SETPOSITION(5,5);A^CLONE(1);LOG^ADD(A_1^GETPOSITIONX());LOG^ADD(A_1^GETPRIORITY());"
                         "A_1^MOVE(9,9);LOG^ADD(A^GETPOSITIONX());A_1^PREVFRAME();"),
              "15415a");
    stage.run("S^REMOVE(\"A\");");
    EXPECT_EQ(stage.told("LOG^ADD(A_1^GETNOF());"), "2") << "its frames live on";
}

TEST(AnimoObject, ScriptsMayDoAnythingInsideItsSignals) {
    const char* const deeds[] = {
        "A^STOP();",
        "A^STOP(FALSE);A^PLAY(\"Turn\");",
        "A^LOAD(\"other.ann\");A^PLAY(\"Go\");",
        "S^REMOVE(\"A\");",
        "A^CLONE(1);A_1^PLAY(\"Walk\");",
        "A^HIDE();A^SHOW();",
        "A^NEXTFRAME();",
        "A^PLAY(\"Walk\");",
        "A^SETFRAME(\"Turn\",0);A^MOVE(1,1);",
        "EP^GOTO(\"S\");",
    };
    for (const char* signal : {"ONFRAMECHANGED", "ONSTARTED", "ONFINISHED", "ONFINISHED^WALK", "ONCLICK", "ONFOCUSON",
                               "ONCOLLISION", "ONDONE"}) {
        for (const char* deed : deeds) {
            SCOPED_TRACE(std::string(signal) + deed);
            Troupe stage(actor("A", std::string("ASBUTTON=TRUE\nFLUSHAFTERPLAYED=TRUE\nMONITORCOLLISION=TRUE\n") +
                                        signal + "={" + deed + "LOG^ADD(\"x\");}\n") +
                         actor("B", "MONITORCOLLISION=TRUE\n", "other.ann"));
            CWindow* window = CWindow::current();
            stage.run("A^PLAY(\"Walk\");A^MOVE(1,0);");
            stage.frames(30);
            window->OnMouseMove({12, 21}, 0);
            window->OnLButtonDown({12, 21}, 0);
            stage.frames(20);
            stage.run("S^REMOVE(\"A\");");
            stage.frames(2);
        }
    }
}

TEST(AnimoObject, KeepsItsRecordInOrder) {
    Troupe stage(actor("A", "ASBUTTON=TRUE\nMONITORCOLLISIONALPHA=TRUE\nFLUSHAFTERPLAYED=TRUE\n") +
                 lines("B", "ANIMO"));
    CFile file(CWindow::current(), "animo.bin", CFile::kCreateBinary);
    CXArchive storing(&file, true);
    stage.object("A")->serialize(&storing);
    file.Seek(0, SEEK_SET);
    CXArchive archive(&file, false);
    stage.object("B")->serialize(&archive);
    EXPECT_EQ(stage.animo("B"), stage.animo("A"));
    EXPECT_TRUE(stage.animo("B")->releaseAfterUse() && stage.animo("B")->isMonitorCollisions());
}
