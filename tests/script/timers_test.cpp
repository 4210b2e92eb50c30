// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/log_rows.h"

TEST(Timers, CodeThatRunsOnATimer) {
    const LogRow rows[] = {
        {"the number of the tick", "", "@RUNONTIMER(10,0,{LOG^ADD(\"&1\");},\"\");", "1234", 4},
        {"at its interval", "", "@RUNONTIMER(30,0,{LOG^ADD(\"&1\");},\"\");", "12", 8},
        {"so many times, then its end", "", "@RUNONTIMER(10,2,{LOG^ADD(\"&1\");},{LOG^ADD(\"e\");});", "12e", 6},
        {"a break ends it, and its end runs", "",
         "@RUNONTIMER(10,0,{LOG^ADD(\"&1\");@IF(\"&1\",_,2,{@BREAK();},\"\");},"
         "{LOG^ADD(\"e\");});",
         "12e", 6},
        {"further parameters", "", "@RUNONTIMER(10,1,{LOG^ADD(\"&1&2&3\");},\"\",\"x\",5);", "1x5", 3},
        {"the end gets them, too", "", "@RUNONTIMER(10,1,{LOG^ADD(\"&1\");},{LOG^ADD(\"<$1$2>\");},\"x\");", "1<1x>",
         3},
        {"named blocks; the end's condition counts",
         lines("NEVER", "CONDITION", "OPERAND1=1\nOPERAND2=2\n") +
             lines("TICK", "BEHAVIOUR", "CODE={LOG^ADD(\"$1\");}\nCONDITION=NEVER\n") +
             lines("END", "BEHAVIOUR", "CODE={LOG^ADD(\"never\");}\nCONDITION=NEVER\n"),
         "@RUNONTIMER(10,2,\"TICK\",\"END\");", "12", 4},
        {"a named end stays for the next", code("END", "LOG^ADD(\"e\");"),
         "@RUNONTIMER(10,1,{LOG^ADD(\"a\");},\"END\");@RUNONTIMER(20,1,{LOG^ADD(\"b\");},\"END\");", "aebe", 4},
        {"THIS is the timer's block", lines("N", "STRING"),
         "N^SET(@RUNONTIMER(10,1,{@IF(\"THIS^GETNAME()\",_,\"\",{LOG^ADD(\"no\");},\"\");LOG^ADD(N^FIND(THIS^GETNAME())"
         ");},\"\"));",
         "no0", 2},
        {"stopped by its name", lines("N", "STRING"),
         "N^SET(@RUNONTIMER(10,0,{LOG^ADD(\"&1\");@IF(\"&1\",_,2,{*N^BREAK();"
         "LOG^ADD(\"on\");},\"\");},{LOG^ADD(\"never\");}));",
         "12on", 6},
        {"stopped before it ticks", lines("N", "STRING"),
         "N^SET(@RUNONTIMER(10,0,{LOG^ADD(\"never\");},\"\"));*N^BREAK();", "", 3},
        {"removed by its name", lines("N", "STRING"),
         "N^SET(@RUNONTIMER(10,0,{LOG^ADD(\"&1\");},\"\"));"
         "@RUNONTIMER(25,1,{S^REMOVE(N);},\"\");",
         "123", 6},
        {"the name is gone with it", lines("N", "STRING"),
         "N^SET(@RUNONTIMER(10,1,{LOG^ADD(\"t\");},\"\"));"
         "@RUNONTIMER(30,1,{*N^BREAK();@IF(N,?,BEHAVIOUR,{LOG^ADD(\"there\");},{LOG^ADD(\"gone\");});},\"\");",
         "tgone", 5},
        {"a block's raw text counts, not the handler's parameters",
         lines("V", "INTEGER", "ONSIGNAL^GO=H(a)\n") + code("H", "@RUNONTIMER(10,1,{LOG^ADD(\"$1&1\");},\"\");"),
         "V^SEND(\"GO\");", "11", 3},
        {"started by a timer's end", "",
         "@RUNONTIMER(10,1,{LOG^ADD(\"a\");},{@RUNONTIMER(10,1,{LOG^ADD(\"b\");},\"\");});", "ab", 5},
        {"an interval of nothing ticks each frame", "", "@RUNONTIMER(0,0,{LOG^ADD(\"&1\");},\"\");", "123", 3},
        {"a negative one, too", "", "@RUNONTIMER(-9,-1,{LOG^ADD(\"&1\");},\"\");", "12", 2},
        {"no code", "", "@RUNONTIMER(10,1,{},{LOG^ADD(\"e\");});", "e", 3},
    };
    expectLogs(rows);
}

TEST(Timers, TheTimerObject) {
    const auto timer = [](const std::string& more) {
        return lines("T", "TIMER", "ELAPSE=10\nONTICK={LOG^ADD(\"t\");}\nONTICK^2={LOG^ADD(\"2\");}\n" + more);
    };
    const LogRow rows[] = {
        {"the number first", timer(""), "", "t2tt", 4},
        {"the last tick is heard", timer("TICKS=2\n"), "", "t2", 5},
        {"set to the limit, it never stops", timer("TICKS=2\n"), "T^SET(2);", "tttt", 4},
        {"no limit", timer("TICKS=0\n"), "T^SET(-2);", "ttt2t", 5},
        {"disabled", timer(""), "T^DISABLE();", "", 3},
        {"enabled after its limit",
         timer("TICKS=2\n") + lines("BACK", "TIMER", "ELAPSE=40\nTICKS=1\nONTICK={T^ENABLE();}\n"), "", "t2t2", 9},
        {"RESET counts from the start",
         timer("") + lines("R", "TIMER", "ELAPSE=30\nTICKS=1\nONTICK={T^RESET();LOG^ADD(\"r\");}\n"), "", "t2trt2t", 6},
        {"another period", timer(""), "T^SETELAPSE(30);", "t2", 7},
        {"none, without a period", lines("U", "TIMER", "ONTICK={LOG^ADD(\"u\");}\n"), "U^SETELAPSE(10);U^ENABLE();", "",
         4},
        {"the count", timer("") + lines("C", "TIMER", "ELAPSE=30\nTICKS=1\nONTICK={LOG^ADD(T^GETTICKS());}\n"), "",
         "t2t3", 3},
        {"removed by its own tick",
         lines("X", "TIMER", "ELAPSE=10\nONTICK={LOG^ADD(\"x\");S^REMOVE(\"X\");LOG^ADD(\"y\");}\n"), "", "xy", 4},
        {"one removes another in the same frame",
         lines("X", "TIMER", "ELAPSE=10\nONTICK={LOG^ADD(\"x\");S^REMOVE(\"Y\");}\n") +
             lines("Y", "TIMER", "ELAPSE=10\nONTICK={LOG^ADD(\"never\");}\n"),
         "", "xx", 2},
    };
    expectLogs(rows);
}

TEST(Timers, EndWithTheirScene) {
    Stage stage(lines("BEAT", "TIMER", "ELAPSE=10\nONTICK={LOG^ADD(\"b\");}\n"));
    stage.scene("T", "");
    stage.level("APP", lines("LOG", "STRING"));
    stage.run("@RUNONTIMER(10,0,{LOG^ADD(\"r\");},{LOG^ADD(\"never\");});");
    stage.frames(2);
    stage.run("EP^GOTO(\"T\");");
    stage.frames(3);
    EXPECT_EQ(stage.value("LOG"), "brbrbr");
}
