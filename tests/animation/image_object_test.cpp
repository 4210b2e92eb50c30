// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/image_object.h"

#include <gtest/gtest.h>

#include "animation/image.h"
#include "graphics/refresh_screen.h"
#include "storage/archive.h"
#include "storage/file.h"
#include "support/pictures.h"
#include "support/stage.h"

namespace {

// A scene with files of one colour each, 10 by 10: red.img at (10, 10), blue.img at (50, 50).
class Gallery : public Stage {
public:
    explicit Gallery(const std::string& scene) : Stage(lines("LOG", "STRING") + scene) {
        file("Dane/S/red.img",
             pictures::nvi(10, 10, std::vector<std::uint16_t>(100, 0xF800), std::string(100, '\xFF'), 10, 10));
        file("Dane/S/blue.img", pictures::nvi(10, 10, std::vector<std::uint16_t>(100, 0x001F), "", 50, 50));
        start();
    }
    CImage* image(const std::string& name) { return static_cast<CMC_Image*>(object(name))->getImage(); }
    int priority(const std::string& name) {
        return CWindow::current()->GetRefreshScreenInterface()->GetPriority(image(name));
    }
    std::string log() {
        const std::string heard = value("LOG");
        run("LOG^SET(\"\");");
        return heard;
    }
};

std::string picture(const std::string& name, const std::string& fileName, const std::string& more = "") {
    return lines(name, "IMAGE", "FILENAME=" + fileName + "\nTOCANVAS=TRUE\nVISIBLE=TRUE\n" + more);
}

}  // namespace

TEST(ImageObject, SharesThePictureOfOneFile) {
    Gallery stage(picture("A", "red.img", "PRIORITY=4\n") + picture("B", "RED.IMG", "PRIORITY=9\n"));
    EXPECT_EQ(stage.image("A"), stage.image("B"));
    EXPECT_EQ(stage.priority("B"), 4) << "the first to put it there";
    stage.run(
        "A^SETPOSITION(1,2);LOG^ADD(B^GETPOSITIONX());B^LOAD(\"blue.img\");LOG^ADD(\"|\");LOG^ADD(B^GETPOSITIONX());"
        "LOG^ADD(\"|\");LOG^ADD(A^GETPOSITIONX());");
    EXPECT_EQ(stage.log(), "1|50|1");
    EXPECT_EQ(stage.priority("B"), 4) << "a new picture takes the place of the old one";
    EXPECT_EQ(stage.priority("A"), 4);
}

TEST(ImageObject, LoadsLateWhenToldSo) {
    Gallery stage(picture("A", "red.img", "PRELOAD=FALSE\n") + picture("B", "blue.img", "PRELOAD=TRUE\n"));
    EXPECT_FALSE(stage.image("A")->getData());
    EXPECT_TRUE(stage.image("B")->getData());
    stage.run("A^SHOW();");
    EXPECT_TRUE(stage.image("A")->getData());
}

TEST(ImageObject, ClonesStandWhereTheirSourceStands) {
    Gallery stage(picture("A", "red.img", "PRIORITY=3\n"));
    stage.run("A^SETPOSITION(33,44);A^CLONE(1);LOG^ADD(A_1^GETPOSITIONX());A_1^MOVE(5,0);LOG^ADD(A^GETPOSITIONX());");
    EXPECT_EQ(stage.log(), "3333");
    EXPECT_EQ(stage.priority("A_1"), 3);
    stage.run("A^FLIPH();");
    EXPECT_EQ(stage.image("A")->getData(), stage.image("A_1")->getData());
    stage.run("S^REMOVE(\"A\");");
    EXPECT_TRUE(stage.image("A_1")->getData()) << "the pixels live on";
}

TEST(ImageObject, ListensToTheMouseAsAButton) {
    const std::string handlers =
        "ASBUTTON=TRUE\nONFOCUSON={LOG^ADD(\"f\");}\nONFOCUSOFF={LOG^ADD(\"o\");}\n"
        "ONCLICK={LOG^ADD(\"c\");}\nONCLICK^RIGHT={LOG^ADD(\"R\");}\nONRELEASE={LOG^ADD(\"r\");}\n";
    Gallery stage(picture("A", "red.img", handlers));
    CWindow* window = CWindow::current();
    const auto see = [&](const char* what, const std::string& wanted) { EXPECT_EQ(stage.log(), wanted) << what; };
    window->OnMouseMove({9, 15}, 0);
    window->OnLButtonDown({9, 15}, 0);
    see("beside it", "");
    window->OnMouseMove({20, 20}, 0);
    window->OnMouseMove({19, 20}, 0);
    window->OnLButtonDown({20, 20}, 0);
    window->OnLButtonUp({20, 20}, 0);
    see("its edges belong to it", "fcr");
    window->OnRButtonDown({15, 15}, 0);
    window->OnMouseMove({21, 20}, 0);
    see("another button, and away", "Ro");
    stage.run("A^HIDE();");
    window->OnLButtonDown({15, 15}, 0);
    stage.run("A^SHOW();A^SETASBUTTON(FALSE,TRUE);");
    window->OnLButtonDown({15, 15}, 0);
    see("hidden, and no button", "");
}

TEST(ImageObject, SurvivesItsOwnEnd) {
    Gallery stage(
        picture("A", "red.img",
                "ASBUTTON=TRUE\nONCLICK={S^REMOVE(\"A\");LOG^ADD(\"gone\");}\nONDONE={LOG^ADD(THIS^GETWIDTH());}\n") +
        picture("B", "blue.img", "ONCOLLISION={S^REMOVE(\"B\");}\n") + picture("C", "red.img"));
    CWindow::current()->OnLButtonDown({15, 15}, 0);
    EXPECT_EQ(stage.log(), "10gone") << "its picture is there until its end was told";
    EXPECT_EQ(stage.object("A"), nullptr);
    stage.run("B^MONITORCOLLISION(FALSE);C^MONITORCOLLISION(FALSE);B^SETPOSITION(12,12);B^MOVE(1,1);LOG^ADD(\"on\");");
    EXPECT_EQ(stage.log(), "on");
    EXPECT_EQ(stage.object("B"), nullptr) << "removed by its own collision, inside of SETPOSITION";
    stage.frames(3);
}

TEST(ImageObject, KeepsItsRecordInOrder) {
    Gallery stage(
        picture("A", "red.img", "PRIORITY=7\nASBUTTON=TRUE\nMONITORCOLLISIONALPHA=TRUE\nFLUSHAFTERPLAYED=TRUE\n") +
        lines("B", "IMAGE"));
    CFile file(CWindow::current(), "image.bin", CFile::kCreateBinary);
    CXArchive storing(&file, true);
    stage.object("A")->serialize(&storing);
    file.Seek(0, SEEK_SET);
    CXArchive archive(&file, false);
    stage.object("B")->serialize(&archive);
    EXPECT_TRUE(archive.ok());
    EXPECT_EQ(stage.image("B"), stage.image("A"));
    EXPECT_EQ(stage.priority("B"), 7);
}
