// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <clocale>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>

#include "foundation/string_hash_code.h"
#include "foundation/string_tokenizer.h"
#include "foundation/xvector.h"
#include "graphics/geometry.h"

namespace {

CXString repeated(char c, int n) {
    CXString text;
    text.FillWith(c, n);
    return text;
}

std::string joined(CStringTokenizer tokens) {
    std::string all;
    while (tokens.hasMoreTokens())
        all += "[" + std::string(tokens.nextToken().view()) + "]";
    return all;
}

}  // namespace

TEST(String, CapacityFollowsHowTheTextCameAbout) {
    EXPECT_EQ(CXString().getCapacity(), 32);
    EXPECT_EQ(CXString(3).getCapacity(), 32);
    EXPECT_EQ(CXString(100).getCapacity(), 100);
    EXPECT_EQ(CXString(repeated('a', 31).c_str()).getCapacity(), 32);
    EXPECT_EQ(CXString(repeated('a', 32).c_str()).getCapacity(), 64);

    CXString grown = repeated('a', 40);  // 72
    grown = "short";
    EXPECT_EQ(grown.getCapacity(), 72) << "a large buffer stays";
    EXPECT_EQ(CXString(grown).getCapacity(), 72) << "a copy takes its source's capacity";
    CXString assigned;
    assigned = grown;
    EXPECT_EQ(assigned.getCapacity(), 37) << "an assignment takes the length + 32";
    EXPECT_EQ(assigned, "short");
    grown.left(0);
    assigned = CXString();
    CXString small;
    small = grown;  // length 0 in 72 bytes: 32 are enough again
    EXPECT_EQ(small.getCapacity(), 32);

    CXString text = repeated('b', 31);
    text += 'c';
    EXPECT_EQ(text.getCapacity(), 64);
    text += repeated('d', 31);
    EXPECT_EQ(text.getCapacity(), 64) << "63 characters and the zero byte fill it";
    text += 'e';
    EXPECT_EQ(text.getCapacity(), 96);
    EXPECT_EQ(text, "bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbcddddddddddddddddddddddddddddddde");
}

TEST(String, PartsOfItselfMayBeAssignedAndAppended) {
    CXString text("0123456789");
    text = text.c_str() + 4;
    EXPECT_EQ(text, "456789");
    text += text;
    text += text.c_str();
    text += text.view();
    EXPECT_EQ(text, "456789456789456789456789456789456789456789456789");
    text.mid(3, 8, &text);
    EXPECT_EQ(text, "78945");
    const CXString& same = text;
    text = same;
    EXPECT_EQ(text, "78945");
}

TEST(String, MovedTextsLeaveEmptyOnes) {
    for (const int length : {5, 31, 32, 200}) {
        SCOPED_TRACE(length);
        CXString source = repeated('x', length);
        CXString target(std::move(source));
        EXPECT_EQ(target, repeated('x', length));
        source = "used again";
        EXPECT_EQ(source, "used again");
        CXString large = repeated('y', 300);
        large = std::move(target);
        EXPECT_EQ(large, repeated('x', length));
        CXString small("z");
        small = std::move(large);
        EXPECT_EQ(small, repeated('x', length));
    }
}

TEST(String, PositionsAreStartsAndEndsAndAreBroughtToTheText) {
    const CXString text("ABCDE");
    EXPECT_EQ(text.Left(2), "AB");
    EXPECT_EQ(text.Right(2), "CDE");
    EXPECT_EQ(text.Mid(1, 3), "BC");
    EXPECT_EQ(text.Left(-1), "");
    EXPECT_EQ(text.Left(99), "ABCDE");
    EXPECT_EQ(text.Right(-3), "ABCDE");
    EXPECT_EQ(text.Right(6), "");
    EXPECT_EQ(text.Mid(3, 1), "");
    EXPECT_EQ(text.Mid(std::numeric_limits<int>::min(), std::numeric_limits<int>::max()), "ABCDE");
    EXPECT_EQ(text.GetAt(-1), 'E');
    EXPECT_EQ(text.GetAt(5), '\0');
    EXPECT_EQ(text.GetAt(-2), '\0');
    EXPECT_EQ(CXString().lastChar(), '\0');
}

TEST(String, SearchesCountFromTheStart) {
    const CXString text("abcabc");
    EXPECT_EQ(text.Find('b', 2), 4);
    EXPECT_EQ(text.Find('b', 5), -1);
    EXPECT_EQ(text.Find('b', 99), -1);
    EXPECT_EQ(text.FindLast('b'), 4);
    EXPECT_EQ(text.FindSubString("bc", 2), 4);
    EXPECT_EQ(text.indexOf("bc", -7), 1);
    EXPECT_EQ(text.indexOf("abcd", 0), -1);
    EXPECT_EQ(text.indexOf("", 6), 6);
    EXPECT_EQ(text.indexOf("", 7), -1);
    EXPECT_EQ(text.findOneOf("xc", 3), 5);
    EXPECT_EQ(text.getCount('a'), 2);
}

TEST(String, ReplacementsDontScanWhatTheyPutIn) {
    const struct {
        const char *text, *sub, *by, *result;
    } rows[] = {
        {"aXbXc", "X", "XX", "aXXbXXc"},
        {"aaaa", "aa", "a", "aa"},
        {"abc", "", "x", "abc"},
        {"abc", "b", "", "ac"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(CXString(row.text).replace(row.sub, row.by), row.result) << row.text;
    CXString text("one two one two");
    text.replaceOnce("two", "2", 5);
    EXPECT_EQ(text, "wo one 2");
}

TEST(String, TagsAreRemovedUpToTheirEnd) {
    const struct {
        const char *text, *result;
    } rows[] = {
        {"<COLOR 5>a<B>b<COLOR>c", "a<B>bc"},
        {"a<COLORFUL>b", "ab"},
        {"a<color>b", "a<color>b"},
        {"a<COLOR 5", "a"},
        {"<<COLOR>x", "<x"},
        {"<COLO", "<COLO"},
    };
    for (const auto& row : rows) {
        CXString text(row.text);
        text.removeTag("COLOR");
        EXPECT_EQ(text, row.result) << row.text;
    }
}

TEST(String, CasesFollowTheCodePageAndNotTheLocale) {
    CXString text("aZ\x9C\x9F\xB3\xB9\xBF\xE6\xEA\xF1\xF3\xE4\xC4");
    const CXString upper("AZ\x8C\x8F\xA3\xA5\xAF\xC6\xCA\xD1\xD3\xE4\xC4");
    EXPECT_TRUE(text.equalsIgnoreCase(upper));
    EXPECT_FALSE(CXString("\xE4").equalsIgnoreCase("\xC4")) << "not one of the nine letters";
    EXPECT_EQ(text.Upper(), upper);
    EXPECT_EQ(text.Lower(), "az\x9C\x9F\xB3\xB9\xBF\xE6\xEA\xF1\xF3\xE4\xC4");
    EXPECT_TRUE(CXString("ab\xB9").IsLower());
    EXPECT_FALSE(CXString("a1").IsLower());
    EXPECT_FALSE(CXString("\xE4").IsLower());
    EXPECT_TRUE(CXString("\xA5Z").IsUpper());
    EXPECT_TRUE(CXString().IsLower());
}

TEST(String, ADoubleHasTwoDecimalsByRulesOfItsOwn) {
    const double infinity = std::numeric_limits<double>::infinity();
    const struct {
        double value;
        const char* text;
    } rows[] = {
        {1.5, "1.50"},        {0.25, "0.25"},       {0.05, "0.05"},
        {-0.05, "-0.05"},     {0.1, "0.10"},        {0.001, "0.000"},
        {0.0001, "0.0000"},   {123.456, "123.46"},  {-123.456, "-123.46"},
        {0.0, "0.00"},        {-0.0, "0.00"},       {100, "100.00"},
        {0.99, "0.99"},       {0.996, "0.1.00"},    {-0.996, "-0.1.00"},
        {0.009, "0.001"},     {0.0996, "0.010"},    {9.995, "9.99"},  // its 17 digits are below the half
        {0.125, "0.13"},                                              // an exact half goes up
        {2.5e-5, "0.00000"},  {999.999, "1000.00"}, {1e20, "100000000000000000000.00"},
        {infinity, "1.#INF"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(CXString::toString(row.value), row.text) << row.value;
    EXPECT_EQ(CXString::toString(5e-324).GetLength(), 326) << "a zero for each power of ten";
}

TEST(String, AnAssignedDoubleHasNineSignificantDigits) {
    const struct {
        double value;
        const char* text;
    } rows[] = {
        {100, "100."},
        {-2.5, "-2.5"},
        {0, "0."},
        {0.1, "0.1"},
        {0.05, "5.e-002"},
        {1.0 / 3, "0.333333333"},
        {2e6 / 3, "666666.667"},
        {123456789, "123456789."},
        {1234567890, "1.23456789e+009"},
        {999999999.5, "1.e+009"},
        {0.9999999999, "1."},
        {0.0999999999, "9.99999999e-002"},
        {1e-300, "1.e-300"},
    };
    for (const auto& row : rows) {
        CXString text;
        text = row.value;
        EXPECT_EQ(text, row.text) << row.value;
    }
}

TEST(String, NumbersAreReadUpToTheFirstOtherCharacter) {
    const double infinity = std::numeric_limits<double>::infinity();
    const struct {
        const char* text;
        int number;
        double real;
    } rows[] = {
        {"12abc", 12, 12},
        {" \t-7.9", -7, -7.9},
        {"+3", 3, 3},
        {"+-3", 0, 0},
        {"- 3", 0, 0},
        {".5e1x", 0, 5},
        {"5.", 5, 5},
        {"1e", 1, 1},
        {"1,5", 1, 1},
        {"0x10", 0, 0},
        {"inf", 0, 0},
        {"nan", 0, 0},
        {"", 0, 0},
        {"2147483648", 2147483647, 2147483648},
        {"-99999999999", -2147483647 - 1, -99999999999.0},
        {"1e999", 1, infinity},
        {"-1e999", -1, -infinity},
        {"0.0001e-999", 0, 0},
        {"1e-999", 1, 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(leadingInt(row.text), row.number) << row.text;
        EXPECT_EQ(leadingDouble(row.text), row.real) << row.text;
    }
    EXPECT_FALSE(CXString("0").isNumber());
    EXPECT_TRUE(CXString("12abc").isNumber());
    EXPECT_TRUE(CXString("tRuE").toBool());
    EXPECT_FALSE(CXString("1").toBool());
}

TEST(String, FormatNeverReadsArgumentsThatArentThere) {
    CXString text;
    text.Format("%s-%03d|%-4x|%%", "ab", 7, 255);
    EXPECT_EQ(text, "ab-007|ff  |%");
    text.Format("%d %s", "text", 3);
    EXPECT_EQ(text, "%d text") << "the argument that comes first has another kind";
    text.Format("%s %n %d", 5);
    EXPECT_EQ(text, "%s %n 5");
    text.Format("%*d %ld %", 5);
    EXPECT_EQ(text, "%*d 5 %");
    text.Format("%5.2s|", "abc");
    EXPECT_EQ(text, "   ab|");
    text.Format("%999999999999d", 1);
    EXPECT_EQ(text.GetLength(), 255);
    text.Format("%s!", repeated('a', 300));
    EXPECT_EQ(text, repeated('a', 255));
    text.Format("%s", text);
    EXPECT_EQ(text.GetLength(), 255) << "its own text as argument";
}

TEST(String, PatternsAreWalkedBesideTheName) {
    const struct {
        const char *pattern, *name;
        bool fits;
    } rows[] = {
        {"*", "", true},
        {"*.*", "a", true},
        {"a*c", "abc", true},
        {"a*c", "ac", true},
        {"a*c", "ab", true},
        {"a*c", "abbc", false},
        {"a*", "abbc", true},
        {"a?c", "abc", true},
        {"a?c", "ac", true},  // it ends before the last character is compared
        {"*.img", "a.img", true},
        {"*.img", "ab.img", false},
        {"*.img", ".img", true},  // the star steps over what is missing
                                  // all the same
        {"abc", "ab", true},
        {"abc", "abcd", false},
        {"ABC", "abc", false},
        {"**x", "q", true},
        {"a**", "abcdefg", true},
    };
    for (const auto& row : rows)
        EXPECT_EQ(CXString(row.pattern).FilterFits(row.name), row.fits) << row.pattern << " on " << row.name;
}

TEST(String, RectanglesAndListsAreCutAtTheirSeparators) {
    for (const char* text : {"1,2,3,4", "1.2.3.4", "1|2|3|4", " 1 , 2||3 4 5"})
        EXPECT_EQ(CXString(text).toRect(), CXRect(1, 2, 3, 4)) << text;
    EXPECT_EQ(CXString("7,8").toRect(), CXRect(7, 8, 0, 0));
    CXArray* pieces = CXString(" a, b,,c ").toVector();
    ASSERT_EQ(pieces->size(), 3);
    EXPECT_EQ(*pieces->stringAt(2), "c");
    EXPECT_EQ(pieces->stringAt(3), nullptr);
    deleteStrings(pieces);
}

TEST(StringTokenizer, RunsOfSeparatorsMakeNoTokens) {
    EXPECT_EQ(joined({",,a, b,", ", "}), "[a][b]");
    EXPECT_EQ(joined({"", ","}), "");
    EXPECT_EQ(joined({" , ", ", "}), "");
    EXPECT_EQ(joined({"abc", ""}), "[abc]");
    CStringTokenizer done("a", ",");
    done.nextToken();
    EXPECT_EQ(done.nextToken(), "");
    EXPECT_EQ(joined({CXString(std::string_view("a\0b,c", 5)), ","}), std::string("[a\0b][c]", 8));
}

TEST(StringHashCode, SumsSignedCharactersByPlace) {
    EXPECT_EQ(CStringHashCode::hashOf(""), 0);
    EXPECT_EQ(CStringHashCode::hashOf("abc"), 597);
    EXPECT_EQ(CStringHashCode::hashOf("\xFF"), 0) << "1 << 0, and -1";
    EXPECT_EQ(CStringHashCode::hashOf("\x80\x80"), 1 - 128 + 2 - 256);
    // The shift starts again at the seventeenth character.
    EXPECT_EQ(CStringHashCode::hashOf(std::string(17, '\1')), 65535 + 1 + 17 * 18 / 2);
    const std::string longText(100000, 'z');
    unsigned wrapped = 0;
    for (unsigned i = 0; i < longText.size(); ++i)
        wrapped += (1U << i % 16) + (i + 1) * 122;
    EXPECT_EQ(CStringHashCode::hashOf(longText), static_cast<int>(wrapped));

    CStringHashCode key("abc");
    key.set("a text that is longer than the buffer inside of the object");
    key.set("ab");
    EXPECT_EQ(key.getHashcode(), CStringHashCode::hashOf("ab"));
    const CStringHashCode same(CXString("ab")), other(CXString("b"));
    EXPECT_TRUE(key.equals(&same));
    EXPECT_FALSE(key.equals(&other));
}
