// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <cstring>
#include <memory>

#include "script/bool.h"
#include "script/double.h"
#include "script/integer.h"
#include "script/log_rows.h"
#include "script/string.h"
#include "script/variable_factory.h"
#include "storage/archive.h"
#include "storage/file.h"

using namespace std::string_literals;

TEST(Variables, TakeWhatTheyAreSetToInTheirOwnType) {
    Stage stage(lines("I", "INTEGER") + lines("D", "DOUBLE") + lines("F", "BOOL") + lines("W", "STRING") +
                lines("MANY", "DOUBLE", "VALUE=123.456789\n"));
    const struct {
        const char* from;
        const char* texts[4];  // of INTEGER, DOUBLE, BOOL and STRING
    } rows[] = {
        {"3.99", {"3", "3.99", "TRUE", "3.99"}},
        {"-3.99", {"-3", "-3.99", "TRUE", "-3.99"}},
        {"0.5", {"0", "0.50", "TRUE", "0.50"}},
        {"0", {"0", "0.00", "FALSE", "0"}},
        {"-2", {"-2", "-2.00", "TRUE", "-2"}},
        {"TRUE", {"1", "1.00", "TRUE", "TRUE"}},
        {"FALSE", {"0", "0.00", "FALSE", "FALSE"}},
        {"\"tRue\"", {"0", "0.00", "TRUE", "tRue"}},
        {"\"TRUE1\"", {"0", "0.00", "FALSE", "TRUE1"}},
        {"\"1\"", {"1", "1.00", "FALSE", "1"}},
        {"\"-12abc\"", {"-12", "-12.00", "FALSE", "-12abc"}},
        {"\"2.5x\"", {"2", "2.50", "FALSE", "2.5x"}},
        {"\"x5\"", {"0", "0.00", "FALSE", "x5"}},
        {"\"\"", {"0", "0.00", "FALSE", ""}},
        {"\".5\"", {"0", "0.50", "FALSE", ".5"}},
        {"\"1e3\"", {"1", "1000.00", "FALSE", "1e3"}},
        {"MANY", {"123", "123.46", "TRUE", "123.46"}},
        {"[MANY+0]", {"123", "123.46", "TRUE", "123.46"}},
        {"99999999999.5", {"2147483647", "99999999999.50", "TRUE", "99999999999.50"}},
        {"-0.05", {"0", "-0.05", "TRUE", "-0.05"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.from);
        constexpr const char* names[] = {"I", "D", "F", "W"};
        for (int i = 0; i < 4; ++i) {
            stage.run(names[i] + "^SET("s + row.from + ");");
            EXPECT_EQ(stage.value(names[i]), row.texts[i]) << names[i];
        }
    }
}

TEST(Variables, ValuesOfADefinition) {
    const struct {
        const char* type;
        const char* properties;
        const char* value;
        const char* reset;  // the default
    } rows[] = {
        {"INTEGER", "VALUE=12abc\n", "12", "12"},
        {"INTEGER", "VALUE=-7.9\nDEFAULT=3\n", "-7", "3"},
        {"INTEGER", "", "0", "0"},
        {"DOUBLE", "VALUE=2.75kg\nDEFAULT=\n", "2.75", "2.75"},
        {"BOOL", "", "FALSE", "FALSE"},
        {"BOOL", "VALUE=tRuE\nDEFAULT=1\n", "TRUE", "FALSE"},
        {"STRING", "VALUE=\"a b\"\nDEFAULT= c\n", "\"a b\"", " c"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.type + " "s + row.properties);
        Stage stage(lines("V", row.type, row.properties + "TOINI=TRUE\n"s));
        EXPECT_EQ(stage.value("V"), row.value);
        stage.run("V^SET(77);V^RESETINI();");
        EXPECT_EQ(stage.value("V"), row.reset);
    }
}

TEST(Variables, AChangeTellsBrutallyFirstAndByValueFirst) {
    const std::string scene =
        lines("A", "INTEGER",
              "VALUE=1\nONCHANGED={LOG^ADD(\"c\");}\nONCHANGED^5={LOG^ADD(\"five\");}\n"
              "ONBRUTALCHANGED={LOG^ADD(\"b\");}\nONBRUTALCHANGED^7={LOG^ADD(\"seven\");}\n") +
        lines("D", "DOUBLE", "VALUE=1\nONCHANGED^2.50={LOG^ADD(\"half\");}\n") +
        lines("F", "BOOL", "VALUE=TRUE\nONCHANGED^FALSE={LOG^ADD(\"off\");}\nONCHANGED={LOG^ADD(\"on\");}\n") +
        lines("W", "STRING", "VALUE=x\nONCHANGED^ab={LOG^ADD(\"ab\");}\nONCHANGED={LOG^ADD(\"t\");}\n");
    const LogRow rows[] = {
        {"the same value", "", "A^SET(1);", "b"},
        {"one with its own handler", "", "A^SET(5);A^SET(5);", "bfiveb"},
        {"one with its own brutal handler", "", "A^SET(7);A^SET(7);", "sevencseven"},
        {"a handler sees the new value", lines("V", "INTEGER", "ONCHANGED={LOG^ADD(V);}\n"), "V^SET(4);V^ADD(3);",
         "47"},
        {"a change within a change",
         lines("V", "INTEGER", "ONCHANGED^1={V^SET(2);LOG^ADD(\"one\");}\nONCHANGED={LOG^ADD(V);}\n"), "V^SET(1);",
         "2one"},
        {"the brutal handler decides what the other is told",
         lines("V", "INTEGER",
               "ONBRUTALCHANGED^1={V^SET(2);}\n"
               "ONCHANGED^1={LOG^ADD(\"one\");}\nONCHANGED^2={LOG^ADD(\"two\");}\n"),
         "V^SET(1);", "twotwo"},
        {"INC and DEC", "", "A^INC();A^DEC();", "bcbc"},
        {"CLEAR, and once more", "", "A^CLEAR();A^CLEAR();", "bcb"},
        {"SWITCH", "", "A^SWITCH(1,3);A^SWITCH(8,9);A^SWITCH(8,8);", "bcbcb"},
        {"what answers and stores is brutal alone", "", "A^ABS(-4);A^AND(12);A^NOT();", "bbb"},
        {"ADD and MUL by nothing", "", "A^ADD(0);A^MUL(1);A^ADD(4);", "bbbfive"},
        {"a double is told as text", "", "D^SET(2.25);D^ADD(0.25);D^SET(2.501);", "halfhalf"},
        {"a truth value", "", "F^DEC();F^SET(\"no\");F^SWITCH(1,2);F^INC();F^CLEAR();", "offonoff"},
        {"text", "", "W^SET(\"ab\");W^SET(\"ab\");W^SET(\"AB\");W^ADD(\"c\");W^CUT(0,2);W^INC();W^CLEAR();W^CLEAR();",
         "abtttt"},
        {"UPPER is silent", "", "W^UPPER();LOG^ADD(W);", "X"},
        {"RESETINI without TOINI does nothing", "", "A^RESETINI();", ""},
    };
    expectLogs(rows, scene);
}

TEST(Variables, AreKeptInTheConfigurationFile) {
    const auto keep = [](const std::string& name, const std::string& type, const std::string& more) {
        return lines(name, type, "TOINI=TRUE\n" + more);
    };
    const struct {
        const char* what;
        std::string definition;  // of V
        const char* before;      // in the file, or null
        const char* run;
        const char* value;
        const char* after;
    } rows[] = {
        {"a missing one is made", keep("V", "INTEGER", "VALUE=3\n"), nullptr, "", "3", "3"},
        {"a kept one overrides", keep("V", "INTEGER", "VALUE=3\n"), "41x", "", "41", "41"},
        {"an equal one isn't written", keep("V", "INTEGER", "VALUE=7\n"), "007", "", "7", "007"},
        {"an empty one is filled", keep("V", "STRING", "VALUE=fill\n"), "", "", "fill", "fill"},
        {"no value and nothing kept", keep("V", "STRING", ""), nullptr, "", "", ""},
        {"a change is written", keep("V", "INTEGER", "VALUE=3\n"), "5", "V^ADD(2);", "7", "7"},
        {"setting the same isn't", keep("V", "INTEGER", "VALUE=7\n"), "07", "V^SET(7);", "7", "07"},
        {"nor a silent change", keep("V", "INTEGER", "VALUE=7\n"), nullptr, "V^ABS(-4);", "4", "7"},
        {"RESETINI goes to the default", keep("V", "INTEGER", "VALUE=7\nDEFAULT=2\n"), "9", "V^RESETINI();", "2", "2"},
        {"without a default, to the value defined", keep("V", "INTEGER", "VALUE=7\n"), "9", "V^RESETINI();", "7", "7"},
        {"SETDEFAULT converts", keep("V", "INTEGER", ""), nullptr, "V^SETDEFAULT(\"12x\");V^RESETINI();", "12", "12"},
        {"blanks in the file", keep("V", "STRING", ""), "two words", "", "two words", "two words"},
        {"a double keeps two decimals", keep("V", "DOUBLE", ""), "1.239", "V^ADD(1);", "2.24", "2.24"},
        {"a truth value", keep("V", "BOOL", "VALUE=FALSE\n"), "true", "", "TRUE", "TRUE"},
        {"a flag that isn't true", lines("V", "INTEGER", "TOINI=1\nVALUE=3\n"), "9", "V^SET(4);", "4", "9"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Stage stage(row.definition);
        if (row.before) stage.file("application.ini", "[OTHER]\r\nX=1\r\n[S]\r\nV=" + std::string(row.before) + "\r\n");
        stage.run(row.run);
        stage.frames(1);
        EXPECT_EQ(stage.value("V"), row.value);
        stage.end();
        const std::string kept = stage.kept("S", "V");
        EXPECT_EQ(kept == "(none)" ? "" : kept, row.after);
        if (row.before) {
            EXPECT_EQ(stage.kept("OTHER", "X"), "1");
        }
    }
    const LogRow signals[] = {
        {"init comes last", keep("V", "INTEGER", "VALUE=3\nONINIT={LOG^ADD(V);}\n"), "", "3"},
        {"RESETINI always tells", keep("V", "INTEGER", "VALUE=3\nONCHANGED={LOG^ADD(V);}\n"), "V^RESETINI();", "3"},
    };
    expectLogs(signals);
}

TEST(Variables, EachLevelHasItsSectionOfTheFile) {
    Stage stage(lines("V", "INTEGER", "VALUE=1\nTOINI=TRUE\n"));
    stage.level("EP", lines("V", "INTEGER", "VALUE=2\nTOINI=TRUE\n") + lines("E", "INTEGER", "TOINI=TRUE\n"));
    stage.level("APP", lines("E", "INTEGER", "VALUE=3\nTOINI=TRUE\n"));
    stage.file("application.ini", "[EP]\nE=30\n");
    stage.run("V^ADD(10);E^ADD(1);");
    stage.end();
    EXPECT_EQ(stage.kept("S", "V"), "11");
    EXPECT_EQ(stage.kept("EP", "V"), "2");
    EXPECT_EQ(stage.kept("EP", "E"), "31");
    EXPECT_EQ(stage.kept("APP", "E"), "3");
}

namespace {

struct Stored {
    const char* what;
    std::unique_ptr<CMC_Variable> value;
    std::string net;      // the network form
    std::string archive;  // the archive's
    const char* restored;
};

template <class T, class V>
std::unique_ptr<CMC_Variable> variable(V value) {
    auto made = std::make_unique<T>(CXString("v"));
    made->assign(value);
    return made;
}

}  // namespace

TEST(Variables, ByteForms) {
    const headless::HeadlessPlatform host;
    CMC_VariableFactory::initialize();
    const int taken = CMC_VariableFactory::takenCount();
    const Stored rows[] = {
        {"integer", variable<CMC_Integer>(-2), "\1\0\0\0\xFE\xFF\xFF\xFF"s, "\1\0\0\0\xFE\xFF\xFF\xFF"s, "-2"},
        {"text", variable<CMC_String>("a\xB9"), "\2\0\0\0a\xB9\0"s, "\2\0\0\0\2\0\0\0a\xB9"s, "a\xB9"},
        {"empty text", variable<CMC_String>(""), "\2\0\0\0\0"s, "\2\0\0\0\0\0\0\0"s, ""},
        {"true", variable<CMC_Bool>(true), "\3\0\0\0\1"s, "\3\0\0\0\1\0\0\0"s, "TRUE"},
        {"false", variable<CMC_Bool>(false), "\3\0\0\0\0"s, "\3\0\0\0\0\0\0\0"s, "FALSE"},
        {"double", variable<CMC_Double>(-1.5), "\4\0\0\0\0\0\0\0\0\0\xF8\xBF"s, "\4\0\0\0\x24\xFA\xFF\xFF"s, "-1.50"},
    };
    for (const Stored& row : rows) {
        SCOPED_TRACE(row.what);
        std::string net(static_cast<std::size_t>(row.value->getBufferLen()), '?');
        row.value->netstore(net.data());
        EXPECT_EQ(net, row.net);
        // On the heap and no longer than told, so that a sanitizer sees a read behind the end.
        for (std::size_t length = 0; length <= net.size(); ++length) {
            const std::vector<std::byte> cut(reinterpret_cast<const std::byte*>(net.data()),
                                             reinterpret_cast<const std::byte*>(net.data()) + length);
            CMC_Variable* back = CMC_VariableFactory::netrestore(cut);
            ASSERT_EQ(back != nullptr, length == net.size()) << length;
            if (back) {
                EXPECT_EQ(back->asString().view(), row.restored);
            }
            CMC_Object::flush(back);
        }

        CFile file(nullptr, "a", CFile::kCreateBinary);
        CXArchive writer(&file, true);
        row.value->store(&writer);
        writer.Close();
        EXPECT_EQ(host.files.readFile("a").value_or(""), row.archive);
        for (std::size_t length = 0; length <= row.archive.size(); ++length) {
            ASSERT_TRUE(host.write("a", row.archive.substr(0, length)));
            CFile stored(nullptr, "a", CFile::kReadBinary);
            CXArchive reader(&stored, false);
            CMC_Variable* back = CMC_VariableFactory::restore(&reader);
            ASSERT_EQ(back != nullptr, length == row.archive.size()) << length;
            if (back) {
                EXPECT_EQ(back->asString().view(), row.restored);
            }
            CMC_Object::flush(back);
        }
    }
    for (const std::string& unknown : {"\0\0\0\0\1\1\1\1"s, "\5\0\0\0\1\1\1\1\1\1\1\1"s, "\xFF\xFF\xFF\xFF\0"s}) {
        const std::vector<std::byte> bytes(reinterpret_cast<const std::byte*>(unknown.data()),
                                           reinterpret_cast<const std::byte*>(unknown.data()) + unknown.size());
        EXPECT_EQ(CMC_VariableFactory::netrestore(bytes), nullptr);
        CMC_Integer other(7);
        EXPECT_FALSE(other.netrestore(bytes));
        EXPECT_EQ(other.getValue(), 7);
    }
    EXPECT_EQ(CMC_VariableFactory::takenCount(), taken);
    CMC_VariableFactory::done();
}
