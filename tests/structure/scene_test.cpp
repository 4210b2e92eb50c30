// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "structure/scene.h"

#include <gtest/gtest.h>

#include "support/stage.h"

namespace {

std::string named(CMC_Scene* scene) {
    std::string names;
    for (int i = 0; CMC_Object* object = scene->getObject(i); ++i)
        names += (i ? " " : "") + std::string(object->getName().view());
    return names;
}

}  // namespace

TEST(Scene, ComesToLifeFromTheTop) {
    const auto note = [](const char* mark) { return "ONINIT=NOTE(" + std::string(mark) + ")\n"; };
    Stage stage(
        lines("BEAT", "TIMER", note("t")) + lines("SURE", "CONDITION", "OPERAND1=1\nOPERAND2=1\n" + note("c")) +
        lines("NUM", "INTEGER", note("v")) + lines("DOIT", "BEHAVIOUR", "CODE={LOG^ADD(\"never\");}\n" + note("b")) +
        lines("LIST", "ARRAY", note("r")) + lines("WORD", "STRING", note("s")) + lines("G", "GROUP", note("g")) +
        lines("S", "", note("S")) + code("__INIT__", "LOG^ADD(\"I\");LOG^ADD(THIS^GETNAME());"));
    stage.level("APP", lines("LOG", "STRING") + code("NOTE", "LOG^ADD(\"$1\");") + lines("AV", "INTEGER", note("a")) +
                           lines("APP", "", note("A")));
    // The episode is built before the application: the application's behaviours aren't there when it looks for them.
    stage.level("EP", lines("EV", "INTEGER", "ONINIT={LOG^ADD(\"e\");}\n") + lines("EW", "INTEGER", note("never")) +
                          lines("EP", "", "ONINIT={LOG^ADD(\"E\");}\n"));
    stage.start();
    // The application's objects, the episode's, the application; the scene's by kinds, the levels from the scene up;
    // the start block, which runs as the scene; the scene again.
    EXPECT_EQ(stage.value("LOG"), "aeAbvscrtgSEAISS");
}

TEST(Scene, HoldsTheBuiltInObjectsBehindItsOwn) {
    const struct {
        const char* what;
        std::string scene;
        const char* objects;
    } rows[] = {
        {"an empty file", "", "RANDOM SYSTEM CNVLOADER S EP APP"},
        {"by kinds, then in file order",
         lines("T", "TIMER") + lines("B", "INTEGER") + lines("C", "EXPRESSION") + lines("A", "STRING") + code("Z", ""),
         "Z B A C T RANDOM SYSTEM CNVLOADER S EP APP"},
        {"inline code stands where it is made", lines("B", "INTEGER", "ONCHANGED={}\n") + lines("A", "STRING"),
         "beh_B_ONCHANGED B A RANDOM SYSTEM CNVLOADER S EP APP"},
        {"unknown words build nothing",
         lines("A", "STRINGS") + lines("B", "SCENE") + lines("C", "") + lines("D", "MULTIIMAGE"),
         "RANDOM SYSTEM CNVLOADER S EP APP"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Stage stage(row.scene);
        stage.start();
        EXPECT_EQ(named(stage.current()), row.objects);
    }
}

TEST(Scene, ALaterNameHidesTheEarlier) {
    const struct {
        const char* what;
        std::string scene;
        const char* run;
        const char* log;
    } rows[] = {
        {"built-ins hide what the file defines", lines("RANDOM", "INTEGER", "VALUE=7\n"),
         "RANDOM^ADD(1);LOG^SET(RANDOM);", "RANDOM"},
        {"the scene hides an object of its name", lines("S", "INTEGER", "VALUE=7\n"),
         "S^ADD(1);LOG^SET(S^GETNAME());LOG^ADD(S^TOTIME(61));", "S0101"},
        {"both are counted where they stand", lines("EP", "INTEGER"), "LOG^SET(S^GETELEMENTSNO());", "7"},
        {"removing the visible one leaves none", lines("X", "INTEGER", "VALUE=1\n"),
         "X^CLONE();X_1^SET(5);X^RESETCLONES();X^CLONE();"
         "LOG^SET(X_1);S^REMOVE(\"X_1\");LOG^ADD(X_1);",
         "1X_1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Stage stage(lines("LOG", "STRING") + row.scene);
        stage.run(row.run);
        EXPECT_EQ(stage.value("LOG"), row.log);
    }
}

TEST(Scene, NamesAreFoundUpwardsOnly) {
    Stage stage(lines("V", "INTEGER", "VALUE=1\n") + lines("LOW", "INTEGER", "VALUE=5\n"));
    stage.level("APP",
                lines("V", "INTEGER", "VALUE=100\n") + lines("TOP", "INTEGER", "VALUE=3\n") + lines("LOG", "STRING"));
    stage.level("EP", lines("V", "INTEGER", "VALUE=10\n") +
                          code("READ", "LOG^ADD(V);LOG^ADD(LOW);LOG^ADD(TOP);LOG^ADD(\".\");"));
    stage.run("READ^RUN();LOG^ADD(V);LOG^ADD(TOP);LOG^ADD(top);");
    EXPECT_EQ(stage.value("LOG"), "10LOW3.13top");
}

TEST(Scene, WithoutAFileOrWithPartOfOne) {
    const std::string whole = lines("A", "INTEGER", "VALUE=5\nONCHANGED={LOG^SET(A);}\n") + lines("LOG", "STRING") +
                              code("__INIT__", "A^ADD(1);@LOOP({A^ADD(_I_);},0,3,1);");
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        Stage stage(std::string_view(whole).substr(0, length));
        EXPECT_FALSE(stage.frames(1)) << length;
        ASSERT_NE(stage.current(), nullptr) << length;
        if (length == whole.size()) {
            EXPECT_EQ(stage.value("LOG"), "9");
        }
    }
    Stage stage;
    stage.scene("T", "");
    stage.file("Dane/application.def", "");
    stage.definition(lines("APP", "APPLICATION", "EPISODES=EP\nPATH=APP\n") +
                     lines("EP", "EPISODE", "SCENES=NOFILE\nPATH=EP\n") +
                     lines("NOFILE", "SCENE", "PATH=NOFOLDER\nDLLS=nosuch.dll, other\n"));
    stage.level("EP", lines("LOG", "STRING") + code("__INIT__", "LOG^ADD(THIS^GETNAME());"));
    stage.frames(2);
    EXPECT_EQ(stage.value("LOG"), "NOFILE");
    EXPECT_EQ(named(stage.current()), "RANDOM SYSTEM CNVLOADER NOFILE EP APP");
}

TEST(Scene, RunsMethodsByName) {
    const struct {
        const char* what;
        const char* run;
        const char* log;
    } rows[] = {
        {"a method of a variable", "S^RUN(\"V\",\"ADD\",10);LOG^ADD(S^RUN(\"V\",\"GET\"));", "15"},
        {"a block, its name exact", "S^RUN(\"B\",\"RUN\",3,\"x\");S^RUN(\"B\",\"run\",4);", "<3x>"},
        {"in any case from the application", "APP^RUN(\"B\",\"run\",3);APP^RUN(\"B\",\"rUnC\",4);", "<3$2><4$2>"},
        {"a guarded one", "S^RUN(\"GUARDED\",\"RUN\");S^RUN(\"GUARDED\",\"RUNC\");", "g"},
        {"an unknown object, an unknown method", "S^RUN(\"NOBODY\",\"SET\",1);S^RUN(\"V\",\"NOSUCH\",1);LOG^ADD(V);",
         "5"},
        {"a level of the tree is never removed",
         "S^REMOVE(\"S\");S^REMOVE(\"EP\");S^REMOVE(\"APP\");LOG^ADD(S^TOTIME(75));", "0115"},
        {"a built-in may be", "S^REMOVE(\"RANDOM\");LOG^ADD(RANDOM);", "RANDOM"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Stage stage(lines("LOG", "STRING") + lines("V", "INTEGER", "VALUE=5\n") + code("B", "LOG^ADD(\"<$1$2>\");") +
                    lines("NEVER", "CONDITION", "OPERAND1=1\nOPERAND2=2\n") +
                    lines("GUARDED", "BEHAVIOUR", "CODE={LOG^ADD(\"g\");}\nCONDITION=NEVER\n"));
        stage.run(row.run);
        EXPECT_EQ(stage.value("LOG"), row.log);
    }
}
