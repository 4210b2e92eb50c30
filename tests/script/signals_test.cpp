// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/log_rows.h"

TEST(Signals, AHandlerIsPickedByTheWholeKey) {
    const std::string scene = code("H", "LOG^ADD(THIS^GETNAME());LOG^ADD(\"<$1$2>\");");
    const LogRow rows[] = {
        {"the qualified key alone", lines("V", "INTEGER", "ONSIGNAL=H(plain)\nONSIGNAL^GO= H ( a, b ) \n"),
         "V^SEND(\"GO\");V^SEND(\"NO\");V^SEND(\"go\");V^SEND(\"\");", "V<ab>"},
        {"a key as it stands", lines("V", "INTEGER", "ONSIGNAL=H(p)\nONSIGNAL^GO=H(q)\n"),
         "V^SEND(\"@ONSIGNAL\");V^ADDBEHAVIOUR(\"@ONSIGNAL\",\"H\",1);V^SEND(\"@ONSIGNAL\");", "V<1$2>"},
        {"an unknown behaviour", lines("V", "INTEGER", "ONCHANGED^5=NOSUCH\nONCHANGED=H(c)\n"), "V^SET(5);", "V<c$2>"},
        {"a name that is no behaviour", lines("V", "INTEGER", "ONCHANGED=W\n") + lines("W", "INTEGER"), "V^SET(5);",
         ""},
        {"names are taken at construction, behaviours first",
         lines("V", "INTEGER", "ONCHANGED=LATER(x)\n") + code("LATER", "LOG^ADD(\"$1\");"), "V^SET(5);", "x"},
        {"but in file order among themselves",
         lines("B1", "BEHAVIOUR", "CODE={}\nONSIGNAL^GO=B2\n") +
             lines("B2", "BEHAVIOUR", "CODE={LOG^ADD(\"2\");}\nONSIGNAL^GO=B1\n"),
         "B1^SEND(\"GO\");B2^SEND(\"GO\");", ""},
        {"the first closing parenthesis ends the parameters", lines("V", "INTEGER", "ONCHANGED=H(a) b)\n"), "V^SET(5);",
         "V<a$2>"},
        {"no closing parenthesis", lines("V", "INTEGER", "ONCHANGED=H(a,b\n"), "V^SET(5);", "V<ab>"},
        {"inline code", lines("V", "INTEGER", "ONCHANGED= {LOG^ADD(\"a b\");LOG^ADD(THIS^GETNAME());} \n"), "V^SET(5);",
         "abV"},
        {"code after other names", lines("V", "INTEGER", "CHANGED={LOG^ADD(\"x\");}\nVALUE=1\n"), "V^SET(5);", ""},
        {"a guarded handler",
         lines("NEVER", "CONDITION", "OPERAND1=1\nOPERAND2=2\n") +
             lines("G", "BEHAVIOUR", "CODE={LOG^ADD(\"g\");}\nCONDITION=NEVER\n") +
             lines("V", "INTEGER", "ONCHANGED^5=G\nONCHANGED=H(c)\n"),
         "V^SET(5);V^SET(6);", "V<c$2>"},
    };
    expectLogs(rows, scene);
}

TEST(Signals, HandlersThatScriptAdds) {
    const std::string scene =
        code("ANY", "LOG^ADD(\"$1.\");") + code("FIVE", "LOG^ADD(\"5.\");") + lines("A", "INTEGER");
    const LogRow rows[] = {
        {"dollar stands for the caret", "",
         "A^ADDBEHAVIOUR(\"ONCHANGED$5\",\"FIVE\");A^ADDBEHAVIOUR(\"ONCHANGED\",\"ANY\",\"k\");"
         "A^SET(4);A^SET(5);A^SET(5);A^SET(6);",
         "k.5.k."},
        {"the plain one takes over", "",
         "A^ADDBEHAVIOUR(\"ONCHANGED$5\",\"FIVE\");A^ADDBEHAVIOUR(\"ONCHANGED\",\"ANY\",\"k\");"
         "A^REMOVEBEHAVIOUR(\"ONCHANGED$5\");A^SET(5);A^REMOVEBEHAVIOUR(\"ONCHANGED\");A^SET(6);",
         "k."},
        {"a new one replaces", "",
         "A^ADDBEHAVIOUR(\"ONCHANGED\",\"ANY\",\"k\");A^ADDBEHAVIOUR(\"ONCHANGED\",\"FIVE\");A^SET(1);", "5."},
        {"an unknown one replaces nothing", "",
         "A^ADDBEHAVIOUR(\"ONCHANGED\",\"ANY\",\"k\");"
         "A^ADDBEHAVIOUR(\"ONCHANGED\",\"NOSUCH\");A^ADDBEHAVIOUR(\"ONCHANGED\");A^SET(1);",
         "k."},
        {"a key outside of the list", "", "A^ADDBEHAVIOUR(\"ONWHATEVER$X\",\"FIVE\");A^SEND(\"@ONWHATEVER\");A^SET(1);",
         ""},
        {"the name itself is compared, not its beginning", "", "A^ADDBEHAVIOUR(\"ONCHANGEDX\",\"FIVE\");A^SET(1);", ""},
    };
    expectLogs(rows, scene);
}

TEST(Signals, ClonesInheritAllButTheFirst) {
    const std::string scene = lines("A", "INTEGER",
                                    "VALUE=7\nONINIT={LOG^ADD(\"i.\");}\nONCHANGED^5={LOG^ADD(\"five.\");}\n"
                                    "ONCHANGED={LOG^ADD(THIS^GETNAME());LOG^ADD(\".\");}\n");
    const LogRow rows[] = {
        {"values and handlers", "", "A^CLONE(2);A_1^SET(8);A_2^SET(7);A_2^SET(5);LOG^ADD(A);", "i.A_1.five.7"},
        {"no init", lines("B", "INTEGER", "ONINIT={LOG^ADD(\"b.\");}\n"), "B^CLONE();B_1^SEND(\"@ONINIT\");", "i.b."},
        {"the value of the moment", "", "A^SET(9);A^CLONE();LOG^ADD(A_1);", "i.A.9"},
        {"of a clone", "", "A^CLONE();A_1^CLONE(2);LOG^ADD(A_1_2^GETNAME());LOG^ADD(A_1_2^GETCLONEINDEX());",
         "i.A_1_22"},
        {"a handler of its own", code("H", "LOG^ADD(\"h.\");"),
         "A^CLONE();A_1^ADDBEHAVIOUR(\"ONCHANGED\",\"H\");A_1^SET(1);A^SET(1);", "i.h.A."},
        {"names go on", "", "A^CLONE();S^REMOVE(\"A_1\");A^CLONE();LOG^ADD(A_1);LOG^ADD(A_2);", "i.A_17"},
        {"names start anew", "", "A^CLONE();A_1^SET(1);A^RESETCLONES();A^CLONE();LOG^ADD(A_1);", "i.A_1.7"},
        {"a number that isn't one", "", "A^CLONE(0);A^CLONE(-1);A^CLONE(\"x\");LOG^ADD(A_1);", "i.A_1"},
        {"what has no clones", code("B", ""), "B^CLONE();LOG^ADD(B_1);LOG^ADD(B^GETCLONEINDEX());", "i.B_10"},
        {"run by range", code("B", "LOG^ADD(\"$1$2.\");"),
         "A^CLONE(3);S^RUNCLONES(\"A\",0,0,\"B\",\"x\");S^RUNCLONES(\"A\",2,2,\"B\");"
         "S^RUNCLONES(\"A\",3,9,\"{LOG^ADD($1);}\");",
         "i.A_1x.A_2x.A_3x.A_2$2.7A_4A_5A_6A_7A_8A_9"},
        {"removed by range", "", "A^CLONE(3);S^REMOVECLONES(\"A\",2,-1);LOG^ADD(A_1);LOG^ADD(A_2);LOG^ADD(A_3);",
         "i.7A_2A_3"},
    };
    expectLogs(rows, scene);
}

TEST(Signals, GroupsAndTheirMembers) {
    const std::string scene =
        lines("A", "INTEGER", "VALUE=1\n") + lines("B", "INTEGER", "VALUE=2\n") + lines("G", "GROUP");
    const LogRow rows[] = {
        {"all members do it", "",
         "A^ADDTOGROUP(\"G\");G^ADD(\"B\",\"A\",\"NOBODY\");G^MUL(5);LOG^ADD(A);LOG^ADD(B);LOG^ADD(G^GETSIZE());",
         "5102"},
        {"its own methods first", "",
         "G^ADD(\"A\");G^ADD(\"B\");G^REMOVE(\"A\");G^INC();LOG^ADD(A);LOG^ADD(B);LOG^ADD(G^GETNAME(0));", "13B"},
        {"what no member knows", "", "G^ADD(\"A\");G^NOSUCH();LOG^ADD(A);LOG^ADD(G^GETNAME(1));LOG^ADD(G^GETNAME(-1));",
         "1"},
        {"members of other types", lines("W", "STRING", "VALUE=w\n") + code("X", "LOG^ADD(\"x\");"),
         "G^ADD(\"W\",\"X\",\"A\");G^RUN();G^SET(3);LOG^ADD(W);LOG^ADD(A);", "x33"},
    };
    expectLogs(rows, scene);
}
