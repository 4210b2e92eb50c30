// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/files.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/headless/code_page.h"
#include "platform/headless/headless.h"

namespace fs = std::filesystem;

namespace {

std::string contentOf(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::span<const std::byte> bytes(std::string_view text) { return std::as_bytes(std::span(text)); }

std::string names(const std::vector<platform::FileEntry>& entries) {
    std::string result;
    for (const auto& entry : entries)
        result += (result.empty() ? "" : " ") + entry.name + (entry.isFolder ? "/" : "");
    return result;
}

class Files : public testing::Test {
protected:
    fs::path at(const std::string& path) const { return fs::path(host.folder()) / path; }
    // Sets the time stamp of a folder far back, so that what is known of it counts as settled.
    void age(const std::string& path) const {
        fs::last_write_time(at(path), fs::file_time_type::clock::now() - std::chrono::hours(1));
    }
    std::string read(std::string_view name) const { return host.files.readFile(name).value_or("(none)"); }

    headless::HeadlessPlatform host;
};

}  // namespace

TEST_F(Files, NamesAreFoundInAnyCaseOfLetters) {
    ASSERT_TRUE(host.write("Dane/Scena/Obraz.IMG", "picture"));
    ASSERT_TRUE(host.write("Dane/\xC5\xBC\xC3\xB3\xC5\x81w.txt", "polish"));
    ASSERT_TRUE(host.write("Dane/old\xB9.txt", "raw"));            // from an archive that knew no UTF-8
    ASSERT_TRUE(host.write("Dane/\xE6\x97\xA5x.txt", "foreign"));  // a character that the code page lacks
    ASSERT_TRUE(host.write("Dane/pair.txt", "lower"));
    ASSERT_TRUE(host.write("Dane/PAIR.txt", "upper"));
    ASSERT_TRUE(host.files.changeFolder("DANE\\SCENA"));
    const std::string folder = host.files.currentFolder();
    const std::string aboveRoot = "..\\..\\..\\..\\..\\..\\..\\..\\" + folder.substr(3) + "\\Obraz.IMG";

    const std::string smallDrive = "c" + folder.substr(1);
    const std::string otherDrive = "D" + folder.substr(1);
    const std::string zeroInside("obraz.img\0", 10);
    const struct {
        const char* what;
        std::string name;
        const char* content;
    } rows[] = {
        {"below the current folder", "obraz.img", "picture"},
        {"up and down, and slashes", "..\\./SCENA//Obraz.img", "picture"},
        {"over a folder that is none", "..\\NOSUCH\\..\\scena\\OBRAZ.img", "picture"},
        {"absolute", folder + "\\OBRAZ.IMG", "picture"},
        {"absolute, small drive", smallDrive + "\\OBRAZ.IMG", "picture"},
        {"absolute without drive", folder.substr(2) + "\\obraz.img", "picture"},
        {"another drive", otherDrive + "\\Obraz.IMG", "(none)"},
        {"above the root", aboveRoot, "picture"},
        {"letters outside of ASCII", "..\\\xAF\xD3\xB3W.TXT", "polish"},
        {"no UTF-8 on the disk", "..\\OLD\xA5.txt", "raw"},
        {"stand-in character", "..\\_X.txt", "foreign"},
        {"exact spelling first", "..\\pair.txt", "lower"},
        {"else the first by bytes", "..\\Pair.txt", "upper"},
        {"a folder is no file", "..\\Scena", "(none)"},
        {"nothing", "", "(none)"},
        {"a zero byte", zeroInside, "(none)"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(read(row.name), row.content);
    }
}

TEST_F(Files, ChangesOnTheDiskAreSeen) {
    for (const bool settled : {false, true}) {
        SCOPED_TRACE(settled ? "folder unchanged for long" : "folder changed just now");
        ASSERT_TRUE(host.write("D/One.txt", "1"));
        if (settled) age("D");
        EXPECT_EQ(read("d\\ONE.TXT"), "1");
        EXPECT_EQ(read("d\\TWO.TXT"), "(none)");
        ASSERT_TRUE(host.write("D/Two.txt", "2"));
        EXPECT_EQ(read("d\\TWO.TXT"), "2") << "created";
        fs::rename(at("D/One.txt"), at("D/oNE.txt"));
        EXPECT_EQ(read("d\\ONE.TXT"), "1") << "renamed to another case";
        fs::remove(at("D/oNE.txt"));
        EXPECT_EQ(read("d\\ONE.TXT"), "(none)") << "removed";
        EXPECT_EQ(names(host.files.find("d\\*")), "Two.txt");
        fs::remove_all(at("D"));
        EXPECT_EQ(read("d\\TWO.TXT"), "(none)") << "whole folder removed";
    }
}

TEST_F(Files, FindIsOrderedAndTakesWildcards) {
    for (const char* name : {"b.TXT", "A.txt", "c", "A.+zoo/x", "A2.txt", "d.tar.gz", ".hidden", "\xC4\x84.txt"})
        ASSERT_TRUE(host.write(std::string("F/") + name, "12345"));
    ASSERT_TRUE(host.files.changeFolder("f"));
    const struct {
        const char* pattern;
        const char* found;
    } rows[] = {
        {"*", ".hidden A.+zoo/ A.txt A2.txt b.TXT c d.tar.gz \xA5.txt"},
        {"*.*", ".hidden A.+zoo/ A.txt A2.txt b.TXT c d.tar.gz \xA5.txt"},
        {"a.*", "A.+zoo/ A.txt"},
        {"C.*", "c"},
        {"?.TXT", "A.txt b.TXT \xA5.txt"},
        {"\xB9.*", "\xA5.txt"},
        {"*a*.*z", "d.tar.gz"},
        {"..\\F\\B.*", "b.TXT"},
        {"*.nosuch", ""},
        {"nosuch\\*", ""},
        {"A.+ZOO", "A.+zoo/"},
        {"A.+zoo\\", ""},
        {"", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pattern);
        EXPECT_EQ(names(host.files.find(row.pattern)), row.found);
    }
    EXPECT_EQ(host.files.find("B.*").at(0).size, 5U);
}

TEST_F(Files, CurrentFolderIsItsOwnAndNamedAsOnTheDisk) {
    ASSERT_TRUE(host.write("Dane/Sub/x", ""));
    const std::string start = host.files.currentFolder();
    const fs::path process = fs::current_path();
    EXPECT_TRUE(host.files.changeFolder("dane\\SUB\\"));
    EXPECT_EQ(host.files.currentFolder(), start + "\\Dane\\Sub");
    EXPECT_FALSE(host.files.changeFolder("x"));
    EXPECT_FALSE(host.files.changeFolder("nosuch"));
    EXPECT_FALSE(host.files.changeFolder(""));
    EXPECT_EQ(host.files.currentFolder(), start + "\\Dane\\Sub");
    EXPECT_TRUE(host.files.changeFolder(".."));
    EXPECT_EQ(host.files.currentFolder(), start + "\\Dane");
    EXPECT_TRUE(host.files.changeFolder("c:"));
    EXPECT_EQ(host.files.currentFolder(), "C:\\");
    EXPECT_TRUE(host.files.changeFolder(start));
    EXPECT_EQ(host.files.currentFolder(), start);
    EXPECT_EQ(fs::current_path(), process);
}

TEST_F(Files, OpenKeepsTheSpellingOfWhatExists) {
    ASSERT_TRUE(host.write("Dane/Save.txt", "old"));
    const struct {
        const char* what;
        const char* name;
        const char* mode;
        bool opens;
        const char* path;  // where "new" then stands
    } rows[] = {
        {"written over", "DANE\\SAVE.TXT", "wb", true, "Dane/Save.txt"},
        {"a new one, as given", "DANE\\New.TXT", "w+b", true, "Dane/New.TXT"},
        {"Polish letters as UTF-8", "dane\\\xBF.txt", "ab", true, "Dane/\xC5\xBC.txt"},
        {"missing, to be read", "dane\\no.txt", "r+b", false, nullptr},
        {"in a missing folder", "nosuch\\new.txt", "wb", false, nullptr},
        {"a folder", "DANE", "wb", false, nullptr},
        {"a folder to be read", "DANE", "rb", false, nullptr},
        {"the root", "C:\\", "wb", false, nullptr},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        std::FILE* stream = host.files.open(row.name, row.mode);
        ASSERT_EQ(stream != nullptr, row.opens);
        if (!stream) continue;
        std::fputs("new", stream);
        std::fclose(stream);
        EXPECT_EQ(contentOf(at(row.path)), "new");
    }
    EXPECT_FALSE(fs::exists(at("DANE")));
}

TEST_F(Files, APipeIsNotWaitedFor) {
    ASSERT_EQ(mkfifo(at("pipe").c_str(), 0600), 0);
    EXPECT_EQ(host.files.open("pipe", "rb"), nullptr);
    EXPECT_EQ(read("pipe"), "(none)");
}

TEST_F(Files, ReplaceFilePutsTheNewOneInThePlaceOfTheOld) {
    ASSERT_TRUE(host.write("Set.ini", "old"));
    fs::permissions(at("Set.ini"), fs::perms(0640));
    std::ifstream reader(at("Set.ini"));  // goes on seeing the old file, for nothing is written into it
    ASSERT_TRUE(host.files.replaceFile("SET.INI", bytes("new content")));
    EXPECT_EQ(contentOf(at("Set.ini")), "new content");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), "old");
    EXPECT_EQ(fs::status(at("Set.ini")).permissions(), fs::perms(0640));

    ASSERT_TRUE(host.files.replaceFile("Fresh.ini", bytes("")));
    EXPECT_TRUE(fs::exists(at("Fresh.ini")));

    fs::create_symlink("Set.ini", at("link.ini"));
    ASSERT_TRUE(host.files.replaceFile("link.ini", bytes("through")));
    EXPECT_TRUE(fs::is_symlink(at("link.ini")));
    EXPECT_EQ(contentOf(at("Set.ini")), "through");
    EXPECT_EQ(names(host.files.find("*")), "Fresh.ini link.ini Set.ini") << "no temporary file is left";
}

TEST_F(Files, ReplaceFileThatFailsLeavesEverything) {
    ASSERT_TRUE(host.write("folder/inside", "x"));
    EXPECT_FALSE(host.files.replaceFile("folder", bytes("new")));
    EXPECT_FALSE(host.files.replaceFile("nosuch\\a.ini", bytes("new")));
    EXPECT_FALSE(host.files.replaceFile("", bytes("new")));
    EXPECT_EQ(names(host.files.find("*")), "folder/");

    // A name that the disk can't take fails at the last step, when the temporary file is there already.
    EXPECT_FALSE(host.files.replaceFile(std::string(300, 'n'), bytes("new")));
    EXPECT_EQ(names(host.files.find("*")), "folder/");

    if (geteuid() == 0) GTEST_SKIP() << "nothing is forbidden to root";
    ASSERT_TRUE(host.write("kept.ini", "old"));
    fs::permissions(at("kept.ini"), fs::perms(0444));
    EXPECT_FALSE(host.files.replaceFile("kept.ini", bytes("new")));
    fs::permissions(at("kept.ini"), fs::perms(0644));
    fs::permissions(at(""), fs::perms(0555));
    EXPECT_FALSE(host.files.replaceFile("kept.ini", bytes("new")));
    fs::permissions(at(""), fs::perms(0755));
    EXPECT_EQ(read("kept.ini"), "old");
}

TEST(CodePage, EveryCharacterComesBack) {
    for (int i = 1; i < 256; ++i) {
        const std::string text(1, static_cast<char>(i));
        const bool isCharacter = i != 0x81 && i != 0x83 && i != 0x88 && i != 0x90 && i != 0x98;
        EXPECT_EQ(headless::fromUtf8(headless::toUtf8(text)), isCharacter ? text : "_") << i;
    }
    EXPECT_EQ(headless::toUtf8("\xB3\x80"), "\xC5\x82\xE2\x82\xAC");
    const struct {
        const char* what;
        const char* text;
    } rows[] = {
        {"overlong", "\xC0\xAF"},        {"overlong, of three", "\xE0\x80\xAF"},  {"cut off", "a\xE2\x82"},
        {"a surrogate", "\xED\xA0\x80"}, {"behind the last", "\xF4\x90\x80\x80"}, {"a lone follower", "\x80"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(headless::fromUtf8(row.text), row.text) << row.what;
}

TEST(CodePage, CaseFollowsTheAlphabet) {
    EXPECT_EQ(headless::foldCase("AZ[ \xA5\xC6\xCA\xA3\xD1\xD3\x8C\x8F\xAF \x8A\x8D\x8E\xBC\xAA\xC0\xDE\xD7\xDF"),
              "az[ \xB9\xE6\xEA\xB3\xF1\xF3\x9C\x9F\xBF \x9A\x9D\x9E\xBE\xBA\xE0\xFE\xD7\xDF");
}
