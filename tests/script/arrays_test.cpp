// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <random>

#include "script/array.h"
#include "script/bool.h"
#include "script/double.h"
#include "script/integer.h"
#include "script/string.h"
#include "script/variable_factory.h"
#include "support/stage.h"

namespace {

// What a scene with an array A tells in LOG, and what A holds at the end.
struct ArrayRow {
    const char* what;
    std::string array;  // properties of A; its changes are told only once it is filled
    std::string run;
    std::string log;
    std::string content;
    std::string scene = "";
};

void expectArrays(std::span<const ArrayRow> rows, const std::string& filled) {
    for (const ArrayRow& row : rows) {
        SCOPED_TRACE(row.what);
        Stage stage(lines("LOG", "STRING") + row.scene + lines("A", "ARRAY", row.array));
        stage.run("A^ADD(" + filled + ");A^SENDONCHANGE();" + row.run);
        EXPECT_EQ(stage.value("LOG"), row.log);
        EXPECT_EQ(stage.value("A"), row.content);
    }
}

const std::string kNumbered =
    "ONCHANGED={LOG^ADD(\"x\");}\nONCHANGED^0={LOG^ADD(\"0\");}\nONCHANGED^1={LOG^ADD(\"1\");}\n"
    "ONCHANGED^2={LOG^ADD(\"2\");}\nONCHANGED^3={LOG^ADD(\"3\");}\n";

}  // namespace

TEST(Arrays, WhatIsToldAndWhatIsNot) {
    const std::string other = lines("B", "ARRAY") + code("FILL", "B^ADD(10,\"20\");");
    const ArrayRow rows[] = {
        {"each new element", kNumbered, "A^ADD(4,5);", "3x", "1,2,3,4,5"},
        {"inserted at the end", kNumbered, "A^INSERTAT(3,9);", "3", "1,2,3,9"},
        {"swapped, in the order asked", kNumbered, "A^SWAP(2,0);", "20", "3,2,1"},
        {"rotated, from 0 up", kNumbered, "A^ROTATERIGHT();", "012", "3,1,2"},
        {"shifted, the zero comes in front", kNumbered, "A^SHIFTRIGHT();", "012", "0,1,2"},
        {"clones' names, at most ten thousand", kNumbered, "A^ADDCLONES(\"LOG\",7,7);A^ADDCLONES(\"LOG\",2,1);", "3",
         "1,2,3,LOG_7"},
        {"a formula adds, too", kNumbered, "[1+1]^ADDTOARRAY(\"A\");LOG^ADDTOARRAY(\"A\");", "3", "1,2,3,"},
        {"read, sorted, searched and held between", kNumbered,
         "A^SORT(FALSE);A^CLAMPAT(0,9,10);A^REMOVE(\"2x\");A^REMOVEAT(1);A^GET(0);A^NEXT();", "", "9"},
        {"from the configuration: texts, without empty ones", kNumbered,
         "A^SENDONCHANGE(FALSE);A^ADD(\"\",T,2.5);A^SENDONCHANGE();A^SAVEINI();A^LOADINI();A^ADDAT(0,1);", "0",
         "11,2,3,a,b,2.50", lines("T", "STRING", "VALUE=a,b\n")},
        {"what is written is read again, the index in front unheard", kNumbered,
         "A^ADD(\"t\",FALSE);A^SAVE(\"x.arr\");A^REMOVEALL();A^LOAD(\"x.arr\");", "3x", "1,2,3,t,FALSE"},
        {"outside nothing happens", kNumbered,
         "A^INSERTAT(4,0);A^INSERTAT(-1,0);A^CHANGEAT(3,0);A^CHANGEAT(-1,0);A^REMOVEAT(3);A^REMOVEAT(-1);A^SWAP(0,3);"
         "A^SWAP(-1,0);A^ADDAT(3,1);A^MODAT(-2147483648,1);A^CLAMPAT(2147483647,0,0);LOG^ADD(A^GET(3));"
         "LOG^ADD(A^GET(-1));",
         "NULLNULL", "1,2,3"},
        {"by nothing comes nothing", kNumbered, "A^DIV(0);A^ADDAT(1,-2147483648);A^DIVAT(1,-1);A^MODAT(1,-1);",
         "012111", "0,0,0"},
        {"with the elements of an array, where it has some", kNumbered, "FILL^RUN();A^SUMA(\"B\");", "01", "11,22,3",
         other},
        {"from there on", kNumbered, "FILL^RUN();A^MULA(\"B\",1);", "1", "1,40,3", other},
        {"up to and with that one", kNumbered, "FILL^RUN();A^SUBA(\"B\",0,0);", "0", "-9,2,3", other},
        {"-1 is the first and the last", kNumbered, "FILL^RUN();B^ADD(0);A^DIVA(\"B\",-1,-1);", "012", "0,0,0", other},
        {"a range beyond both ends, and an empty one", kNumbered, "A^SUMA(\"A\",-9,99);A^SUMA(\"A\",2,1);", "012",
         "2,4,6"},
        {"with no array", kNumbered, "A^SUMA(\"GHOST\");A^SUMA(\"LOG\");A^SUMA();", "", "1,2,3"},
    };
    expectArrays(rows, "1,2,3");
}

TEST(Arrays, HandlersMayDoAnything) {
    const std::string quiet = "A^SENDONCHANGE(FALSE);", loud = "A^SENDONCHANGE();";
    const ArrayRow rows[] = {
        {"empty it", "ONCHANGED={LOG^ADD(\"x\");A^REMOVEALL();}\n", "A^SUM(1);A^ADD(7,8);A^ROTATELEFT();", "xxx", ""},
        {"take a later element", "ONCHANGED={LOG^ADD(\"x\");}\nONCHANGED^0={LOG^ADD(\"0\");A^REMOVEAT(1);}\n",
         "A^SUM(10);", "0x", "11,13"},
        {"put more behind", "ONCHANGED={LOG^ADD(\"x\");" + quiet + "A^ADD(0);" + loud + "}\n",
         "A^SUM(1);A^SHIFTLEFT();", "xxxxxxxxx", "3,4,0,0,0,0,0,0,0,0,0,0"},
        {"take the array away", "ONCHANGED={LOG^ADD(\"x\");S^REMOVE(\"A\");}\n", "A^MUL(2);A^ADD(1,2);", "x", "(none)"},
        {"take it away between two", "ONCHANGED={LOG^ADD(\"x\");S^REMOVE(\"A\");}\n", "A^SWAP(0,1);", "x", "(none)"},
        {"have the formula of the operand computed anew", "ONCHANGED^0=AGAIN\n", "ONCE^RUN();", "", "2,3,4",
         lines("W", "ARRAY") + code("SET", "W^ADD(1);") + code("ONCE", "SET^RUN();BODY^RUN();") +
             code("BODY", "A^SUM([W^GET(0)]);") + code("AGAIN", quiet + "W^CHANGEAT(0,\"text\");BODY^RUN();")},
        {"start over", "ONCHANGED={N^SET(A^GETSIZE());@IF(N,<,30,{A^ADD(1);},\"\");}\n",
         "A^SUM(1);LOG^SET(A^GETSIZE());", "30", "2,3,4,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1",
         lines("N", "INTEGER")},
    };
    expectArrays(rows, "1,2,3");
}

TEST(Arrays, ChangesThatCallEachOtherEnd) {
    std::string filled = "A^ADD(0";
    for (int i = 1; i < 200; ++i)
        filled += ",0";
    for (const char* handler : {"A^SUM(1);", "A^ADD(1);A^ADD(2);", "B^SUM(1);"}) {
        SCOPED_TRACE(handler);
        Stage stage(lines("LOG", "STRING") + lines("A", "ARRAY", std::string("ONCHANGED={") + handler + "}\n") +
                    lines("B", "ARRAY", "SENDONCHANGE=TRUE\nONCHANGED={A^ROTATELEFT();}\n"));
        stage.run(filled + ");B^ADD(1,2,3);A^SENDONCHANGE();A^SUM(1);LOG^SET(\"on\");");
        EXPECT_EQ(stage.value("LOG"), "on");
        EXPECT_FALSE(stage.debugLines().empty());
        EXPECT_EQ(CMC_VariableFactory::takenCount(), 0);
    }
}

TEST(Arrays, TheMarkerStaysInside) {
    const struct {
        const char* run;
        const char* log;
    } rows[] = {
        {"LOG^ADD(A^PREV());LOG^ADD(A^PREV());LOG^ADD(A^PREV());", "bac"},
        {"LOG^ADD(A^NEXT(2147483647));LOG^ADD(A^PREV(-2147483648));", "ac"},
        {"LOG^ADD(A^NEXT(-5));LOG^ADD(A^GETMARKERPOS());", "a0"},
        {"A^SETMARKERPOS(2);A^REMOVEAT(0);LOG^ADD(A^PREV(0));", "b"},
        {"A^REMOVEALL();LOG^ADD(A^NEXT());LOG^ADD(A^PREV());A^SETMARKERPOS(0);LOG^ADD(A^GETMARKERPOS());", "-1"},
        {"A^CLONE();LOG^ADD(A_1^NEXT());A_1^CHANGEAT(0,\"z\");LOG^ADD(A^NEXT());", "aa"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.run);
        Stage stage(lines("LOG", "STRING") + lines("A", "ARRAY"));
        stage.run(std::string("A^ADD(\"a\",\"b\",\"c\");") + row.run);
        EXPECT_EQ(stage.value("LOG"), row.log);
    }
}

// The container that keeps itself in order is the measure, also for values that have no order.
TEST(Arrays, SortAsTheSortedContainerDoes) {
    std::mt19937 random(1);
    const auto draw = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    for (int round = 0; round < 400; ++round) {
        CMC_Array array(nullptr, "A");
        const int types = 1 + draw(15);
        for (int i = draw(20); i > 0; --i) {
            const int number = draw(12) - 6, type = draw(4);
            CMC_Integer integer(number);
            CMC_String text("", CXString(number % 2 ? "b" : "") + CXString::toString(number));
            CMC_Bool truth("");
            truth.assign(number > 0);
            CMC_Double real("");
            real.assign(number == 5 ? std::numeric_limits<double>::quiet_NaN() : number / 4.0);
            CMC_Variable* values[] = {&integer, &text, &truth, &real};
            if (types >> type & 1) array.add(values[type]);
        }
        CSortedVector expected(101);
        std::vector<std::unique_ptr<CXObject>> copies;
        for (int i = 0; i < array.getSize(); ++i)
            expected.add(copies.emplace_back(array.get(i)->clone()).get());
        const bool ascending = round % 2 == 0;
        array.sort(ascending);
        for (int i = 0; i < array.getSize(); ++i) {
            auto* value = static_cast<CMC_Variable*>(expected.at(ascending ? i : array.getSize() - 1 - i));
            ASSERT_EQ(array.get(i)->getType(), value->getType()) << "round " << round << ", element " << i;
            ASSERT_EQ(array.get(i)->asString(), value->asString()) << "round " << round << ", element " << i;
        }
    }
}

TEST(Arrays, BrokenFilesGiveWhatStandsBeforeTheBreak) {
    using namespace std::string_literals;
    const std::string whole = "\3\0\0\0"s + "\1\0\0\0\x39\x30\0\0"s + "\2\0\0\0\3\0\0\0one"s + "\3\0\0\0\1\0\0\0"s;
    const struct {
        const char* what;
        std::string bytes;
        const char* content;
    } rows[] = {
        {"whole", whole, "12345,one,TRUE"},
        {"nothing", "", ""},
        {"cut within the last value", whole.substr(0, whole.size() - 1), "12345,one"},
        {"cut within the text", whole.substr(0, 22), "12345"},
        {"more promised than there is", "\xFF\xFF\xFF\x7F"s + whole.substr(4), "12345,one,TRUE"},
        {"fewer than none", "\xFF\xFF\xFF\xFF"s + whole.substr(4), ""},
        {"a type that is none", "\2\0\0\0"s + whole.substr(4, 8) + "\7\0\0\0\1\0\0\0"s, "12345"},
        {"a formula is no stored value", "\1\0\0\0\x0C\0\0\0"s, ""},
        {"a text longer than the file", "\1\0\0\0\2\0\0\0\xF0\xFF\xFF\x7Fone"s, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Stage stage(lines("A", "ARRAY"));
        stage.file("Dane/S/a.arr", row.bytes);
        stage.run("A^ADD(\"old\");A^LOAD(\"a.arr\");");
        EXPECT_EQ(stage.value("A"), row.content);
        EXPECT_EQ(CMC_VariableFactory::takenCount(), 0);
    }
}

TEST(Arrays, FolderListsLeaveTheFolderAsItWas) {
    Stage stage(lines("LOG", "STRING") + lines("A", "ARRAY") +
                lines("B", "ARRAY", "ONCHANGED={B^SAVE(\"in.arr\");}\n"));
    stage.file("Dane/S/sub/one.txt", "");
    stage.file("Dane/S/top.txt", "");
    stage.run(
        "A^DIR(\"nowhere\\\",\"*.txt\");A^DIR(\"sub\\\",\"*.txt\");A^DIR(\"sub\",\"*.txt\");A^DIR(\"\",\"*.txt\");"
        "B^SENDONCHANGE();B^DIR(\"sub\\\",\"one*\");B^LOAD(\"sub\\in.arr\");A^SAVE(\"here.arr\");");
    EXPECT_EQ(stage.value("A"), "sub\\one.txt,subone.txt,top.txt");
    EXPECT_EQ(stage.value("B"), "sub\\one.txt");
    stage.run("B^LOAD(\"here.arr\");");
    EXPECT_EQ(stage.value("B"), stage.value("A"));
}
