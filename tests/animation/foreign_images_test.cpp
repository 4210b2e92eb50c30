// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include "animation/image_file.h"
#include "animation/photoshop.h"
#include "animation/targa.h"
#include "graphics/color.h"
#include "support/pictures.h"
#include "support/stage.h"

namespace {

std::span<const std::byte> bytesOf(const std::string& text) { return std::as_bytes(std::span(text)); }

std::string text(const Plane& plane) { return {plane.bytes().begin(), plane.bytes().end()}; }

std::string big(std::int64_t value, int count) {
    std::string bytes;
    pictures::put(bytes, value, count);
    return {bytes.rbegin(), bytes.rend()};
}

std::string tga(int width, int height, const std::string& pixels, int bpp = 24, int idLength = 0) {
    std::string bytes;
    for (const auto& [value, size] :
         {std::pair{idLength, 1}, {0, 1}, {2, 1}, {0, 5}, {0, 4}, {width, 2}, {height, 2}, {bpp, 1}, {0x20, 1}})
        pictures::put(bytes, value, size);
    return bytes + pixels;
}

// Of a layered file: a channel's number, and its data with the coding in front.
struct Channel {
    int id;
    std::string data;
};

std::string raw(const std::string& plane) { return big(0, 2) + plane; }

std::string runs(const std::vector<std::string>& rows) {
    std::string lengths, data;
    for (const std::string& row : rows) {
        lengths += big(static_cast<std::int64_t>(row.size()), 2);
        data += row;
    }
    return big(1, 2) + lengths + data;
}

struct Layer {
    CXRect place;
    std::string extra;  // behind the blending: mask, ranges, name, further blocks
    std::vector<Channel> channels;
};

// No mask and no ranges, then the name, which is padded, and what follows it.
std::string extra(const std::string& name, const std::string& further = "") {
    std::string bytes = big(0, 8) + big(static_cast<std::int64_t>(name.size()), 1) + name;
    while (bytes.size() % 4 != 0)
        bytes += '\0';
    return bytes + further;
}

std::string psd(const std::vector<Layer>& layers, int count, const std::string& resources = "resource") {
    std::string records, planes;
    for (const Layer& layer : layers) {
        for (const int edge : {layer.place.top, layer.place.left, layer.place.bottom, layer.place.right})
            records += big(edge, 4);
        records += big(static_cast<std::int64_t>(layer.channels.size()), 2);
        for (const Channel& channel : layer.channels) {
            records += big(channel.id, 2) + big(static_cast<std::int64_t>(channel.data.size()), 4);
            planes += channel.data;
        }
        records += "8BIMnorm" + big(0, 4) + big(static_cast<std::int64_t>(layer.extra.size()), 4) + layer.extra;
    }
    const std::string info = big(count, 2) + records + planes;
    const auto length = static_cast<std::int64_t>(info.size());
    return "8BPS" + std::string(22, 'h') + big(0, 4) + big(static_cast<std::int64_t>(resources.size()), 4) + resources +
           big(length + 4, 4) + big(length, 4) + info;
}

// Three layers that are told in as many ways: plain and in runs, with a mask, with further blocks, without a name.
std::string threeLayers() {
    const std::string mask = big(20, 4) + std::string(20, 'm') + big(3, 4) + "bbb" + "\4Mask" + std::string(3, '\0');
    const std::string blocks = "8BIMluni" + big(6, 4) + "blocks" + "8BIMlyid" + big(0, 4);
    return psd(
        {
            {{5, 6, 8, 8},
             extra("Sky", blocks),
             {{-1, raw("abcdef")}, {0, raw("RSTUVW")}, {1, raw("GHIJKL")}, {2, raw("BCDEFM")}}},
            {{-2, -3, 0, 0},
             mask,
             // The rows: two bytes as they stand, a run of two that ends in the next row; a run of one, one as it is.
             {{-2, raw("a mask of another size")},
              {2, runs({std::string("\1xy"), std::string("\377z"), std::string("\0u\0v", 4)})},
              {0, big(2, 2) + "another coding"},
              {-1, raw("123456")}}},
            {{9, 9, 9, 9}, extra("", ""), {{-1, big(0, 2)}, {0, big(0, 2)}, {1, big(0, 2)}, {2, big(0, 2)}}},
        },
        -3);
}

std::optional<std::vector<CPSD::Layer>> parse(const std::string& bytes, std::string* reason = nullptr) {
    std::string why;
    auto layers = CPSD::parse(nullptr, bytesOf(bytes), why);
    EXPECT_EQ(layers.has_value(), why.empty());
    if (reason) *reason = why;
    return layers;
}

}  // namespace

TEST(Targa, ReadsThePlainestFormAlone) {
    const std::string pixels = "abcdefghijkl";
    const struct {
        const char* what;
        std::string bytes;
        const char* reason;  // "": it is read
    } rows[] = {
        {"plain", tga(2, 2, pixels), ""},
        {"more behind it", tga(2, 2, pixels + "TRUEVISION"), ""},
        {"an ID field", tga(2, 2, "I" + pixels, 24, 1), "byte 0: it has an ID field"},
        {"32 bits", tga(2, 2, pixels + pixels, 32), "byte 16: 32 bits a pixel, not 24"},
        {"a byte less", tga(2, 2, pixels.substr(1)), "byte 18: the pixels are cut off"},
        {"no width", tga(0, 2, pixels), "byte 12: a size without pixels or too large"},
        {"a negative height", tga(2, -2, pixels), "byte 12: a size without pixels or too large"},
        {"the largest", tga(32767, 32767, pixels), "byte 12: a size without pixels or too large"},
        {"17 bytes", tga(2, 2, "").substr(0, 17), "the header is cut off"},
        {"nothing", "", "the header is cut off"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        std::string reason;
        const auto stored = CTarga::parse(bytesOf(row.bytes), reason);
        EXPECT_EQ(reason, row.reason);
        ASSERT_EQ(stored.has_value(), reason.empty());
        if (!stored) continue;
        EXPECT_EQ(text(stored->data), pixels);
    }
}

TEST(Targa, TurnsItsRowsAndTellsOnlyWhatIsMissing) {
    Stage stage;
    // From the bottom up, blue first; a CR with an LF behind it is a colour.
    const std::string bottom("\x0D\x0A\x10\0\0\xF8", 6), top("\xF8\0\0\0\xFC\0", 6);
    stage.file("Dane/S/sky.tga", tga(2, 2, bottom + top));
    stage.file("Dane/S/deep.tga", tga(2, 2, bottom + top, 32));
    stage.start();
    CTarga picture(CWindow::current(), "SKY.tga");
    EXPECT_EQ(text(picture.getData()), pictures::plane({0x001F, 0x07E0, 0x1041, 0xF800}));
    EXPECT_EQ(picture.getBpp(), 16);
    EXPECT_EQ(std::to_integer<int>(picture.getHeader()[12]), 2);

    const std::size_t lines = stage.debugLines().size();
    EXPECT_EQ(picture.Load("deep.tga"), 0);
    EXPECT_FALSE(picture.getData()) << "the old picture went";
    EXPECT_TRUE(stage.messages().empty());
    ASSERT_EQ(stage.debugLines().size(), lines + 1);
    EXPECT_NE(stage.debugLines().back().find("deep.tga: byte 16"), std::string::npos) << stage.debugLines().back();

    EXPECT_EQ(picture.Load("nosuch.tga"), 2000);
    EXPECT_EQ(CPSD(CWindow::current(), "nosuch.psd").LastError(), 2000);
    ASSERT_EQ(stage.messages().size(), 2U);
    EXPECT_NE(stage.messages()[0].text.find("nosuch.tga"), std::string::npos);
}

TEST(Photoshop, ReadsEachLayerWithItsPlanes) {
    const auto layers = parse(threeLayers());
    ASSERT_TRUE(layers);
    ASSERT_EQ(layers->size(), 3U);
    const struct {
        const char* name;
        CXRect place;
        std::string pixels;  // blue, green, red
        std::string alpha;
    } expected[] = {
        {"Sky", {5, 6, 8, 8}, "BGRCHSDITEJUFKVMLW", "abcdef"},
        {"Mask", {-2, -3, 0, 0}, std::string("x\0\0y\0\0z\0\0z\0\0u\0\0v\0\0", 18), "123456"},
        {"", {9, 9, 9, 9}, "", ""},
    };
    for (std::size_t i = 0; i < layers->size(); ++i) {
        SCOPED_TRACE(i);
        const CPSD::Layer& layer = (*layers)[i];
        EXPECT_EQ(layer.name.view(), expected[i].name);
        EXPECT_EQ(layer.picture->getFileName().view(), expected[i].name);
        EXPECT_TRUE(layer == expected[i].place);
        EXPECT_EQ(layer.picture->GetPosition(), expected[i].place.LeftTop());
        EXPECT_EQ(layer.picture->Size(), CXSize(layer.Width(), layer.Height()));
        EXPECT_EQ(text(layer.picture->getData()), expected[i].pixels);
        EXPECT_EQ(text(layer.picture->getAlpha()), expected[i].alpha);
    }
}

TEST(Photoshop, FindsTheNextLayerBehindAnyName) {
    const std::vector<Channel> channels = {{0, raw("r")}, {1, raw("g")}, {2, raw("b")}};
    const std::string block = "8BIMlyid" + big(4, 4) + "four";
    const struct {
        const char* what;
        std::string extra;
        const char* name;
    } rows[] = {
        {"of three letters", extra("abc"), "abc"},
        {"of four", extra("abcd"), "abcd"},
        {"ended by a zero", extra(std::string("ab\0c", 4)), "ab"},
        {"none, padded", extra(""), ""},
        {"none, padded, a block", extra("", block), ""},
        {"none, a byte", big(0, 9), ""},
        {"none, a byte, a block", big(0, 9) + block, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const auto layers =
            parse(psd({{{0, 0, 1, 1}, row.extra, channels}, {{7, 8, 8, 9}, extra("next"), channels}}, 2));
        ASSERT_TRUE(layers);
        EXPECT_EQ(layers->front().name.view(), row.name);
        EXPECT_EQ(layers->back().name.view(), "next");
        EXPECT_EQ(text(layers->back().picture->getData()), "bgr");
    }
}

TEST(Photoshop, RefusesWhatIsDamaged) {
    const std::string good = threeLayers();
    for (std::size_t cut = 0; cut < good.size(); ++cut)
        EXPECT_FALSE(parse(good.substr(0, cut))) << cut;
    constexpr int kFirst = 26 + 4 + 12 + 8;  // the count of layers
    const struct {
        const char* what;
        int at, width;
        std::int64_t lie;
        const char* reason;
    } rows[] = {
        {"colour mode data", 26, 4, 768, "colour mode"},
        {"resources behind the end", 30, 4, 0x7FFFFFFF, "cut off"},
        {"negative resources", 30, 4, -1, "cut off"},
        {"more layers", kFirst, 2, 32767, ""},
        {"the most layers", kFirst, 2, -32768, ""},
        {"a layer of the whole plane", kFirst + 2, 4, -0x80000000LL, "too large"},
        {"a layer upside down", kFirst + 2, 4, 9, "inside out"},
        {"a layer larger than its data", kFirst + 14, 4, 9, ""},
        {"fewer channels", kFirst + 18, 2, 3, ""},
        {"negative channels", kFirst + 18, 2, -4, "negative"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        std::string bytes = good, reason;
        bytes.replace(static_cast<std::size_t>(row.at), static_cast<std::size_t>(row.width), big(row.lie, row.width));
        EXPECT_FALSE(parse(bytes, &reason));
        EXPECT_NE(reason.find(row.reason), std::string::npos) << reason;
    }
    const struct {
        const char* what;
        std::string data;
    } channels[] = {
        {"a packet behind its row", runs({std::string("\3ab", 3), "\1cd"})},
        {"a run without its byte", runs({"\1ab", "\377"})},
        {"rows that give less", runs({"\1ab", std::string("\0c", 2)})},
        {"a negative row", big(1, 2) + big(-2, 2) + big(5, 2) + "\1ab"},
        {"rows behind the end", big(1, 2) + big(3, 2) + big(32000, 2) + "\1ab\1cd"},
    };
    for (const auto& row : channels) {
        SCOPED_TRACE(row.what);
        EXPECT_FALSE(parse(psd({{{0, 0, 2, 2}, extra("a"), {{0, row.data}}}}, 1)));
    }
    EXPECT_FALSE(parse(psd(
        {{{0, 0, 1, 1}, extra("a"), {{0, raw("r")}}}, {{0, 0, 1, 1}, extra("b"), {{0, raw("r")}, {1, raw("g")}}}}, 2)));
    // Two layers of 128 million bytes each fit, the third doesn't.
    const Layer large{{0, 0, 8192, 4095}, extra("large"), {}};
    EXPECT_FALSE(parse(psd({large, large, large}, 3)));
}

TEST(Photoshop, SelectsAndMovesOneLayer) {
    Stage stage;
    stage.file("Dane/S/all.psd", threeLayers());
    stage.file("Dane/S/bad.psd", threeLayers().substr(0, 200));
    stage.start();
    CPSD picture(CWindow::current(), "all.psd");
    EXPECT_EQ(picture.GetLayerNo(), 3);
    EXPECT_EQ(picture.GetSelLayer(), 0);
    for (const char* name : {"Mask", "NOSUCH", "MASK"}) {
        picture.SelectLayer(CXString(name));
        EXPECT_EQ(picture.GetSelLayer(), 1) << name;
    }
    for (const int layer : {-1, 3})
        picture.SelectLayer(layer);
    EXPECT_EQ(picture.GetLayerName(-1).view(), "Mask");
    EXPECT_EQ(picture.GetLayerName(2).view(), "");
    EXPECT_EQ(picture.GetLayerName(3).view(), "");

    picture.SetPosition(CXPoint(-7, 20));
    EXPECT_EQ(picture.GetPosition(), CXPoint(-7, 20));
    EXPECT_EQ(picture.GetCurrentLayer()->GetPosition(), CXPoint(-7, 20));
    EXPECT_TRUE(picture.GetLayerRect(0) == CXRect(-2, 20, 0, 23)) << "left stays, the size too";
    CPSD copy(picture);
    picture.SelectLayer(0);
    EXPECT_EQ(picture.GetCurrentLayer()->GetPosition(), CXPoint(5, 6)) << "the others stay";
    EXPECT_EQ(picture.Load("bad.psd"), 0);
    EXPECT_EQ(picture.GetLayerNo(), 0);
    EXPECT_EQ(picture.GetCurrentLayer(), nullptr);
    picture.SetPosition(CXPoint(1, 1));
    EXPECT_EQ(copy.GetLayerName(-1).view(), "Mask") << "a copy has layers of its own";
    EXPECT_EQ(text(copy.GetCurrentLayer()->getAlpha()), "123456");
}

TEST(ImageFile, MakesTheClassOfTheExtension) {
    Stage stage;
    stage.file("Dane/S/a.tga", tga(2, 2, "abcdefghijkl"));
    stage.file("Dane/S/a.bmp", "BM");
    stage.file("Dane/S/a.psd", threeLayers());
    stage.file("Dane/S/a.img", pictures::nvi(2, 2, std::vector<std::uint16_t>{1, 2, 3, 4}));
    stage.start();
    const struct {
        const char* name;
        _filetype type;
        bool hasPixels;
    } rows[] = {
        {"a.IMG", kFileImg, true},  {"a.Tga", kFileTga, true},      {"a.bmp", kFileBmp, false},
        {"a.psd", kFilePsd, false}, {"a.pcx", kFileUnknown, false}, {"tga", kFileUnknown, false},
    };
    CImageFile file(CWindow::current());
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        CGraphicsObject* before = file.getObject();
        EXPECT_EQ(file.Load(row.name), row.type);
        if (row.type == kFileUnknown) {
            EXPECT_EQ(file.getObject(), before);
        } else {
            EXPECT_EQ(static_cast<bool>(file.getObject()->getData()), row.hasPixels);
        }
    }
    EXPECT_TRUE(stage.messages().empty());
    CTarga picture(CWindow::current(), "a.tga");
    EXPECT_EQ(file.Save(&picture, "b.tga", kCompressionRaw), kFileUnknown);
    EXPECT_EQ(file.Save(&picture, "b.img", kCompressionRaw), kFileImg);
    EXPECT_EQ(picture.Save("c.tga", kCompressionRaw), 0);
    const auto saved = [&](const std::string& name) {
        return stage.platform.files.readFile("C:" + stage.platform.folder() + "/Dane/S/" + name).value_or("(none)");
    };
    EXPECT_EQ(saved("c.tga"), pictures::mvl(2, 2, text(picture.getData()))) << "it writes an .img under any name";
    EXPECT_EQ(saved("b.img"), saved("c.tga"));
    EXPECT_EQ(saved("b.tga"), "(none)");
}

TEST(GraphicsObject, TurnsPixelsOfThreeBytes) {
    const std::string pixels = "abcdefghijkl";
    CGraphicsObject picture(nullptr, {2, 2}, 24, Plane(std::vector<std::uint8_t>(pixels.begin(), pixels.end())));
    picture.FlipV();
    EXPECT_EQ(text(picture.getData()), "defabcjklghi");
    picture.FlipH();
    EXPECT_EQ(text(picture.getData()), "jklghidefabc");
    picture.resetFlips();
    EXPECT_EQ(text(picture.getData()), pixels);
}
