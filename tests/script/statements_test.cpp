// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/log_rows.h"

TEST(Statements, IfComparesInTheTypeOfItsLeftOperand) {
    Stage stage(lines("LOG", "STRING") + lines("A", "INTEGER", "VALUE=5\n") + lines("D", "DOUBLE", "VALUE=1.004\n") +
                lines("TEXT", "STRING", "VALUE=Abc\n") + lines("POINTER", "STRING", "VALUE=A\n") +
                lines("ON", "BOOL", "VALUE=TRUE\n") + lines("OFF", "BOOL", "VALUE=FALSE\n") +
                lines("SUM", "EXPRESSION", "OPERAND1=A\nOPERATOR=+\nOPERAND2=1\n") + code("B", ""));
    constexpr const char* operators[] = {"_", "!_", "<>", "<", "<_", ">", ">_"};
    const struct {
        const char* what;
        const char* left;
        const char* right;
        const char* outcomes;  // of the operators in their order
    } rows[] = {
        {"equal integers", "\"A\"", "5", "ynnnyny"},
        {"a smaller integer", "\"A\"", "6", "nyyyynn"},
        {"a double is cut to an integer", "\"A\"", "5.9", "ynnnyny"},
        {"an integer widens to a double", "5.9", "\"A\"", "nyynnyy"},
        {"a plain double has two decimals", "D", "1", "ynnnyny"},
        {"a named double has all", "\"D\"", "1", "nyynnyy"},
        {"text is equal in any case, its order is by bytes", "\"TEXT\"", "\"abc\"", "ynnyynn"},
        {"equal text", "\"TEXT\"", "\"Abc\"", "ynnnyny"},
        {"unknown names are text", "\"NOBODY\"", "\"nothing\"", "nyyyynn"},
        {"text that begins like a number is one", "\"12abc\"", "12", "ynnnyny"},
        {"text is no number to an integer", "0", "\"x12\"", "ynnnyny"},
        {"true is above false", "\"ON\"", "0", "nyynnyy"},
        {"false is below true", "\"OFF\"", "1", "nyyyynn"},
        {"a plain variable's text names an object", "POINTER", "5", "ynnnyny"},
        {"a named one is its value", "\"POINTER\"", "5", "nyynnyy"},
        {"an expression in brackets", "[A+1]", "6", "ynnnyny"},
        {"a declared expression", "\"SUM\"", "7", "nyyyynn"},
        {"a call in quotes has no target, and no value", "\"A^GET()\"", "4", "nyyyynn"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        std::string run = "LOG^CLEAR();";
        for (const char* op : operators)
            run +=
                std::string("@IF(") + row.left + "," + op + "," + row.right + ",{LOG^ADD(\"y\");},{LOG^ADD(\"n\");});";
        stage.run(run);
        EXPECT_EQ(stage.value("LOG"), row.outcomes);
    }
    const struct {
        const char* condition;
        const char* outcome;
    } others[] = {
        {"\"A\",?,INTEGER", "y"}, {"\"A\",?,integer", "n"}, {"\"NOBODY\",?,STRING", "n"}, {"\"B\",?,BEHAVIOUR", "y"},
        {"A,?,INTEGER", "n"},     {"\"A\",==,5", "n"},      {"\"A\",!,6", "n"},
    };
    for (const auto& row : others) {
        SCOPED_TRACE(row.condition);
        stage.run(std::string("LOG^CLEAR();@IF(") + row.condition + ",{LOG^ADD(\"y\");},{LOG^ADD(\"n\");});");
        EXPECT_EQ(stage.value("LOG"), row.outcome);
    }
}

TEST(Statements, IfRunsItsBlocks) {
    const LogRow rows[] = {
        {"no block at all", "", "@IF(1,_,1);LOG^ADD(\"|\");", "|"},
        {"no else", "", "@IF(1,_,2,{LOG^ADD(\"y\");});LOG^ADD(\"|\");", "|"},
        {"a skipped piece takes no slot", "", "@IF(1,_,2,,{LOG^ADD(\"y\");});LOG^ADD(\"|\");", "|"},
        {"an empty then", "", "@IF(1,_,1,\"\",{LOG^ADD(\"n\");});LOG^ADD(\"|\");", "|"},
        {"braces without code", "", "@IF(1,_,1,{},{LOG^ADD(\"n\");});LOG^ADD(\"|\");", "|"},
        {"a block in quotes", "", "@IF(1,_,1,\"{LOG^ADD(\"q\");}\",\"\");", "q"},
        {"a behaviour by name", code("B", "LOG^ADD(THIS^GETNAME());"), "@IF(1,_,1,\"B\");", "B"},
        {"its condition doesn't count",
         lines("NEVER", "CONDITION", "OPERAND1=1\nOPERATOR=LESS\nOPERAND2=0\n") +
             lines("B", "BEHAVIOUR", "CODE={LOG^ADD(\"b\");}\nCONDITION=NEVER\n"),
         "@IF(1,_,1,\"B\");", "b"},
        {"a text that stops itself", lines("W", "STRING", "VALUE=LOG^ADD(\"a\");THIS^BREAK();LOG^ADD(\"b\");\n"),
         "@IF(1,_,1,W);LOG^ADD(\"|\");", "ab|"},
        {"the name of no behaviour", lines("A", "INTEGER"), "@IF(1,_,1,\"A\");LOG^ADD(\"|\");", "|"},
        {"commas and semicolons in a block", "", "@IF(1,_,1,{LOG^ADD(\"a\",1);LOG^ADD(\"b\");},\"\");", "ab"},
        {"a block is plain text without a call", "", "@IF(1,_,1,{@BREAK();},\"\");LOG^ADD(\"|\");", ""},
        {"blocks in blocks", lines("A", "INTEGER", "VALUE=2\n"),
         "@IF(\"A\",>,1,{A^ADD(1);@IF(\"A\",>,2,{LOG^ADD(\"in\");},{LOG^ADD(\"no\");});},{LOG^ADD(\"out\");});", "in"},
    };
    expectLogs(rows);
}

TEST(Statements, LoopsCountAndEnd) {
    const LogRow rows[] = {
        {"from the start to start plus count", "", "@LOOP({LOG^ADD(_I_);},3,4,1);", "3456"},
        {"by steps", "", "@LOOP({LOG^ADD(_I_);},3,4,3);", "36"},
        {"no pass", "", "@LOOP({LOG^ADD(_I_);},3,0,1);@LOOP({LOG^ADD(_I_);},3,-2,1);LOG^ADD(\"|\");", "|"},
        {"the bounds of the moment", lines("C", "INTEGER", "VALUE=6\n"), "@LOOP({LOG^ADD(_I_);C^SUB(1);},0,C,1);",
         "012"},
        {"the step of the moment", lines("C", "INTEGER", "VALUE=1\n"), "@LOOP({LOG^ADD(_I_);C^ADD(1);},0,9,C);", "025"},
        {"the start of the moment", lines("C", "INTEGER", "VALUE=0\n"), "@LOOP({LOG^ADD(_I_);C^SUB(1);},C,5,1);",
         "012"},
        {"the counter is gone", "", "@LOOP({LOG^ADD(_I_);},0,1,1);LOG^ADD(_I_);", "0_I_"},
        {"a written counter doesn't move the loop", "", "@LOOP({LOG^ADD(_I_);_I_^SET(9);},0,2,1);", "01"},
        {"a body's condition is asked",
         lines("BELOW", "CONDITION", "OPERAND1=_I_\nOPERATOR=NOTEQUAL\nOPERAND2=1\n") +
             lines("B", "BEHAVIOUR", "CODE={LOG^ADD(_I_);}\nCONDITION=BELOW\n"),
         "@LOOP(\"B\",0,3,1);", "02"},
        {"no THIS in the body", lines("A", "INTEGER", "ONSIGNAL^GO={@LOOP({THIS^SET(5);},0,1,1);LOG^ADD(A);}\n"),
         "A^SEND(\"GO\");", "0"},
        {"a while that never holds", "", "@WHILE(1,_,2,{LOG^ADD(\"x\");});LOG^ADD(\"|\");", "|"},
        {"a while asks a name anew", lines("A", "INTEGER"), "@WHILE(\"A\",<,3,{A^ADD(1);LOG^ADD(A);});", "123"},
        {"and a plain variable's text once", lines("A", "INTEGER"),
         "@WHILE(A,<,\"A\",{LOG^ADD(\"x\");A^SET(0);});"
         "A^SET(4);@WHILE(\"A\",<,6,{A^ADD(1);LOG^ADD(A);});@WHILE(\"A\",>,A,{LOG^ADD(\"never\");});",
         "56"},
        {"a run in a loop", code("SHOW", "LOG^ADD(\"<$1$2$3>\");"), "SHOW^RUNLOOPED(2,5,2,\"x\");", "<22x><42x><62x>"},
        {"its step is 1", code("SHOW", "LOG^ADD(\"<$1$2>\");"), "SHOW^RUNLOOPED(-1,2);", "<-1$2><0$2>"},
        {"its bounds are read once", lines("C", "INTEGER", "VALUE=3\n") + code("B", "LOG^ADD(\"$1\");C^SUB(1);"),
         "B^RUNLOOPED(0,C);", "012"},
        {"its condition is asked, a failure goes on",
         lines("C", "INTEGER", "VALUE=0\n") + lines("ODD", "CONDITION", "OPERAND1=C\nOPERATOR=LESS\nOPERAND2=2\n") +
             lines("B", "BEHAVIOUR", "CODE={LOG^ADD(\"$1\");C^ADD(1);}\nCONDITION=ODD\n"),
         "B^RUNLOOPED(4,4);", "45"},
    };
    expectLogs(rows);
}

TEST(Statements, ABreakGoesUpToItsStopper) {
    const std::string blocks = lines("K", "INTEGER") + code("INNER", "LOG^ADD(\"a\");@BREAK();LOG^ADD(\"never\");") +
                               code("CALLER", "INNER^RUN();LOG^ADD(\"never\");") +
                               code("CHECKED", "INNER^RUNC();LOG^ADD(\"never\");");
    const auto handler = [](const std::string& text) {
        return lines("V", "STRING", "ONSIGNAL^GO={" + text + "LOG^ADD(\"end\");}\n");
    };
    const char* go = "V^SEND(\"GO\");LOG^ADD(\"|\");";
    const LogRow rows[] = {
        {"ends the block that runs", "", "LOG^ADD(\"1\");@BREAK();LOG^ADD(\"2\");", "1"},
        {"and its callers", handler("CALLER^RUN();"), go, "a|"},
        {"which check their conditions", handler("CHECKED^RUNC();"), go, "a|"},
        {"through IF", handler("@IF(1,_,1,{LOG^ADD(\"i\");@BREAK();},\"\");"), go, "i|"},
        {"LOOP passes it on", handler("@LOOP({LOG^ADD(_I_);@IF(\"_I_\",_,1,{@BREAK();},\"\");},0,5,1);"), go, "01|"},
        {"WHILE goes on with the next pass", handler("@WHILE(\"K\",<,3,{K^ADD(1);LOG^ADD(\"w\");@BREAK();K^ADD(5);});"),
         go, "wwwend|"},
        {"LOOP in WHILE ends the pass",
         handler("@WHILE(\"K\",<,3,{K^ADD(1);@LOOP({LOG^ADD(\"l\");@BREAK();},0,9,1);K^ADD(5);});"), go, "lllend|"},
        {"RUNLOOPED ends alone", handler("INNER^RUNLOOPED(0,4);"), go, "aend|"},
        {"a signal stops it",
         handler("@IF(1,_,1,{LOG^SEND(\"X\");W^SEND(\"X\");LOG^ADD(\"on\");},\"\");") +
             lines("W", "STRING", "ONSIGNAL^X={LOG^ADD(\"x\");@BREAK();}\n"),
         go, "xonend|"},
        {"as a condition's", handler("HOLDS^BREAK();") + lines("HOLDS", "CONDITION", "OPERAND1=1\nOPERAND2=1\n"), go,
         "|"},
        {"which fails", handler("FAILS^BREAK();") + lines("FAILS", "CONDITION", "OPERAND1=1\nOPERAND2=2\n"), go,
         "end|"},
        {"a break is no value", handler("LOG^ADD(INNER^RUN());LOG^ADD([1+INNER^RUN()]);"), go, "aa1end|"},
    };
    expectLogs(rows, blocks);
}

TEST(Statements, WhatASubroutineHandsBack) {
    const LogRow rows[] = {
        {"the statements behind RETURN run", code("B", "@RETURN(5);LOG^ADD(\"on.\");@RETURN(7);"), "LOG^ADD(B^RUN());",
         "on.7"},
        {"it is text", code("B", "@RETURN(5);"), "LOG^ADD([B^RUN()+1]);LOG^ADD([1+B^RUN()]);", "516"},
        {"it stays until the next one", code("B", "@RETURN(\"old\");") + code("C", ""), "B^RUN();LOG^ADD(C^RUN());",
         "old"},
        {"a block that is empty hands on the same", code("B", "@RETURN(3);"), "B^RUN();LOG^ADD(B^RUNLOOPED(0,0));",
         "3"},
        {"nothing, at first", code("B", ""), "LOG^ADD(B^RUN());LOG^ADD(\"|\");", "|"},
        {"the name of what it returned", code("B", "@RETURN(\"A\");") + lines("A", "INTEGER", "VALUE=9\n"),
         "@STRING(\"N\",B^RUN());*N^ADD(1);LOG^ADD(A);", "10"},
        {"VALUE finds by name", lines("A", "INTEGER", "VALUE=9\n"),
         "LOG^ADD(@VALUE(\"A\"));LOG^ADD(@VALUE(\"NOBODY\"));", "9"},
        {"CONV", "",
         "LOG^ADD(@CONV(3.99,\"INTEGER\"));LOG^ADD(@CONV(2,\"DOUBLE\"));LOG^ADD(@CONV(\"x\",\"BOOL\"));"
         "LOG^ADD(@CONV(TRUE,\"STRING\"));LOG^ADD(@CONV(7,\"integer\"));",
         "32.00FALSETRUE"},
    };
    expectLogs(rows);
}

TEST(Statements, TemporariesLiveAsLongAsTheirBlock) {
    const LogRow rows[] = {
        {"in the block", "", "@INT(\"T\",7);T^ADD(1);LOG^ADD(T);", "8"},
        {"of each type", "",
         "@INT(\"I\",\"7x\");@STRING(\"S1\",2.5);@DOUBLE(\"D\",\"2.5\");@BOOL(\"F\",\"true\");"
         "LOG^ADD([I+1]);LOG^ADD([S1+1]);LOG^ADD([D+1]);LOG^ADD([F+FALSE]);",
         "82.5013.50FALSE"},
        {"what the statement gives", "", "LOG^ADD(@INT(\"T\",\"33x\"));LOG^ADD([T+1]);", "3334"},
        {"the second of a name changes nothing", "", "@INT(\"T\",1);LOG^ADD(@INT(\"T\",2));LOG^ADD(T);", "1"},
        {"nor one that a variable has", lines("A", "INTEGER", "VALUE=4\n"), "@INT(\"A\",1);LOG^ADD(A);", "4"},
        {"seen from blocks that it calls", code("B", "T^ADD(20);"), "@INT(\"T\",1);B^RUN();LOG^ADD(T);", "21"},
        {"gone behind the block", code("B", "@INT(\"T\",1);"), "B^RUN();LOG^ADD(T);", "T"},
        {"gone behind the block of an IF", "", "@IF(1,_,1,{@INT(\"T\",4);LOG^ADD(T);},\"\");LOG^ADD(T);", "4T"},
        {"gone after a break, too", code("B", "@INT(\"T\",1);@BREAK();"),
         "@WHILE(\"LOG\",_,\"\",{LOG^ADD(\"w\");B^RUN();});"
         "LOG^ADD(T);",
         "wT"},
        {"in each pass anew", "", "@LOOP({@INT(\"T\",_I_);LOG^ADD(T);},3,3,1);", "345"},
        {"of a block that runs itself", code("B", "@INT(\"T\",$1);@IF(\"$1\",<,3,{B^RUN([$1+1]);},\"\");LOG^ADD(T);"),
         "B^RUN(1);", "1TT"},
    };
    expectLogs(rows);
}

TEST(Statements, MessageBoxes) {
    Stage stage(lines("A", "INTEGER", "VALUE=5\n") + lines("D", "DOUBLE", "VALUE=-0.5\n") +
                lines("C", "COMPLEXCONDITION"));
    stage.run("@MSGBOX(\"one\",2,[1+2],TRUE,2.5,A);@MSGBOX();A^MSGBOX();D^MSGBOX();C^MSGBOX();");
    ASSERT_EQ(stage.messages().size(), 4U);
    EXPECT_EQ(stage.messages()[0].caption, "Message");
    EXPECT_EQ(stage.messages()[0].text, "one, 2, 3, TRUE, 2.50, 5");
    EXPECT_EQ(stage.messages()[1].caption, "A (INTEGER)");
    EXPECT_EQ(stage.messages()[2].text, "-0.50");
    EXPECT_EQ(stage.messages()[3].caption, "C (COMPLEX CONDITION)");
}
