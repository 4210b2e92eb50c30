// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <algorithm>
#include <gtest/gtest.h>

#include "script/variable_factory.h"
#include "support/stage.h"

namespace {

const std::string kLog = lines("LOG", "STRING");

// What scripts do to the engine; each must end, leave a script that goes on, and be told as often as stated.
struct Danger {
    const char* what;
    std::string scene;
    const char* run;
    const char* log;  // the text LOG at the end
    int debugLines;
};

int debugLinesOf(const Stage& stage) { return static_cast<int>(stage.debugLines().size()); }

}  // namespace

TEST(Danger, RecursionEndsAndTheScriptGoesOn) {
    const std::string deep = "N^ADD(1);";
    const Danger rows[] = {
        {"a block runs itself", lines("N", "INTEGER") + code("DEEP", deep + "DEEP^RUN();"),
         "DEEP^RUN();LOG^SET(\"on\");", "on", 1},
        {"a block runs itself twice", lines("N", "INTEGER") + code("DEEP", deep + "DEEP^RUN();DEEP^RUN();"),
         "DEEP^RUN();LOG^SET(\"on\");", "on", 1},
        {"through blocks of an IF",
         lines("N", "INTEGER") + code("DEEP", "@IF(\"1\",_,1,{" + deep + "DEEP^RUN($1);},\"\");"),
         "DEEP^RUN(\"x\");LOG^SET(\"on\");", "on", 1},
        {"a signal that fires itself", lines("N", "INTEGER", "ONCHANGED={THIS^ADD(1);}\n"), "N^ADD(1);LOG^SET(\"on\");",
         "on", 1},
        {"a group that holds itself", lines("G", "GROUP"), "G^ADD(\"G\");G^INC();LOG^SET(\"on\");", "on", 1},
        {"expressions that need each other",
         lines("E", "EXPRESSION", "OPERAND1=F\nOPERATOR=ADD\nOPERAND2=F\n") +
             lines("F", "EXPRESSION", "OPERAND1=E\nOPERATOR=ADD\nOPERAND2=E\n"),
         "LOG^SET(E);LOG^SET(\"on\");", "on", 1},
        {"conditions that need each other",
         lines("C", "COMPLEXCONDITION", "OPERATOR=AND\nCONDITION1=D\nCONDITION2=D\n") +
             lines("D", "COMPLEXCONDITION", "OPERATOR=OR\nCONDITION1=C\nCONDITION2=C\n"),
         "C^CHECK();LOG^SET(\"on\");", "on", 1},
    };
    for (const Danger& row : rows) {
        SCOPED_TRACE(row.what);
        Stage stage(kLog + row.scene);
        stage.run(row.run);
        EXPECT_EQ(stage.value("LOG"), row.log);
        EXPECT_EQ(debugLinesOf(stage), row.debugLines);
    }
}

TEST(Danger, TextNestedWithoutEndIsCutOff) {
    Stage stage(kLog + lines("N", "INTEGER"));
    stage.run("LOG^SET(" + std::string(3000, '[') + "1" + std::string(3000, ']') + ");LOG^ADD(\"on\");");
    std::string blocks = "LOG^ADD(\"in\");";
    for (int i = 0; i < 300; ++i)
        blocks = "@IF(\"1\",_,1,{" + blocks + "},\"\");";
    stage.run(blocks + "LOG^ADD(\"on\");");
    EXPECT_EQ(stage.value("LOG"), "onon");
    EXPECT_GE(debugLinesOf(stage), 2);
}

TEST(Danger, AStatementThatIsTooLongIsDroppedAlone) {
    Stage stage(kLog);
    const std::string fits(10240 - std::string("LOG^ADD(\"\")").size(), 'x');
    stage.run("LOG^ADD(\"" + fits + "\");");
    EXPECT_EQ(stage.value("LOG"), fits);
    stage.run("LOG^SET(\"" + fits + "x\");LOG^SET(\"on\");");
    EXPECT_EQ(stage.value("LOG"), "on");
    EXPECT_EQ(debugLinesOf(stage), 1);
}

TEST(Danger, ObjectsThatVanishInTheMidstOfTheirCode) {
    const struct {
        const char* what;
        std::string scene;
        const char* run;
        const char* log;
    } rows[] = {
        {"a variable, in its own signal",
         lines("A", "INTEGER", "ONCHANGED={S^REMOVE(\"A\");LOG^ADD(THIS^GETNAME());}\nONDONE={LOG^ADD(\"d\");}\n"),
         "A^SET(2);A^SET(3);LOG^ADD(\"|\");", "dA|"},
        {"a block, while it runs", code("B", "LOG^ADD(\"1\");S^REMOVE(\"B\");LOG^ADD(\"2\");"),
         "B^RUN();B^RUN();LOG^ADD(\"|\");", "12|"},
        {"the body of a loop", code("B", "LOG^ADD(_I_);S^REMOVE(\"B\");"), "@LOOP(\"B\",0,5,1);LOG^ADD(\"|\");", "0|"},
        {"the counter of a loop", "", "@LOOP({S^REMOVE(\"_I_\");LOG^ADD(\"x\");},0,2,1);LOG^ADD(\"|\");", "xx|"},
        {"a temporary", "", "@INT(\"T\",5);LOG^ADD(T);S^REMOVE(\"T\");LOG^ADD(T);", "5T"},
        {"a target that comes again", lines("A", "INTEGER", "VALUE=1\n"),
         "@LOOP({A_1^ADD(1);LOG^ADD(A_1);S^REMOVE(\"A_1\");A^RESETCLONES();A^CLONE();},0,3,1);", "A_122"},
        {"a clone that another one replaces",
         lines("A", "INTEGER", "VALUE=1\n") + code("B", "A_1^ADD(1);LOG^ADD(A_1);"),
         "A^CLONE();B^RUN();A^RESETCLONES();A^CLONE();B^RUN();", "22"},
        {"a member of a group, by another one's signal",
         lines("A", "INTEGER", "ONCHANGED={S^REMOVE(\"B\");LOG^ADD(\"a\");}\n") +
             lines("B", "INTEGER", "ONCHANGED={LOG^ADD(\"b\");}\n") + lines("G", "GROUP"),
         "G^ADD(\"A\",\"B\");G^INC();LOG^ADD(G^GETSIZE());", "a1"},
        {"the handler of a signal", code("H", "LOG^ADD(\"h\");") + lines("A", "INTEGER"),
         "A^ADDBEHAVIOUR(\"ONCHANGED\",\"H\");A^INC();S^REMOVE(\"H\");A^INC();LOG^ADD(\"|\");", "h|"},
        {"a handler replaces itself",
         code("H", "A^REMOVEBEHAVIOUR(\"ONCHANGED\");LOG^ADD(\"$1$1\");") + lines("A", "INTEGER"),
         "A^ADDBEHAVIOUR(\"ONCHANGED\",\"H\",\"p\");A^INC();A^INC();LOG^ADD(\"|\");", "pp|"},
        {"a block compiled anew while it runs",
         code("B", "@IF(\"$1\",<,3,{LOG^ADD(\"$1\");B^RUN([$1+1]);LOG^ADD(\"-\");},\"\");"), "B^RUN(1);LOG^ADD(\"|\");",
         "12--|"},
        {"a number whose text an object takes as name", lines("A", "INTEGER") + code("B", "A^SET(5);LOG^ADD(A);"),
         "B^RUN();@INT(\"5\",7);B^RUN();S^REMOVE(\"5\");B^RUN();", "575"},
        {"the object that a parameter names",
         lines("A", "INTEGER", "VALUE=4\n") + code("B", "S^REMOVE(\"A\");@RETURN(1);"),
         "LOG^ADD([A+B^RUN()]);LOG^ADD(A);", "5A"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Stage stage(kLog + row.scene);
        stage.run(row.run);
        EXPECT_EQ(stage.value("LOG"), row.log);
    }
}

TEST(Danger, TheApplicationRestartsInTheMidstOfATick) {
    Stage stage(code("__INIT__", "G^ADD(\"S\");@IF(\"K\",_,0,{APP^GOTO(\"EQ\");K^SET(1);},\"\");"));
    stage.definition(lines("APP", "APPLICATION", "EPISODES=EP,EQ\nPATH=APP\n") +
                     lines("EP", "EPISODE", "SCENES=S\nPATH=EP\n") + lines("EQ", "EPISODE", "SCENES=T\nPATH=EQ\n") +
                     lines("S", "SCENE", "PATH=S\n") + lines("T", "SCENE", "PATH=T\n"));
    stage.level("APP", lines("G", "STRING") + lines("K", "INTEGER") + code("GONE", "G^ADD(\"d\");"));
    stage.file("Dane/T/T.cnv",
               lines("FIRST", "TIMER", "ELAPSE=10\nONTICK={G^ADD(\"a\");APP^RESTART();G^ADD(\"b\");THIS^SET(4);}\n") +
                   lines("SECOND", "TIMER", "ELAPSE=10\nONTICK={G^ADD(\"never\");}\n") +
                   lines("Y", "INTEGER", "ONDONE=GONE\n"));
    stage.frames(6);
    EXPECT_EQ(stage.value("G"), "SadSb");
}

TEST(Danger, PoolsGrowAndNothingStaysTaken) {
    Stage stage(kLog + lines("N", "INTEGER") + lines("W", "STRING") +
                code("DEEP", "@IF(\"$1\",<,40,{W^SET([$1+DEEP^RUN([$1+1])]);},\"\");"));
    stage.start();
    const int before = CMC_VariableFactory::takenCount();
    stage.run("@LOOP({N^ADD(_I_);W^SET([\"a\"+_I_]);W^GET(0,1);@CONV(N,\"DOUBLE\");N^ADD(1);},0,500,1);");
    stage.run("DEEP^RUN(1);@INT(\"T\",1);T^ADD(2);S^RUN(\"N\",\"ADD\",1);N^SWITCH(1,2);N^POWER(2);W^LENGTH();");
    stage.run(
        "@IF([N+1],>,N^ADD(1),{W^SET(N^GET());},\"\");@SET(1);@INT(\"M\",0);@WHILE(\"M\",<,5,{M^ADD(2);});NOBODY^SET(W^"
        "GET(1));");
    EXPECT_EQ(CMC_VariableFactory::takenCount(), before);
}

TEST(Danger, MissingAndWrongParametersReadAsEmpty) {
    constexpr std::string_view methods =
        "SET SWITCH CLEAR INC DEC ADD MUL RESETINI SETDEFAULT SUB DIV MOD ABS AND OR NOT XOR POWER SQRT CLAMP LENGTH "
        "ARCTAN GET MINA MAXA ARCTANEX SINUS COSINUS UPPER FIND CUT REPLACEAT INSERTAT REPLACE ROUND SEND ADDTOGROUP "
        "ADDTOARRAY GETNAME ADDBEHAVIOUR GETCLONEINDEX RESETCLONES REMOVEBEHAVIOUR RUN RUNC RUNLOOPED CHECK JOIN "
        "GETSIZE LOAD SAVE REMOVE REMOVEALL ENABLE DISABLE SETELAPSE RUNCLONES REMOVECLONES TOTIME GETELEMENTSNO "
        "SETMUSICVOLUME SETMUSICPAN SETMUSICFREQ GETMUSICVOLUME SETMINHSPRIORITY STARTMUSIC STOPMUSIC CREATEOBJECT";
    constexpr const char* statements[] = {"IF",  "WHILE",  "RETURN", "CONV",  "BOOL",       "DOUBLE",
                                          "INT", "STRING", "LOOP",   "VALUE", "RUNONTIMER", "MSGBOX"};
    Stage stage(kLog + lines("I", "INTEGER", "VALUE=3\n") + lines("D", "DOUBLE") + lines("W", "STRING", "VALUE=abc\n") +
                lines("F", "BOOL") + lines("E", "EXPRESSION", "OPERAND1=I\n") + lines("C", "CONDITION") +
                lines("G", "GROUP") + lines("LIST", "ARRAY") + lines("T", "TIMER", "ELAPSE=10\n") +
                code("B", "LOG^SET(\"b\");"));
    for (const char* object :
         {"I", "D", "W", "F", "E", "C", "G", "LIST", "T", "B", "S", "CNVLOADER", "SYSTEM", "RANDOM"}) {
        for (std::size_t at = 0; at < methods.size();) {
            const std::size_t stop = std::min(methods.find(' ', at), methods.size());
            const std::string call = object + ("^" + std::string(methods.substr(at, stop - at)));
            at = stop + 1;
            for (const char* parameters : {"()", "(-5,-9)", "(2147483647,-2147483648,99)", "(NOBODY^X(),G,\"\",[I+1])"})
                stage.run(call + parameters + ";");
        }
    }
    for (const char* statement : statements) {
        stage.run(std::string("@") + statement + "();");
        stage.run(std::string("@") + statement + "(G,LIST);");
    }
    stage.frames(3);
    stage.run("LOG^SET(\"on\");");
    EXPECT_EQ(stage.value("LOG"), "on");
}

TEST(Danger, TwoApplicationsInOneProcessStartAlike) {
    std::string names[2];
    int taken[2];
    for (int i = 0; i < 2; ++i) {
        Stage stage(kLog + lines("A", "INTEGER", "ONINIT={S^PAUSE();LOG^ADD(THIS^GETNAME());}\n"));
        stage.run("LOG^ADD(@RUNONTIMER(10,0,{LOG^ADD(\"&1\");},{LOG^ADD(\"e\");}));S^RESUME();");
        stage.frames(3);
        stage.run("S^PAUSE();");
        names[i] = stage.value("LOG");
        stage.end();
        taken[i] = CMC_VariableFactory::takenCount();
    }
    EXPECT_EQ(names[0].substr(0, 7), "Atimer_");
    EXPECT_EQ(names[0], names[1]);
    EXPECT_EQ(taken[0], 0);
    EXPECT_EQ(taken[1], 0);
}
