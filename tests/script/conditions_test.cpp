// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/log_rows.h"

TEST(Expressions, GoFromLeftToRightInTheTypeOfTheFirst) {
    const ValueRow rows[] = {
        {"no precedence", "", "[1+2*3]", "9"},
        {"brackets group", "", "[2+[3*4]]", "14"},
        {"brackets at the start", "", "[[2+3]*[1+1]]", "10"},
        {"brackets deep", "", "[1+[2*[3+[4-1]]]]", "13"},
        {"DIV and MOD", "", "[17@5%2]", "1"},
        {"a slash is none", "", "[8/2]", "8"},
        {"an integer on the left", "", "[1+1.5]", "2"},
        {"a double on the left", "", "[1.5+1]", "2.50"},
        {"text on the left", "", "[\"2\"+3*4]", "23"},
        {"text on the right", "", "[2+\"3\"]", "5"},
        {"truth", "", "[TRUE+FALSE*TRUE]", "TRUE"},
        {"a variable decides, too", "D^SET(7);", "[D@2]", "3.50"},
        {"a call", "A^SET(4);", "[A^ADD(2)+A]", "12"},
        {"a call with an operator in its parameter", "A^SET(4);", "[A^ADD([1+1])+1]", "7"},
        {"a leading minus", "", "[-5]", "-5"},
        {"by zero", "", "[7@0]", "0"},
        {"modulo zero", "", "[7%0+3]", "3"},
        {"wraps", "", "[2147483647+1]", "-2147483648"},
        {"unknown names are text", "", "[NOBODY+1]", "NOBODY1"},
        {"quotes don't protect an operator", "", "[\"a-b\"+\"c\"]", "ac"},
        {"an expression object", "A^SET(4);", "[SUM*2]", "10"},
        {"of the moment", "A^SET(4);A^ADD(1);", "SUM", "6"},
        {"brackets that don't match", "", "[1+[2*3]", "1"},
        {"nothing", "", "[]", ""},
    };
    expectValues(rows, lines("A", "INTEGER") + lines("D", "DOUBLE") +
                           lines("SUM", "EXPRESSION", "OPERAND1=A\nOPERATOR=ADD\nOPERAND2=1\n"));
}

TEST(Expressions, Declared) {
    const struct {
        const char* properties;
        const char* value;
    } rows[] = {
        {"OPERAND1=A\nOPERATOR=ADD\nOPERAND2=3\n", "10"},
        {"OPERAND1=A\nOPERATOR=-\nOPERAND2=3\n", "4"},
        {"OPERAND1=A\nOPERATOR=MUL\nOPERAND2=1.9\n", "7"},
        {"OPERAND1=A\nOPERATOR=@\nOPERAND2=2\n", "3"},
        {"OPERAND1=A\nOPERATOR=%\nOPERAND2=4\n", "3"},
        {"OPERAND1=A\nOPERATOR=add\nOPERAND2=4\n", "11"},
        {"OPERAND1=\"x\"\nOPERATOR=ADD\nOPERAND2=A\n", "x7"},
        {"OPERAND1=A^ADD(1)\nOPERATOR=SUB\nOPERAND2=[A+1]\n", "-1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.properties);
        Stage stage(lines("LOG", "STRING") + lines("E", "EXPRESSION", row.properties) +
                    lines("A", "INTEGER", "VALUE=7\n"));
        stage.run("LOG^SET(E);");
        EXPECT_EQ(stage.value("LOG"), row.value);
    }
}

TEST(Conditions, Declared) {
    const std::string scene = lines("A", "INTEGER", "VALUE=5\n") + lines("W", "STRING", "VALUE=Abc\n") +
                              lines("D", "DOUBLE", "VALUE=1.004\n") +
                              lines("SUM", "EXPRESSION", "OPERAND1=A\nOPERATOR=ADD\nOPERAND2=1\n");
    const struct {
        const char* what;
        const char *left, *right;
        const char* outcomes;  // EQUAL NOTEQUAL LESS LESSEQUAL GREATER GREATEREQUAL INSTANCEOF and an unknown word
    } rows[] = {
        {"equal", "A", "5", "10010101"},
        {"less", "A", "6", "01110000"},
        {"greater", "A", "4.9", "01001100"},
        {"the left one decides", "4.9", "A", "01110000"},
        {"a double has all its decimals", "D", "1", "01001100"},
        {"text in any case, its order by bytes", "W", "\"abc\"", "10110001"},
        {"an unknown name is text", "NOBODY", "\"NOBODY\"", "10010101"},
        {"an expression on the left", "SUM", "6", "10010101"},
        {"an expression on the right", "A", "[A+1]", "01110000"},
        {"a call", "A^ADD(0)", "5", "10010101"},
        {"no operand", "", "5", "00000000"},
    };
    constexpr const char* words[] = {"EQUAL",   "NOTEQUAL",     "LESS",       "LESSEQUAL",
                                     "GREATER", "GREATEREQUAL", "INSTANCEOF", "equal"};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        std::string definition = scene + lines("LOG", "STRING");
        std::string run;
        for (int i = 0; i < 8; ++i) {
            const std::string name = "C" + std::to_string(i);
            definition += lines(
                name, "CONDITION",
                "OPERAND1=" + std::string(row.left) + "\nOPERAND2=" + row.right + "\nOPERATOR=" + words[i] + "\n");
            run += "@IF(" + name + "^CHECK(),_,TRUE,{LOG^ADD(1);},{LOG^ADD(0);});";
        }
        Stage stage(definition);
        stage.run(run);
        EXPECT_EQ(stage.value("LOG"), row.outcomes);
    }
}

TEST(Conditions, TellTheirOutcome) {
    const auto condition = [](const std::string& name, const std::string& type, const std::string& more) {
        return lines(name, type,
                     "ONRUNTIMESUCCESS={LOG^ADD(THIS^GETNAME());LOG^ADD(\"+\");}\n"
                     "ONRUNTIMEFAILED={LOG^ADD(THIS^GETNAME());LOG^ADD(\"-\");}\n" +
                         more);
    };
    const std::string scene = condition("Y", "CONDITION", "OPERAND1=1\nOPERAND2=1\n") +
                              condition("N", "CONDITION", "OPERAND1=1\nOPERAND2=2\n") +
                              lines("MUTE", "CONDITION", "OPERAND1=1\nOPERAND2=1\n");
    const auto both = [&](const std::string& op, const std::string& a, const std::string& b) {
        return condition("C", "COMPLEXCONDITION", "OPERATOR=" + op + "\nCONDITION1=" + a + "\nCONDITION2=" + b + "\n");
    };
    const LogRow rows[] = {
        {"CHECK fires", "", "LOG^ADD(Y^CHECK());LOG^ADD(N^CHECK());", "Y+TRUEN-FALSE"},
        {"unless told not to", "", "LOG^ADD(Y^CHECK(FALSE));LOG^ADD(N^CHECK(\"x\"));LOG^ADD(Y^CHECK(TRUE));",
         "TRUEFALSEY+TRUE"},
        {"one without handlers", "", "LOG^ADD(MUTE^CHECK());", "TRUE"},
        {"both hold", both("AND", "Y", "MUTE"), "LOG^ADD(C^CHECK());", "Y+C+TRUE"},
        {"the first of both fails", both("AND", "N", "Y"), "LOG^ADD(C^CHECK());", "N-C-FALSE"},
        {"the second of both fails", both("AND", "Y", "N"), "LOG^ADD(C^CHECK());", "Y+N-C-FALSE"},
        {"the first of either holds", both("OR", "Y", "N"), "LOG^ADD(C^CHECK());", "Y+C+TRUE"},
        {"the second of either holds", both("OR", "N", "Y"), "LOG^ADD(C^CHECK());", "N-Y+C+TRUE"},
        {"the inner ones always tell", both("OR", "N", "Y"), "LOG^ADD(C^CHECK(FALSE));", "N-Y+TRUE"},
        {"one is missing", both("OR", "Y", "NOBODY"), "LOG^ADD(C^CHECK());", "FALSE"},
        {"one is no condition", both("OR", "Y", "LOG"), "LOG^ADD(C^CHECK());", "FALSE"},
        {"an unknown word", both("XOR", "Y", "N"), "LOG^ADD(C^CHECK());", "C-FALSE"},
        {"of complex ones",
         both("AND", "C2", "Y") + lines("C2", "COMPLEXCONDITION", "OPERATOR=OR\nCONDITION1=N\nCONDITION2=Y\n"),
         "LOG^ADD(C^CHECK());", "N-Y+Y+C+TRUE"},
        {"as the guard of a block", lines("B", "BEHAVIOUR", "CODE={LOG^ADD(\"b\");}\nCONDITION=N\n"),
         "B^RUNC();B^RUN();S^RUN(\"B\",\"RUNC\");", "N-bN-"},
        {"a guard that stands behind",
         lines("B", "BEHAVIOUR", "CODE={LOG^ADD(\"b\");}\nCONDITION=LATE\n") +
             lines("LATE", "CONDITION", "OPERAND1=1\nOPERAND2=2\n"),
         "B^RUNC();LOG^ADD(\"|\");", "|"},
        {"a guard that is missing guards nothing",
         lines("B", "BEHAVIOUR", "CODE={LOG^ADD(\"b\");}\nCONDITION=NOBODY\n"), "B^RUNC();", "b"},
        {"a guard that is removed", lines("B", "BEHAVIOUR", "CODE={LOG^ADD(\"b\");}\nCONDITION=N\n"),
         "S^REMOVE(\"N\");B^RUNC();", "b"},
    };
    expectLogs(rows, scene);
}
