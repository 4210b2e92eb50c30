// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "text/text.h"

#include <gtest/gtest.h>

#include "frame/unit.h"
#include "input/edit_box.h"
#include "platform/headless/headless.h"
#include "support/animations.h"
#include "support/fonts.h"
#include "support/stage.h"
#include "text/font.h"
#include "text/font_collection.h"
#include "text/multiline_text.h"
#include "text/old_text.h"

namespace {

using fonts::Face;
using fonts::Font;

// Every letter of the plain font takes 12 pixels, of the bold one 16, with the gap.
class Text : public testing::Test {
protected:
    Text()
        : plain_(Face{.letters = "abcdl_"}),
          bold_(Face{.letters = "abcdl_", .cell = 14, .pixel = 0xF800}, "BOLD"),
          fonts_(nullptr) {
        fonts_.addFont(&plain_);
        fonts_.addFont(&bold_);
    }

    // "run", [style], /, {width:name:text}, #colour
    static std::string shown(const TextCodes& codes) {
        std::string text;
        for (const auto& code : codes) {
            const std::string letters(code->getText().view());
            switch (code->getKind()) {
                case CTextFormatCode::kStyle:
                    text += "[" + std::string(code->getFont()->getStyle().view()) + "]";
                    break;
                case CTextFormatCode::kRun:
                    text += "\"" + letters + "\"";
                    break;
                case CTextFormatCode::kLineBreak:
                    text += "/";
                    break;
                case CTextFormatCode::kEditField:
                    text +=
                        "{" + std::to_string(code->getWidth()) + ":" + code->getName().c_str() + ":" + letters + "}";
                    break;
                default:
                    text += "#" + std::to_string(code->getColor());
            }
        }
        return text;
    }

    // The lines between bars, a null mark as a slash; without the colour of each.
    static std::string lines(const CMultilineText6& text) {
        std::string all;
        for (int i = 0; i < text.getLineCount(); ++i) {
            if (i > 0) all += '|';
            all += text.getLine(i) ? text.getLine(i)->getColoruredText(text.getLine(i)->getText(), 0).c_str() : "/";
        }
        return all;
    }

    headless::HeadlessPlatform platform_;
    Font plain_, bold_;
    CFontCollection fonts_;
};

}  // namespace

TEST_F(Text, MarkupIsCutAtItsTags) {
    const struct {
        const char* text;
        const char* codes;
    } rows[] = {
        {"", ""},
        {"ab", "\"ab\""},
        {"<B>bold<B>x", "[BOLD]\"bold\"[STANDARD]\"x\""},
        {"<b>x", "[BOLD]\"x\""},
        {"x<I>y<B>z", "\"x\"\"y\"[BOLD]\"z\""},
        {"a<b", "\"a<b\""},
        {"a<b\r\nc", "\"a<b\r\nc\""},
        {"1<2 <B>x", "\"1<2 \"\"B>x\""},
        {"<FOO>", "\"FOO>\""},
        {"a<>b", "\"a>b\""},
        {"a>b", "\"a>b\""},
        {"<", "\"<\""},
        {"<<", "\"<\""},
        {"<<B>", "\"<\"\"B>\""},
        {"a<FOO<B>b", "\"a<FOO\"\"B>b\""},
        {"\r\r", "//"},
        {"a\r\nb\n\nc", "\"a\"/\"bc\""},
        {"<COLOR31>a<COLOR>b<COLORx>", "#31\"a\"#0\"b\"#0"},
        {"<color31>", "\"color31>\""},
        {"<E,40,who,a,b>c", "{40:who:a,b}\"c\""},
        {"<E,><E,7><e,7>", "{0::}{7::}\"e,7>\""},
        {"<E,99999999999,n,>", "{2147483647:n:}"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(shown(parseMarkup(row.text, fonts_)), row.codes) << row.text;
    }
    CFontCollection none(nullptr);
    EXPECT_EQ(shown(parseMarkup("<B>a<B>", none)), "\"a\"") << "tags without any font";
}

TEST_F(Text, OneLineIsMeasuredByStyleAndPlacedByItsRectangle) {
    CText6 text(nullptr, nullptr);
    text.setJustify({10, 20, 111, 61}, kJustifyCenter, kJustifyBottom);
    text.setText("a<B>b<B>\ta");
    EXPECT_EQ(text.Size(), CXSize());
    text.setFont(&fonts_);
    EXPECT_EQ(text.Size(), CXSize(12 + 16 + 8 * 12 + 12, 20)) << "a font counts from when it is set; a tab is 8 blanks";
    EXPECT_EQ(text.GetPosition(), CXPoint(10 + (101 - 136) / 2, 41));
    text.Move(5, -7);
    EXPECT_EQ(text.GetPosition(), CXPoint(15 + (101 - 136) / 2, 34));
    text.SetPosition(0, 0);
    text.setJustify({50, 60, 70, 80}, kJustifyTop, kJustifyRight);
    EXPECT_EQ(text.GetPosition(), CXPoint(0, 0)) << "values of the other axis";
    text.setColor(9);
    text.setColor(0);
    EXPECT_EQ(text.getText(), "a<B>b<B>        a") << "0 is no colour";
    text.setText("x<COLOR5>y<COLOR");
    EXPECT_EQ(text.getText(), "xy");
    text.setFont(&plain_);
    text.setText("a<B>");
    EXPECT_EQ(text.getLength(), 12 + 3 * 2) << "a single font shows the brackets";
}

TEST_F(Text, ManyLinesBreakAtBlanks) {
    const struct {
        const char* what;
        const char* text;
        int room;
        const char* lines;
        int width, height;
    } rows[] = {
        {"fits", "aa bb c", 84, "aa bb c", 84, 20},
        {"one pixel short", "aa bb c", 83, "aa bb|c", 60, 38},
        {"the blank taken off still counts", "aa bb c", 59, "aa|bb|c", 24, 56},
        {"too wide a word, first and within", "bbbbbb a bbbbbb", 40, "bbbbbb|a|bbbbbb", 72, 56},
        {"no empty line before it behind a tag", "<B>bbbbbb", 40, "<B>bbbbbb", 96, 20},
        {"no room at all", "a b", 0, "a|b", 12, 38},
        {"blanks of a run's end are lost", "a  <B>  b", 200, "a<B>  b", 12 + 32 + 16, 20},
        {"only one blank is taken off", "aa   b", 30, "aa|  b", 36, 38},
        {"an open style goes on", "<B>aa bb<B> c", 40, "<B>aa|<B>bb<B>|c", 32, 56},
        {"one style is open at a time", "<B>a<B>b<B> cc", 40, "<B>a<B>b<B>|<B>cc", 32, 38},
        {"a break", "a\rb", 90, "a|/|b", 12, 36},
        {"two breaks", "a\r\rb", 90, "a|/||/|b", 12, 52},
        {"a break first, and one last", "\ra\r", 90, "|/|a|/", 12, 34},
        {"a style over a break", "<B>a\rb", 90, "<B>a|/|<B>b", 16, 36},
        {"colours inside go", "<COLOR31>a<COLOR>b", 90, "ab", 24, 20},
        {"nothing but tags", "<B><COLOR4>", 90, "", 0, 0},
        {"a field's cells", "a<E,60,n,t>b", 400, "a ___b", 12 * 6, 20},
        {"a field too narrow for cells", "<E,24,n,t><E,-5,n,t><E,,,>", 400, "   ", 36, 20},
        {"a field wraps", "aaa<E,60,n,t>", 90, "aaa| ___", 48, 38},
        {"a field as wide as numbers go", "<E,2147483647,n,>a", 50, "", -1, -1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        CMultilineText6 text(nullptr, nullptr);
        text.setJustify({0, 0, row.room, 100}, kJustifyLeft, kJustifyTop);
        text.setFont(&fonts_);
        text.setText(row.text);
        if (row.width < 0) continue;
        EXPECT_EQ(lines(text), row.lines);
        EXPECT_EQ(text.getLength(), row.width);
        EXPECT_EQ(text.getHeight(), row.height);
        text.setColor(0);
        text.setFont(&plain_);
    }
    CMultilineText6 plain(nullptr, nullptr);
    plain.setColor(0);
    plain.setJustify({0, 0, 60, 100}, kJustifyLeft, kJustifyTop);
    plain.setFont(&plain_);
    plain.setText("  aa  bb c<B>d ");
    EXPECT_EQ(lines(plain), "aa bb|c<B>d") << "blanks between words become one, tags are letters";
}

TEST_F(Text, LongTextsTakeTimeByTheirLength) {
    std::string words, tags(100000, '<'), letters(100000, 'a'), breaks(20000, '\r');
    while (words.size() < 100000)
        words += "ab <B>c<B> ";
    CMultilineText6 text(nullptr, nullptr);
    for (const CSimpleFont6* font : {static_cast<CSimpleFont6*>(&fonts_), static_cast<CSimpleFont6*>(&plain_)}) {
        text.setFont(const_cast<CSimpleFont6*>(font));
        text.setJustify({0, 0, 300, 100}, kJustifyLeft, kJustifyTop);
        for (const std::string* content : {&words, &tags, &letters, &breaks})
            text.setText(CXString(std::string_view(*content)));
    }
    text.setFont(&fonts_);
    text.setText(CXString(std::string_view(breaks)));
    EXPECT_EQ(text.getLineCount(), 40000);
}

TEST_F(Text, LinesAreDrawnCloserThanTheyCountAndWithinTheClip) {
    const struct {
        const char* what;
        const char* text;
        CXRect clip;
        std::vector<CXPoint> lit, dark;
    } rows[] = {
        {"line steps", "a\rb", {}, {{0, 0}, {0, 19}, {0, 35}}, {{0, 36}, {12, 5}}},
        {"an empty line", "a\r\rb", {}, {{0, 19}, {0, 32}, {0, 51}}, {{0, 25}, {0, 52}}},
        {"styles", "a<B>b", {}, {{0, 5}, {12, 5}, {25, 5}}, {{11, 5}, {26, 5}}},
        {"a clip across a letter",
         "ab\rcd",
         {15, 0, 18, 40},
         {{15, 5}, {17, 5}, {15, 30}},
         {{14, 5}, {19, 5}, {9, 30}}},
        {"a line outside of it", "ab\rcd", {0, 0, 40, 10}, {{0, 9}, {12, 9}}, {{0, 10}, {0, 20}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        CGraphicsObject page(nullptr, {60, 60}, 16);
        CMultilineText6 text(nullptr, nullptr);
        text.setJustify({0, 0, 60, 60}, kJustifyLeft, kJustifyTop);
        text.setFont(&fonts_);
        text.setText(row.text);
        text.SetDestiny(&page);
        text.SetClippingRect(row.clip);
        text.Redraw();
        const auto pixel = [&](const CXPoint& p) {
            return page.getData().pixels()[static_cast<std::size_t>(p.y * 60 + p.x)];
        };
        for (const CXPoint& p : row.lit)
            EXPECT_NE(pixel(p), 0) << p.x << ", " << p.y;
        for (const CXPoint& p : row.dark)
            EXPECT_EQ(pixel(p), 0) << p.x << ", " << p.y;
    }
    CGraphicsObject page(nullptr, {60, 60}, 16);
    CText6 single(nullptr, nullptr);
    single.setColor(0);
    plain_.setColor(31);
    single.setFont(&plain_);
    single.setText("ab");
    single.SetDestiny(&page);
    single.Redraw();
    EXPECT_EQ(page.getData().pixels()[13], 0) << "a single font's line is drawn wider than it measures";
    EXPECT_NE(page.getData().pixels()[14], 0);
}

TEST_F(Text, ColourReachesTheLinesWithTheNextText) {
    CGraphicsObject page(nullptr, {60, 60}, 16);
    CMultilineText6 text(nullptr, nullptr);
    text.setJustify({0, 0, 12, 60}, kJustifyLeft, kJustifyTop);
    text.setFont(&fonts_);
    text.setText("a b");
    text.SetDestiny(&page);
    const auto colours = [&] {
        text.Redraw();
        const auto pixels = page.getData().pixels();
        return CXPoint(pixels[0], pixels[60 * 30]);
    };
    EXPECT_EQ(colours(), CXPoint(0xFFFF, 0xFFFF));
    text.setColor(31);
    EXPECT_EQ(text.Size(), CXSize(36, 20)) << "as one line";
    EXPECT_EQ(colours(), CXPoint(0xFFFF, 0xFFFF));
    text.setText("a b");
    EXPECT_EQ(text.Size(), CXSize(12, 38));
    EXPECT_EQ(colours(), CXPoint(31, 31));
}

TEST_F(Text, LosesItsFontsWithoutHarm) {
    CGraphicsObject page(nullptr, {60, 60}, 16);
    auto dying = std::make_unique<Font>(Face{}, "ITALIC");
    auto fonts = std::make_unique<CFontCollection>(nullptr);
    fonts->addFont(&plain_);
    fonts->addFont(dying.get());
    CMultilineText6 text(nullptr, nullptr);
    text.setJustify({0, 0, 60, 60}, kJustifyLeft, kJustifyTop);
    text.setFont(fonts.get());
    text.setText("a<I>b<I>c\rd");
    text.SetDestiny(&page);
    dying.reset();
    text.Redraw();
    EXPECT_NE(page.getData().pixels()[0], 0);
    text.setText("a<I>b");
    fonts.reset();
    text.Redraw();
    text.setText("more");
    text.setColor(4);
    text.Redraw();
    EXPECT_EQ(text.getText(), "<COLOR4>more<COLOR>");
}

TEST_F(Text, EditFieldsBecomeBoxesOfTheUnit) {
    Stage stage;
    stage.start();
    CUnit6* unit = CWindow::current()->GetCurrentUnit();
    ASSERT_NE(unit, nullptr);
    {
        CMultilineText6 text(nullptr, unit);
        text.setJustify({100, 50, 190, 300}, kJustifyLeft, kJustifyTop);
        text.setFont(&fonts_);
        text.setText("ab<E,36,who,start>\r<B><E,36,,>");
        ASSERT_EQ(text.getEditBoxes()->size(), 2);
        const auto* first = static_cast<CEditBox6*>(text.getEditBoxes()->at(0));
        EXPECT_EQ(first->getText(), "start");
        EXPECT_EQ(first->getBoundingRect(), CXRect(100 + 24 + 10, 50, 170, 70));
        EXPECT_EQ(static_cast<CEditBox6*>(text.getEditBoxes()->at(1))->getBoundingRect(), CXRect(114, 66, 150, 86));
        text.setText("none");
        EXPECT_EQ(text.getEditBoxes()->size(), 0);
        text.setText("<E,36,who,start>");
    }
    unit->nextEditBox();
    EXPECT_EQ(unit->getCurrentEditBoxIndex(), -1) << "they go with the text";
}

TEST_F(Text, OlderPairBreaksAndPlacesLinesOneByOne) {
    Stage stage;
    const std::vector<animations::Event> events = {{"A", {0}, 0, 0, 0, 0, {}}, {"b", {1}, 0, 0, 0, 0, {}}};
    stage.file("Dane/S/old.ann", animations::third("NVP", animations::sheet(2, 6, 4), events, 4));
    stage.start();
    CFont5 font(CWindow::current(), "old.ann");
    CMultilineText5 text(CWindow::current());
    text.setFont(&font);
    text.setLineSpacing(3);
    text.setText("bb bbb b", {10, 0, 40, 60});
    ASSERT_EQ(text.getLineCount(), 2);
    EXPECT_EQ(text.getLine(0)->getText(), "bb") << "a blank is as wide as an A";
    EXPECT_EQ(text.getHeightInPixels(), 11);
    CGraphicsObject page(nullptr, {60, 60}, 16);
    text.SetDestiny(&page);
    text.setJustify({10, 0, 40, 60}, kJustifyRight, kJustifyCenter);
    text.Redraw();
    const auto lit = [&](int x, int y) { return page.getData().pixels()[static_cast<std::size_t>(y * 60 + x)] != 0; };
    EXPECT_TRUE(!lit(27, 25) && lit(28, 25)) << "the first line ends at the right";
    EXPECT_TRUE(lit(38, 25) && !lit(39, 25)) << "a letter's step is one less than its width";
    EXPECT_TRUE(!lit(9, 32) && lit(10, 32) && lit(25, 32)) << "the second line by itself";
    EXPECT_TRUE(!lit(27, 32) && lit(28, 32)) << "a blank's step is three less than an A";
    CWindow::current()->GetApplicationInterface()->setDefaultFont(&font);
    CText5 single(CWindow::current(), "A b", {5, 5, 45, 25}, kJustifyRight, kJustifyBottom);
    single.setDefaultFont();
    single.setSpaceWidth(2);
    EXPECT_EQ(single.getLengthInPixels(), 8 + 6 + 8);
    CGraphicsObject other(nullptr, {60, 60}, 16);
    single.SetDestiny(&other);
    single.Redraw();
    const auto row = other.getData().pixels().subspan(60 * 22, 60);
    EXPECT_NE(row[5 + 40 - 22], 0);
    EXPECT_NE(row[5 + 40 - 22 + 7 + 3], 0);
    EXPECT_EQ(row[5 + 40 - 22 + 7 + 3 + 6], 0);
    CWindow::current()->GetApplicationInterface()->setDefaultFont(nullptr);
}
