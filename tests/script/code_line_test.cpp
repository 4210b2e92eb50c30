// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/behaviour.h"
#include "script/log_rows.h"
#include "script/variable.h"
#include "structure/scene.h"

TEST(CodeLine, ABlockIsCutByCharacters) {
    const LogRow rows[] = {
        {"blanks are lost, in quotes too", "", " LOG^ADD( \"a b\" ) ;", "ab"},
        {"a tab is no blank", "", "LOG^ADD(\"a\tb\");", "a\tb"},
        {"empty statements", "", ";;LOG^ADD(\"a\");;", "a"},
        {"what has no semicolon is lost", "", "LOG^ADD(\"a\");LOG^ADD(\"b\")", "a"},
        {"a semicolon in parentheses", "", "LOG^ADD(\"a;b\");", "a;b"},
        {"a parenthesis that is never closed", "", "LOG^ADD(\"a\");LOG^ADD((\"b\");LOG^ADD(\"c\");", "a"},
        {"a parenthesis too many", "", "LOG^ADD(\"a\"));LOG^ADD(\"b\");LOG^ADD(\"c\");", ""},
        {"braces and quotes protect nothing", "", "{LOG^ADD(\"a\");LOG^ADD(\"b\");}LOG^ADD(\"c\");", "ab"},
        {"calls without parentheses do nothing", lines("A", "INTEGER"), "A^INC;@BREAK;THIS;*A^INC;LOG^ADD(A);", "0"},
        {"unknown things do nothing", lines("A", "INTEGER"), "NOBODY^SET(1);A^NOSUCH(1);@NOSUCH(1);LOG^ADD(A);", "0"},
        {"names are exact", lines("A", "INTEGER"), "a^SET(1);A^set(1);LOG^ADD(A);", "0"},
    };
    expectLogs(rows);
}

TEST(CodeLine, ParametersByTheirFirstCharacters) {
    const std::string scene = lines("A", "INTEGER", "VALUE=5\n") + lines("L", "ARRAY") +
                              code("SHOW", "@LOOP({LOG^ADD(L^GET(_I_));LOG^ADD(\"|\");},0,L^GETSIZE(),1);");
    const LogRow rows[] = {
        {"empty pieces take no slot", "", "L^ADD(1,,2,);SHOW^RUN();", "1|2|"},
        {"quotes don't protect a comma", "", "L^ADD(\"p,q\");SHOW^RUN();", "p|q\"|"},
        {"nor do brackets", "", "L^ADD([1+2,3+4]);SHOW^RUN();", "1|3|"},
        {"parentheses do", "", "L^ADD(A^CLAMP(1,3),7);SHOW^RUN();", "3|7|"},
        {"values of the moment, from left to right", "", "L^ADD(A^ADD(1),A^ADD(10),A);SHOW^RUN();", "6|16|16|"},
        {"literals", "", "L^ADD(NOBODY,TRUE,True,5.5,-,-8,12abc,\"x,\"\"\");SHOW^RUN();",
         "NOBODY|TRUE|True|5.50|0|-8|12|x|\"|"},
        {"a negative number in a call's place", "", "L^ADD(-3,--3,-0.5);SHOW^RUN();", "-3|0|-0.50|"},
    };
    expectLogs(rows, scene);
}

TEST(CodeLine, AmpersandBindsWhenItIsCompiled) {
    const LogRow rows[] = {
        {"the object, with its value of the moment", lines("A", "INTEGER", "VALUE=5\n") + code("B", "LOG^ADD(&A);"),
         "B^RUN();A^SET(6);B^RUN();", "56"},
        {"a literal, for it wasn't there", code("B", "LOG^ADD(&T);"), "@INT(\"T\",5);B^RUN();LOG^ADD(T);", "T5"},
        {"a number", "", "LOG^ADD(&64);LOG^ADD([&64+1]);", "64&641"},
        {"the name of a behaviour", code("B", "LOG^ADD(\"b\");"), "@IF(1,_,1,&B);", "b"},
    };
    expectLogs(rows);
}

TEST(CodeLine, TargetsByNameAndByThis) {
    const std::string scene = lines("A", "INTEGER", "VALUE=1\n") + lines("B2", "INTEGER", "VALUE=2\n") +
                              lines("P", "STRING", "VALUE=A\n") + lines("N", "INTEGER", "VALUE=2\n");
    const LogRow rows[] = {
        {"through a variable", "", "*P^SET(5);*P^ADD([A+1]);LOG^ADD(A);", "11"},
        {"the name of the moment", "", "*P^SET(P^SET(\"B2\"));*P^SET(7);LOG^ADD(A);LOG^ADD(B2);", "17"},
        {"through an expression", "", "*[\"B\"+N]^SET(9);N^SET(3);*[\"B\"+N]^SET(8);LOG^ADD(B2);", "9"},
        {"with a call in the expression", lines("3", "INTEGER"),
         "*[N^GET()+1]^SET(6);*[N^GET()+1]^ADD(1);LOG^ADD(@VALUE(\"3\"));", "7"},
        {"with a call that has parameters", "", "*[\"B\"+N^CLAMP(1,2)]^ADD(N^GET());LOG^ADD(B2);", "4"},
        {"a variable that comes later", "", "@STRING(\"Q\",\"B2\");*Q^SET(3);LOG^ADD(B2);", "3"},
        {"as a parameter", "", "LOG^ADD(*P^GET());", "1"},
        {"a target made in the same run", "", "@INT(\"T\",1);T^ADD(4);LOG^ADD(T);", "5"},
        {"THIS of a signal",
         lines("V", "STRING", "ONSIGNAL^GO={THIS^SET(\"x\");LOG^ADD(THIS^GETNAME());LOG^ADD(V);}\n"), "V^SEND(\"GO\");",
         "Vx"},
        {"no THIS in a run", code("SUB", "LOG^ADD(THIS^GETNAME());LOG^ADD(\"|\");"), "SUB^RUN();", "|"},
        {"any name that begins so", lines("THISONE", "STRING", "VALUE=t\n"),
         "LOG^ADD(THISONE);THISONE^SET(\"u\");"
         "LOG^ADD(THISONE);",
         "tt"},
        {"a name with a parameter", code("SUB", "$1^ADD(10);LOG^ADD($1);B$2^$3(4);LOG^ADD(B2);"),
         "SUB^RUN(\"A\",2,\"SET\");", "114"},
    };
    expectLogs(rows, scene);
}

TEST(CodeLine, AnIndirectCallWithoutTargetIsTold) {
    Stage stage(lines("P", "STRING", "VALUE=NOWHERE\n"));
    stage.run("*P^SET(1);*[P+1]^SET(2);NOWHERE^SET(3);*NOBODY^SET(4);");
    const std::vector<std::string> told = {"*P^SET(1)", "*[P+1]^SET(2)", "*NOBODY^SET(4)"};
    EXPECT_EQ(stage.debugLines(), told);
}

TEST(CodeLine, BlockParametersTakeTheCallersParameters) {
    const LogRow rows[] = {
        {"as text", code("B", "LOG^ADD(\"<$1.$2>\");"), "B^RUN(LOG,\"x\");B^RUN(5,[2+1]);", "<.x><5.3>"},
        {"an object that is no value, in quotes", code("B", "LOG^ADD(\"<$1>\");"), "B^RUN(\"B\");", "<\"B\">"},
        {"what is missing stays", code("B", "LOG^ADD(\"$1$3$12$\");"), "B^RUN(\"q\",2);B^RUN();", "q$3q2$$1$3$12$"},
        {"into a block", code("B", "@IF(\"$1\",>,10,{LOG^ADD(\"big$1.\");},{LOG^ADD(\"small$1.\");});"),
         "B^RUN(5);B^RUN(15);B^RUN(7);", "small5.big15.small7."},
        {"into a block of a block",
         code("B", "@IF(1,_,1,{@IF(1,_,1,{LOG^ADD(\"$1\");LOG^ADD(\"$2.\");},\"\");},\"\");"),
         "B^RUN(1,2);B^RUN(\"a\",\"b\");", "12.ab."},
        {"a block as the parameter", code("B", "@LOOP($1,0,2,1);"), "B^RUN({LOG^ADD(_I_);});", "01"},
        {"a call as the parameter's text", code("B", "LOG^ADD($1);") + lines("A", "INTEGER", "VALUE=4\n"),
         "B^RUN(\"A\");B^RUN(\"[A+1]\");B^RUN(\"NONE\");", "45NONE"},
        {"a formula", code("B", "LOG^ADD([$1+$2]);"), "B^RUN(2,40);B^RUN(\"ab\",\"cd\");", "42abcd"},
        {"a name's part", code("B", "A$1^ADD($2);LOG^ADD(A$1);") + lines("A7", "INTEGER"), "B^RUN(7,3);B^RUN(7,3);",
         "36"},
        {"the next call starts from the raw text", code("B", "@IF(1,_,1,{LOG^ADD(\"$1$2.\");},\"\");"),
         "B^RUN(1,2);B^RUN(3);B^RUN();", "12.3$2.3$2."},
        {"a block without parameters keeps its own", code("B", "@LOOP({LOG^ADD(_I_);LOG^ADD(\"$1\");},0,2,1);"),
         "B^RUN(\"p\");", "0p1p"},
        {"in a signal's handler",
         code("H", "@IF(1,_,1,{LOG^ADD(\"$2$1\");},\"\");") + lines("V", "INTEGER", "ONSIGNAL^GO=H(alpha, beta)\n"),
         "V^SEND(\"GO\");", "betaalpha"},
    };
    expectLogs(rows);
}

// The evaluator that works on text: results as text, "null" for none.
TEST(RunLine, EvaluatesTextAtTheMomentOfTheCall) {
    Stage stage(lines("A", "INTEGER", "VALUE=5\n") + lines("P", "STRING", "VALUE=A\n") +
                lines("W", "STRING", "VALUE=a b\n") + code("B", "@RETURN(\"r$1\");"));
    CMC_Scene* scene = stage.current();
    ASSERT_EQ(scene->getObjectId("B"), 0);
    ASSERT_EQ(scene->getObjectId("A"), 1);
    const struct {
        const char* what;
        const char* line;
        const char* result;
        const char* a;  // the value of A behind it
    } rows[] = {
        {"a call", "A^ADD(2)", "7", "7"},
        {"blanks around", "A^ADD ( 2 )", "null", "5"},
        {"in the parameters they stay", "W^FIND( \" \" )", "1", "5"},
        {"nested", "A^ADD(A^ADD(1))", "12", "12"},
        {"a statement", "@CONV(\"3x\",\"INTEGER\")", "3", "5"},
        {"a statement without its sign", "CONV(2,\"DOUBLE\")", "2.00", "5"},
        {"IF without its sign", "IF(A,_,5,{A^SET(9);})", "null", "5"},
        {"IF with text in quotes", "IF(\"A\",_,5,\"A^SET(9);\")", "null", "9"},
        {"through a name", "*P^SET(8)", "null", "8"},
        {"through a formula", "*[P]^SET(8)", "null", "8"},
        {"through THIS", "THIS^SET(4)", "null", "4"},
        {"by index", "#i\x81^SET(3)", "null", "3"},
        {"by index and id", "#i\x81^#\x86(3)", "8", "8"},
        {"an index behind the end", "#i\xFF^SET(3)", "null", "5"},
        {"an index that is missing", "#^SET(3)", "null", "5"},
        {"an id that is missing", "A^#(3)", "null", "5"},
        {"an unknown object", "NOBODY^SET(3)", "null", "5"},
        {"the method behind the last caret", "A^X^SET(3)", "null", "3"},
        {"no parentheses", "A^INC", "null", "6"},
        {"a behaviour", "B^RUN(5)", "r5", "5"},
        {"nothing", "", "null", "5"},
        {"parentheses alone", "()", "null", "5"},
        {"signs alone", "@", "null", "5"},
        {"an empty name", "^SET(1)", "null", "5"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        stage.run("A^SET(5);");
        CMC_Variable* result = CMC_Behaviour::runLine(scene, stage.object("A"), row.line, nullptr);
        EXPECT_EQ(result ? std::string(result->asString().view()) : "null", row.result);
        CMC_Object::release(result);
        EXPECT_EQ(stage.value("A"), row.a);
    }
}

// Text that is put in for a parameter may ask for parameters itself.
TEST(CodeLine, AParameterThatHoldsItselfEnds) {
    Stage stage(lines("LOG", "STRING") + lines("W", "STRING", "VALUE=$1^X($1,$1,$1)\n") +
                lines("TWICE", "STRING", "VALUE=LOG^ADD($2)\n") + code("B", "LOG^ADD($1);LOG^ADD(\"on\");"));
    stage.run("B^RUN(W);");
    EXPECT_EQ(stage.value("LOG"), "on");
    EXPECT_EQ(stage.debugLines().size(), 1U);
    stage.run("LOG^CLEAR();B^RUN(TWICE,\"x\");");
    EXPECT_EQ(stage.value("LOG"), "xxon");
}
