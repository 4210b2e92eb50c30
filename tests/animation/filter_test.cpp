// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <cmath>
#include <gtest/gtest.h>

#include "animation/animo.h"
#include "animation/animo_object.h"
#include "animation/filter_object.h"
#include "animation/image.h"
#include "animation/image_object.h"
#include "storage/archive.h"
#include "storage/file.h"
#include "support/animations.h"
#include "support/stage.h"

namespace {

using Pixels = std::vector<std::uint16_t>;

constexpr int kWidth = 9, kHeight = 7;

// Pixels that all differ, with every bit in use somewhere.
Pixels chequered(int count) {
    Pixels pixels;
    for (int i = 0; i < count; ++i)
        pixels.push_back(static_cast<std::uint16_t>(i * 40503 + 977));
    return pixels;
}

Pixels shownBy(const CGraphicsObject* picture) {
    const auto pixels = picture->getData().pixels();
    return {pixels.begin(), pixels.end()};
}

// P, Q: pictures of files of their own, P with an alpha plane whose first byte is 0; A: an animation of three frames,
// coded, that plays "Go" at a frame each 10 ms; F: the filter.
class Studio : public Stage {
public:
    Studio(const std::string& filter, const std::string& action, const std::string& more = "")
        : Stage(lines("LOG", "STRING") + lines("RUNS", "BOOL") + picture("P") + picture("Q") +
                lines("A", "ANIMO", "FILENAME=a.ann\nTOCANVAS=TRUE\nVISIBLE=TRUE\nFPS=1000\n") + more +
                lines("F", filter, action)) {
        std::string alpha(kWidth * kHeight, '\xFF');
        alpha[0] = '\0';
        file("Dane/S/p.img", pictures::nvi(kWidth, kHeight, chequered(kWidth * kHeight), alpha, 100, 50));
        file("Dane/S/q.img", pictures::nvi(kWidth, kHeight, chequered(kWidth * kHeight), "", 20, 20));
        file("Dane/S/a.ann", animations::third("NVP", animations::sheet(3), {{"Go", {0, 1, 2}, 0, 2, 0, 0, {}}}, 4));
        start();
    }
    CImage* image(const std::string& name) { return static_cast<CMC_Image*>(object(name))->getImage(); }
    CAnimo* animo(const std::string& name) { return static_cast<CMC_Animo*>(object(name))->getAnimo(); }
    bool isRunning() {
        run("RUNS^SET(F^ISRUNNING(\"P\"));");
        return value("RUNS") == "TRUE";
    }
    std::string place() {
        const CXPoint at = image("P")->GetPosition();
        return std::to_string(at.x) + "," + std::to_string(at.y);
    }
    // The frames' first pixels, decoded.
    Pixels frames3(const std::string& name) {
        Pixels first;
        for (int i = 0; i < animo(name)->GetNOF(); ++i) {
            CFrame* frame = animo(name)->GetFrame(i);
            frame->decode();
            first.push_back(frame->getData().pixels().empty() ? std::uint16_t{0} : frame->getData().pixels()[0]);
            frame->bringBackCompressed();
        }
        return first;
    }

private:
    static std::string picture(const std::string& name) {
        return lines(name, "IMAGE",
                     "FILENAME=" + name + ".img\nTOCANVAS=TRUE\nVISIBLE=TRUE\nONCOLLISION={LOG^ADD(\"hit\");}\n");
    }
};

void apply(CGraphicsObject& picture, const char* action, const std::vector<std::pair<const char*, const char*>>& set) {
    const StaticEffect* effect = findStaticEffect(action);
    StaticProperties chosen(effect->classId);
    for (const auto& [key, value] : set)
        chosen.setProperty(key, value);
    ASSERT_TRUE(prepareForFilter(picture, picture.getBpp()));
    effect->apply(picture, chosen);
}

Plane planeOf(const Pixels& pixels) {
    Plane plane(pixels.size() * 2);
    std::copy(pixels.begin(), pixels.end(), plane.pixels().begin());
    return plane;
}

}  // namespace

TEST(Filter, FadesByRounds) {
    const struct {
        const char* what;
        const char* action;
        const char* before;
        std::vector<int> opacities;  // at the start, and behind each round
        const char* heard;
    } rows[] = {
        {"in", "FADEIN", "F^SETPROPERTY(\"SPEED\",100);", {0, 100, 200, 255, 255}, "sttf"},
        {"in, to its end exactly", "FADEIN", "F^SETPROPERTY(\"SPEED\",85);", {0, 85, 170, 255, 255}, "sttf"},
        {"in, by parts of one",
         "FADEIN",
         "F^SETPROPERTY(\"SPEED\",0.5);F^SETPROPERTY(\"START\",9.8);",
         {9, 10, 10, 11, 11},
         "stttt"},
        {"out", "FADEOUT", "F^SETPROPERTY(\"SPEED\",200);", {255, 55, 0, 0, 0}, "stf"},
        {"to and fro",
         "FADEINOUT",
         "F^SETPROPERTY(\"SPEED\",60);F^SETPROPERTY(\"START\",100);F^SETPROPERTY(\"END\",200);",
         {100, 100, 160, 200, 140},
         "stttt"},
        {"at no speed", "FADEOUT", "F^SETPROPERTY(\"SPEED\",0);", {255, 255, 255, 255, 255}, "stttt"},
        {"without end", "FADEIN", "F^SETPROPERTY(\"SPEED\",\"1e999\");", {0, 255, 255, 255, 255}, "sf"},
        {"keys are exact", "FADEOUT", "F^SETPROPERTY(\"speed\",200);", {255, 254, 254, 254, 254}, "stttt"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Studio stage("FILTER", std::string("ACTION=") + row.action +
                                   "\nONSTARTED^P={LOG^ADD(\"s\");}\nONTICK={LOG^ADD(\"t\");}\n"
                                   "ONFINISHED={LOG^ADD(\"f\");}\n");
        stage.run(std::string(row.before) + "F^LINK(\"P\");F^START(\"P\");F^START(\"Q\");");
        std::vector<int> seen = {stage.image("P")->GetOpacity()};
        for (int i = 0; i < 4; ++i) {
            stage.frames(1);
            // What runs isn't begun anew.
            if (stage.isRunning()) stage.run("F^START(\"P\");");
            seen.push_back(stage.image("P")->GetOpacity());
        }
        EXPECT_EQ(seen, row.opacities);
        EXPECT_EQ(stage.value("LOG"), row.heard);
        EXPECT_EQ(stage.image("Q")->GetOpacity(), 255) << "never linked";
    }
}

TEST(Filter, WalksAlongThePath) {
    const std::string ways =
        lines("EAST", "VECTOR", "SIZE=2\nVALUE=4,0\n") + lines("DOWN", "VECTOR", "SIZE=2\nVALUE=0,3\n") +
        lines("NIL", "VECTOR", "SIZE=2\nVALUE=0,0\n") + lines("SHORT", "VECTOR", "SIZE=1\nVALUE=-2\n");
    const struct {
        const char* what;
        const char* nodes;
        const char* before;
        std::vector<std::string> places;  // behind 2, 4 and 9 rounds
        bool isRunning;
    } rows[] = {
        {"dot by dot", "EAST,DOWN", "", {"102,50", "104,50", "104,53"}, false},
        {"in a loop", "DOWN", "F^SETPROPERTY(\"LOOPED\",\"TRUE\");", {"100,52", "100,54", "100,59"}, true},
        {"at every third round", "EAST", "F^SETPROPERTY(\"SPEED\",3);", {"100,50", "101,50", "103,50"}, true},
        {"dense", "EAST", "W^SETPROPERTY(\"DENSITY\",1.5);", {"103,50", "104,50", "104,50"}, false},
        {"over nothing", "NIL,GHOST,EAST", "", {"100,50", "102,50", "104,50"}, false},
        {"one way only", "SHORT", "", {"98,50", "98,50", "98,50"}, false},
        {"of nothing", "NIL", "F^SETPROPERTY(\"LOOPED\",\"TRUE\");", {"100,50", "100,50", "100,50"}, true},
        {"without a node", "", "", {"100,50", "100,50", "100,50"}, false},
        {"at no speed", "EAST", "F^SETPROPERTY(\"SPEED\",0);", {"100,50", "100,50", "100,50"}, true},
        {"at no density", "EAST", "W^SETPROPERTY(\"DENSITY\",0);", {"100,50", "100,50", "100,50"}, true},
        {"on no path", "EAST", "F^SETPROPERTY(\"PATHDEF\",\"EAST\");", {"100,50", "100,50", "100,50"}, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Studio stage("FILTER", "ACTION=PATH\n", ways + lines("W", "PATH", std::string("NODES=") + row.nodes + "\n"));
        stage.run("F^SETPROPERTY(\"PATHDEF\",\"W\");" + std::string(row.before) + "F^LINK(\"P\");F^START(\"P\");");
        std::vector<std::string> places;
        for (const int rounds : {2, 2, 5}) {
            stage.frames(rounds);
            places.push_back(stage.place());
        }
        EXPECT_EQ(places, row.places);
        EXPECT_EQ(stage.isRunning(), row.isRunning);
    }
    Studio stage("FILTER", "ACTION=PATH\n", ways + lines("W", "PATH", "NODES=DOWN,EAST\n"));
    stage.run("F^SETPROPERTY(\"PATHDEF\",\"W\");F^LINK(\"P\");F^START(\"P\");");
    stage.frames(9);
    stage.run("P^SETPOSITION(10,10);F^START(\"P\");");
    stage.frames(2);
    EXPECT_EQ(stage.place(), "10,12") << "an ended walk begins at its first node, where the object stands";
    stage.run("F^STOP(\"P\");P^SETPOSITION(60,60);F^START(\"P\");");
    stage.frames(3);
    EXPECT_EQ(stage.place(), "60,63") << "a stopped one with the segment that it was in";
}

// Each handler takes something away in the midst of a round or of START and STOP; what is left runs on.
TEST(Filter, SurvivesItsHandlers) {
    const struct {
        const char* what;
        const char* handlers;
        int opacityOfQ;  // behind 3 rounds
    } rows[] = {
        {"unlinks itself", "ONTICK^P={F^UNLINK(\"P\");LOG^ADD(\"x\");}\n", 30},
        {"unlinks the next", "ONTICK^P={F^UNLINK(\"Q\");LOG^ADD(\"x\");F^STOP(\"P\");}\n", 0},
        {"stops the next", "ONTICK^P={LOG^ADD(\"x\");F^STOP(\"Q\");F^STOP(\"P\");}\n", 0},
        {"links and starts anew", "ONTICK^P={LOG^ADD(\"x\");F^UNLINK(\"P\");F^LINK(\"P\");}\n", 30},
        {"removes the object", "ONTICK^P={S^REMOVE(\"P\");LOG^ADD(\"x\");}\n", 30},
        {"removes the next object", "ONTICK^P={S^REMOVE(\"Q\");LOG^ADD(\"x\");F^STOP(\"P\");}\n", -1},
        {"exchanges its picture", "ONTICK^P={P^LOAD(\"q.img\");LOG^ADD(\"x\");}\n", 30},
        {"removes the filter", "ONTICK^P={S^REMOVE(\"F\");LOG^ADD(\"x\");}\n", 0},
        {"removes the filter at the start", "ONSTARTED^Q={S^REMOVE(\"F\");LOG^ADD(\"x\");}\n", 255},
        {"unlinks at the start", "ONSTARTED^Q={F^UNLINK(\"Q\");LOG^ADD(\"x\");F^STOP(\"P\");}\n", 255},
        {"starts at the start", "ONSTARTED^Q={F^START(\"Q\");LOG^ADD(\"x\");F^STOP(\"P\");}\n", 30},
        {"stops at the end", "ONFINISHED^P={F^STOP(\"P\");F^UNLINK(\"P\");LOG^ADD(\"x\");}\nONTICK={F^STOP(\"P\");}\n",
         30},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Studio stage("FILTER", std::string("ACTION=FADEIN\n") + row.handlers);
        stage.run("F^SETPROPERTY(\"SPEED\",10);F^LINK(\"P\");F^LINK(\"Q\");F^START(\"P\");F^START(\"Q\");");
        stage.frames(3);
        EXPECT_EQ(stage.value("LOG"), "x");
        EXPECT_EQ(stage.object("Q") ? stage.image("Q")->GetOpacity() : -1, row.opacityOfQ);
        stage.run("F^START(\"P\");F^STOP(\"Q\");F^UNLINK(\"Q\");S^REMOVE(\"P\");");
        stage.frames(2);
    }
}

TEST(Filter, RipplesTheSourceAndNotTheRipple) {
    Studio stage("FILTER", "ACTION=WATER\n");
    stage.run("P^CLONE(1);F^SETPROPERTY(\"FACTOR\",2.3);F^LINK(\"P\");F^START(\"P\");");
    const Pixels source = chequered(kWidth * kHeight);
    for (int round = 1; round <= 53; ++round) {
        stage.frames(1);
        Pixels wanted = source;
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                if (x == 0 && y == 0) continue;  // transparent
                const double distance = std::hypot(kWidth / 2 - x, kHeight / 2 - y);
                const int shift = static_cast<int>(2.3 * std::sin(round % 51 + distance));
                wanted[static_cast<std::size_t>(y * kWidth + x)] = source[static_cast<std::size_t>(
                    std::clamp(y + shift, 0, kHeight - 1) * kWidth + std::clamp(x + shift, 0, kWidth - 1))];
            }
        }
        ASSERT_EQ(shownBy(stage.image("P")), wanted) << "round " << round;
    }
    EXPECT_EQ(shownBy(stage.image("P_1")), source) << "the clone shows the picture as it was";
    // A picture of another size meanwhile, and factors beyond all sense.
    apply(*stage.image("P"), "SCALE", {{"FACTORX", "3"}, {"FACTORY", "0.2"}});
    for (const char* factor : {"1e300", "-1e300", "1e999", "0"}) {
        stage.run("F^SETPROPERTY(\"FACTOR\",\"" + std::string(factor) + "\");");
        stage.frames(1);
    }
    EXPECT_EQ(stage.image("P")->Size(), CXSize(27, 1));
    stage.run("F^LINK(\"A\");F^START(\"A\");A^PLAY(\"GO\");A^CLONE(1);");
    stage.frames(8);
    EXPECT_EQ(stage.frames3("A"), (Pixels{1, 2, 3})) << "frames keep to themselves";
    EXPECT_EQ(stage.frames3("A_1"), (Pixels{1, 2, 3}));
}

TEST(StaticFilter, RewritesPixels) {
    const struct {
        const char* what;
        int bpp;
        const char* action;
        std::vector<std::pair<const char*, const char*>> set;
        std::uint16_t before, after;
    } rows[] = {
        {"red and blue", 16, "COLORCHANNEL", {{"CHANNELS", "BgR"}}, 0xFFFF, 0xF81F},
        {"green", 16, "COLORCHANNEL", {{"CHANNELS", "G"}}, 0xFFFF, 0x07C0},
        {"red and green", 15, "COLORCHANNEL", {{"CHANNELS", "RG"}}, 0x7FFF, 0x7FC0},
        {"none", 16, "COLORCHANNEL", {{"CHANNELS", ""}}, 0xFFFF, 0},
        {"negative", 16, "NEGATIVE", {}, 0x1234, 0xEDCB},
        {"negative", 15, "NEGATIVE", {}, 0x1234, 0x6DCB},
        {"gray", 16, "GRAYSCALE", {}, 0xF800, 10 << 11 | 10 << 6 | 10},
        {"gray", 15, "GRAYSCALE", {}, 0x7C00, 10 << 10 | 10 << 5 | 10},
        {"blur loses a bit of green", 16, "BLUR", {}, 0xFFFF, 0xFFDF},
        {"blur", 15, "BLUR", {}, 0x7FFF, 0x7FFF},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.what) + " at " + std::to_string(row.bpp));
        const Plane before = planeOf(Pixels(9, row.before));
        CGraphicsObject picture(nullptr, {3, 3}, row.bpp, before);
        apply(picture, row.action, row.set);
        EXPECT_EQ(shownBy(&picture)[4], row.after);
        EXPECT_EQ(before.pixels()[4], row.before) << "who shares the planes sees no change";
    }
    CGraphicsObject picture(nullptr, {3, 1}, 16, planeOf({1, 2, 3}));
    picture.SetClippingRect({1, 0, 9, 9});
    apply(picture, "NEGATIVE", {});
    EXPECT_EQ(shownBy(&picture), (Pixels{1, 0xFFFD, 0xFFFC})) << "inside of the clip";
}

// Against the plainest way to write it.
TEST(StaticFilter, BlursAsAPlainLoopDoes) {
    for (const int size : {2, 3, 4, 5, 7}) {
        for (const int bpp : {15, 16}) {
            SCOPED_TRACE(size * 100 + bpp);
            constexpr int width = 11, height = 8;
            const Pixels source = chequered(width * height);
            const int half = size / 2, green = bpp == 16 ? 63 : 31, red = bpp == 16 ? 11 : 10;
            Pixels wanted = source;
            for (int y = half; y < height - half; ++y) {
                for (int x = half; x < width - half; ++x) {
                    const auto channel = [&](int shift, int largest) {
                        std::uint16_t sum = 0;
                        for (int v = y - half; v <= y + half; ++v) {
                            for (int u = x - half; u <= x + half; ++u) {
                                const int value = source[static_cast<std::size_t>(v * width + u)] >> shift & largest;
                                if (u != x || v != y) sum = static_cast<std::uint16_t>(sum + value);
                            }
                        }
                        const int own = source[static_cast<std::size_t>(y * width + x)] >> shift & largest;
                        return std::min((own + sum / (size * size - 1)) / 2, largest);
                    };
                    const int g = channel(5, green) & (bpp == 16 ? ~1 : ~0);
                    const auto pixel = static_cast<std::uint16_t>(channel(0, 31) | g << 5 | channel(red, 31) << red);
                    for (const auto& [dx, dy] : {std::pair(0, 0), {-1, -1}, {1, -1}, {-1, 1}, {1, 1}})
                        wanted[static_cast<std::size_t>((y + dy) * width + x + dx)] = pixel;
                }
            }
            CGraphicsObject picture(nullptr, {width, height}, bpp, planeOf(source));
            apply(picture, "BLUR", {{"SIZE", std::to_string(size).c_str()}});
            EXPECT_EQ(shownBy(&picture), wanted);
        }
    }
}

TEST(StaticFilter, ParametersWithoutSenseLeaveThePicture) {
    const struct {
        const char* action;
        const char* key;
        std::vector<const char*> values;
    } rows[] = {
        {"BLUR", "SIZE", {"0", "1", "-3", "-2147483648", "100", "2147483647"}},
        {"SCALE", "FACTORX", {"-1", "1e999", "1e300", "2000000"}},
        {"SCALE", "FACTORY", {"-0.5", "1e9"}},
        {"ROTATE", "ANGLE", {"1e999", "0"}},
        {"SCALE", "SIZE", {"7"}},
    };
    for (const auto& row : rows) {
        for (const char* value : row.values) {
            SCOPED_TRACE(std::string(row.action) + " " + row.key + " " + value);
            const Pixels source = chequered(12);
            CGraphicsObject picture(nullptr, {4, 3}, 16, planeOf(source));
            apply(picture, row.action, {{row.key, value}});
            EXPECT_EQ(picture.Size(), CXSize(4, 3));
            EXPECT_EQ(shownBy(&picture), source);
        }
    }
    CGraphicsObject picture(nullptr, {4, 3}, 16, planeOf(chequered(12)));
    apply(picture, "ROTATE", {{"ANGLE", "1e300"}});
    apply(picture, "SCALE", {{"FACTORX", "0"}});
    EXPECT_EQ(picture.Size().width, 0) << "nothing is left of it";
}

// A quarter to the right: rows become columns. The factor is a little short of a quarter, which moves the edges.
TEST(StaticFilter, TurnsAboutTheCentre) {
    CGraphicsObject picture(nullptr, {40, 20}, 16, planeOf(chequered(800)));
    picture.SetPosition(100, 50);
    apply(picture, "ROTATE", {{"ANGLE", "90"}});
    ASSERT_EQ(picture.Size(), CXSize(20, 40));
    EXPECT_EQ(picture.GetPosition(), CXPoint(110, 40));
    constexpr double t = 90 * -0.017453233333333335;
    const double c = std::cos(t), s = std::sin(t);
    const Pixels source = chequered(800);
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 20; ++x) {
            const int u = x - 10, v = y - 20;
            const int sx = static_cast<int>(u * c - v * s + 20), sy = static_cast<int>(v * c + u * s + 10);
            const bool inside = sx >= 0 && sx < 40 && sy >= 0 && sy < 20;
            const auto at = static_cast<std::size_t>(y * 20 + x);
            ASSERT_EQ(shownBy(&picture)[at], inside ? source[static_cast<std::size_t>(sy * 40 + sx)] : 0)
                << x << "," << y;
            ASSERT_EQ(picture.getAlpha().bytes()[at], inside ? 255 : 0);
        }
    }
}

TEST(StaticFilter, TreatsFramesAsTheyAreShown) {
    constexpr auto inverse = [](int value) { return static_cast<std::uint16_t>(~value); };
    Studio stage("STATICFILTER", "ACTION=NEGATIVE\n");
    stage.run("A^CLONE(1);F^SETPROPERTY(\"CANUNDO\",\"TRUE\");F^LINK(\"A\");");
    EXPECT_EQ(stage.frames3("A"), (Pixels{inverse(1), 2, 3})) << "what was never shown stays";
    EXPECT_EQ(stage.frames3("A_1"), (Pixels{1, 2, 3})) << "nobody filters the clone";
    stage.run("A^PLAY(\"GO\");");
    stage.frames(1);
    EXPECT_EQ(stage.frames3("A"), (Pixels{inverse(1), inverse(2), 3}));
    stage.frames(5);
    EXPECT_EQ(stage.frames3("A"), (Pixels{inverse(1), inverse(2), inverse(3)})) << "once each";
    stage.run("A^CLONE(1);F^UNLINK(\"A\");");
    EXPECT_EQ(stage.frames3("A"), (Pixels{1, 2, 3}));
    EXPECT_EQ(stage.animo("A")->GetFrame(2)->getCompression(), kCompressionRle) << "as it stood";
    EXPECT_EQ(stage.frames3("A_2"), (Pixels{inverse(1), inverse(2), inverse(3)})) << "a clone of the treated one";
    stage.frames(3);
    EXPECT_EQ(stage.frames3("A"), (Pixels{1, 2, 3})) << "nobody listens any more";
    stage.run("F^SETPROPERTY(\"CURRENTFRAME\",\"FALSE\");F^LINK(\"A\");S^REMOVE(\"A\");S^REMOVE(\"F\");");
    stage.frames(2);
}

TEST(StaticFilter, UndoesShapeAndPlace) {
    Studio stage("STATICFILTER", "ACTION=ROTATE\n");
    stage.run(
        "F^SETPROPERTY(\"ANGLE\",90);F^SETPROPERTY(\"CANUNDO\",\"TRUE\");F^SETPROPERTY(\"CURRENTFRAME\",\"FALSE\");"
        "F^LINK(\"A\");F^LINK(\"P\");F^LINK(\"A#GHOST\");F^LINK(\"F\");");
    EXPECT_EQ(stage.animo("A")->GetFrame(2)->Size(), CXSize(3, 4));
    EXPECT_EQ(stage.image("P")->Size(), CXSize(7, 9));
    stage.run("F^UNLINK(\"A\");F^UNLINK(\"P\");F^UNLINK(\"P\");");
    EXPECT_EQ(stage.animo("A")->GetFrame(2)->Size(), CXSize(4, 3));
    EXPECT_EQ(stage.animo("A")->GetFrame(2)->GetFramePosition(), CXPoint(10, 20));
    EXPECT_EQ(stage.place(), "100,50");
    EXPECT_EQ(shownBy(stage.image("P")), chequered(kWidth * kHeight));
}

TEST(Filter, KeepsItsActionInTheRecord) {
    Studio stage("FILTER", "ACTION=FADEOUT\n");
    CFile file(CWindow::current(), "filter.bin", CFile::kCreateBinary);
    CXArchive storing(&file, true);
    stage.object("F")->serialize(&storing);
    file.Seek(0, SEEK_SET);
    CXArchive archive(&file, false);
    CMC_Filter copy(stage.current());
    EXPECT_EQ(copy.getName(), "temp");
    copy.link("P");
    copy.serialize(&archive);
    EXPECT_FALSE(copy.isRunning("P"));
    copy.link("P");
    copy.start("P");
    stage.frames(2);
    EXPECT_TRUE(copy.isRunning("P"));
    EXPECT_EQ(stage.image("P")->GetOpacity(), 254);
}
