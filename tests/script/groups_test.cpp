// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Groups, random numbers, timers and the clock of the script.
#include "script/log_rows.h"

TEST(Groups, MembersMayVanishWhileAMethodGoesRound) {
    const std::string scene = lines("G", "GROUP") + lines("V1", "INTEGER", "ONCHANGED=FIRST\n") +
                              lines("V2", "INTEGER", "ONCHANGED={LOG^ADD(\"2\");}\n") +
                              lines("V3", "INTEGER", "ONCHANGED={LOG^ADD(\"3\");}\n");
    const std::string run = "G^ADD(\"V1\",\"V2\",\"GHOST\",\"V3\",\"V2\");G^INC();LOG^ADD(\".\");LOG^ADD(G^GETSIZE());";
    const LogRow rows[] = {
        {"all in their order", scene + code("FIRST", "LOG^ADD(\"1\");"), run, "123.3"},
        {"the next one goes", scene + code("FIRST", "S^REMOVE(\"V2\");"), run, "3.2"},
        {"itself goes", scene + code("FIRST", "S^REMOVE(\"V1\");"), run, "23.2"},
        {"the group is emptied", scene + code("FIRST", "G^REMOVEALL();"), run, "23.0"},
        {"the group itself goes", scene + code("FIRST", "S^REMOVE(\"G\");"), "G^ADD(\"V1\",\"V3\");G^INC();", "3"},
        {"a new member waits", scene + code("FIRST", "G^ADD(\"V4\");") + lines("V4", "STRING", "ONCHANGED=FIRST\n"),
         run, "23.4"},
        {"a block that is a member ends itself",
         scene + code("FIRST", "LOG^ADD(\"1\");S^REMOVE(\"BLOCK\");") + code("BLOCK", "LOG^ADD(\"b\");V1^INC();"),
         "G^ADD(\"BLOCK\",\"V3\",\"BLOCK\");G^RUN();LOG^ADD(G^GETSIZE());", "b11"},
    };
    expectLogs(rows);
}

TEST(Groups, MarkerAndClones) {
    const LogRow rows[] = {
        {"round both ends", "", "LOG^ADD(G^NEXT());LOG^ADD(G^PREV());LOG^ADD(G^NEXT(-2147483648));", "ABB"},
        {"an empty group has nobody", "",
         "G^REMOVEALL();LOG^ADD(G^NEXT());LOG^ADD(G^PREV());LOG^ADD(G^GETMARKERPOS());", "-1"},
        {"who has gone is counted no more", "",
         "G^SETMARKERPOS(9);S^REMOVE(\"A\");LOG^ADD(G^NEXT());LOG^ADD(G^GETNAME(1));", "B"},
        {"clones twice over, and only those there are", "",
         "A^CLONE(2);G^ADDCLONES(\"A\");G^ADDCLONES(\"A\",2,2147483647);G^ADDCLONES(\"GHOST\",1,1);LOG^ADD(G^GETSIZE())"
         ";"
         "G^REMOVE(\"A_2\");LOG^ADD(G^GETNAME(3));",
         "5A_2"},
        {"its own clone keeps the members", "",
         "G^CLONE(2);G^REMOVEALL();LOG^ADD(G_2^GETSIZE());LOG^ADD(G_2^GETCLONEINDEX());", "22"},
    };
    expectLogs(
        rows, lines("A", "INTEGER") + lines("B", "INTEGER") + lines("G", "GROUP", "ONINIT={THIS^ADD(\"A\",\"B\");}\n"));
}

TEST(Random, DrawingManyEndsAndIsSafe) {
    const LogRow rows[] = {
        {"more different ones than there are", lines("A", "ARRAY"),
         "RANDOM^GETPLENTY(\"A\",5,7,3,TRUE);LOG^SET(A^GETSIZE());LOG^ADD(A^MIN());LOG^ADD(A^MAX());", "579"},
        {"a count of none is the span less the base", lines("A", "ARRAY"),
         "RANDOM^GETPLENTY(\"A\",0,3,5,FALSE);LOG^SET(A^GETSIZE());", "2"},
        {"counts below none and without bounds", lines("A", "ARRAY"),
         "RANDOM^GETPLENTY(\"A\",-4,0,9,FALSE);LOG^SET(A^GETSIZE());RANDOM^GETPLENTY(\"A\",2147483647,1,1,TRUE);"
         "LOG^ADD(A^GETSUMVALUE());",
         "01000"},
        {"a span of nothing", lines("A", "ARRAY"),
         "RANDOM^GETPLENTY(\"A\",2,6,0,TRUE);LOG^SET(A^GETSUMVALUE());LOG^ADD(RANDOM^GET(0));LOG^ADD(RANDOM^GET(5,0));",
         "1205"},
        {"no such array, no parameters", "",
         "RANDOM^GETPLENTY(\"GHOST\",1,1,1,TRUE);RANDOM^GETPLENTY();LOG^SET(\"on\");", "on"},
        {"a handler that draws, too",
         lines("A", "ARRAY", "SENDONCHANGE=TRUE\nONCHANGED={RANDOM^GETPLENTY(\"B\",3,100,1,FALSE);}\n") +
             lines("B", "ARRAY"),
         "RANDOM^GETPLENTY(\"A\",3,5,1,FALSE);LOG^SET(A^GETSUMVALUE());", "15"},
        {"a handler that takes the array away",
         lines("A", "ARRAY", "SENDONCHANGE=TRUE\nONCHANGED={LOG^ADD(\"x\");S^REMOVE(\"A\");}\n"),
         "RANDOM^GETPLENTY(\"A\",3,5,1,FALSE);", "x"},
    };
    expectLogs(rows);
}

TEST(Timers, CountsAtTheirEnd) {
    const LogRow rows[] = {
        {"the count comes round", lines("T", "TIMER", "ELAPSE=10\nONTICK={LOG^SET(T^GETTICKS());}\n"),
         "T^SET(2147483647);", "-2147483648", 1},
        {"a pause stops all, going on puts back what was left",
         lines("T", "TIMER", "ELAPSE=30\nONTICK={LOG^ADD(\"t\");}\n") +
             lines("U", "TIMER", "ELAPSE=30\nONTICK={LOG^ADD(\"u\");}\n"),
         "T^PAUSE();@RUNONTIMER(20,1,{T^RESUME();},\"\");", "tu", 5},
    };
    expectLogs(rows);
}

TEST(System, DatesOfTheClock) {
    const struct {
        std::int64_t seconds;
        const char* text;
    } rows[] = {
        {1'053'162'307, "30518|18/Maj/2003|18|7|Sobota|5|2003|9:5|5|7"},
        {946'684'799, "-8768|32/Grudzien/1999|32|6|Piatek|12|1999|23:59|59|59"},
        {951'782'400, "230|30/Luty/2000|30|3|Wtorek|2|2000|0:0|0|0"},
        {4'102'444'800, "1000102|2/Styczen/2100|2|6|Piatek|1|2100|0:0|0|0"},
        {-1, "-299898|2/Styczen/1970|2|5|Czwartek|1|1970|0:0|0|0"},
    };
    const char* const methods[] = {"DATE",  "DATESTRING", "DAY",        "DAYOFWEEK", "DAYOFWEEKSTRING",
                                   "MONTH", "YEAR",       "TIMESTRING", "MINUTES",   "SECONDS"};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.seconds);
        headless::Options options;
        options.utcSeconds = row.seconds;
        Stage stage(lines("LOG", "STRING"), options);
        std::string run;
        for (const char* method : methods)
            run += std::string(run.empty() ? "" : "LOG^ADD(\"|\");") + "LOG^ADD(SYSTEM^GET" + method + "());";
        stage.run(run + "LOG^ADD(SYSTEM^GETNAME());SYSTEM^CLONE();");
        EXPECT_EQ(stage.value("LOG"), row.text);
    }
}
