// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

#include "prosc/font.h"
#include "text/font_file.h"

namespace {

std::string outlines() {
    std::ifstream file("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

TEST(ProscFont, RasterisesTheLettersAskedFor) {
    const std::string font = outlines();
    if (font.empty()) GTEST_SKIP() << "fonts-dejavu-core isn't installed";
    const prosc::Outcome made = prosc::fontFromOutlines(font, {40, 0x00FF00,
                                                               "l A V~ż"
                                                               "pl"});
    ASSERT_TRUE(made.result) << made.error;
    std::string reason;
    const auto read = readFont(std::as_bytes(std::span(*made.result)), reason);
    ASSERT_TRUE(read) << reason;
    EXPECT_EQ(std::string(read->letters.begin(), read->letters.end()), "lAV\xBFp") << "no blanks, none twice";
    EXPECT_EQ(read->pixels.pixels()[static_cast<std::size_t>(read->size.width) + 1], 0x07E0);
    EXPECT_GT(read->kerning[1 * 5 + 2], read->kerning[1 * 5 + 1]) << "a V comes nearer to an A than another A does";
    EXPECT_EQ(read->kerning[1 * 5 + 2], read->kerning[2 * 5 + 1]);
    const int width = read->cellWidth();
    EXPECT_LT(width - read->left[0] - read->right[0], 6) << "an l is thin";
    EXPECT_EQ(read->left[1], 1) << "a letter begins behind the empty border";
    // First and last row of a letter.
    const auto rowsOf = [&](int letter) {
        CXPoint rows(-1, -1);
        for (int y = 0; y < read->size.height; ++y)
            for (int x = letter * width; x < (letter + 1) * width; ++x)
                if (read->alpha.at(y * read->size.width + x) > 128) rows = {rows.x < 0 ? y : rows.x, y};
        return rows;
    };
    EXPECT_EQ(rowsOf(0).y, rowsOf(3).y);
    EXPECT_GT(rowsOf(4).y, rowsOf(0).y) << "a p goes below it";
    EXPECT_GT(rowsOf(4).x, rowsOf(0).x);
}

TEST(ProscFont, RefusesWhatItCantMake) {
    const std::string font = outlines();
    if (font.empty()) GTEST_SKIP() << "fonts-dejavu-core isn't installed";
    EXPECT_FALSE(prosc::fontFromOutlines("no font", {}).result);
    EXPECT_FALSE(prosc::fontFromOutlines(font.substr(0, 1000), {}).result);
    EXPECT_FALSE(prosc::fontFromOutlines(font, {16, 0, "\xE6\x97\xA5"}).result) << "not in Windows-1250";
    EXPECT_FALSE(prosc::fontFromOutlines(font, {0, 0, "a"}).result);
    EXPECT_FALSE(prosc::fontFromOutlines(font, {16, 0, " ~"}).result) << "nothing to draw";
    EXPECT_FALSE(prosc::fontInfo(std::string_view("FNT\0\1\0\0\0", 8)).result);
}
