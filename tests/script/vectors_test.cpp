// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Vectors, paths and queues.
#include "script/log_rows.h"
#include "script/variable_factory.h"

TEST(Vectors, SizesThatDiffer) {
    const struct {
        const char* what;
        const char* run;
        const char* vector;  // V, at first 1, 2, 3
    } rows[] = {
        {"read with too few numbers", "V^SET(SHORT);", "7.00,0.00,3.00"},
        {"read with too many", "V^SET(LONG);", "1.00,2.00,3.00"},
        {"a size of less than nothing", "V^ADD(LESS);V^SET(LESS);", "1.00,2.00,3.00"},
        {"added twice, each as it comes", "V^ADD(V,V);", "4.00,8.00,12.00"},
        {"another size is left out", "V^ADD(V,PAIR,V);V^SUB(PAIR);V^ADD(GHOST);V^ADD(5);V^ADD();", "4.00,8.00,12.00"},
        {"zeros in front", "V^EXPAND(5);", "0.00,0.00,1.00,2.00,3.00"},
        {"never shorter, nor absurdly long", "V^EXPAND(2);V^EXPAND(-1);V^EXPAND(2147483647);", "1.00,2.00,3.00"},
        {"as many as both have", "V^SET(PAIR);", "3.00,4.00,3.00"},
        {"the longer one gives", "PAIR^SET(V);V^SET(PAIR);", "1.00,2.00,3.00"},
        {"a number fills", "V^SET(2.5);", "2.50,2.50,2.50"},
        {"a formula, too", "V^SET([1+1]);", "2.00,2.00,2.00"},
        {"a text that names nothing doesn't", "V^SET(\"5\");V^SET();", "1.00,2.00,3.00"},
        {"one element", "V^SET(2,9);V^SET(3,9);V^SET(-1,9);", "1.00,2.00,9.00"},
        {"from the front, the rest stays", "V^ASSIGN(7,-8);", "7.00,-8.00,3.00"},
        {"more than there are", "V^ASSIGN(6,5,4,3);", "6.00,5.00,4.00"},
        {"mirrored into a shorter one", "PAIR^REFLECT(AXIS,V);", "-3.00,4.00,0.00"},
        {"mirrored onto itself", "PAIR^REFLECT(AXIS,PAIR);V^SET(PAIR);", "-3.00,4.00,3.00"},
        {"mirrored onto the axis", "PAIR^REFLECT(AXIS,AXIS);V^SET(AXIS);", "-3.00,4.00,3.00"},
        {"about an axis of another size", "V^REFLECT(PAIR,V);V^REFLECT(PAIR);", "-1.00,-2.00,-3.00"},
        {"products", "V^ASSIGN(V^SMUL(V),V^SMUL(PAIR),PAIR^LEN());V^VMUL(V,V);", "14.00,0.00,5.00"},
        {"outside", "V^ASSIGN(V^GET(3),V^GET(-1),V^GET(2));", "0.00,0.00,3.00"},
        {"a clone of its own", "V^CLONE();V^NEG();V_1^MUL(2);V^ADD(V_1);", "1.00,2.00,3.00"},
    };
    const std::string scene =
        lines("V", "VECTOR", "SIZE=3\nVALUE=1,2,3\n") + lines("PAIR", "VECTOR", "SIZE=2\nVALUE=3,4\n") +
        lines("AXIS", "VECTOR", "SIZE=2\nVALUE=0,1\n") + lines("SHORT", "VECTOR", "SIZE=2\nVALUE=7\n") +
        lines("LONG", "VECTOR", "SIZE=1\nVALUE=1,2,3\n") + lines("LESS", "VECTOR", "SIZE=-3\nVALUE=9\n");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Stage stage(scene);
        stage.run(row.run);
        EXPECT_EQ(stage.value("V"), row.vector);
    }
}

TEST(Paths, NodesThatAreNotThere) {
    const LogRow rows[] = {
        {"a name that nobody bears keeps a place", lines("P", "PATH", "NODES=A,GHOST,LATER\n") + lines("LATER", "PATH"),
         "P^ADD(\"GHOST\");P^ADD(\"B\");LOG^ADD(P^GETSIZE());LOG^ADD(P^GETNODE(1));LOG^ADD(P^GETNODE(4));", "5B"},
        {"a node that goes leaves its place", lines("P", "PATH", "NODES=A,B\n"),
         "S^REMOVE(\"A\");LOG^ADD(P^GETSIZE());LOG^ADD(P^GETNODE(0));LOG^ADD(P^GETNODE(1));", "2B"},
        {"beyond its ends", lines("P", "PATH", "NODES=A\n"),
         "LOG^ADD(P^GETNODE(-1));LOG^ADD(P^GETNODE(1));LOG^ADD(P^GETNODE(2147483647));", ""},
        {"one property", lines("P", "PATH"),
         "P^SETPROPERTY(\"DENSITY\",\"0.5\");P^SETPROPERTY(\"density\",9);LOG^ADD(P^GETPROPERTY(\"DENSITY\"));"
         "LOG^ADD(P^GETPROPERTY(\"SPEED\"));",
         "0.50"},
    };
    expectLogs(rows, lines("A", "STRING", "VALUE=a\n") + lines("B", "STRING", "VALUE=b\n"));

    Stage stage(lines("A", "STRING", "VALUE=a\n") + lines("P", "PATH", "NODES=A,GHOST\n") +
                lines("Q", "PATH", "NODES=P,P\n"));
    stage.run("P^ADD(\"Q\");P^ADD(\"P\");P^ADD(\"A\");");
    EXPECT_EQ(stage.value("P"), "[a][][[][]][][a]");
    std::string growing;
    for (int i = 0; i < 64; ++i)
        growing += lines("N" + std::to_string(i + 1), "PATH", "NODES=N" + std::to_string(i) + ",N" + std::to_string(i));
    Stage deep(lines("N0", "STRING", "VALUE=a\n") + growing);
    EXPECT_LT(deep.value("N64").size(), 200'000U);
}

TEST(Queues, WhatHandlersDoToThem) {
    const LogRow rows[] = {
        {"filled when it is empty, once for each wish", lines("Q", "FIFO", "ONEMPTY={LOG^ADD(\"e\");Q^PUSH(1,2);}\n"),
         "LOG^ADD(Q^POP());LOG^ADD(Q^POP());LOG^ADD(Q^POP());", "e12e1"},
        {"no element, no value", lines("Q", "LIFO", "ONEMPTY={LOG^ADD(\"e\");}\n"),
         "LOG^ADD(Q^POP());LOG^ADD(Q^ISEMPTY());", "eTRUE"},
        {"a handler that pops", lines("Q", "FIFO", "ONEMPTY={LOG^ADD(\"e\");Q^PUSH(1,2);LOG^ADD(Q^POP());}\n"),
         "LOG^ADD(Q^POP());", "e12"},
        {"a handler that wants the same", lines("Q", "FIFO", "ONEMPTY={Q^POP();}\n"), "Q^POP();LOG^ADD(\"on\");", "on"},
        {"a handler that takes it away", lines("Q", "LIFO", "ONEMPTY={Q^PUSH(1);S^REMOVE(\"Q\");Q^PUSH(2);}\n"),
         "LOG^ADD(Q^POP());LOG^ADD(\"on\");", "on"},
        {"values are copies", lines("Q", "LIFO") + lines("N", "INTEGER", "VALUE=1\n"),
         "Q^PUSH(N,[N+1],TRUE,\"t\");N^SET(5);LOG^ADD(Q^POP());LOG^ADD(Q^POP());LOG^ADD(Q^POP());LOG^ADD(Q^POP());",
         "tTRUE21"},
    };
    expectLogs(rows);
}

TEST(Queues, MoreThanThePoolHas) {
    Stage stage(lines("LOG", "STRING") + lines("F", "FIFO") + lines("L", "LIFO") + lines("N", "INTEGER"));
    const int before = CMC_VariableFactory::takenCount();
    stage.run("@LOOP({F^PUSH(_I_);L^PUSH(_I_);},0,5000,1);");
    EXPECT_EQ(CMC_VariableFactory::takenCount(), before + 10'000);
    stage.run(
        "@LOOP({N^SET([F^POP()-_I_]);@IF(N,!_,0,{LOG^ADD(\"f\");});N^SET([L^POP()+_I_]);"
        "@IF(N,!_,4999,{LOG^ADD(\"l\");});},0,4000,1);");
    EXPECT_EQ(stage.value("LOG"), "");
    EXPECT_EQ(CMC_VariableFactory::takenCount(), before + 2'000);
    stage.run("S^REMOVE(\"F\");");
    EXPECT_EQ(CMC_VariableFactory::takenCount(), before + 1'000);
}
