// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "text/text_object.h"

#include <gtest/gtest.h>

#include "frame/window.h"
#include "graphics/refresh_screen.h"
#include "storage/archive.h"
#include "storage/file.h"
#include "structure/scene.h"
#include "support/fonts.h"
#include "support/stage.h"
#include "text/font_collection.h"
#include "text/font_object.h"
#include "text/multiline_text.h"

namespace {

using fonts::Face;

// A scene with a font F in two styles and whatever `scene` adds.
class Script : public Stage {
public:
    explicit Script(const std::string& scene)
        : Stage(lines("LOG", "STRING") + lines("F", "FONT", "DEF_ARIAL_STANDARD_12=a.fnt\nDEF_ARIAL_BOLD_12=b.fnt\n") +
                scene) {
        file("Dane/S/a.fnt", fonts::file(Face{}));
        file("Dane/S/b.fnt", fonts::file(Face{.cell = 14, .pixel = 0xF800}));
    }
    CMC_Text* text(const std::string& name) { return static_cast<CMC_Text*>(object(name)); }
    std::string log() {
        const std::string heard = value("LOG");
        run("LOG^SET(\"\");");
        return heard;
    }
};

std::string text(const std::string& name, const std::string& content, const std::string& more = "") {
    return lines(
        name, "TEXT",
        "FONT=F\nRECT=10,20,200,60\nHJUSTIFY=LEFT\nVJUSTIFY=TOP\nTOCANVAS=TRUE\nVISIBLE=TRUE\nPRIORITY=3\nTEXT=" +
            content + "\n" + more);
}

constexpr const char* kSay =
    "LOG^ADD(T^GETPOSITIONX());LOG^ADD(\".\");LOG^ADD(T^GETPOSITIONY());LOG^ADD(\".\");LOG^ADD(T^GETWIDTH());"
    "LOG^ADD(\".\");LOG^ADD(T^GETHEIGHT());";

}  // namespace

TEST(TextObject, AnswersItsMethods) {
    const struct {
        const char* what;
        const char* code;
        const char* heard;  // x, y, width, height
    } rows[] = {
        {"as defined", "", "10.20.40.20"},
        {"a move undoes a position", "T^SETPOSITION(1,2);T^MOVE(5,6);", "15.26.40.20"},
        {"a justification by edges", "T^SETJUSTIFY(0,0,100,100,\"RIGHT\",\"BOTTOM\");", "60.80.40.20"},
        {"by the name of a text", "T^SETJUSTIFY(\"U\",\"RIGHT\",\"TOP\");", "-6.20.40.20"},
        {"by nobody's name", "T^SETJUSTIFY(\"NONE\",\"LEFT\",\"TOP\");", "0.0.40.20"},
        {"words in another case", "T^SETJUSTIFY(0,0,140,120,\"left\",\"top\");", "50.50.40.20"},
        {"without parameters", "T^SETJUSTIFY();T^SETCLIPPING();T^ISNEAR();T^SETPRIORITY();T^MOVE();", "-20.-10.40.20"},
        {"a file's line ends are none", "T^LOAD(\"more.txt\");", "10.20.36.20"},
        {"a file that isn't there", "T^LOAD(\"none.txt\");", "10.20.0.0"},
        {"a clip cuts the box and not the size", "T^SETCLIPPING(0,0,5,5);LOG^ADD(T^ISNEAR(10,20,15,25,100));",
         "TRUE10.20.40.20"},
        {"numbers beyond all screens",
         "T^SETPOSITION(2147483647,-2147483648);T^SETTEXT(\"a\");T^SETPOSITION(2147483647,2147483647);",
         "2147483647.2147483647.12.20"},
        {"edges at the ends of all numbers",
         "T^SETJUSTIFY(-2147483648,-2147483648,2147483647,2147483647,\"CENTER\",\"CENTER\");T^MOVE(2147483647,1);T^"
         "SETTEXT(\"a b\");",
         nullptr},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Script stage(text("T", "a<B>b<B>l") + text("U", "aa"));
        stage.file("Dane/S/more.txt", "ab\r\na");
        stage.start();
        stage.run(std::string(row.code) + kSay);
        stage.frames(2);
        if (row.heard) {
            EXPECT_EQ(stage.log(), row.heard);
        }
    }
}

TEST(TextObject, OutlivesItsFontAndItself) {
    Script stage(
        text("T", "a<B>b",
             "ONINIT={LOG^ADD(\"init\");S^REMOVE(\"T\");LOG^ADD(T^GETWIDTH());}\nONDONE={LOG^ADD(\"done\");}\n") +
        text("U", "ab") + lines("NONE", "TEXT", "FONT=NOBODY\nRECT=U\nTEXT=abc\nTOCANVAS=TRUE\nVISIBLE=TRUE\n") +
        lines("WRONG", "TEXT", "FONT=LOG\nTEXT=abc\n"));
    stage.frames(3);
    EXPECT_EQ(stage.object("T"), nullptr);
    EXPECT_EQ(stage.log().substr(0, 8), "initdone");
    stage.run("U^SETTEXT(\"a\");S^REMOVE(\"F\");U^SETTEXT(\"<B>lost\");U^SETCOLOR(7);LOG^ADD(NONE^GETWIDTH());");
    stage.frames(3);
    EXPECT_EQ(stage.log(), "0");
    stage.run("U^MOVE(3,3);U^SETJUSTIFY(0,0,9,9,\"LEFT\",\"TOP\");S^REMOVE(\"U\");");
    stage.frames(2);
    EXPECT_EQ(stage.object("U"), nullptr);
}

TEST(TextObject, IsCapturedByACanvas) {
    Script stage(text("T", "ab") + lines("C", "CANVAS", "WIDTH=100\nHEIGHT=80\nALPHA=TRUE\n"));
    stage.frames();
    EXPECT_EQ(stage.current()->getGraphicsObjectName(stage.text("T")->getText()), "T");
    stage.run("C^ADD(\"T\",1);C^CAPTURE(TRUE);");
    stage.frames(2);
    EXPECT_EQ(stage.object("T"), nullptr);
}

TEST(TextObject, FontsByDefinitionAndByStore) {
    Script stage(lines("G", "FONT", "DEF_ARIAL_STANDARD_12=a.fnt\nDEF__X=none.fnt\nDEF_=\nABC=a.fnt\n") +
                 text("T", "a<B>b") + text("U", "a b"));
    stage.frames();
    stage.run(
        "G^SETSIZE(99);G^SETSTYLE(\"BOLD\");G^SETFAMILY(\"TIMES\");T^SETCOLOR(5);U^HIDE();U^SETTEXT(\"changed\");U^"
        "SETPRIORITY(8);");
    auto* made = static_cast<CMC_Font*>(stage.object("G"));
    EXPECT_EQ(made->getCollection()->getBaseFont(), made->getCollection()->get("arial", "standard", 12));
    EXPECT_NE(made->getCollection()->get("X", "", 0), nullptr);
    CFile file(CWindow::current(), "store.bin", CFile::kCreateBinary);
    CXArchive out(&file, true);
    CMC_Object* objects[] = {stage.object("F"), stage.object("G"), stage.text("T"), stage.text("U")};
    for (CMC_Object* object : objects)
        object->serialize(&out);
    file.Seek(0, 0);
    CXArchive in(&file, false);
    stage.run("T^SETTEXT(\"other\");U^SHOW();");
    for (CMC_Object* object : objects)
        object->serialize(&in);
    ASSERT_TRUE(in.ok());
    EXPECT_NE(made->getCollection()->get("ARIAL", "STANDARD", 12), nullptr);
    EXPECT_EQ(made->getCollection()->getBaseFont()->getLetterCount(), 0) << "the record knows no files";
    EXPECT_EQ(stage.text("T")->getText()->getText(), "<COLOR5>a<B>b<COLOR>");
    EXPECT_EQ(stage.text("T")->getText()->Width(), 4) << "a font without letters";
    EXPECT_FALSE(stage.text("U")->getText()->isVisible());
    EXPECT_EQ(stage.text("U")->getText()->getText(), "changed");
    EXPECT_EQ(CWindow::current()->GetRefreshScreenInterface()->GetPriority(stage.text("U")->getText()), 8);
    stage.frames(2);
}
