// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "prosc/big_file.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

#include "animation/image.h"
#include "sound/sound.h"
#include "sound/streamed_wav.h"
#include "storage/big_file.h"
#include "storage/file.h"
#include "support/pictures.h"
#include "support/stage.h"
#include "support/waves.h"

namespace {

// A tree to be stored; offsets are counted by hand, independently of the writer.
struct Tree {
    std::string name;
    std::vector<Tree> folders;
    std::vector<std::pair<std::string, std::string>> files;
};

std::string text(const std::string& bytes) { return littleEndian(static_cast<std::uint32_t>(bytes.size()), 4) + bytes; }

std::size_t tableSize(const Tree& tree) {
    std::size_t size = 12 + tree.name.size();
    for (const Tree& sub : tree.folders)
        size += tableSize(sub);
    for (const auto& file : tree.files)
        size += 20 + file.first.size();
    return size;
}

void store(const Tree& tree, std::size_t tableEnd, std::string& records, std::string& data) {
    records += text(tree.name) + littleEndian(static_cast<std::uint32_t>(tree.files.size()), 4) +
               littleEndian(static_cast<std::uint32_t>(tree.folders.size()), 4);
    for (const Tree& sub : tree.folders)
        store(sub, tableEnd, records, data);
    for (const auto& [name, content] : tree.files) {
        records += text(name) + littleEndian(static_cast<std::uint32_t>(tableEnd + data.size()), 4) +
                   std::string(8, '\0') + littleEndian(static_cast<std::uint32_t>(content.size()), 4);
        data += content;
    }
}

// The three numbers of the header: total size, files and folders.
std::string stored(const Tree& tree, int total = 0, int files = 0, int folders = 0) {
    std::string bytes = text("n") + text("\\") + littleEndian(static_cast<std::uint32_t>(total), 4) +
                        std::string(16, '\0') + littleEndian(static_cast<std::uint32_t>(files), 4) +
                        littleEndian(static_cast<std::uint32_t>(folders), 4);
    std::string data;
    store(tree, bytes.size() + tableSize(tree), bytes, data);
    return bytes + data;
}

std::string rest(CFile& file) {
    const auto bytes = file.readRest(1 << 20);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// The search as it is told: folder after folder, record after record.
const _file* walkFor(const _entry* folder, CXString part, CXString name) {
    for (const _entry* sub : folder->folders) {
        if (CXString(sub->name).Lower() != CXString(part).Lower()) continue;
        const int at = name.Find('\\');
        const _file* found = at >= 0 ? walkFor(sub, name.Left(at), name.Right(at + 1)) : walkFor(sub, "", name);
        if (found || at >= 0) return found;
        break;
    }
    if (!name.IsString()) return nullptr;
    for (const _file* file : folder->files)
        if (CXString(file->name).Lower() == CXString(name).Lower()) return file;
    return nullptr;
}

int offsetByWalk(const CBigFile& bigFile, CXString name) {
    if (name.GetAt(0) == '\\') name.right(1);
    const int at = name.Find('\\');
    const _file* file = at > 0 ? walkFor(bigFile.table()->root, name.Left(at), name.Right(at + 1))
                               : walkFor(bigFile.table()->root, "", name);
    return file ? file->offset : -1;
}

const Tree kTree{"C:\\src",
                 {{"x", {{"Deep", {}, {{"a", "deep-a"}}}, {"", {}, {{"e", "in-empty"}}}}, {{"a", "x-a"}}},
                  {"X", {}, {{"second", "never found"}}},
                  {"", {{"", {}, {{"b", "in-two-empty"}}}}, {{"c\\d", "odd"}}}},
                 {{"F.Txt", "root-f"}, {"a", "root-a"}, {"A", "second a"}, {"nil", ""}, {"c\\d", "odd too"}}};

}  // namespace

TEST(BigFile, FindsWhatAWalkThroughItsRecordsFinds) {
    const headless::HeadlessPlatform platform;
    ASSERT_TRUE(platform.write("a.big", stored(kTree)));
    CBigFile bigFile(nullptr, "a.big", false, "");
    ASSERT_NE(bigFile.GetFile(), nullptr);
    const struct {
        const char* name;
        const char* content;  // null: not found
    } rows[] = {
        {"f.tXT", "root-f"},
        {"\\F.TXT", "root-f"},
        {"a", "root-a"},
        {"X\\A", "x-a"},
        {"x\\deep\\a", "deep-a"},
        {"\\x\\DEEP\\a", "deep-a"},
        {"x\\f.txt", "root-f"},
        {"x\\deep\\f.txt", nullptr},
        {"x\\second", nullptr},
        {"x\\none", nullptr},
        {"nil", ""},
        {"x\\", nullptr},
        {"", nullptr},
        {"e", nullptr},
        {"b", "in-two-empty"},
        {"x\\nowhere\\a", "x-a"},
        {"no\\a", "root-a"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        bigFile.Seek(5, SEEK_SET);
        const int offset = bigFile.Seek(row.name);
        EXPECT_EQ(bigFile.Tell(), row.content ? offset : 5);
        EXPECT_EQ(row.content ? rest(*bigFile.GetFile()) : "", row.content ? row.content : "");
        EXPECT_EQ(bigFile.GetSize(row.name), row.content ? static_cast<int>(strlen(row.content)) : -1);
    }
    // Every name of up to six pieces.
    const char* pieces[] = {"\\", "x", "deep", "A", "b", "e"};
    for (int n = 0; n < 6 * 6 * 6 * 6 * 6 * 6; ++n) {
        CXString name;
        for (int left = n; left > 0; left /= 6)
            name += pieces[left % 6];
        ASSERT_EQ(bigFile.Seek(name), offsetByWalk(bigFile, name)) << name.c_str();
    }
}

TEST(BigFile, GivesNothingBeyondAFile) {
    const headless::HeadlessPlatform platform;
    ASSERT_TRUE(platform.write("a.big", stored(kTree)));
    CBigFile bigFile(nullptr, "a.big", false, "");
    const int offset = bigFile.Seek("x\\a");
    CFile& stream = *bigFile.GetFile();
    char bytes[100];
    EXPECT_EQ(stream.left(), 3);
    EXPECT_EQ(stream.Read(bytes, 100), 3);
    EXPECT_EQ(stream.Read(bytes, 100), 0);
    EXPECT_EQ(stream.getLine(), "");
    stream.Seek(offset - 1, SEEK_SET);
    EXPECT_EQ(stream.Read(bytes, 1), 0) << "nor before it";
    // The end of the whole is free for whoever asks for it by number.
    bigFile.Seek(-7, SEEK_END);
    EXPECT_EQ(rest(stream), "odd too");
}

TEST(BigFile, SearchesItsRootAndCallsItNothing) {
    const headless::HeadlessPlatform platform;
    ASSERT_TRUE(platform.write("a.big", stored(kTree)));
    CBigFile bigFile(nullptr, "a.big", false, "");
    const struct {
        const char* pattern;
        int index;
        const char* name;
    } rows[] = {{"*.TXT", 0, "F.Txt"}, {"A", 1, "a"}, {"X", 5, "x"}, {"deep", 7, ""}, {"*.*", 0, "F.Txt"}};
    for (const auto& row : rows) {
        _finddata_t found;
        EXPECT_EQ(bigFile.FindFirst(row.pattern, &found), row.index) << row.pattern;
        EXPECT_EQ(found.name, row.name);
        EXPECT_EQ(found.attrib, row.index >= 5 ? kAttributeFolder : 0U);
    }
    bigFile.ChDir("x");
    EXPECT_EQ(bigFile.GetCurrentDirectoryA(), "");
    EXPECT_EQ(CBigFile(nullptr, "none.big", false, "").GetCurrentDirectoryA(), platform.files.currentFolder().c_str());
}

TEST(BigFile, ADamagedTableOpensNothing) {
    const headless::HeadlessPlatform platform;
    const std::string whole = stored(kTree);
    const std::size_t table = 38 + tableSize(kTree);
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        ASSERT_TRUE(platform.write("a.big", whole.substr(0, length)));
        CBigFile bigFile(nullptr, "a.big", false, "");
        ASSERT_EQ(bigFile.GetFile() != nullptr, length >= table) << length;
        if (length < table) continue;
        // A file of which the end is missing ends there.
        const int offset = bigFile.Seek("x\\deep\\a");
        ASSERT_EQ(offset, static_cast<int>(table));
        ASSERT_EQ(rest(*bigFile.GetFile()), std::string("deep-a").substr(0, length - table));
    }
    for (const std::size_t at : {std::size_t{38 + 4 + 6}, std::size_t{38 + 4 + 6 + 4}, table - 4, table - 16}) {
        std::string bytes = whole;
        bytes[at + 3] = '\x80';
        ASSERT_TRUE(platform.write("a.big", bytes));
        EXPECT_EQ(CBigFile(nullptr, "a.big", false, "").GetFile(), nullptr) << at;
    }
}

TEST(BigFile, ATreeOfAnyDepthIsReadAndLeft) {
    constexpr int kDeep = 10000;
    const headless::HeadlessPlatform platform;
    std::string bytes = text("n") + text("\\") + std::string(28, '\0') + text("");
    std::string name;
    for (int i = 0; i < kDeep; ++i) {
        bytes += littleEndian(0, 4) + littleEndian(1, 4) + text("d");
        name += "d\\";
    }
    bytes += littleEndian(1, 4) + littleEndian(0, 4);
    const std::size_t end = bytes.size() + 21;
    bytes += text("f") + littleEndian(static_cast<std::uint32_t>(end), 4) + std::string(8, '\0') + littleEndian(2, 4);
    ASSERT_TRUE(platform.write("a.big", bytes + "ok"));
    CBigFile bigFile(nullptr, "a.big", false, "");
    ASSERT_NE(bigFile.GetFile(), nullptr);
    EXPECT_EQ(bigFile.Seek((name + "F").c_str()), static_cast<int>(end));
    EXPECT_EQ(rest(*bigFile.GetFile()), "ok");
    EXPECT_EQ(CBigFile::pathOf(bigFile.table()->allFolders.back()).GetLength(), 2 * kDeep);
}

TEST(BigFile, IsWrittenAsItIsRead) {
    const headless::HeadlessPlatform platform;
    // The platform lists by name, so this is the order of the records.
    const Tree tree{
        "src", {{"Dane", {{"sub", {}, {{"a", "1"}}}}, {{"z", "22"}}}, {"e", {}, {}}}, {{"a", ""}, {"q", "4444"}}};
    platform.write("src/Dane/sub/a", "1");
    platform.write("src/Dane/z", "22");
    platform.write("src/a", "");
    platform.write("src/q", "4444");
    std::filesystem::create_directory(platform.folder() + "/src/e");
    CBigFile bigFile(nullptr, true, "");
    testing::internal::CaptureStdout();
    const bool done = bigFile.Create("src", "n", "a.big");
    const std::string told = testing::internal::GetCapturedStdout();
    ASSERT_TRUE(done);
    EXPECT_EQ(contentOf(platform.folder() + "/a.big"), stored(tree, 7, 4, 3));
    EXPECT_TRUE(
        told.starts_with("Big file name: n.\nNumber of folders: 3.\nNumber of files: 4.\nTotal size: 7 bytes.\n"
                         "TOC size: " +
                         std::to_string(38 + tableSize(tree)) + " bytes.\nTOC saved.\n\r" + std::string(48, ' ') +
                         "\rFile 1 of 4 saved.\r"))
        << told;
    EXPECT_TRUE(told.ends_with("\rFile 4 of 4 saved."));
    EXPECT_EQ(bigFile.GetFile(), nullptr);
    EXPECT_EQ(bigFile.GetSize("dane\\z"), 2) << "the tree stays";
    EXPECT_FALSE(CBigFile(nullptr, false, "").Create("src", "n", "none\\a.big"));
}

TEST(BigFile, LoadersReadWhatTheDiskLacksAndNoFurther) {
    const std::string sound = wave(level(7, 100));
    const std::string cut = sound.substr(0, sound.size() - 50);
    const std::string picture = pictures::nvi(2, 1, pictures::plane({1, 2}));
    Stage stage;
    stage.file("a.big", stored({"",
                                {},
                                {{"a.wav", cut},
                                 {"a.img", picture},
                                 {"cut.img", picture.substr(0, 39)},
                                 {"none.wav", ""},
                                 {"b.wav", wave(level(9, 10))}}}));
    stage.start();
    CWindow* window = CWindow::current();
    window->attach(
        std::make_unique<CBigFile>(window, "C:" + CXString(stage.platform.folder().c_str()) + "/a.big", false, ""));
    ASSERT_NE(window->Resource()->GetFile(), nullptr);
    EXPECT_TRUE(window->FileExists("A.IMG"));

    CImage image(window, "a.img");
    EXPECT_EQ(image.Width(), 2);
    CImage damaged(window, "cut.img");
    EXPECT_EQ(damaged.Width(), 0) << "what stands behind it is another's";
    CSound4 whole(window, "b.wav", true);
    EXPECT_EQ(whole.getDataLength(), 20);
    CSound4 shorter(window, "a.wav", true);
    EXPECT_EQ(shorter.getDataLength(), 150);
    EXPECT_FALSE(CSound4(window).Load("none.wav"));

    CStreamedWAV stream(window, "A.wav");
    ASSERT_TRUE(stream.isOpen());
    EXPECT_EQ(stream.getDataLength(), 150);
    const int before = window->Resource()->Seek("b.wav");
    std::vector<std::byte> samples(300);
    EXPECT_EQ(stream.read(std::span(samples).first(100)), 100);
    EXPECT_EQ(window->Resource()->Tell(), before) << "it reads on its own";
    EXPECT_EQ(stream.read(samples), 50);
    stream.readAround(samples);
    EXPECT_EQ(samples[298], std::byte{7});
}

TEST(BigFile, ExtractionStaysInItsFolder) {
    const headless::HeadlessPlatform platform;
    const std::filesystem::path base = platform.folder();
    const std::filesystem::path out = base / "out";
    const Tree hostile{"",
                       {{"..", {}, {{"up", "1"}}},
                        {"C:", {}, {{"drive", "2"}}},
                        {"link", {}, {{"through", "3"}}},
                        {"", {}, {{"etc", "4"}}},
                        {"fine", {{"er", {}, {{"in", "5"}}}}, {}}},
                       {{"../up", "6"},
                        {"..\\up", "7"},
                        {(base / "abs").string(), "8"},
                        {"..", "9"},
                        {"c:x", "a"},
                        {"pointer", "b"},
                        {"good", "c"},
                        {"good", "d"}}};
    ASSERT_TRUE(platform.write("a.big", stored(hostile)));
    ASSERT_TRUE(platform.write("victim", "safe"));
    std::filesystem::create_directories(base / "elsewhere");
    std::filesystem::create_directories(out);
    std::filesystem::create_symlink(base / "elsewhere", out / "link");
    std::filesystem::create_symlink(base / "victim", out / "pointer");
    CBigFile bigFile(nullptr, "a.big", false, "");
    ASSERT_NE(bigFile.GetFile(), nullptr);
    const std::vector<std::string> wrong = prosc::extractBigFile(bigFile, out);
    EXPECT_EQ(wrong.size(), 4U * 2 + 5 + 1 + 1);
    EXPECT_EQ(contentOf(out / "fine/er/in"), "5");
    EXPECT_EQ(contentOf(out / "good"), "c");
    EXPECT_EQ(contentOf(base / "victim"), "safe");
    EXPECT_TRUE(std::filesystem::is_empty(base / "elsewhere"));
    std::vector<std::string> there;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(base))
        there.push_back(entry.path().lexically_relative(base).string());
    std::sort(there.begin(), there.end());
    EXPECT_EQ(there, (std::vector<std::string>{"a.big", "elsewhere", "out", "out/fine", "out/fine/er", "out/fine/er/in",
                                               "out/good", "out/link", "out/pointer", "victim"}));
}

TEST(BigFile, PackedAndExtractedIsTheSame) {
    const headless::HeadlessPlatform platform;
    const std::filesystem::path base = platform.folder();
    platform.write("app/Dane/S/S.cnv", "scene");
    platform.write("app/x", "x");
    std::filesystem::create_directories(base / "to/Dane");
    testing::internal::CaptureStdout();
    EXPECT_EQ(prosc::packFolder(base / "app", "n", base / "to/Dane/a.big"), "");
    EXPECT_NE(prosc::packFolder(base / "app", "n", base / "app/a.big"), "");
    testing::internal::GetCapturedStdout();
    CBigFile bigFile(nullptr, prosc::libraryName(base / "to/Dane/a.big"), false, "");
    ASSERT_NE(bigFile.GetFile(), nullptr);
    EXPECT_NE(prosc::listBigFile(bigFile).find(" Dane\\S\\S.cnv\n         1 "), std::string::npos)
        << prosc::listBigFile(bigFile);
    EXPECT_EQ(prosc::extractBigFile(bigFile, base / "back"), std::vector<std::string>());
    EXPECT_EQ(contentOf(base / "back/Dane/S/S.cnv"), "scene");
    EXPECT_EQ(contentOf(base / "back/x"), "x");
}
