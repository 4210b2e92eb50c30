// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "text/font.h"

#include <gtest/gtest.h>

#include "platform/headless/headless.h"
#include "support/animations.h"
#include "support/fonts.h"
#include "support/stage.h"
#include "text/font_collection.h"
#include "text/simple_font.h"

namespace {

using fonts::Face;
using fonts::Font;

// A black page of 60 by 20 and what has been drawn on it.
struct Page : CGraphicsObject {
    Page() : CGraphicsObject(nullptr, {60, 20}, 16) {}
    // First and last column of each run in that row, as "3-7 9-9".
    std::string runs(int y = 5) const {
        std::string found;
        const auto row = getData().pixels().subspan(static_cast<std::size_t>(y) * 60, 60);
        for (std::size_t x = 0, start = 0; x <= row.size(); ++x) {
            const bool lit = x < row.size() && row[x] != 0, was = x > 0 && row[x - 1] != 0;
            if (lit && !was) start = x;
            if (!lit && was) found += (found.empty() ? "" : " ") + std::to_string(start) + "-" + std::to_string(x - 1);
        }
        return found;
    }
};

const Face kFace{.left = {{'a', 1}, {'c', 3}},
                 .right = {{'a', 2}, {'b', 5}, {'c', 3}, {'l', 4}},
                 .kerning = {{"ab", 1}, {"ba", -3}}};

class SimpleFont : public testing::Test {
protected:
    headless::HeadlessPlatform platform_;
};

}  // namespace

TEST_F(SimpleFont, MeasuresAndDrawsByKerningOffsetsAndGap) {
    Font font(kFace);
    const struct {
        const char* what;
        char previous, current;
        int width, real, advance;
        const char* drawn;  // at 20
    } rows[] = {
        {"first letter", 0, 'a', 7, 7, 9, "20-26"},
        {"kerning brings nearer", 'a', 'b', 4, 5, 6, "19-23"},
        {"kerning holds off", 'b', 'a', 10, 7, 12, "23-29"},
        {"before it a stranger", 'z', 'b', 5, 5, 7, "20-24"},
        {"both offsets", 'a', 'c', 4, 4, 6, "20-23"},
        {"blank is as wide as l", 'a', ' ', 6, 6, 8, ""},
        {"thin blank", 'a', '~', 1, 1, 3, ""},
        {"a stranger", 'a', 'z', 0, 0, 2, ""},
        {"no letter", 'a', 0, 0, 0, 2, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Page page;
        font.SetDestiny(&page);
        EXPECT_EQ(font.getLetterWidth(row.previous, row.current), row.width);
        EXPECT_EQ(font.getRealLetterWidth(row.current), row.real);
        EXPECT_EQ(font.drawLetter(20, 0, row.previous, row.current), row.advance);
        EXPECT_EQ(page.runs(), row.drawn);
        font.SetDestiny(nullptr);
    }
}

TEST_F(SimpleFont, ClipsFromTheLettersOwnEdge) {
    Font font(kFace);
    const struct {
        const char* what;
        CXRect clip;
        const char* drawn;
    } rows[] = {
        {"one column more than the clip says", {1, 0, 3, 20}, "21-23"},
        {"never beyond the letter", {-4, -4, 50, 50}, "20-26"},
        {"beside the letter", {9, 0, 12, 20}, ""},
        {"above the row", {0, 0, 7, 5}, ""},
        {"empty takes it away", {3, 0, 3, 20}, "20-26"},
        {"the largest edge there is", {0, 0, INT32_MAX, INT32_MAX}, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Page page;
        font.SetDestiny(&page);
        font.SetClippingRect('a', row.clip);
        font.drawLetter(20, 0, 0, 'a');
        EXPECT_EQ(page.runs(), row.drawn);
        font.SetClippingRect(CXRect());
    }
}

TEST_F(SimpleFont, TakesItsColourAtOnce) {
    Font font(kFace);
    Page page;
    font.SetDestiny(&page);
    const auto drawn = [&](int x) {
        font.drawLetter(x, 0, 0, 'b');
        return page.getData().pixels()[static_cast<std::size_t>(x)];
    };
    EXPECT_EQ(drawn(0), 0xFFFF) << "as the file has it";
    font.setColor(0x1234567);
    EXPECT_EQ(drawn(10), 0x4567);
    font.setColor(0);
    font.setColor(0x4567);
    EXPECT_EQ(drawn(20), 0x4567) << "a colour that nothing was drawn in leaves no trace";
    font.setColor(31);
    EXPECT_EQ(*reinterpret_cast<std::uint16_t*>(font.GetDataPtr()), 31);
    CGraphicsObject coarse(nullptr, {60, 20}, 15);
    font.SetDestiny(&coarse);
    font.setColor(0xF800);
    font.drawLetter(0, 0, 0, 'b');
    EXPECT_EQ(coarse.getData().pixels()[0], 0x7C00) << "brought to the format of the screen";
    font.setColor(0xF800);
    font.drawLetter(10, 0, 0, 'b');
    EXPECT_EQ(coarse.getData().pixels()[10], 0xF800) << "the same number is another colour there";
}

TEST_F(SimpleFont, ReadsLyingFilesAsEmpty) {
    const std::string good = fonts::file(kFace);
    const auto with = [&](std::size_t at, std::int64_t value) {
        std::string bytes = good, number;
        fonts::put(number, value, 4);
        return bytes.replace(at, 4, number);
    };
    const struct {
        const char* what;
        std::string bytes;
        int letters;
    } rows[] = {
        {"good", good, 4},
        {"another magic", with(0, 7), 4},
        {"no letters", with(16, 0), 0},
        {"all letters there are", with(16, INT32_MAX), 0},
        {"fewer than none", with(16, -1), 0},
        {"as many as squared is little", with(16, 65536), 0},
        {"a strip of all memory", with(4, INT32_MAX), 0},
        {"a negative width", with(4, -40), 0},
        {"a width that doesn't divide", with(4, 39), 4},
        {"no pixels, of all heights", with(4, 0).replace(8, 4, "\xFF\xFF\xFF\x7F"), 0},
        {"no width", with(4, 0), 4},
        {"an unknown depth", with(12, 77), 4},
        {"something behind it", good + "more", 4},
    };
    Page page;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Font font(kFace);
        EXPECT_EQ(font.loadBytes(row.bytes) == 0, row.letters > 0 || row.what == std::string("no letters"));
        EXPECT_EQ(font.getLetterCount(), row.letters);
        font.SetDestiny(&page);
        for (int letter = -128; letter < 128; ++letter)
            font.drawLetter(letter, -3, 'a', static_cast<char>(letter));
    }
    for (std::size_t length = 0; length < good.size(); length += length < 60 ? 1 : 97) {
        Font font(kFace);
        font.loadBytes(good.substr(0, length));
        EXPECT_EQ(font.getLetterCount(), 0) << length;
    }
    Font font(kFace);
    font.Load("none.fnt");
    EXPECT_EQ(font.getLetterCount(), 0) << "a file that isn't there";
    EXPECT_EQ(font.drawLetter(0, 0, 0, ' '), CSimpleFont6::kGap);
}

TEST_F(SimpleFont, DrawsNothingForOffsetsWiderThanTheCell) {
    Font font(Face{.left = {{'a', 9}}, .right = {{'a', 9}, {'b', 10}}});
    Page page;
    font.SetDestiny(&page);
    EXPECT_EQ(font.drawLetter(20, 0, 0, 'a'), -6);
    EXPECT_EQ(font.drawLetter(20, 0, 0, 'b'), 2);
    EXPECT_EQ(page.runs(), "");
}

TEST_F(SimpleFont, CollectionStandsForItsBaseFont) {
    CFontCollection fonts(nullptr);
    EXPECT_EQ(fonts.drawLetter(0, 0, 0, 'a') + fonts.getLetterWidth(0, 'a') + fonts.Height(), 0);
    auto plain = std::make_unique<Font>(kFace);
    Font bold(Face{.cell = 14, .height = 24}, "BOLD");
    fonts.addFont(plain.get());
    fonts.addFont(&bold);
    fonts.addFont(plain.get());
    EXPECT_EQ(fonts.getBaseFont(), plain.get());
    EXPECT_EQ(fonts.Height(), 20);
    EXPECT_EQ(fonts.get("arial", "bold", 12), &bold);
    EXPECT_EQ(fonts.get("arial", "bold", 13), nullptr);
    fonts.setColor(5);
    EXPECT_EQ(*reinterpret_cast<std::uint16_t*>(bold.GetDataPtr()), 5);
    plain.reset();
    EXPECT_EQ(fonts.getBaseFont(), nullptr);
    EXPECT_EQ(fonts.get("ARIAL", "STANDARD", 12), nullptr);
    EXPECT_EQ(fonts.getRealLetterWidth('a'), 0);
}

// The cell of the letter: 8 by 4 with the border that is cleared, and columns of that alpha.
TEST_F(SimpleFont, IsCompiledFromAnAnimation) {
    const struct {
        const char* what;
        std::string columns;  // a digit: alpha of ten times that
        int left, right, kerning;
    } rows[] = {
        {"full", "99999999", 1, 1, 1},
        {"faint at the right", "09992120", 1, 1, -2},
        {"faint is 20, 30 isn't", "00923000", 2, 3, 1},
        {"faint all over, up to the left", "00220000", 2, 4, -1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        animations::Frame frame{8, 4, std::vector<std::uint16_t>(32, 0x1234), {}, 3, 4};
        for (int i = 0; i < 32; ++i)
            frame.alpha += static_cast<char>(10 * (row.columns[static_cast<std::size_t>(i % 8)] - '0'));
        animations::Event wide{"QU", {0}, 0, 0, 0, 0, {}}, other{"l", {0}, 0, 0, 0, 0, {}};
        Stage stage;
        stage.file("Dane/S/letters.ann", animations::third("NVP", {frame}, {wide, other}, 4));
        stage.start();
        CSimpleFont6 font(CWindow::current());
        ASSERT_TRUE(font.create("letters.ann", "made.fnt"));
        font.Load("made.fnt");
        ASSERT_EQ(font.getLetterCount(), 2);
        EXPECT_EQ(font.Size(), CXSize(16, 4));
        EXPECT_EQ(font.findLetter('Q'), 0);
        EXPECT_EQ(font.getRealLetterWidth('Q'), 8 - row.left - row.right);
        EXPECT_EQ(font.getKerning(0, 0), row.kerning);
        EXPECT_EQ(font.getKerning(1, 0), row.kerning);
        EXPECT_EQ(font.getAlpha().at(8 + 3), 0) << "the first row";
        EXPECT_EQ(font.getAlpha().at(16 + 8 + 3), 10 * (row.columns[3] - '0'));
        EXPECT_EQ(font.getData().pixels()[16 + 8 + 3], 0x1234);
    }
}

TEST_F(SimpleFont, OlderFontDrawsPicturesOfAnAnimation) {
    std::vector<animations::Frame> sheet = animations::sheet(3, 4, 3);
    sheet[1] = {6, 5, std::vector<std::uint16_t>(30, 7), std::string(30, '\xFF'), 0, 0};
    const std::vector<animations::Event> events = {{"A", {1}, 0, 0, 0, 0, {}}, {"b", {2}, 0, 0, 0, 0, {}}};
    for (const int form : {0, 2, 4}) {
        SCOPED_TRACE(form);
        Stage stage;
        stage.file("Dane/S/old.ann", animations::third("NVP", sheet, events, form));
        stage.start();
        CFont5 font(CWindow::current(), "old.ann");
        EXPECT_EQ(font.getAlphabet(), "Ab");
        EXPECT_EQ(font.getAlphabetHeight(), 5);
        EXPECT_EQ(font.getLetterSize('b'), CXSize(4, 3));
        EXPECT_EQ(font.getLengthInPixels("bA x", 2), 4 + 2 + 6 + 2 + 6 + 2) << "no spacing behind a blank";
        Page page;
        font.setDestiny(&page);
        EXPECT_EQ(font.drawLetter(10, 1, 'A'), 6);
        EXPECT_EQ(font.drawLetter(30, 1, 'z'), 0);
        EXPECT_EQ(page.runs(1), "11-14") << "its corners are cleared";
        EXPECT_EQ(page.runs(2), "10-15");
        EXPECT_EQ(page.runs(5), "11-14");
        EXPECT_EQ(page.runs(6), "");
    }
}
