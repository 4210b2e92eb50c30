// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "storage/archive.h"

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>

#include "graphics/geometry.h"
#include "platform/headless/headless.h"
#include "storage/file.h"

namespace {

using namespace std::string_literals;

class Archive : public testing::Test {
protected:
    std::string written(const std::function<void(CXArchive&)>& write) {
        CFile file(nullptr, "a", CFile::kCreateBinary);
        CXArchive archive(&file, true);
        write(archive);
        EXPECT_TRUE(archive.ok());
        archive.Close();
        return host.files.readFile("a").value_or("(none)");
    }
    // What `read` says of an archive with this content.
    template <class Read>
    void reading(const std::string& content, Read read) {
        ASSERT_TRUE(host.write("a", content));
        CFile file(nullptr, "a", CFile::kReadBinary);
        CXArchive archive(&file, false);
        read(archive);
    }

    headless::HeadlessPlatform host;
};

}  // namespace

TEST_F(Archive, WritesEachKindByteForByte) {
    const CXString text300 = [] {
        CXString text;
        text.FillWith('x', 300);
        return text;
    }();
    const struct {
        const char* what;
        std::function<void(CXArchive&)> write;
        std::string bytes;
    } rows[] = {
        {"int", [](CXArchive& a) { a << -2 << 0x01020304; }, "\xFE\xFF\xFF\xFF\4\3\2\1"s},
        {"unsigned long", [](CXArchive& a) { a << 0xF1020304UL; }, "\4\3\2\xF1"s},
        {"64 bits", [](CXArchive& a) { a << std::int64_t{-2}; }, "\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s},
        {"bool", [](CXArchive& a) { a << true << false; }, "\1\0"s},
        {"double", [](CXArchive& a) { a << 1.5 << 0.0004 << -0.0019; }, "\xDC\5\0\0\0\0\0\0\xFF\xFF\xFF\xFF"s},
        {"large double", [](CXArchive& a) { a << 3e6 << -1e300; }, "\xFF\xFF\xFF\x7F\0\0\0\x80"s},
        {"no number", [](CXArchive& a) { a << std::nan("") << HUGE_VAL; }, "\0\0\0\0\xFF\xFF\xFF\x7F"s},
        {"text", [](CXArchive& a) { a << CXString("ab\xB9"); }, "\3\0\0\0ab\xB9"s},
        {"empty text", [](CXArchive& a) { a << CXString(); }, "\0\0\0\0"s},
        {"characters", [](CXArchive& a) { a << "abc"; }, "\3\0\0\0abc"s},
        {"rectangle", [](CXArchive& a) { a << CXRect(1, 2, 3, -1); }, "\1\0\0\0\2\0\0\0\3\0\0\0\xFF\xFF\xFF\xFF"s},
        {"short text", [](CXArchive& a) { a.writeShortString("abc"); }, "\3abc"s},
        {"long as short", [&](CXArchive& a) { a.writeShortString(text300); }, "\x2C"s + std::string(44, 'x')},
        {"bare", [](CXArchive& a) { a.FWrite("a b"); }, "a b"s},
    };
    for (const auto& row : rows)
        EXPECT_EQ(written(row.write), row.bytes) << row.what;
}

TEST_F(Archive, AReadCutShortAnywhereKeepsTheOldValueAndIsTold) {
    const std::string whole = written([](CXArchive& a) {
                                  a << 7 << 5UL << std::int64_t{9} << true << 2.5 << CXString("text") << "chars"
                                    << CXRect(1, 2, 3, 4);
                                  a.writeShortString("short");
                              }) +
                              "\x81";
    // How many bytes each value needs, in their order.
    const std::size_t ends[] = {4, 8, 16, 17, 21, 29, 38, 54, 60, 61};
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        SCOPED_TRACE(length);
        reading(whole.substr(0, length), [&](CXArchive& archive) {
            int i = -1;
            unsigned long u = 1;
            std::int64_t l = -1;
            bool b = false;
            double d = -1;
            CXString text("old"), brief("old");
            char* chars = nullptr;
            CXRect rect(9);
            unsigned char c = 0;
            archive >> i >> u >> l >> b >> d >> text >> &chars >> rect;
            archive.readShortString(brief);
            archive >> c;
            const std::unique_ptr<char[]> owned(chars);
            EXPECT_EQ(i, length >= ends[0] ? 7 : -1);
            EXPECT_EQ(u, length >= ends[1] ? 5U : 1U);
            EXPECT_EQ(l, length >= ends[2] ? 9 : -1);
            EXPECT_EQ(b, length >= ends[3]);
            EXPECT_EQ(d, length >= ends[4] ? 2.5 : -1);
            EXPECT_EQ(text, length >= ends[5] ? "text" : "old");
            EXPECT_STREQ(chars, length >= ends[6] ? "chars" : nullptr);
            EXPECT_EQ(rect, length >= ends[7] ? CXRect(1, 2, 3, 4) : CXRect(9));
            EXPECT_EQ(brief, length >= ends[8] ? "short" : "old");
            EXPECT_EQ(c, length >= ends[9] ? 0x81 : 0);
            EXPECT_EQ(archive.ok(), length == whole.size());
        });
    }
}

TEST_F(Archive, LengthsAreComparedWithWhatIsLeft) {
    const struct {
        const char* what;
        std::string bytes;
        bool textFits, charsFit;
    } rows[] = {
        {"far too long",
         "\xFF\xFF\xFF\x7F"
         "abc"s,
         false, false},
        {"one too long", "\4\0\0\0abc"s, false, false},
        {"negative",
         "\xFF\xFF\xFF\xFF"
         "abc"s,
         true, false},
        {"empty", "\0\0\0\0"s, true, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        reading(row.bytes, [&](CXArchive& archive) {
            CXString text("old");
            archive >> text;
            EXPECT_EQ(archive.ok(), row.textFits);
            EXPECT_EQ(text, row.textFits ? "" : "old");
        });
        reading(row.bytes, [&](CXArchive& archive) {
            char* chars = nullptr;
            archive >> &chars;
            EXPECT_EQ(archive.ok(), row.charsFit);
            EXPECT_EQ(chars != nullptr, row.charsFit);
            delete[] chars;
        });
    }
    // Once told, nothing more is read, though it would fit.
    reading("\1\0\0\0"s, [](CXArchive& archive) {
        std::int64_t large = 5;
        char small = 'x';
        archive >> large >> small;
        EXPECT_EQ(small, 'x');
    });
}

TEST_F(Archive, TokensEndAtBlanksAndLeaveThemForTheNext) {
    reading(" \t\nfirst second\n" + std::string(1030, 'y'), [](CXArchive& archive) {
        CXString token;
        archive.FRead(token);
        EXPECT_EQ(token, "first");
        char blank = 'x';
        archive >> blank;
        EXPECT_EQ(blank, ' ');
        archive.FRead(token);
        EXPECT_EQ(token, "second");
        archive.FRead(token);
        EXPECT_EQ(token.GetLength(), 1024);
        archive.FRead(token);
        EXPECT_EQ(token, "yyyyyy");
        EXPECT_TRUE(archive.ok());
        archive.FRead(token);
        EXPECT_EQ(token, "yyyyyy");
        EXPECT_FALSE(archive.ok());
    });
}

TEST_F(Archive, CopiesAFileWholeAndAMissingOneNotAtAll) {
    std::string large;
    for (int i = 0; i < 10000; ++i)
        large += static_cast<char>(i * 7);
    ASSERT_TRUE(host.write("source", large));
    EXPECT_EQ(written([](CXArchive& a) {
                  a << true;
                  EXPECT_TRUE(a.CopyFileA("source"));
                  EXPECT_TRUE(a.CopyFileA("missing"));
                  a << true;
              }),
              "\1" + large + "\1");
    CXArchive nowhere(nullptr, true);
    nowhere << 1;
    EXPECT_FALSE(nowhere.ok());
}
