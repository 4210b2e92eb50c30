// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include "structure/scene.h"
#include "support/stage.h"

namespace {

std::string scene(const std::string& name) { return lines(name, "SCENE", "PATH=" + name + "\n"); }

// The levels from the running scene up, "(none)" when nothing runs.
std::string running(Stage& stage) {
    std::string names;
    for (CMC_Scene* level = stage.current(); level; level = level->getParent())
        names += (names.empty() ? "" : " ") + std::string(level->getName().view());
    return names.empty() ? "(none)" : names;
}

}  // namespace

TEST(StructureParser, BuildsTheTreeThatTheFileDescribes) {
    const std::string app = lines("APP", "APPLICATION", "EPISODES=EP\nPATH=APP\n");
    const std::string episode = lines("EP", "EPISODE", "SCENES=S\nPATH=EP\n");
    const struct {
        const char* what;
        std::string definition;
        const char* runs;
    } rows[] = {
        {"in any order", app + episode + scene("S"), "S EP APP"},
        {"bottom up", scene("S") + episode + app, "S EP APP"},
        {"unknown types and names",
         lines("ODD", "Scene") + lines("FILM", "MOVIE") + lines("S2", "") +
             lines("APP", "APPLICATION", "EPISODES=NO,EP\nSTARTWITH=NO\n") +
             lines("EP", "EPISODE", "SCENES=ODD, S2 ,, S,NO\nSTARTWITH=ODD\n") + scene("S"),
         "S EP APP"},
        {"a scene listed twice", app + lines("EP", "EPISODE", "SCENES=S,S\n") + scene("S"), "S EP APP"},
        {"of two applications the last",
         lines("A1", "APPLICATION", "EPISODES=E1\n") + lines("E1", "EPISODE", "SCENES=S1\n") + scene("S1") + app +
             episode + scene("S"),
         "S EP APP"},
        {"which share an episode", lines("A1", "APPLICATION", "EPISODES=EP\n") + app + episode + scene("S"),
         "S EP APP"},
        {"which share it the other way round", app + lines("A1", "APPLICATION", "EPISODES=EP\n") + episode + scene("S"),
         "S EP A1"},
        {"an episode without scenes", app + lines("EP", "EPISODE", "SCENES=NO\n"), "EP APP"},
        {"an application without episodes", lines("APP", "APPLICATION"), "APP"},
        {"none", scene("S") + episode, "(none)"},
        {"a start that no list has",
         lines("APP", "APPLICATION", "EPISODES=EP\nSTARTWITH=E2\n") + episode + scene("S") +
             lines("E2", "EPISODE", "SCENES=S2\nPATH=E2\n") + scene("S2"),
         "S2 E2"},
        {"a scene in the place of an episode", lines("APP", "APPLICATION", "EPISODES=S\n") + scene("S"), "S APP"},
        {"nothing but an end", "!\n" + app, "(none)"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Stage stage;
        stage.definition(row.definition);
        EXPECT_FALSE(stage.frames(2));
        EXPECT_EQ(running(stage), row.runs);
    }
}

TEST(StructureParser, ASceneOfTwoEpisodesBelongsToTheLast) {
    // Of both orders in which the application names them, one takes the owner down before the other.
    for (const char* order : {"EP,EQ", "EQ,EP"}) {
        SCOPED_TRACE(order);
        Stage stage;
        stage.definition(lines("APP", "APPLICATION", "EPISODES=" + std::string(order) + "\nSTARTWITH=EP\nPATH=APP\n") +
                         lines("EP", "EPISODE", "SCENES=S,T\nPATH=EP\n") +
                         lines("EQ", "EPISODE", "SCENES=T,S\nPATH=EQ\n") + scene("S") + scene("T"));
        stage.level("APP", lines("LOG", "STRING") + code("__INIT__", "LOG^ADD(THIS^GETNAME());"));
        stage.level("EQ", lines("HERE", "STRING", "VALUE=q\n"));
        stage.file("Dane/T/T.cnv", code("__INIT__", "LOG^ADD(HERE);EQ^NEXT();"));
        stage.run("APP^GOTO(\"EQ\");");
        stage.frames(3);
        EXPECT_EQ(stage.value("LOG"), "SqS");
        EXPECT_EQ(running(stage), "S EQ APP");
    }
}

TEST(StructureParser, CodeOfAnApplicationThatLostItsPlaceStillRuns) {
    Stage stage;
    stage.definition(lines("A1", "APPLICATION", "EPISODES=E1\nPATH=A1\n") +
                     lines("APP", "APPLICATION", "EPISODES=EP\nSTARTWITH=E1\nPATH=APP\n") +
                     lines("E1", "EPISODE", "SCENES=S\nPATH=E1\n") + lines("EP", "EPISODE", "SCENES=\nPATH=EP\n") +
                     scene("S"));
    stage.level("A1", lines("LOG", "STRING") + lines("V", "INTEGER", "ONCHANGED={LOG^ADD(V);}\n"));
    stage.run("V^SET(3);V^ADD(1);");
    EXPECT_EQ(running(stage), "S E1 A1");
    EXPECT_EQ(stage.value("LOG"), "34");
}

TEST(StructureParser, BrokenFilesLeaveTheProgramRunning) {
    const std::string whole = lines("APP", "APPLICATION", "EPISODES=EP\nSTARTWITH=EP\nPATH=APP\n") +
                              lines("EP", "EPISODE", "SCENES=S\nPATH=EP\n") + scene("S");
    int without = 0;
    for (std::size_t length = 0; length <= whole.size(); length += 3) {
        Stage stage;
        stage.definition(length ? whole.substr(0, length) : "\n");
        stage.switches("-window");
        EXPECT_FALSE(stage.frames(1)) << length;
        without += running(stage) == "(none)";
    }
    EXPECT_GT(without, 5);
    for (const std::string& bytes :
         {std::string(3, '\0'), std::string("{<C:6>}"), std::string("{<C:0>}\nxx<E>"), std::string("\xFF\xFE=:=:/")}) {
        Stage stage;
        stage.definition(bytes);
        EXPECT_FALSE(stage.frames(1));
        EXPECT_EQ(running(stage), "(none)");
    }
}

TEST(Tree, LastHandlersThatAskForAnotherScene) {
    for (const char* wish : {"APP^RESTART();", "APP^GOTO(\"EQ\");", "EP^GOTO(\"T\");", "EQ^NEXT();", "APP^EXIT();"}) {
        SCOPED_TRACE(wish);
        const std::string objects = lines("X", "INTEGER", "ONDONE=LAST\n");
        Stage stage(objects);
        stage.definition(lines("APP", "APPLICATION", "EPISODES=EQ,EP\nSTARTWITH=EP\nPATH=APP\n") +
                         lines("EP", "EPISODE", "SCENES=S,T\nPATH=EP\n") +
                         lines("EQ", "EPISODE", "SCENES=U,S\nPATH=EQ\n") + scene("S") + scene("T") + scene("U"));
        stage.level("T", objects);
        stage.level("U", objects);
        stage.level("APP", lines("K", "STRING", "TOINI=TRUE\n") + code("LAST", "K^ADD(\"x\");" + std::string(wish)));
        stage.run("APP^GOTO(\"EQ\");");
        stage.frames(1);
        stage.end();
        EXPECT_EQ(stage.kept("APP", "K").substr(0, 2), "xx");
    }
}

TEST(Tree, LeavesNothingBehind) {
    std::string logs[2];
    for (std::string& log : logs) {
        Stage stage(lines("LOG", "STRING") + lines("N", "STRING") +
                    lines("BEAT", "TIMER", "ELAPSE=10\nONTICK={LOG^ADD(THIS^GETTICKS());}\n"));
        stage.scene("T", "");
        // Names of blocks and timers, random numbers, temporaries, languages and the pause begin anew.
        stage.run(
            "LOG^ADD(NAMED);LOG^ADD(APP^GETLANGUAGE());@INT(\"NAMED\",5);"
            "N^SET(@RUNONTIMER(10,0,{LOG^ADD(RANDOM^GET(1000));},\"\"));LOG^ADD(N);@IF(1,_,1,{LOG^ADD(THIS^GETNAME());}"
            ",\"\");"
            "APP^SETLANGUAGE(\"0415\");");
        stage.frames(2);
        log = stage.value("LOG");
        stage.run("S^PAUSE();");
    }
    EXPECT_EQ(logs[0].substr(0, 11), "NAMEDtimer_");
    EXPECT_EQ(logs[0], logs[1]);
}
