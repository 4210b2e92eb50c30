// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/canvas.h"

#include <functional>
#include <gtest/gtest.h>
#include <limits>

#include "animation/canvas_object.h"
#include "animation/canvas_observer_object.h"
#include "animation/image.h"
#include "animation/image_object.h"
#include "animation/pattern_object.h"
#include "animation/scroll_object.h"
#include "graphics/pattern.h"
#include "graphics/refresh_screen.h"
#include "graphics/surface.h"
#include "storage/archive.h"
#include "storage/file.h"
#include "structure/scene.h"
#include "support/pictures.h"
#include "support/stage.h"

namespace {

constexpr int kMost = std::numeric_limits<int>::max(), kLeast = std::numeric_limits<int>::min();

// The window's compositor, with nothing to repaint, and objects to show.
class Easel {
public:
    Easel() {
        stage.start();
        window = CWindow::current();
        screen = window->GetRefreshScreenInterface();
        screen->validate();
    }

    // `alpha`: of every pixel; negative: no alpha plane.
    std::unique_ptr<CGraphicsObject> object(const CXRect& box, std::uint16_t pixel, int alpha = -1) const {
        auto made = std::make_unique<CGraphicsObject>(window, CXSize(box.Width(), box.Height()), 16);
        std::ranges::fill(made->getData().pixels(), pixel);
        if (alpha >= 0) {
            Plane plane(static_cast<std::size_t>(made->Size().mul()));
            std::ranges::fill(plane.bytes(), static_cast<std::uint8_t>(alpha));
            made->setPlanes(made->Size(), 16, made->getData(), plane);
        }
        made->SetPosition(box.left, box.top);
        return made;
    }

    // What the object draws over pixels of 0.
    std::vector<std::uint16_t> drawn(CGraphicsObject& object, const CXSize& size) const {
        CGraphicsObject target(window, size, 16);
        object.SetDestiny(&target);
        object.Redraw();
        return {target.getData().pixels().begin(), target.getData().pixels().end()};
    }
    std::uint16_t drawnAt(CGraphicsObject& object, int x, int y) const {
        return drawn(object, {40, 40})[static_cast<std::size_t>(y * 40 + x)];
    }

    Stage stage;
    CWindow* window = nullptr;
    CRefreshScreen* screen = nullptr;
};

// Does something while it is drawn.
class Acting : public CGraphicsObject {
public:
    Acting(CWindow* window, std::function<void()> act) : CGraphicsObject(window, {4, 4}, 16), act_(std::move(act)) {}
    void Redraw() override { act_(); }

private:
    std::function<void()> act_;
};

// red.img, 10 by 10 at (10, 10), and blue.img, 6 by 6 at (30, 10), in a scene; LOG, and VIEW, the compositor's handle.
class Gallery : public Stage {
public:
    explicit Gallery(const std::string& scene)
        : Stage(lines("LOG", "STRING") + lines("VIEW", "CANVAS_OBSERVER") + scene) {
        file("Dane/S/red.img", pictures::nvi(10, 10, std::vector<std::uint16_t>(100, 0xF800), "", 10, 10));
        file("Dane/S/blue.img", pictures::nvi(6, 6, std::vector<std::uint16_t>(36, 0x001F), "", 30, 10));
        start();
    }
    CGraphicsObject* graphic(const std::string& name) {
        return current()->getGraphicsObject(CXString(std::string_view(name)));
    }
};

std::string picture(const std::string& name, const std::string& fileName, const std::string& more = "") {
    return lines(name, "IMAGE", "FILENAME=" + fileName + "\nTOCANVAS=TRUE\nVISIBLE=TRUE\n" + more);
}

}  // namespace

TEST(Canvas, SendsNineChangesOneByOneAndThenItself) {
    Easel easel;
    CCanvas canvas(easel.window, {200, 100}, 16, false, false);
    canvas.SetPosition(300, 200);
    std::vector<std::unique_ptr<CGraphicsObject>> children;
    for (int i = 0; i < 12; ++i)
        children.push_back(easel.object({i * 15, i * 7, i * 15 + 2, i * 7 + 2}, 1));
    for (auto& child : children)
        canvas.add(child.get(), 0);
    easel.drawn(canvas, {200, 100});
    easel.screen->put(&canvas, 1);
    for (int round = 0; round < 2; ++round) {
        SCOPED_TRACE(round);
        canvas.isInvalidated();
        easel.screen->validate();
        const CRefreshRegion& region = *easel.screen->getRefreshList();
        for (int i = 0; i < 9; ++i)
            children[static_cast<std::size_t>(i)]->Invalidate();
        ASSERT_EQ(region.size(), 9);
        EXPECT_EQ(*region.rectAt(8), CXRect(420, 256, 422, 258)) << "moved by the canvas's position";
        EXPECT_FALSE(canvas.isInvalidated());
        children[9]->Invalidate();
        ASSERT_EQ(region.size(), 1);
        EXPECT_EQ(*region.rectAt(0), CXRect(300, 200, 500, 300));
        EXPECT_TRUE(canvas.isInvalidated());
        easel.drawn(canvas, {200, 100});
    }
}

TEST(Canvas, ShowsChildrenByPriorityWithinItsClip) {
    Easel easel;
    auto low = easel.object({0, 0, 10, 10}, 11), high = easel.object({5, 5, 15, 15}, 22);
    CCanvas canvas(easel.window, {12, 12}, 16, false, false);
    canvas.add(high.get(), 5);
    canvas.add(low.get(), 3);
    canvas.add(low.get(), 9);
    canvas.SetPosition(20, 20);
    high->SetClippingRect({0, 0, 4, 4});
    EXPECT_EQ(easel.drawnAt(canvas, 25, 25), 22) << "a second ADD changes nothing";
    EXPECT_EQ(easel.drawnAt(canvas, 29, 29), 11) << "the child's own clip";
    low->SetPosition(50, 50);
    canvas.SetClippingRect({0, 0, 6, 6});
    EXPECT_EQ(easel.drawnAt(canvas, 25, 25), 22);
    canvas.SetClippingRect({});
    EXPECT_EQ(canvas.getData().pixels()[6 * 12 + 6], 22) << "what lies outside the clip is not cleared";
    EXPECT_EQ(canvas.getData().pixels()[2 * 12 + 2], 0);
    EXPECT_EQ(high->GetClippingRect(), CXRect(0, 0, 4, 4));
}

TEST(Canvas, ChildrenMayVanishAtAnyTime) {
    Easel easel;
    for (const bool inPattern : {false, true}) {
        for (const int victimPriority : {0, 2}) {
            SCOPED_TRACE(std::to_string(inPattern) + " " + std::to_string(victimPriority));
            CCanvas canvas(easel.window, {40, 40}, 16, false, true);
            CPattern pattern(easel.window, {40, 40}, {10, 10});
            auto victim = easel.object({0, 0, 5, 5}, 7), last = easel.object({20, 20, 25, 25}, 9);
            Acting killer(easel.window, [&] { victim.reset(); });
            auto suicide = std::make_unique<Acting>(easel.window, [] {});
            int priority = 0;
            for (CGraphicsObject* object : {victim.get(), static_cast<CGraphicsObject*>(&killer), last.get()}) {
                const int at = object == victim.get() ? victimPriority : object == &killer ? 1 : 3;
                canvas.add(object, at);
                pattern.add("x", priority, priority, object, at);
                ++priority;
            }
            canvas.add(suicide.get(), 0);
            pattern.add("y", 0, 0, suicide.get(), 0);
            suicide.reset();
            CGraphicsObject& shown = inPattern ? static_cast<CGraphicsObject&>(pattern) : canvas;
            EXPECT_EQ(easel.drawnAt(shown, 22, 22), 9) << "those behind are still drawn";
            EXPECT_EQ(easel.drawnAt(shown, 2, 2), 0);
            easel.screen->validate();
            last->Invalidate();
            EXPECT_EQ(easel.screen->getRefreshList()->size(), 1);
        }
    }
}

TEST(Canvas, StandsInItselfWithoutEnd) {
    Easel easel;
    auto child = easel.object({0, 0, 4, 4}, 5);
    CCanvas a(easel.window, {20, 20}, 16, false, true), b(easel.window, {20, 20}, 16, false, false);
    CPattern pattern(easel.window, {20, 20}, {1, 1});
    a.add(&a, 0);
    a.add(child.get(), 2);
    a.add(&b, 1);
    b.add(&a, 1);
    a.add(&pattern, 1);
    pattern.add("a", 3, 3, &a, 0);
    for (int i = 0; i < 30; ++i)
        child->Invalidate();
    EXPECT_EQ(easel.drawnAt(a, 2, 2), 5) << "drawn into its own destiny, not into the canvas inside";
    easel.drawn(pattern, {20, 20});
    EXPECT_EQ(a.GetPosition(), CXPoint(0, 0));
    easel.screen->put(easel.screen, 1);
    easel.screen->Visible(true);
    EXPECT_EQ(easel.screen->GetPriority(easel.screen), -1);
}

TEST(Canvas, HasNoPixelsForSizesThatNobodyCanMean) {
    Easel easel;
    const struct {
        CXSize asked, size;
    } rows[] = {{{0, 5}, {}},         {{-3, -3}, {}},     {{kMost, kMost}, {}},
                {{65536, 65536}, {}}, {{4097, 4096}, {}}, {{4096, 1}, {4096, 1}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.asked.width);
        CCanvas canvas(easel.window, row.asked, 16, true, true);
        auto stamp = easel.object({0, 0, 4, 4}, 5, 255);
        EXPECT_EQ(canvas.Size(), row.size);
        canvas.add(stamp.get(), 1);
        canvas.draw(stamp.get(), kLeast, kMost);
        canvas.erase(stamp.get(), kMost, kLeast);
        easel.drawn(canvas, {8, 8});
        canvas.capture();
    }
}

TEST(Canvas, ErasesWhatTheMaskCoversAndNothingElse) {
    Easel easel;
    const struct {
        const char* what;
        int x, y, alpha;  // of the mask, 6 by 4; -1: it has none
        bool coded, ownAlpha, backPlane;
    } rows[] = {
        {"inside", 3, 2, 60, false, true, true},
        {"twice as strong as what is there", 3, 2, 250, false, true, true},
        {"over the left and upper edge", -2, -1, 60, false, true, true},
        {"over the right and lower edge", 7, 8, 60, false, true, true},
        {"an opaque one", 3, 2, -1, false, true, true},
        {"a coded one", 3, 2, 60, true, true, true},
        {"beyond the edges", 10, 0, 60, false, true, true},
        {"far beyond", kMost, kLeast, 60, false, true, true},
        {"no alpha to take from", 3, 2, 60, false, false, true},
        {"no back plane", 3, 2, 60, false, true, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        constexpr int kSide = 10;
        CCanvas canvas(easel.window, {kSide, kSide}, 16, row.ownAlpha, row.backPlane);
        auto paper = easel.object({0, 0, kSide, kSide}, 5, 200);
        canvas.draw(paper.get(), 0, 0);
        easel.drawn(canvas, {kSide, kSide});
        auto mask = easel.object({0, 0, 6, 4}, 1, row.alpha);
        // The mask's bytes differ, so that a wrong row or column shows.
        for (std::size_t i = 0; i < mask->getAlpha().size(); ++i)
            mask->getAlpha().bytes()[i] = static_cast<std::uint8_t>(row.alpha + static_cast<int>(i) % 5);
        if (row.coded) mask->Compress(kCompressionRle);
        canvas.erase(mask.get(), row.x, row.y);
        EXPECT_EQ(mask->getCompression(), row.coded ? kCompressionRle : kCompressionRaw);
        if (!row.ownAlpha) {
            EXPECT_FALSE(canvas.getAlpha());
            continue;
        }
        for (int y = 0; y < kSide; ++y) {
            for (int x = 0; x < kSide; ++x) {
                const std::int64_t column = std::int64_t{x} - row.x, line = std::int64_t{y} - row.y;
                int want = row.backPlane ? 200 : 0;
                if (column >= 0 && column < 6 && line >= 0 && line < 4)
                    want -= row.alpha < 0 ? 255 : row.alpha + static_cast<int>(line * 6 + column) % 5;
                ASSERT_EQ(canvas.getAlpha().at(y * kSide + x), std::max(want, 0)) << x << "," << y;
            }
        }
        // The pixels stay; what is drawn next shows that the back plane's alpha went, too.
        EXPECT_EQ(canvas.getData().pixels()[3 * kSide + 4] != 0, row.backPlane);
        const Plane before = canvas.getAlpha().copy();
        easel.drawn(canvas, {kSide, kSide});
        EXPECT_TRUE(std::ranges::equal(before.bytes(), canvas.getAlpha().bytes()));
    }
}

TEST(Canvas, DrawsAndFlattensWithoutMovingAnything) {
    Easel easel;
    CCanvas canvas(easel.window, {20, 20}, 16, true, true);
    canvas.SetPosition(7, 8);
    canvas.SetOpacity(100);
    auto stamp = easel.object({0, 0, 4, 4}, 5), child = easel.object({10, 10, 12, 12}, 6);
    stamp->setAnchor(1, 2);
    stamp->SetPosition(100, 100);
    stamp->SetClippingRect({0, 0, 1, 1});
    canvas.draw(stamp.get(), 5, 5);
    EXPECT_EQ(stamp->GetPosition(), CXPoint(99, 98)) << "the anchor is not taken off twice";
    EXPECT_EQ(stamp->GetClippingRect(), CXRect(0, 0, 1, 1));
    canvas.add(child.get(), 1);
    canvas.capture();
    canvas.capture();
    EXPECT_EQ(canvas.GetPosition(), CXPoint(7, 8));
    EXPECT_EQ(canvas.GetOpacity(), 100);
    child.reset();
    std::unique_ptr<CCanvas> copy(static_cast<CCanvas*>(canvas.clone()));
    for (CCanvas* shown : {&canvas, copy.get()}) {
        shown->SetOpacity(255);
        EXPECT_EQ(easel.drawnAt(*shown, 7 + 4, 8 + 3), 5) << "whole, at its anchor";
        EXPECT_EQ(easel.drawnAt(*shown, 7 + 7, 8 + 6), 5);
        EXPECT_EQ(easel.drawnAt(*shown, 7 + 11, 8 + 11), 6);
    }
    canvas.clear(true);
    EXPECT_EQ(easel.drawnAt(canvas, 18, 19), 0);
    EXPECT_EQ(easel.drawnAt(*copy, 18, 19), 6) << "the copy's back plane is its own";
}

TEST(Pattern, PlacesObjectsWhereTheyDontStand) {
    Easel easel;
    CPattern pattern(easel.window, {40, 40}, {10, 10});
    auto tile = easel.object({100, 100, 104, 104}, 5);
    tile->setAnchor(3, 3);
    pattern.add("near", 1, 2, tile.get(), 0);
    pattern.add("far", kMost, 1, tile.get(), 0);
    EXPECT_EQ(easel.drawnAt(pattern, 10, 20), 5);
    EXPECT_EQ(tile->GetPosition(), CXPoint(100, 100));
    easel.screen->validate();
    tile->Invalidate();
    ASSERT_EQ(easel.screen->getRefreshList()->size(), 1) << "no cell that is too far away; itself it is on no screen";
    EXPECT_EQ(*easel.screen->getRefreshList()->rectAt(0), CXRect(10, 20, 14, 24));
    pattern.setGrid({kMost, 65536});
    pattern.add("wrapped", 0, 65536, tile.get(), 0);
    EXPECT_EQ(easel.drawn(pattern, {40, 40}), std::vector<std::uint16_t>(1600)) << "65536 times 65536 isn't 0";
    pattern.setGrid({10, 10});
    pattern.add("again", 2, 2, tile.get(), 0);
    pattern.remove(CXString("near"));
    easel.screen->validate();
    tile->Invalidate();
    EXPECT_EQ(easel.screen->getRefreshList()->size(), 1) << "still heard: other entries are of the same object";
    pattern.remove(tile.get());
    easel.screen->validate();
    tile->Invalidate();
    EXPECT_EQ(easel.screen->getRefreshList()->size(), 0);
}

TEST(CanvasObject, TakesCapturedObjectsOutOfTheScene) {
    const struct {
        const char* what;
        const char* code;
        const char* gone;  // of RED, BLUE, BOARD
    } rows[] = {
        {"by default", "BOARD^ADD(\"RED\");BOARD^CAPTURE();", "RED "},
        {"not when told so", "BOARD^ADD(\"RED\");BOARD^CAPTURE(FALSE);BOARD^CAPTURE(TRUE);", ""},
        {"once", "BOARD^ADD(\"RED\");BOARD^ADD(\"RED\");BOARD^CAPTURE(TRUE);", "RED "},
        {"also when it was removed again", "BOARD^ADD(\"RED\");BOARD^REMOVE(\"RED\");BOARD^CAPTURE();", "RED "},
        {"when it is gone already", "BOARD^ADD(\"RED\");S^REMOVE(\"RED\");BOARD^CAPTURE();", "RED "},
        {"the end of one ends the canvas", "BOARD^ADD(\"BLUE\");BOARD^ADD(\"RED\");BOARD^CAPTURE();",
         "RED BLUE BOARD "},
        {"what is no picture",
         "BOARD^ADD(\"LOG\");BOARD^ADD(\"\");BOARD^ADD(\"VIEW\");BOARD^REMOVE(\"RED\");BOARD^CAPTURE();", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Gallery stage(picture("RED", "red.img") + picture("BLUE", "blue.img", "ONDONE={S^REMOVE(\"BOARD\");}\n") +
                      lines("BOARD", "CANVAS", "WIDTH=30\nHEIGHT=30\nALPHA=TRUE\nBACKGROUND=TRUE\nPRIORITY=4\n"));
        stage.run(row.code);
        std::string gone;
        for (const char* name : {"RED", "BLUE", "BOARD"})
            if (!stage.object(name)) gone += std::string(name) + " ";
        EXPECT_EQ(gone, row.gone);
        stage.frames(2);
    }
}

TEST(CanvasObject, SavesPartsWithoutChangingItself) {
    Gallery stage(picture("RED", "red.img") + lines("BOARD", "CANVAS", "WIDTH=30\nHEIGHT=20\n"));
    stage.run("BOARD^ADD(\"RED\");BOARD^SETPOSITION(3,4);");
    stage.frames(1);
    const struct {
        const char* params;
        int width, height;
    } rows[] = {
        {"", 30, 20},
        {",2.0", 60, 20},
        {",0.5,0.55", 15, 11},
        {",1.0,1.0,5,4,25,14", 20, 10},
        {",1.0,2.0,5,4,25,14", 20, 20},
        {",1.0,1.0,20,15,500,500", 10, 5},
        {",1.0,1.0,-9,-9,10,10", 10, 10},
        {",1.0,1.0,5,4,5,14", 30, 20},
        {",1.0,1.0,25,14,5,4", 30, 20},
        {",1.0,1.0,100,100,120,120", 0, 0},
        {",-1.0,1.0", 30, 20},
        {",1000000.0,1000000.0", 30, 20},
        {",500.0,800.0", 30, 20},
        {",0.0,1.0", 0, 20},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.params);
        stage.run(std::string("BOARD^SAVE(\"out.img\"") + row.params + ");");
        const std::string saved =
            stage.platform.files.readFile("C:" + stage.platform.folder() + "/Dane/S/out.img").value_or("(none)");
        ASSERT_GE(saved.size(), 40U);
        const auto sideAt = [&](std::size_t i) {
            return static_cast<unsigned char>(saved[i]) | static_cast<unsigned char>(saved[i + 1]) << 8;
        };
        EXPECT_EQ(sideAt(4), row.width);
        EXPECT_EQ(sideAt(8), row.height);
        EXPECT_EQ(stage.graphic("BOARD"), nullptr);
        EXPECT_EQ(static_cast<CMC_Canvas*>(stage.object("BOARD"))->getCanvas()->Size(), CXSize(30, 20));
    }
}

TEST(ScrollObject, ClipsAnewAndLetsGo) {
    Gallery stage(picture("RED", "red.img") +
                  picture("BLUE", "blue.img", "ONCOLLISION={S^REMOVE(\"RED\");S^REMOVE(\"PORT\");}\n") +
                  lines("PORT", "SCROLL", "VIEWPORT=12,12,16,16\n"));
    CGraphicsObject* red = stage.graphic("RED");
    stage.run("RED^SETCLIPPING(0,0,9,9);PORT^REMOVE(\"RED\");PORT^REMOVE(\"NOBODY\");");
    EXPECT_EQ(red->GetClippingRect(), CXRect(0, 0, 9, 9)) << "no member, so its clip is its own";
    stage.run("PORT^ADD(\"RED\");PORT^ADD(\"RED\");PORT^ADD(\"LOG\");");
    EXPECT_EQ(red->GetClippingRect(), CXRect(2, 2, 6, 6));
    stage.run("PORT^SETVIEWPORT(0,0,100,100);");
    EXPECT_EQ(red->GetClippingRect(), CXRect(0, 0, 10, 10)) << "the old clip doesn't narrow the new one";
    stage.run("PORT^MOVEVIEWPORT(20,0);");
    EXPECT_FALSE(red->isVisible()) << "touching isn't enough";
    stage.run("PORT^SCROLLRIGHT(1);");
    EXPECT_TRUE(red->isVisible());
    EXPECT_EQ(red->GetPosition(), CXPoint(11, 10)) << "a member once, though added twice";
    stage.run("PORT^SCROLLLEFT(-2147483648);PORT^SCROLLRIGHT(-2147483648);PORT^SCROLLUP(3);");
    EXPECT_EQ(static_cast<CMC_Scroll*>(stage.object("PORT"))->getOffset(), CXPoint(1, -3));
    EXPECT_EQ(red->GetPosition(), CXPoint(11, 7));
    stage.run(
        "PORT^SETVIEWPORT(0,0,800,600);PORT^REMOVE(\"RED\");PORT^ADD(\"BLUE\");PORT^ADD(\"RED\");RED^SETPOSITION(40,10)"
        ";"
        "RED^MONITORCOLLISION(FALSE);BLUE^MONITORCOLLISION(FALSE);PORT^SCROLLRIGHT(8);");
    EXPECT_EQ(stage.object("RED"), nullptr) << "gone before its turn, and the scroll with it";
    EXPECT_EQ(stage.object("PORT"), nullptr);
    EXPECT_EQ(stage.graphic("BLUE")->GetPosition(), CXPoint(38, 10));
    stage.frames(2);
}

TEST(CanvasObserver, ObjectsMayGoWhileAFrameIsPainted) {
    Gallery stage(picture("RED", "red.img", "PRIORITY=1\n") + picture("BLUE", "blue.img", "PRIORITY=2\n") +
                  lines("FIRST", "CANVAS_OBSERVER",
                        "ONUPDATE={LOG^ADD(\"u\");S^REMOVE(\"RED\");S^REMOVE(\"SECOND\");S^REMOVE(\"FIRST\");}\n"
                        "ONUPDATED={LOG^ADD(\"d\");}\n") +
                  lines("SECOND", "CANVAS_OBSERVER", "ONUPDATE={LOG^ADD(\"?\");}\n"));
    stage.frames(1);
    stage.run("VIEW^ENABLENOTIFY(TRUE);VIEW^ADD(\"VIEW\",3);VIEW^REMOVE(\"NOBODY\");VIEW^REFRESH();");
    stage.frames(3);
    EXPECT_EQ(stage.value("LOG"), "u");
    EXPECT_EQ(CWindow::current()->GetBackBuffer()->getData().pixels()[12 * 800 + 32], 0x001F) << "the rest is painted";
    EXPECT_EQ(stage.graphic("VIEW"), CWindow::current()->GetRefreshScreenInterface());
}

TEST(CanvasObject, RecordsBuildWhatWasThere) {
    Gallery stage(
        lines("C", "CANVAS", "WIDTH=30\nHEIGHT=20\nPRIORITY=4\nALPHA=TRUE\nBACKGROUND=TRUE\n") +
        lines("P", "PATTERN", "WIDTH=35\nHEIGHT=25\nPRIORITY=6\nTOCANVAS=TRUE\nVISIBLE=TRUE\nGRIDX=3\nGRIDY=4\n") +
        lines("Q", "PATTERN", "WIDTH=1\nHEIGHT=1\nPRIORITY=6\n") + lines("R", "SCROLL", "VIEWPORT=1,2,3,4\n") +
        lines("C2", "CANVAS") + lines("P2", "PATTERN") +
        lines("Q2", "PATTERN", "TOCANVAS=TRUE\nVISIBLE=TRUE\nWIDTH=9\nHEIGHT=9\n") + lines("R2", "SCROLL"));
    stage.run("C^SETPRIORITY(9);R^MOVEVIEWPORT(5,5);P^SETGRID(8,8);");
    const auto record = [&](CMC_Object* object) {
        CFile file(CWindow::current(), "record.bin", CFile::kCreateBinary);
        CXArchive archive(&file, true);
        object->serialize(&archive);
        file.Close();
        return stage.platform.files.readFile("C:" + stage.platform.folder() + "/Dane/S/record.bin").value_or("(none)");
    };
    for (const std::string name : {"C", "P", "Q", "R"}) {
        SCOPED_TRACE(name);
        const std::string stored = record(stage.object(name));
        CFile file(CWindow::current(), "record.bin", CFile::kReadBinary);
        CXArchive archive(&file, false);
        CMC_Object* target = stage.object(name + "2");
        target->serialize(&archive);
        EXPECT_TRUE(archive.ok());
        EXPECT_EQ(record(target), stored);
    }
    const CRefreshScreen& screen = *CWindow::current()->GetRefreshScreenInterface();
    const CCanvas* canvas = static_cast<CMC_Canvas*>(stage.object("C2"))->getCanvas();
    EXPECT_EQ(screen.GetPriority(canvas), 9);
    EXPECT_TRUE(canvas->Size() == CXSize(30, 20) && canvas->getAlpha() && canvas->hasBackPlane());
    const CPattern* shown = static_cast<CMC_Pattern*>(stage.object("P2"))->getPattern();
    EXPECT_EQ(screen.GetPriority(shown), 6);
    EXPECT_TRUE(shown->isVisible() && shown->Size() == CXSize(35, 25) && shown->getGrid() == CXSize(3, 4));
    const CPattern* unlisted = static_cast<CMC_Pattern*>(stage.object("Q2"))->getPattern();
    EXPECT_EQ(screen.GetPriority(unlisted), -1);
    EXPECT_FALSE(unlisted->isVisible());
    EXPECT_EQ(static_cast<CMC_Scroll*>(stage.object("R2"))->getViewport(), CXRect(6, 7, 8, 9));
}
