// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include "structure/scene.h"
#include "support/stage.h"

namespace {

// Two episodes: EP with S, T, U, and EQ with V, W; it starts with T. LOG tells every scene that is entered.
class Tree : public Stage {
public:
    explicit Tree(const std::string& more = "") {
        std::string text = lines("APP", "APPLICATION", "EPISODES=EQ EP\nSTARTWITH=EP\nPATH=APP\n") +
                           lines("EP", "EPISODE", "SCENES=S,T,U\nSTARTWITH=T\nPATH=EP\n") +
                           lines("EQ", "EPISODE", "SCENES=V,W\nPATH=EQ\n");
        for (const char* name : {"S", "T", "U", "V", "W"})
            text += lines(name, "SCENE", "PATH=" + std::string(name) + "\n");
        definition(text);
        level("APP", lines("LOG", "STRING") + code("NOTE", "LOG^ADD(\"$1\");") + more +
                         code("__INIT__", "LOG^ADD(THIS^GETNAME());"));
    }
    std::string log() { return value("LOG"); }
};

}  // namespace

TEST(Switches, TheLastWishOfAFrameCounts) {
    const struct {
        const char* what;
        const char* run;
        const char* entered;  // in two frames, from T
    } rows[] = {
        {"a name", "EP^GOTO(\"S\");", "S"},
        {"two names", "EP^GOTO(\"S\");EP^GOTO(\"U\");", "U"},
        {"an unknown name takes it back", "EP^GOTO(\"S\");EP^GOTO(\"NOSUCH\");", ""},
        {"another episode's scene is unknown", "EP^GOTO(\"V\");", ""},
        {"names are exact", "EP^GOTO(\"s\");", ""},
        {"the scene itself", "EP^GOTO(\"T\");", "T"},
        {"one step a frame", "EP^PREV();EP^PREV();", "S"},
        {"forward", "EP^NEXT();", "U"},
        {"there and back", "EP^NEXT();EP^PREV();", "S"},
        {"nothing to go back to", "EP^BACK();", ""},
        {"the first of the list", "EP^RESTART();", "S"},
        {"an episode before a scene", "EP^GOTO(\"U\");APP^GOTO(\"EQ\");", "V"},
        {"the application in its start episode", "APP^RESTART();", "S"},
        {"an episode that isn't there is out of reach", "EQ^GOTO(\"W\");", ""},
        {"the episode itself, from its start", "APP^GOTO(\"EP\");", "T"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Tree tree;
        tree.run(std::string("LOG^CLEAR();") + row.run);
        EXPECT_EQ(tree.log(), "");  // never within a line
        tree.frames(2);
        EXPECT_EQ(tree.log(), row.entered);
    }
}

TEST(Switches, HistoryAndNeighbours) {
    const struct {
        const char* what;
        std::vector<const char*> steps;  // one a frame
        const char* entered;
        const char* latest;
    } rows[] = {
        {"ends of the list", {"EP^NEXT();", "EP^NEXT();", "EP^PREV();", "EP^PREV();", "EP^PREV();"}, "TUTS", "T"},
        {"one step back", {"EP^GOTO(\"S\");", "EP^BACK();"}, "TST", "S"},
        {"back and back stays", {"EP^GOTO(\"S\");", "EP^BACK();", "EP^BACK();"}, "TSTT", "T"},
        {"back twice in a frame", {"EP^GOTO(\"S\");", "EP^GOTO(\"U\");", "EP^BACK();EP^BACK();"}, "TSUT", "U"},
        {"an episode keeps its history",
         {"EP^GOTO(\"S\");", "APP^GOTO(\"EQ\");", "APP^GOTO(\"EP\");", "EP^BACK();"},
         "TSVTS",
         "T"},
        {"an unknown episode", {"APP^GOTO(\"NOSUCH\");", "APP^GOTO(\"S\");"}, "T", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Tree tree;
        tree.start();
        for (const char* step : row.steps) {
            tree.run(step);
            tree.frames(1);
        }
        EXPECT_EQ(tree.log(), row.entered);
        tree.run("LOG^SET(EP^GETLATESTSCENE());");
        EXPECT_EQ(tree.log(), row.latest);
    }
}

TEST(Switches, AWishOnTheWayInIsKeptForTheNextFrame) {
    Tree tree;
    tree.file("Dane/S/S.cnv", lines("X", "INTEGER", "ONINIT={EP^GOTO(\"U\");}\nONDONE=NOTE(d)\n") +
                                  code("__INIT__", "LOG^ADD(\"s\");EP^GOTO(\"T\");LOG^ADD(\"i\");") +
                                  lines("S", "", "ONINIT={LOG^ADD(\".\");}\n"));
    tree.file("Dane/T/T.cnv", lines("K", "INTEGER"));
    tree.run("LOG^CLEAR();EP^GOTO(\"S\");");
    tree.frames(1);
    EXPECT_EQ(tree.log(), ".si.");
    tree.frames(1);
    EXPECT_EQ(tree.log(), ".si.dT");
    tree.frames(2);
    EXPECT_EQ(tree.log(), ".si.dT");
}

TEST(Switches, LeavingTellsTheLevelsBeforeTheObjects) {
    const struct {
        const char* what;
        const char* run;
        const char* log;
    } rows[] = {
        {"a scene", "EP^GOTO(\"U\");", "EopU"},
        {"an episode, whose objects stay", "APP^GOTO(\"EQ\");", "AEopV"},
        {"the same episode", "APP^GOTO(\"EP\");", "AEopT"},
        {"nothing", "EP^GOTO(\"X\");", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Tree tree(lines("APP", "", "ONDONE={LOG^ADD(\"A\");}\n"));
        tree.level("EP", lines("EP", "", "ONDONE={LOG^ADD(\"E\");}\n") +
                             lines("STAYS", "INTEGER", "ONDONE={LOG^ADD(\"never\");}\n"));
        tree.file("Dane/T/T.cnv", lines("O", "INTEGER", "ONDONE=NOTE(o)\n") +
                                      lines("P", "INTEGER", "ONDONE={LOG^ADD(\"p\");}\n") +
                                      lines("T", "", "ONDONE={LOG^ADD(\"no\");}\n"));
        tree.run(std::string("LOG^CLEAR();") + row.run);
        tree.frames(1);
        EXPECT_EQ(tree.log(), row.log);
    }
    Tree tree(lines("K", "STRING", "TOINI=TRUE\n") + code("KEEP", "K^ADD(\"$1\");") +
              lines("APP", "", "ONDONE={K^ADD(\"A\");}\n"));
    tree.level("EP", lines("EP", "", "ONDONE={K^ADD(\"E\");}\n") + lines("E", "INTEGER", "ONDONE=KEEP(never)\n"));
    tree.file("Dane/T/T.cnv", lines("O", "INTEGER", "ONDONE=KEEP(o)\n"));
    tree.start();
    tree.end();
    EXPECT_EQ(tree.kept("APP", "K"), "AEo");
}

TEST(Switches, WhatLivesOn) {
    Tree tree;
    tree.level("EP",
               lines("VISITS", "INTEGER") + lines("EP", "", "ONRESTART={LOG^ADD(\"R\");}\nONINIT={LOG^ADD(\"E\");}\n"));
    tree.file("Dane/T/T.cnv", lines("OWN", "INTEGER", "VALUE=1\n") +
                                  code("__INIT__", "VISITS^ADD(1);OWN^ADD(1);LOG^ADD(VISITS);LOG^ADD(OWN);"));
    tree.start();
    for (const char* step :
         {"EP^GOTO(\"S\");", "EP^BACK();", "APP^GOTO(\"EQ\");", "APP^RESTART();", "APP^RESTART();"}) {
        tree.run(step);
        tree.frames(1);
    }
    // The episode's ONINIT runs from the table of each of its scenes. Leaving EQ by a restart acts
    // at once; a restart in the start episode only asks for the first scene, and says so.
    EXPECT_EQ(tree.log(), "E12ESE22VE32RES");
}

TEST(Switches, AnExitLetsTheFrameEnd) {
    Tree tree(code("BYE", "LOG^ADD(\"$1\");") + lines("APP", "", "ONEXIT={LOG^ADD(\"never\");}\n"));
    tree.file(
        "Dane/T/T.cnv",
        lines("BEAT", "TIMER", "ELAPSE=10\nONTICK={LOG^ADD(\"t\");}\n") +
            code("__INIT__", "APP^ADDBEHAVIOUR(\"ONEXIT\",\"BYE\",\"x\");EP^GOTO(\"S\");APP^EXIT();LOG^ADD(\"i\");"));
    tree.start();
    EXPECT_EQ(tree.log(), "xi");
    EXPECT_TRUE(tree.frames(1));
    EXPECT_EQ(tree.log(), "xitS");
}
