// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/log_rows.h"

namespace {

const std::string kValues = lines("N", "INTEGER") + lines("D", "DOUBLE") + lines("F", "BOOL") + lines("W", "STRING");

}  // namespace

TEST(VariableMethods, OfIntegers) {
    const ValueRow rows[] = {
        {"ADD gives what it calculated", "N^SET(3);", "N^ADD(2)", "5"},
        {"MUL gives nothing", "N^SET(3);", "N^MUL(2)", ""},
        {"text is converted", "N^SET(3);N^ADD(\"4x\");", "N", "7"},
        {"a double is cut first", "N^SET(3);N^MUL(2.9);", "N", "6"},
        {"DIV cuts toward zero", "N^SET(-7);N^DIV(2);", "N", "-3"},
        {"DIV by zero", "N^SET(7);N^DIV(0);", "N", "0"},
        {"MOD has the sign of the left", "N^SET(-7);N^MOD(3);", "N", "-1"},
        {"MOD by zero", "N^SET(7);N^MOD(0);", "N", "0"},
        {"the lowest by -1", "N^SET(-2147483648);N^DIV(-1);", "N", "-2147483648"},
        {"it wraps", "N^SET(2147483647);N^INC();", "N", "-2147483648"},
        {"and multiplies so", "N^SET(65536);N^MUL(65536);", "N", "0"},
        {"SWITCH to the other", "N^SET(1);N^SWITCH(1,2);", "N", "2"},
        {"SWITCH back", "N^SET(2);N^SWITCH(1,2);", "N", "1"},
        {"SWITCH from neither", "N^SET(9);N^SWITCH(1,2);", "N", "1"},
        {"ABS is of the parameter", "N^SET(9);", "N^ABS(-4)", "4"},
        {"and is stored", "N^SET(9);N^ABS(-4);", "N", "4"},
        {"ABS of the lowest", "", "N^ABS(-2147483648)", "-2147483648"},
        {"AND", "N^SET(12);", "N^AND(10)", "8"},
        {"OR", "N^SET(12);", "N^OR(3)", "15"},
        {"XOR", "N^SET(12);N^XOR(6);", "N", "10"},
        {"NOT", "N^SET(0);N^NOT();", "N", "-1"},
        {"POWER", "N^SET(3);N^POWER(4);", "N", "81"},
        {"POWER below one", "N^SET(2);", "N^POWER(-1)", "0"},
        {"POWER too large", "N^SET(10);", "N^POWER(99)", "2147483647"},
        {"SQRT cuts", "N^SET(99);N^SQRT();", "N", "9"},
        {"SQRT of a negative", "N^SET(-4);", "N^SQRT()", "0"},
        {"CLAMP from below", "N^SET(-9);", "N^CLAMP(1,5)", "1"},
        {"CLAMP from above changes nothing", "N^SET(9);N^CLAMP(1,5);", "N", "9"},
        {"CLAMP with crossed bounds", "N^SET(3);", "N^CLAMP(5,1)", "5"},
        {"LENGTH is a double", "N^SET(0);", "N^LENGTH(3,4)", "5.00"},
        {"and is stored cut", "N^LENGTH(1,1);", "N", "1"},
        {"SETDEFAULT needs TOINI to matter", "N^SET(1);N^SETDEFAULT(2);N^RESETINI();", "N", "1"},
        {"SET without a value", "N^SET(4);N^SET();", "N", "4"},
        {"methods of text do nothing", "N^SET(4);N^CUT(0,1);N^REPLACEAT(0,7);N^INSERTAT(0,7);N^REPLACE(4,7);N^UPPER();",
         "N", "4"},
        {"and give nothing", "", "N^FIND(4)", ""},
    };
    expectValues(rows, kValues);
}

TEST(VariableMethods, OfDoubles) {
    const ValueRow rows[] = {
        {"DIV", "D^SET(7);D^DIV(2);", "D", "3.50"},
        {"DIV by zero", "D^SET(7);D^DIV(0);", "D", "0.00"},
        {"MOD is of whole numbers", "D^SET(7.9);D^MOD(3.9);", "D", "1.00"},
        {"MOD by less than one", "D^SET(7);D^MOD(0.9);", "D", "0.00"},
        {"CLAMP", "D^SET(9.5);", "D^CLAMP(1.5,5.5)", "5.50"},
        {"LENGTH", "D^LENGTH(3,4);", "D", "5.00"},
        {"the first square is a float", "", "[D^LENGTH(5792.6,0)-5792.6*100000]", "-6.56"},
        {"the second is none", "", "[D^LENGTH(0,5792.6)-5792.6*100000]", "0.00"},
        {"ARCTAN in degrees", "D^ARCTAN(1);", "D", "45.00"},
        {"ARCTANEX", "", "D^ARCTANEX(1,0)", "90.00"},
        {"ARCTANEX is never negative", "", "D^ARCTANEX(-1,0)", "270.00"},
        {"ARCTANEX of nothing", "", "D^ARCTANEX(0,0)", "0.00"},
        {"plus an angle", "", "D^ARCTANEX(0,1,365)", "5.00"},
        {"which is cut", "", "D^ARCTANEX(1,2,0)", "26.00"},
        {"and may be negative", "", "D^ARCTANEX(0,1,-5)", "-5.00"},
        {"SINUS", "D^SINUS(30);", "D", "0.50"},
        {"COSINUS", "D^COSINUS(60);", "D", "0.50"},
        {"MINA", "", "D^MINA(3,-1.5,2)", "-1.50"},
        {"MAXA of negatives", "D^MAXA(-3,-1.5,-2);", "D", "-1.50"},
        {"MINA of one", "", "D^MINA(4)", "4.00"},
        {"ROUND up", "D^SET(2.5);", "D^ROUND()", "3"},
        {"ROUND down", "D^SET(1.49);", "D^ROUND()", "1"},
        {"ROUND cuts the third decimal", "D^SET(1.499);", "D^ROUND()", "1"},
        {"ROUND of a negative", "D^SET(-1.7);", "D^ROUND()", "-1"},
        {"which leaves the value", "D^SET(-0.5);D^ROUND();", "D", "-0.50"},
        {"ROUND of a large one", "D^SET(123456789.75);", "D^ROUND()", "123456790"},
    };
    expectValues(rows, kValues);
}

TEST(VariableMethods, OfTruthValues) {
    const ValueRow rows[] = {
        {"ADD is and", "F^SET(TRUE);", "F^ADD(FALSE)", "FALSE"},
        {"ADD of both", "F^SET(TRUE);F^ADD(2);", "F", "TRUE"},
        {"MUL is or", "F^SET(FALSE);F^MUL(TRUE);", "F", "TRUE"},
        {"SUB leaves it", "F^SET(TRUE);F^SUB(TRUE);", "F", "TRUE"},
        {"INC negates", "F^SET(TRUE);F^INC();", "F", "FALSE"},
        {"SWITCH, too", "F^SET(FALSE);F^SWITCH(5,5);", "F", "TRUE"},
        {"CLAMP gives nothing", "", "F^CLAMP(0,1)", ""},
    };
    expectValues(rows, kValues);
}

TEST(VariableMethods, OfTextAtAndBeyondItsEnds) {
    const ValueRow rows[] = {
        {"ADD", "W^SET(\"a\");", "W^ADD(5)", "a5"},
        {"ADD of itself", "W^SET(\"ab\");W^ADD(W);", "W", "abab"},
        {"MUL and the like leave it", "W^SET(\"6\");W^MUL(2);W^DIV(2);W^MOD(4);W^INC();", "W", "6"},
        {"LENGTH", "W^SET(\"abcde\");", "W^LENGTH()", "5"},
        {"LENGTH of nothing", "W^CLEAR();", "W^LENGTH()", "0"},
        {"GET is the text", "W^SET(\"abc\");", "W^GET()", "abc"},
        {"one character", "W^SET(\"abcde\");", "W^GET(4)", "e"},
        {"behind the end", "W^SET(\"abcde\");", "W^GET(5)", ""},
        {"before the start", "W^SET(\"abcde\");", "W^GET(-2)", "a"},
        {"a piece", "W^SET(\"abcde\");", "W^GET(1,2)", "bc"},
        {"to the end", "W^SET(\"abcde\");", "W^GET(1,-1)", "bcde"},
        {"past the end", "W^SET(\"abcde\");", "W^GET(3,9)", "de"},
        {"none", "W^SET(\"abcde\");", "W^GET(3,0)", ""},
        {"far", "W^SET(\"abcde\");", "W^GET(2147483647,2147483647)", ""},
        {"SUB", "W^SET(\"abcde\");W^SUB(1,2);", "W", "ade"},
        {"SUB past the end", "W^SET(\"abcde\");W^SUB(3,9);", "W", "abc"},
        {"SUB behind the end", "W^SET(\"abcde\");W^SUB(9,1);", "W", "abcde"},
        {"SUB without a count", "W^SET(\"abcde\");W^SUB(1);", "W", "abcde"},
        {"CUT", "W^SET(\"abcde\");W^CUT(1,2);", "W", "bc"},
        {"CUT to one before the end", "W^SET(\"abcde\");W^CUT(1,3);", "W", "bcd"},
        {"CUT to the end", "W^SET(\"abcde\");W^CUT(1,4);", "W", "bcde"},
        {"CUT of nothing", "W^SET(\"abcde\");W^CUT(1,0);", "W", "bcde"},
        {"CUT past the end", "W^SET(\"abcde\");W^CUT(1,99);", "W", "bcde"},
        {"CUT far", "W^SET(\"abcde\");W^CUT(1,2147483647);", "W", "bcde"},
        {"CUT behind the end", "W^SET(\"abcde\");W^CUT(6,1);", "W", ""},
        {"REPLACEAT", "W^SET(\"ABCDE\");W^REPLACEAT(1,\"xy\");", "W", "AxyDE"},
        {"past the end", "W^SET(\"ABCDE\");W^REPLACEAT(4,\"xy\");", "W", "ABCDxy"},
        {"at the end", "W^SET(\"ABCDE\");W^REPLACEAT(5,\"xy\");", "W", "ABCDExy"},
        {"behind the end", "W^SET(\"ABCDE\");W^REPLACEAT(6,\"xy\");", "W", "ABCDE"},
        {"before the start", "W^SET(\"ABCDE\");W^REPLACEAT(-1,\"xy\");", "W", "ABCDE"},
        {"INSERTAT", "W^SET(\"AB\");W^INSERTAT(1,\"x\");", "W", "AxB"},
        {"thrice, each in front of the last", "W^SET(\"AB\");W^INSERTAT(1,\"xy\",3);", "W", "AxyxyxyB"},
        {"at the end", "W^SET(\"AB\");W^INSERTAT(2,\"x\");", "W", "ABx"},
        {"no times", "W^SET(\"AB\");W^INSERTAT(1,\"x\",0);W^INSERTAT(1,\"x\",-3);", "W", "AB"},
        {"REPLACE all", "W^SET(\"abab\");W^REPLACE(\"ab\",\"b\");", "W", "bb"},
        {"REPLACE doesn't look at what it wrote", "W^SET(\"aa\");W^REPLACE(\"a\",\"aa\");", "W", "aaaa"},
        {"REPLACE of nothing", "W^SET(\"ab\");W^REPLACE(\"\",\"x\");", "W", "ab"},
        {"REPLACE by nothing", "W^SET(\"abab\");W^REPLACE(\"b\",\"\");", "W", "aa"},
        {"FIND", "W^SET(\"ABCA\");", "W^FIND(\"A\",1)", "3"},
        {"FIND from the place itself", "W^SET(\"ABCA\");", "W^FIND(\"A\",3)", "3"},
        {"FIND in any other case", "W^SET(\"ABCA\");", "W^FIND(\"a\")", "-1"},
        {"FIND behind the end", "W^SET(\"ABCA\");", "W^FIND(\"A\",99)", "-1"},
        {"NOT turns it round", "W^SET(\"abc\");", "W^NOT()", "cba"},
        {"and stores it", "W^SET(\"abc\");W^NOT();", "W", "cba"},
        {"UPPER knows Polish", "W^SET(\"a\xB9z\xBF\xE9\");W^UPPER();", "W", "A\xA5Z\xAF\xE9"},
        {"SWITCH is exact", "W^SET(\"A\");W^SWITCH(\"a\",\"b\");", "W", "a"},
        {"ROUND gives nothing", "W^SET(\"2.5\");", "W^ROUND()", ""},
        {"numbers are answered and not stored", "W^SET(\"2\");W^AND(3);W^ABS(-5);", "W", "2"},
    };
    expectValues(rows, kValues);
}
