// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "frame/config.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "frame/application.h"
#include "frame/language.h"
#include "frame_stage.h"
#include "platform/headless/headless.h"

namespace fs = std::filesystem;

namespace {

struct ConfigStage {
    explicit ConfigStage(const char* content = nullptr) {
        if (content) platform.write("a.ini", content);
    }
    fs::path path() const { return fs::path(platform.folder()) / "a.ini"; }
    std::string content() const {
        std::ifstream stream(path(), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    headless::HeadlessPlatform platform;
};

}  // namespace

TEST(Config, WhatIsRead) {
    const struct {
        const char* what;
        const char* content;
        const char* value;  // of key K in section S
        int number;
    } rows[] = {
        {"plain", "[S]\r\nK=12\r\n", "12", 12},
        {"no line end", "[S]\nK=12", "12", 12},
        {"any case of letters", "[s]\nk=12\n", "12", 12},
        {"blanks around everything", " [ S ] \n \tK = a b \t\n", "a b", 0},
        {"double quotes", "[S]\nK=\" a \"\n", " a ", 0},
        {"single quotes", "[S]\nK='a'\n", "a", 0},
        {"one pair alone", "[S]\nK=\"\"a\"\"\n", "\"a\"", 0},
        {"quotes that differ", "[S]\nK=\"a'\n", "\"a'", 0},
        {"a single quote", "[S]\nK=\"\n", "\"", 0},
        {"quotes round nothing", "[S]\nK=\"\"\n", "", 0},
        {"the first of two keys", "[S]\nK=1\nK=2\n", "1", 1},
        {"the first of two sections", "[S]\nL=1\n[T]\n[S]\nK=2\n", "2", 2},
        {"a key of another section", "[S]\n[T]\nK=2\n", "", 0},
        {"before any header", "K=2\n[S]\n", "", 0},
        {"a comment", "[S]\n;K=2\n", "", 0},
        {"an equals sign in the value", "[S]\nK=a=b\n", "a=b", 0},
        {"no value", "[S]\nK=\nL=1\n", "", 0},
        {"no equals sign", "[S]\nK\nK=3\n", "3", 3},
        {"a number in front", "[S]\nK=-7 dwarfs\n", "-7 dwarfs", -7},
        {"a header never closed", "[S\nK=1\n", "", 0},
        {"text behind a header", "[S] ; first\nK=1\n", "1", 1},
        {"nothing at all", "", "", 0},
        {"upper case of Polish letters", "[S]\nK=\xA5\n", "\xA5", 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const ConfigStage stage(row.content);
        const CConfig config(nullptr, "a.ini");
        EXPECT_EQ(config.GetString("S", "K"), row.value);
        EXPECT_EQ(config.GetInt("S", "K"), row.number);
    }
}

TEST(Config, WhatIsWrittenLeavesTheRestAsItWas) {
    const struct {
        const char* what;
        const char* before;
        const char* section;
        const char* key;
        const char* value;
        const char* after;
    } rows[] = {
        {"a new file", "", "S", "K", "1", "[S]\r\nK=1\r\n"},
        {"in its line", "[S]\r\n K = 1 \r\nL=2", "s", "k", "22", "[S]\r\n K = 22 \r\nL=2"},
        {"the first of two", "[S]\nK=1\nK=2\n", "S", "K", "3", "[S]\nK=3\nK=2\n"},
        {"an empty value", "[S]\nK= \nL=1\n", "S", "K", "3", "[S]\nK=3 \nL=1\n"},
        {"to an empty value", "[S]\nK=12\n", "S", "K", "", "[S]\nK=\n"},
        {"a new key", "[S]\nK=1\n\n; T\n[T]\nQ", "S", "L", "2", "[S]\nK=1\nL=2\n\n; T\n[T]\nQ"},
        {"behind no key", "[S]\n[T]\n", "S", "L", "2", "[S]\nL=2\n[T]\n"},
        {"without line end", "[S]\nK=1", "S", "L", "2", "[S]\nK=1\nL=2\n"},
        {"a bare header", "[S]", "S", "L", "2", "[S]\r\nL=2\r\n"},
        {"a new section", "; all\nrest", "S", "L", "2", "; all\nrest\n[S]\nL=2\n"},
        {"the same value", "[S]\nK=1\nno\x01", "S", "K", "1", "[S]\nK=1\nno\x01"},
        {"line ends", "[S]\nK=1\n", "S", "K", "a\r\nb", "[S]\nK=a  b\n"},
        {"letters in names", "[S]\n\xA5=1\n", "S", "\xB9", "2", "[S]\n\xA5=2\n"},
        {"no such key", "[S]\nK=1\n", "S", "a=b", "2", "[S]\nK=1\n"},
        {"no key like that", "[S]\nK=1\n", "S", "[T]", "2", "[S]\nK=1\n"},
        {"no such section", "[S]\nK=1\n", "a]b", "K", "2", "[S]\nK=1\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const ConfigStage stage(row.before);
        {
            CConfig config(nullptr, "a.ini");
            config.PutString(row.section, row.key, row.value);
            const CXString inMemory = config.GetString(row.section, row.key);
            config.flush();
            EXPECT_EQ(CConfig(nullptr, "a.ini").GetString(row.section, row.key), inMemory);
        }
        EXPECT_EQ(stage.content(), row.after);
    }
}

TEST(Config, LongValuesAreCutOnReadingAlone) {
    const ConfigStage stage;
    const std::string text(10300, 'x');
    CConfig config(nullptr, "a.ini");
    config.PutString("S", "K", text.c_str());
    config.flush();
    EXPECT_EQ(config.GetString("S", "K").GetLength(), 10239);
    EXPECT_EQ(stage.content().size(), 10300 + std::string("[S]\r\nK=\r\n").size());
}

TEST(Config, ReachesTheDiskOnceAFrameAndAtTheEnd) {
    FrameStage stage;
    const fs::path path = fs::path(stage.platform.folder()) / "a.ini";
    {
        CApplication application(stage.window.get(), "a.ini", "", stage.commandLine.get());
        CConfig* config = application.GetConfigInterface();
        stage.frames(1);
        EXPECT_FALSE(fs::exists(path)) << "nothing was put";
        config->PutInt("S", "K", 1);
        EXPECT_FALSE(fs::exists(path));
        stage.frames(1);
        EXPECT_TRUE(fs::exists(path));
        // Written in place of the old one, which a reader still has whole.
        fs::remove(path);
        stage.frames(1);
        EXPECT_FALSE(fs::exists(path)) << "nothing has changed since";
        config->PutInt("S", "K", 2);
    }
    EXPECT_TRUE(fs::exists(path));
    EXPECT_EQ(CConfig(nullptr, "a.ini").GetInt("S", "K"), 2);
    const CApplication nameless(stage.window.get(), "", "", stage.commandLine.get());
    EXPECT_EQ(nameless.GetConfigInterface(), nullptr);
}

TEST(Config, AFileThatCantBeWrittenIsToldOnceAndNothingIsLost) {
    headless::HeadlessPlatform platform;
    platform.write("folder.ini/kept", "x");
    for (const char* name : {"missing\\a.ini", "folder.ini"}) {
        SCOPED_TRACE(name);
        const std::size_t before = platform.shell.debugLines().size();
        {
            CConfig config(nullptr, name);
            for (int i = 0; i < 3; ++i) {
                config.PutInt("S", "K", i);
                config.flush();
                EXPECT_EQ(config.GetInt("S", "K"), i) << "the run goes on with it";
            }
        }
        EXPECT_EQ(platform.shell.debugLines().size(), before + 1);
    }
    EXPECT_TRUE(fs::exists(fs::path(platform.folder()) / "folder.ini" / "kept"));
}

TEST(Language, WhichFolder) {
    const struct {
        const char* what;
        const char* locale;
        const char* file;
        const char* folder;
    } rows[] = {
        {"by the table", "0415", "", "POL"},
        {"in small letters", "040e", "", "HUN"},
        {"not in the table", "0407", "", ""},
        {"not known", "", "[LANGUAGE]\n=X\n", ""},
        {"the file first", "0415", "[LANGUAGE]\n0415=PL\n", "PL"},
        {"a language of the file", "0407", "[language]\r\n0407=\"GER\"\r\n", "GER"},
        {"an empty entry", "0405", "[LANGUAGE]\n0405=\n", "CZE"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        FrameStage stage("", speaking(row.locale));
        stage.platform.write("a.ini", row.file);
        {
            CApplication application(stage.window.get(), "a.ini", "", stage.commandLine.get());
            EXPECT_EQ(CLanguageOSVer::getLanguageFolder(), row.folder);
            // What the run has put counts before it is on the disk.
            application.GetConfigInterface()->PutString("LANGUAGE", "ELF", "ELVISH");
            CLanguageOSVer::setLanguageFolder("elf");
            EXPECT_EQ(CLanguageOSVer::getLanguageFolder(), "ELVISH");
            CLanguageOSVer::setLanguageFolder("POL");
            EXPECT_EQ(CLanguageOSVer::getLanguageFolder(), "") << "a code is wanted, not a folder";
        }
        CLanguageOSVer::setLanguageFolder("0419");
        EXPECT_EQ(CLanguageOSVer::getLanguageFolder(), "RUS");
        CLanguageOSVer::done();
    }
}

TEST(Language, TheTranslatedCopyStandsBesideTheFile) {
    headless::HeadlessPlatform platform;
    platform.write("Dane/Pol/a.txt", "");
    platform.write("pol/top.txt", "");
    const struct {
        const char* path;
        const char* local;
    } rows[] = {
        {"Dane\\a.txt", "Dane\\POL\\a.txt"},
        {"Dane\\b.txt", "Dane\\b.txt"},
        {"top.txt", "POL\\top.txt"},
        {"a.txt", "a.txt"},
        {"", ""},
    };
    CLanguageOSVer::done();
    EXPECT_EQ(CLanguageOSVer::getLocalFileName("top.txt"), "top.txt");
    CLanguageOSVer::setLanguageFolder("0415");
    for (const auto& row : rows)
        EXPECT_EQ(CLanguageOSVer::getLocalFileName(row.path), row.local);
    CLanguageOSVer::done();
}
