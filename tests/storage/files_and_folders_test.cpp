// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "frame/command_line.h"
#include "frame/language.h"
#include "frame/window.h"
#include "platform/headless/headless.h"
#include "storage/file.h"
#include "storage/file_name_resolver.h"
#include "storage/folder.h"
#include "storage/path.h"

namespace {

std::string text(const CXString& s) { return std::string(s.view()); }

// A program's folder, and beside it a disc with the application.
class Storage : public testing::Test {
protected:
    Storage() {
        host.write("Program/keep", "");
        host.write("Disc/keep", "");
        root = CXString(std::string_view(host.files.currentFolder()));
        host.files.changeFolder("Program");
        window = std::make_unique<CWindow>(nullptr, &commandLine, CXSize(800, 600), nullptr);
        host.files.changeFolder("..\\Disc");
        window->setCDPath(root + "\\Disc\\");
    }
    ~Storage() override { CLanguageOSVer::done(); }

    std::string read(const CXString& name) {
        CFile file;
        return file.Open(window.get(), name, CFile::kReadBinary) == 0 ? text(file.getLine()) : "(none)";
    }
    std::string here() const { return host.files.currentFolder().substr(static_cast<std::size_t>(root.GetLength())); }

    headless::HeadlessPlatform host;
    CCommandLine6 commandLine{""};
    CXString root;
    std::unique_ptr<CWindow> window;
};

}  // namespace

TEST_F(Storage, TheProgramsCopyComesFirstAndATranslatedOneBeforeEach) {
    CLanguageOSVer::setLanguageFolder("0415");
    const struct {
        const char *name, *places[4];
    } rows[] = {
        {"Dane\\S\\f.txt",
         {"Program/Dane/S/POL/f.txt", "Program/Dane/S/f.txt", "Disc/Dane/S/POL/f.txt", "Disc/Dane/S/f.txt"}},
        {"COMMON\\f.txt",
         {"Program/COMMON/POL/f.txt", "Program/COMMON/f.txt", "Disc/COMMON/POL/f.txt", "Disc/COMMON/f.txt"}},
        {"wavs\\f.wav", {"Program/WAVS/POL/F.WAV", "Program/WAVS/F.WAV", "Disc/wavs/POL/f.wav", "Disc/wavs/f.wav"}},
        // Only the folder of sounds is looked for without regard to case, and one without a known name not at all.
        {"dane\\f.txt", {nullptr, "Disc/dane/POL/f.txt", nullptr, "Disc/dane/f.txt"}},
        {"else\\f.txt", {nullptr, "Disc/else/POL/f.txt", nullptr, "Disc/else/f.txt"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        for (const char* place : row.places) {
            if (place) host.write(place, place);
        }
        ASSERT_TRUE(host.write("Program/else/f.txt", "never"));
        for (const char* place : row.places) {
            if (!place) continue;
            EXPECT_EQ(read(row.name), place);
            std::filesystem::remove(std::filesystem::path(host.folder()) / place);
        }
        EXPECT_EQ(read(row.name), "(none)");
    }
}

TEST_F(Storage, ANewFileGoesBelowTheProgramsFolderToo) {
    host.write("Program/Dane/keep", "");
    host.write("Disc/Dane/keep", "");
    CFile(window.get(), "Dane\\new", CFile::kCreateBinary).Write("x", 1);
    EXPECT_EQ(host.files.readFile("..\\Program\\Dane\\new"), "x");
    EXPECT_FALSE(host.files.readFile("Dane\\new"));
}

TEST_F(Storage, AFailedOpenIsSafeToUse) {
    CFile file(window.get(), "Dane\\missing", CFile::kReadText);
    EXPECT_EQ(file.LastError(), 2000);
    char buffer[8] = "as was";
    file.GetLine(buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "as was");
    EXPECT_EQ(file.Length(), -1);
    EXPECT_EQ(file.Tell(), 0);
    EXPECT_EQ(file.Read(buffer, 8), 0);
    EXPECT_EQ(file.Write(buffer, 8), 0);
    EXPECT_NE(file.Seek(0, SEEK_SET), 0);
    EXPECT_TRUE(file.eof());
    EXPECT_EQ(file.Close(), 2000);
    EXPECT_EQ(file.Open(window.get(), "..\\Disc", CFile::kReadBinary), 2000) << "a folder is no file";
    EXPECT_EQ(file.Open(window.get(), "", CFile::kReadBinary), 2000);
    EXPECT_EQ(file.Open(window.get(), "keep", CFile::kReadBinary), 0) << "an object serves again";
}

TEST_F(Storage, ScriptNamesBecomePaths) {
    const std::string disc = text(root) + "\\Disc";
    window->ChDir("..\\Program");
    const std::string program = text(root) + "\\Program";
    const struct {
        const char* name;
        std::string path;
    } rows[] = {
        {"a\\b.txt", "a\\b.txt"},
        {"$a.txt", disc + "\\a.txt"},
        {"&a.txt", disc + "\\a.txt"},
        {"a$.txt", "a$.txt"},
        {"Dane?b.ann", program + "\\Dane\\b.ann"},
        {"?b.ann", program + "\\b.ann"},
        {"??b.ann?", program + "\\b.ann"},
        {"?", program + "\\"},
        {"", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(text(CPath::resolveFileName(window.get(), row.name)), row.path) << row.name;
    EXPECT_EQ(CPath::resolveFileName(nullptr, "$a"), "a") << "without a window there is no data root";

    // A path that the data root makes absolute isn't put behind the current folder.
    ASSERT_TRUE(host.write("Disc/Sub/f", "found"));
    EXPECT_EQ(read("$SUB\\F"), "found");
    window->ChDir("..\\Disc");
    EXPECT_EQ(read("Sub?f"), "found");
    EXPECT_EQ(read("?Sub\\f"), "found");
}

TEST(Path, PartsAreJoinedByOneBackslash) {
    EXPECT_EQ(CPath::getFullPath("", "n"), "n");
    EXPECT_EQ(CPath::getFullPath("a", "n"), "a\\n");
    EXPECT_EQ(CPath::getFullPath("a\\", "n"), "a\\n");
    EXPECT_EQ(CPath::getFullPath("a", "b", "n"), "a\\b\\n");
    EXPECT_EQ(CPath::getFullPath("a", "", "n"), "a\\n");
    EXPECT_EQ(CPath::getFullPath("", "", "n"), "\\n") << "three parts always have one";
}

TEST_F(Storage, PathsAnswerAboutTheDisk) {
    CPath path(window.get(), "pic.old.img");
    EXPECT_EQ(path.GetExtension(), "img");
    EXPECT_EQ(path.SetExtension("ann"), "pic.ann") << "cut at the first full stop";
    EXPECT_EQ(path.GetExtension(), "img");
    EXPECT_EQ(text(path.GetFullPath("x")), text(root) + "\\Disc\\x");
    EXPECT_TRUE(path.DirExists("..\\PROGRAM"));
    EXPECT_EQ(here(), "\\Disc") << "the question doesn't move";
    EXPECT_FALSE(path.DirExists("keep"));
    EXPECT_TRUE(path.FileExists("KEEP"));
    EXPECT_FALSE(path.FileExists("..\\Program"));
    EXPECT_FALSE(path.chDir("nowhere"));
    EXPECT_TRUE(path.chDir("..\\program"));
    EXPECT_EQ(CPath(window.get(), "noextension").GetExtension(), "");
}

TEST_F(Storage, LinesComeWithOneLineFeedInTextAndAsTheyAreInBinary) {
    ASSERT_TRUE(host.write("Disc/t", "ab\r\n\r\nc\rd\r\r\ne\r"));
    const struct {
        int mode;
        std::vector<std::string> lines;
        int bytes;
    } rows[] = {
        {CFile::kReadText, {"ab\n", "\n", "c\rd\r\n", "e\r"}, 11},
        {0x01, {"ab\n", "\n", "c\rd\r\n", "e\r"}, 11},
        {CFile::kReadBinary, {"ab\r\n", "\r\n", "c\rd\r\r\n", "e\r"}, 14},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.mode);
        CFile file(window.get(), "t", row.mode);
        for (const auto& line : row.lines)
            EXPECT_EQ(text(file.getLine()), line);
        EXPECT_TRUE(file.eof());
        EXPECT_EQ(text(file.getLine()), "");
        // In one piece, and with every boundary between carriage return and line feed.
        for (int step = 1; step <= 16; ++step) {
            file.Seek(0, SEEK_SET);
            std::string all;
            char buffer[16];
            while (const int got = file.Read(buffer, step))
                all.append(buffer, static_cast<std::size_t>(got));
            std::string wanted;
            for (const auto& line : row.lines)
                wanted += line;
            EXPECT_EQ(all, wanted) << step;
            EXPECT_EQ(static_cast<int>(all.size()), row.bytes);
        }
    }
    ASSERT_TRUE(host.write("Disc/long", std::string(10239, 'x') + "yz\n"));
    CFile file(window.get(), "long", CFile::kReadText);
    EXPECT_EQ(file.getLine().GetLength(), 10239);
    EXPECT_EQ(file.getLine(), "yz\n");
}

TEST_F(Storage, AFileMadeToBeReadTooTurnsRoundAtOnce) {
    CFile file(window.get(), "new", CFile::kCreateBinary);
    EXPECT_EQ(file.Write("abcdef", 6), 1);
    EXPECT_EQ(file.Seek(2, SEEK_SET), 0);
    char buffer[3] = "";
    EXPECT_EQ(file.Read(buffer, 2), 2);
    EXPECT_STREQ(buffer, "cd");
    EXPECT_EQ(file.Write("X", 1), 1);
    EXPECT_EQ(file.Length(), 6);
    EXPECT_EQ(file.Tell(), 5);
    EXPECT_EQ(file.Read(buffer, 3), 1);
    EXPECT_EQ(buffer[0], 'f');
    file.Close();
    EXPECT_EQ(read("new"), "abcdXf");
}

TEST_F(Storage, AFolderWalksByLettersAndTellsTypes) {
    for (const char* name : {"Dane/A.menu/x", "Dane/B.+quiz/A.third/x", "Dane/C.mapa/x", "Dane/b.file"})
        ASSERT_TRUE(host.write(std::string("Disc/") + name, ""));
    {
        CFolder folder(window.get(), ".\\Dane");
        EXPECT_EQ(here(), "\\Disc\\Dane");
        EXPECT_EQ(folder.GoTo(0), "m") << "one character without a plus";
        folder.GoStart();
        EXPECT_EQ(here(), "\\Disc\\Dane\\A.menu") << "a relative start is not found from below";
        folder.GoUp();
    }
    const CXString start = CXString(std::string_view(host.files.currentFolder())).Right(2);  // without the drive
    CFolder folder(window.get(), start);
    EXPECT_EQ(text(folder.getPath()), text(start));
    EXPECT_EQ(folder.GoTo(1), "quiz") << "the folder, not the file of that letter";
    EXPECT_EQ(folder.GoTo(0), "t");
    EXPECT_EQ(text(folder.getPath()), text(start) + "\\B.+quiz\\A.third");
    EXPECT_EQ(folder.GoTo(0), "");
    EXPECT_EQ(folder.GoTo(-1), "");
    EXPECT_EQ(here(), "\\Disc\\Dane\\B.+quiz\\A.third");
    folder.GoUp();
    EXPECT_EQ(text(folder.getPath()), text(start) + "\\B.+quiz");
    EXPECT_EQ(here(), "\\Disc\\Dane\\B.+quiz");
    folder.GoStart();
    EXPECT_EQ(text(folder.getPath()), text(start));
    EXPECT_EQ(here(), "\\Disc\\Dane");
    window->ChDir("A.menu");
    folder.back();
    EXPECT_EQ(here(), "\\Disc\\Dane");
}

TEST_F(Storage, AFolderFindsNamesWithAndWithoutAWindow) {
    for (const char* name : {"b.txt", "A.TXT", "c.img", "sub.txt/x"})
        ASSERT_TRUE(host.write(std::string("Disc/Find/") + name, "123"));
    window->ChDir("Find");
    for (CWindow* place : {window.get(), static_cast<CWindow*>(nullptr)}) {
        SCOPED_TRACE(place ? "with a window" : "without");
        CFolder folder(place);
        CXArray* names = folder.list("*.txt");
        ASSERT_EQ(names->size(), 3);
        EXPECT_EQ(*names->stringAt(0), "A.TXT");
        EXPECT_EQ(*names->stringAt(1), "b.txt");
        EXPECT_EQ(*names->stringAt(2), "sub.txt");
        CFolder::releaseFilesList(names);
        EXPECT_EQ(folder.GetFolderName("*"), "sub.txt");
        EXPECT_EQ(folder.GetNextFileName(), "");
        EXPECT_EQ(folder.GetFileName("*.gif"), "");
        EXPECT_EQ(folder.GetNextFileName(), "");
        EXPECT_TRUE(folder.IsDirectory("SUB.TXT"));
        EXPECT_FALSE(folder.IsDirectory("b.txt"));
        EXPECT_FALSE(folder.IsDirectory("none"));
        EXPECT_EQ(folder.GetSize("B.txt"), 3);
        EXPECT_EQ(folder.GetSize("none"), 0);
    }
    CFolder::releaseFilesList(nullptr);
}

TEST(FileNameResolver, SplitsPathsAndNames) {
    const struct {
        const char* path;
        char drive;
        const char *name, *pure, *extension, *folder;
        std::vector<CXString> folders;
    } rows[] = {
        {"C:\\a\\b\\pic.old.img", 'C', "pic.old.img", "pic", "old", "C:\\a\\b\\", {"a", "b"}},
        {"a\\pic", 0, "pic", "pic", "", "a\\", {"a"}},
        {"pic.ann", 0, "pic.ann", "pic", "ann", "", {}},
        {"\\\\a\\.x", 0, ".x", "x", "", "\\\\a\\", {"a"}},
        {"D:", 'D', "", "", "", "", {}},
        {"", 0, "", "", "", "", {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        const CFileNameResolver resolver{CXString(row.path)};
        EXPECT_EQ(resolver.getDrive(), row.drive);
        EXPECT_EQ(resolver.getFileName(), row.name);
        EXPECT_EQ(resolver.getPureFileName(), row.pure);
        EXPECT_EQ(resolver.getExtension(), row.extension);
        EXPECT_EQ(resolver.getPath(), row.folder);
        EXPECT_EQ(resolver.getFolders(), row.folders);
    }
}
