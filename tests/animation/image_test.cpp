// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/image.h"

#include <functional>
#include <gtest/gtest.h>

#include "storage/lzo_compression.h"
#include "storage/lzw_compression.h"
#include "storage/rle_compression.h"
#include "support/pictures.h"
#include "support/stage.h"

namespace {

using Pixels = std::vector<std::uint16_t>;

std::span<const std::uint8_t> octets(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::string textOf(const Bytes& bytes) { return {bytes.begin(), bytes.end()}; }

std::string lzo(const std::string& plane) {
    std::size_t length = 0;
    return textOf(CLZWCompression2(octets(plane)).compress(length));
}

std::string lzw(const std::string& plane) { return textOf(CLZWCompression(octets(plane)).compress()); }

// The oldest form: 80 bytes that nobody looks at, a record of 12, pixels, alpha.
std::string oldest(int width, int height, int flags, const std::string& rest) {
    std::string bytes(80, 'x');
    pictures::put(bytes, width, 2);
    pictures::put(bytes, height, 2);
    bytes.append(6, '\0');
    pictures::put(bytes, flags, 2);
    return bytes + rest;
}

std::optional<CImage::Stored> parse(const std::string& bytes, std::string* reason = nullptr) {
    std::string why;
    std::optional<CImage::Stored> stored = CImage::parse(std::as_bytes(std::span(bytes)), why);
    EXPECT_EQ(stored.has_value(), why.empty());
    if (reason) *reason = why;
    return stored;
}

const Pixels kPixels = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
const std::string kData = pictures::plane(kPixels);
const std::string kAlpha = "abcdefghijkl";

struct Form {
    const char* what;
    std::string bytes;
    bool hasAlpha;
};

// The same 4 by 3 picture in every form that decodes while loading.
std::vector<Form> forms() {
    using namespace pictures;
    return {
        {"packed, raw", nvi(4, 3, kData, kAlpha, -5, 6), true},
        {"packed, dictionary", nvi(4, 3, lzw(kData), lzw(kAlpha), -5, 6, 16, 2), true},
        {"packed, no alpha", nvi(4, 3, kData, "", -5, 6), false},
        {"long, raw", mvl(4, 3, kData, kAlpha, -5, 6), true},
        {"long, a flag for the format", mvl(4, 3, kData, kAlpha, -5, 6, 4), true},
        {"long, dictionary", mvl(4, 3, lzo(kData), lzo(kAlpha), -5, 6), true},
        {"long, no alpha", mvl(4, 3, kData, "", -5, 6), false},
    };
}

}  // namespace

TEST(Image, ReadsEveryForm) {
    for (const Form& form : forms()) {
        SCOPED_TRACE(form.what);
        const std::optional<CImage::Stored> stored = parse(form.bytes);
        ASSERT_TRUE(stored);
        EXPECT_EQ(stored->size, CXSize(4, 3));
        EXPECT_EQ(stored->bpp, 16);
        EXPECT_EQ(stored->position, CXPoint(-5, 6));
        EXPECT_EQ(Pixels(stored->data.pixels().begin(), stored->data.pixels().end()), kPixels);
        const std::string alpha(stored->alpha.bytes().begin(), stored->alpha.bytes().end());
        EXPECT_EQ(alpha, form.hasAlpha ? kAlpha : "");
    }
    const std::optional<CImage::Stored> old = parse(oldest(4, 3, 4 | 1 << 10, kData + kAlpha));
    ASSERT_TRUE(old);
    EXPECT_EQ(old->alpha.at(11), 'l');
    EXPECT_TRUE(parse(oldest(4, 3, 4, kData)));
    EXPECT_FALSE(parse("NVIx" + pictures::nvi(4, 3, kData).substr(4))) << "the fourth byte belongs to the magic";
}

TEST(Image, KeepsPlanesOfRunsCodedUntilTheyAreDrawn) {
    const std::string runs = textOf(CRLECompression::__compress(octets(kData)));
    const std::string alphaRuns = textOf(CRLECompression::__compresschar(octets(std::string(12, '\xFF'))));
    for (const int form : {3, 4}) {
        SCOPED_TRACE(form);
        const std::string bytes = form == 4 ? pictures::nvi(4, 3, runs, alphaRuns, 0, 0, 16, 4)
                                            : pictures::nvi(4, 3, lzo(runs), lzo(alphaRuns), 0, 0, 16, 3);
        const std::optional<CImage::Stored> stored = parse(bytes);
        ASSERT_TRUE(stored);
        CGraphicsObject object(nullptr), destiny(nullptr, {4, 3}, 16);
        object.setPlanes(stored->size, stored->bpp, stored->data, stored->alpha, stored->compression);
        object.SetDestiny(&destiny);
        object.Redraw();
        EXPECT_EQ(Pixels(destiny.getData().pixels().begin(), destiny.getData().pixels().end()), kPixels);
        EXPECT_EQ(object.getCompression(), kCompressionRle);
    }
}

TEST(Image, IsEmptyWhenItsFileIsDamaged) {
    using namespace pictures;
    for (const Form& form : forms()) {
        SCOPED_TRACE(form.what);
        // Cut to the length of raw pixels, a coded plane can't be told from them.
        const std::size_t looksRaw = form.bytes[0] == 'M' ? 40 + kData.size() + lzo(kAlpha).size() : 0;
        for (std::size_t cut = 0; cut < form.bytes.size(); ++cut)
            EXPECT_FALSE(cut != looksRaw && parse(form.bytes.substr(0, cut))) << cut;
    }
    const std::string packed = nvi(4, 3, kData, kAlpha), longForm = mvl(4, 3, kData, kAlpha);
    const struct {
        const char* what;
        const std::string& bytes;
        std::size_t at;
        int width;  // bytes of the field
    } fields[] = {
        {"packed: width", packed, 4, 2},        {"packed: height", packed, 6, 2},
        {"packed: pixel bytes", packed, 9, 4},  {"packed: alpha bytes", packed, 13, 4},
        {"packed: compression", packed, 21, 4}, {"long: width", longForm, 4, 4},
        {"long: height", longForm, 8, 4},       {"long: alpha bytes", longForm, 28, 4},
    };
    for (const auto& field : fields) {
        for (const std::int64_t lie : {-1LL, 0LL, 5LL, 30000LL, 0x7FFFFFFFLL, -0x80000000LL}) {
            const bool isHarmless = lie <= 0 && (field.at == 13 || (field.at == 21 && lie == 0));
            if (isHarmless) continue;  // no alpha plane; raw planes
            SCOPED_TRACE(testing::Message() << field.what << ": " << lie);
            std::string bytes = field.bytes, value;
            put(value, lie, field.width);
            bytes.replace(field.at, value.size(), value);
            const bool isSame = bytes == field.bytes;
            // A bound of 16 bits makes 0 of the largest numbers.
            std::string reason;
            EXPECT_EQ(parse(bytes, &reason).has_value(), isSame) << reason;
        }
    }
    for (const int bpp : {0, 1, 2, 32, 255}) {
        const bool isFlag = bpp == 2;
        EXPECT_FALSE(parse(nvi(4, 3, kData, "", 0, 0, bpp)) && !isFlag) << bpp;
    }
    std::string broken = lzo(kData);
    broken[8] = '\x7F';
    EXPECT_FALSE(parse(mvl(4, 3, broken)));
    EXPECT_FALSE(parse(mvl(4, 3, lzo(kData + kData)))) << "a stream of another size";
}

TEST(Image, TellsWhatItCantRead) {
    Stage stage;
    stage.file("Dane/S/good.img", pictures::nvi(4, 3, kData, kAlpha, 7, 8));
    stage.file("Dane/S/bad.img", pictures::nvi(4, 3, kData).substr(0, 50));
    stage.start();
    CImage image(CWindow::current());
    EXPECT_EQ(image.Load("GOOD.img", true), 0);
    EXPECT_EQ(image.GetPosition(), CXPoint(7, 8));
    EXPECT_TRUE(image.isLoaded());
    EXPECT_EQ(image.Load("nosuch.img", true), 2000);
    ASSERT_EQ(stage.messages().size(), 1U);
    EXPECT_NE(stage.messages()[0].text.find("nosuch.img"), std::string::npos);
    EXPECT_FALSE(image.getData()) << "the old picture went before";
    const std::size_t before = stage.debugLines().size();
    EXPECT_EQ(image.Load("bad.img", true), 0);
    EXPECT_EQ(stage.messages().size(), 1U) << "a damaged file brings no message";
    ASSERT_EQ(stage.debugLines().size(), before + 1);
    EXPECT_NE(stage.debugLines().back().find("bad.img: byte 37: "), std::string::npos) << stage.debugLines().back();
    EXPECT_EQ(image.Size(), CXSize(0, 0));
}

TEST(Image, ReadsItsFileWhenShownAndDropsItWhenHidden) {
    Stage stage;
    stage.file("Dane/S/good.img", pictures::nvi(4, 3, kData));
    stage.start();
    CImage image(CWindow::current());
    image.setFilename("good.img");
    image.toRelease(true);
    EXPECT_FALSE(image.getData());
    image.show();
    EXPECT_TRUE(image.getData());
    image.hide();
    EXPECT_FALSE(image.getData());
    EXPECT_FALSE(image.isVisible());
    image.show();
    EXPECT_TRUE(image.getData() && image.isVisible());
}

TEST(Image, SavesWhatItsClipLeaves) {
    Stage stage;
    stage.file("Dane/S/good.img", pictures::nvi(4, 3, kData, kAlpha, 100, 50));
    stage.start();
    CImage image(CWindow::current(), "good.img");
    const auto saved = [&](_compression form) {
        image.Save("out.img", form);
        return stage.platform.files.readFile("C:" + stage.platform.folder() + "/Dane/S/out.img").value_or("(none)");
    };
    std::string whole = pictures::mvl(4, 3, kData, kAlpha, 100, 50);
    EXPECT_EQ(saved(kCompressionRaw), whole);
    whole[24] = 3;
    EXPECT_EQ(saved(kCompressionDictionaryRle), whole) << "the caller's word is kept, the planes are raw";
    image.SetClippingRect({1, 1, 3, 9});
    EXPECT_EQ(saved(kCompressionRaw), pictures::mvl(2, 2, pictures::plane({6, 7, 10, 11}), "fgjk", 101, 51));
    image.SetClippingRect({});
    image.Compress(kCompressionRle);
    whole[24] = 0;
    EXPECT_EQ(saved(kCompressionRaw), whole) << "coded planes are decoded for the file";
    EXPECT_EQ(image.getCompression(), kCompressionRle);
}
