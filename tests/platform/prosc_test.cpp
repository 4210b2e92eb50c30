// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include "animation/animation_file.h"
#include "animation/frame.h"
#include "animation/image.h"
#include "prosc/animation.h"
#include "prosc/commands.h"
#include "prosc/image.h"
#include "storage/lzo_compression.h"
#include "storage/rle_compression.h"
#include "support/pictures.h"

namespace {

std::string coded(std::string_view plain) { return prosc::code(plain).result.value_or("(refused)"); }
std::string decoded(std::string_view text) { return prosc::decode(text).result.value_or("(refused)"); }

std::vector<std::uint8_t> vectorOf(std::string_view text) { return {text.begin(), text.end()}; }

std::string textOf(const std::vector<std::uint8_t>& bytes) { return {bytes.begin(), bytes.end()}; }

void addFrame(AnimationData& animation, int width, const std::string& data, const std::string& alpha, CXPoint at,
              _compression form) {
    Bytes planes[] = {vectorOf(data), vectorOf(alpha)};
    std::size_t ignored = 0;
    if (form >= kCompressionDictionaryRle) {
        planes[0] = CRLECompression::__compress(planes[0]);
        planes[1] = CRLECompression::__compresschar(planes[1]);
    }
    if (form == kCompressionDictionary || form == kCompressionDictionaryRle) {
        for (Bytes& plane : planes)
            if (!plane.empty()) plane = CLZWCompression2(plane).compress(ignored);
    }
    auto frame = std::make_unique<CFrame>(nullptr);
    frame->setPlanes({width, 2}, animation.bpp, data.empty() ? Plane() : Plane(planes[0]),
                     alpha.empty() ? Plane() : Plane(planes[1]), data.empty() ? kCompressionRaw : form);
    frame->SetPosition(at.x, at.y);
    animation.frames.push_back(std::move(frame));
}

// An animation in which nothing is as it is by default.
std::string storedAnimation(int bpp, _compression form) {
    AnimationData animation;
    animation.bpp = bpp;
    animation.fps = 12;
    animation.objectFlags = 0x83;
    animation.animationFlags = kNextEvent | 0x1000;
    animation.opacity = 7;
    animation.randomFramesNumber = -2;
    animation.author = "\"Za\xBF\\\x81";
    animation.description = "# one\r\n\ttwo";
    const auto top = static_cast<std::uint16_t>(bpp == 15 ? 0x7FFF : 0xFFFF);
    std::vector<std::uint16_t> pixels;
    for (unsigned i = 0; i < 12; ++i)
        pixels.push_back(static_cast<std::uint16_t>(i < 6 ? 0x0421 : 0x9E37 * i & top));
    addFrame(animation, 6, pictures::plane(pixels), std::string(8, '\0') + "\xFF\x80\x01\xFE", {-5, 300}, form);
    addFrame(animation, 2, pictures::plane({0x20, 1, top, 0x7BFF}), "", {0, 0}, form);
    animation.frames.back()->channelCount = 4;
    addFrame(animation, 2, pictures::plane({1, 2, 3, 4}), "\xFF\xFF\xFF\xFF", {0, 0}, form);
    addFrame(animation, 9, "", "", {1, 2}, form);
    addFrame(animation, 2, pictures::plane({1, 2, 3, 4}), "", {1, 2}, kCompressionRaw);

    _annEventInfo3 event;
    event.name = "Krok \xB9";
    event.frames = {0, 1, 2, 3, 2, 1, 0, 4, 4, 900, 3, 4};
    event.loopStart = 1, event.loopEnd = 2, event.loopCount = 65535, event.loopCounter = 4;
    event.fps = -1;
    event.flags = kPingPong | 0x80000001;
    event.opacity = 0;
    event.reserved = {1, 2, 3, 4, 0, 0, 0, 0, 9, 10, 11, 255};
    event.infos.resize(event.frames.size());
    event.infos[1] = {CXString(""), CXString("\xA5 b"), CXString("a.wav;b.wav"), {-32768, 32767}, 1, 5, -6, 7};
    event.infos[11].sound = "last.wav";
    animation.events.push_back(event);
    animation.events.emplace_back();
    return textOf(writeAnimation(animation, kCompressionRaw));
}

// Three frames of four pixels, and that text.
prosc::Files folderWith(const std::string& text) {
    prosc::Files files;
    for (int i = 0; i < 3; ++i)
        files[prosc::frameName(i)] =
            prosc::pngFromImage(pictures::nvi(2, 2, pictures::plane({1, 2, 3, 0x7C00}), "", 0, 0, 15))
                .result.value_or("");
    files[prosc::kAnimationText] = text;
    return files;
}

constexpr std::string_view kSeven = "  one\ntwo\t!\n\n\xB3\xBF\n5\n6\nseven";

}  // namespace

TEST(Prosc, CodedTextComesBackWithoutItsIndentation) {
    EXPECT_EQ(coded("abc\n"), "{<C:6>}\nbae<E>\n");
    const std::string text = coded(kSeven);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 3) << "a header, six records and one";
    EXPECT_EQ(decoded(text), "one\ntwo!\n\n\xB3\xBF\n5\n6\nseven\n");
    EXPECT_EQ(coded("a\r\nb\r\n"), coded("a\nb\n"));
    EXPECT_EQ(decoded(coded("")), "");
}

TEST(Prosc, TheFormThatIsThereAlreadyIsRefused) {
    EXPECT_EQ(prosc::code(coded(kSeven)).error, "line 1: is coded already");
    EXPECT_EQ(prosc::decode(kSeven).error, "line 1: is not coded");
}

TEST(Prosc, WhatTheCodedFormCannotHoldIsNamed) {
    // The second character of each six goes down by one, and 11 - 1 is a line feed.
    const prosc::Outcome outcome = prosc::code("sixsix\nx\x0B\n");
    EXPECT_FALSE(outcome.result);
    EXPECT_TRUE(outcome.error.starts_with("line 2: ")) << outcome.error;
}

TEST(Prosc, DamageIsToldWithItsLine) {
    const std::string text = coded(kSeven);
    for (std::size_t length = 4; length < text.size(); ++length) {
        SCOPED_TRACE(length);
        const prosc::Outcome outcome = prosc::decode(std::string_view(text).substr(0, length));
        const std::string whole = decoded(text);
        if (outcome.result) {
            EXPECT_TRUE(whole.starts_with(*outcome.result)) << "what is left of it is whole records";
        } else {
            EXPECT_TRUE(outcome.error.starts_with("line ")) << outcome.error;
        }
    }
    EXPECT_EQ(prosc::decode("{<C:0>}\nx<E>\n").error, "line 1: the header is damaged");
    EXPECT_EQ(prosc::decode("{<C:6\nx<E>\n").error, "line 1: the header is damaged");
    EXPECT_EQ(prosc::decode("{<C:2>}\na<E>\nb<E>\n").error, "line 2: holds 1 records where the header tells 2");
    EXPECT_EQ(prosc::decode("{<C:2>}\na<E>b<E>c<E>\n").error, "line 2: holds 3 records where the header tells 2");
    EXPECT_EQ(prosc::decode("{<C:2>}\na<E>b\n").error, "line 2: a record has no end");
}

TEST(Prosc, InfoShowsTheTreeAndWhatIsMissingInIt) {
    const std::string definition =
        "OBJECT=A\nA:TYPE=APPLICATION\nA:EPISODES=E1,E2\nA:STARTWITH=E1\nA:PATH=APP\n"
        "OBJECT=E1\nE1:TYPE=EPISODE\nE1:SCENES=S1,S2,E1\nE1:STARTWITH=S2\nE1:PATH=EP\n"
        "OBJECT=S2\nS2:TYPE=SCENE\nS2:PATH=za\xBF\nOBJECT=X\n";
    const std::string expected =
        "elements: 4\n  (no type) 1\n  APPLICATION 1\n  EPISODE 1\n  SCENE 1\n"
        "application A in APP\n  E1 (starts) in EP\n    S1: not defined\n    S2 (starts) in za\xC5\xBC\n"
        "    E1: not defined\n  E2: not defined\n";
    EXPECT_EQ(prosc::info(definition).result, "definition file, plain, " + expected);
    EXPECT_EQ(prosc::info(coded(definition)).result, "definition file, coded, " + expected);
    for (const std::string& unknown : {std::string(), std::string("just a letter\n"), std::string("OBJECT=A\n\0", 10)})
        EXPECT_FALSE(prosc::info(unknown).result);
}

TEST(Prosc, PicturesComeBackInEveryFormAndFormat) {
    // 3 by 2 pixels whose channels fit 5 bits, one of them half transparent.
    const std::string data = pictures::plane({0x001F, 0x03E0, 0x7C00, 0x7FFF, 0x0000, 0x1234});
    const std::string alpha("\xFF\xFF\x80\xFF\x00\xFF", 6);
    const prosc::Outcome png = prosc::pngFromImage(pictures::nvi(3, 2, data, alpha, 0, 0, 15));
    ASSERT_TRUE(png.result) << png.error;
    EXPECT_TRUE(prosc::isPng(*png.result));
    for (const int bpp : {15, 16, 24}) {
        for (const char* form : {"raw", "lzw", "lzo"}) {
            SCOPED_TRACE(testing::Message() << bpp << ", " << form);
            const prosc::Outcome image = prosc::imageFromPng(*png.result, {bpp, form, -7, 8});
            ASSERT_TRUE(image.result) << image.error;
            EXPECT_TRUE(prosc::info(*image.result)
                            .result.value_or("")
                            .find(", 3 by 2, " + std::to_string(bpp) + " bits, at (-7, 8)") != std::string::npos);
            std::string reason;
            const auto stored = CImage::parse(std::as_bytes(std::span(*image.result)), reason);
            ASSERT_TRUE(stored) << reason;
            EXPECT_EQ(std::string(stored->alpha.bytes().begin(), stored->alpha.bytes().end()), alpha);
            const std::string pixels(stored->data.bytes().begin(), stored->data.bytes().end());
            EXPECT_TRUE(bpp != 15 || pixels == data);
        }
    }
    const prosc::Outcome opaque = prosc::pngFromImage(pictures::nvi(3, 2, data));
    const prosc::Outcome again = prosc::imageFromPng(opaque.result.value_or(""), {16, "raw", 0, 0});
    EXPECT_NE(prosc::info(again.result.value_or("")).result.value_or("").find("alpha: no"), std::string::npos);
    EXPECT_FALSE(prosc::imageFromPng(png.result->substr(0, 60), {}).result);
    EXPECT_TRUE(prosc::pngFromImage(pictures::nvi(3, 2, data).substr(0, 45)).error.starts_with("byte 37: "));
}

TEST(Prosc, AnimationsComeBackFromTheirFolderInEveryByte) {
    struct Row {
        _compression form;
        _compression back;  // of the file that comes out
    };
    for (const Row& row : {Row{kCompressionRaw, kCompressionRaw}, Row{kCompressionDictionary, kCompressionRaw},
                           Row{kCompressionDictionaryRle, kCompressionRle}, Row{kCompressionRle, kCompressionRle}}) {
        for (const int bpp : {15, 16}) {
            SCOPED_TRACE(testing::Message() << "form " << row.form << ", " << bpp);
            const prosc::FilesOutcome files = prosc::filesFromAnimation(storedAnimation(bpp, row.form));
            ASSERT_TRUE(files.result) << files.error;
            const std::string& text = files.result->at(prosc::kAnimationText);
            EXPECT_NE(text.find("author \"\\\"Za\xC5\xBC\\\\\\x81\""), std::string::npos) << text;
            EXPECT_NE(text.find(R"(description "# one\r\n\ttwo")"), std::string::npos) << text;
            EXPECT_NE(text.find(" 0-3 2-0 4 4 900 3 4 "), std::string::npos) << text;
            const prosc::Outcome back = prosc::animationFromFiles(*files.result, {});
            ASSERT_TRUE(back.result) << back.error << '\n' << text;
            EXPECT_TRUE(*back.result == storedAnimation(bpp, row.back)) << text;
        }
    }
}

TEST(Prosc, AFolderNeedsFramesAndALineForEachEvent) {
    const prosc::Files files = folderWith("\xEF\xBB\xBF  # people\r\n\r\nevent Walk 2-1 0 # more\r\nrate 9\n");
    const prosc::Outcome file = prosc::animationFromFiles(files, {});
    ASSERT_TRUE(file.result) << file.error;
    const char* expected =
        "animation, form NVP, 16 bits, rate 9, frames: 3, events: 1\n"
        "  frame 0: 2 by 2 at (0, 0), rle\n  frame 1: 2 by 2 at (0, 0), rle\n  frame 2: 2 by 2 at (0, 0), rle\n"
        "  event \"Walk\": frames: 3, rate 9\n";
    EXPECT_EQ(prosc::info(*file.result).result, expected);
    std::string reason;
    const auto animation = readAnimation(nullptr, std::as_bytes(std::span(*file.result)), reason);
    ASSERT_TRUE(animation) << reason;
    EXPECT_EQ(animation->events[0].frames, (std::vector<std::uint16_t>{2, 1, 0}));

    const prosc::Outcome other = prosc::animationFromFiles(files, {15, "raw"});
    const std::string info = prosc::info(other.result.value_or("")).result.value_or("");
    EXPECT_NE(info.find("15 bits"), std::string::npos);
    EXPECT_NE(info.find("at (0, 0), raw\n"), std::string::npos);
    // Pictures have this magic, too.
    std::string older = *file.result;
    older[2] = 'I';
    EXPECT_TRUE(prosc::info(older, "A.ANN").result.value_or("").starts_with("animation, form NVI"));
    EXPECT_FALSE(prosc::info(older, "a.img").result.value_or("").starts_with("animation"));
}

TEST(Prosc, AWrongLineIsToldWithItsReason) {
    struct Row {
        const char* text;
        const char* error;
    };
    for (const Row& row : {
             Row{"rate 15\n\nbpp 8", "line 3: bpp is 15, 16 or 24"},
             Row{"rate", "line 1: something is missing at its end"},
             Row{"rate 1x", "line 1: 1x isn't a number"},
             Row{"rate 0x80000000", "line 1: 0x80000000 isn't between -2147483648 and 2147483647"},
             Row{"rate 1\nrate 1", "line 2: rate stands there already"},
             Row{"rate 1 2", "line 1: 2 is too much"},
             Row{"speed 1", "line 1: nothing begins with speed"},
             Row{"opacity 256", "line 1: 256 isn't between 0 and 255"},
             Row{"form 4", "line 1: a form is raw or rle and not 4"},
             Row{"author \"me", "line 1: a text without an end"},
             Row{"author \"me\"you", "line 1: something right behind a text"},
             Row{"author \"\\x00\"", "line 1: a \\ with something unknown behind it"},
             Row{"author \"\\x4", "line 1: a \\ with something unknown behind it"},
             Row{"author \xE2\x82\xAC\xE6\xBC\xA2", "line 1: a character that isn't UTF-8, or that Windows-1250 lacks"},
             Row{"author \xBF", "line 1: a character that isn't UTF-8, or that Windows-1250 lacks"},
             Row{"flags 0x1|ping", "line 1: there is no flag \"ping\""},
             Row{"frame 0 at 32768 0", "line 1: 32768 isn't between -32768 and 32767"},
             Row{"frame 0\nframe 0", "line 2: frame 0 stands there already"},
             Row{"frame 0 alpha opaque", "line 1: a frame is either alpha or opaque"},
             Row{"frame 0 at 1 2 at 1 2", "line 1: at is said twice"},
             Row{"event 12345678901234567890123456789012 0", "line 1: a name longer than 31 letters"},
             Row{"event A 0-65535", "line 1: more than 65535 frames in an event"},
             Row{"event A 0-x", "line 1: x isn't a number"},
             Row{"event A 0 pause", "line 1: an event has no pause"},
             Row{"event A reserved 00", "line 1: reserved takes 24 hexadecimal digits"},
             Row{"step 0", "line 1: a step stands behind its event"},
             Row{"event A 0-2\nstep 3", "line 2: step 3 of an event that has 3, counted from 0"},
             Row{"event A 0\nstep 0\nstep 0", "line 3: step 0 stands there already"},
         })
        EXPECT_EQ(prosc::animationFromFiles(folderWith(row.text), {}).error,
                  std::string("animation.txt: ") + row.error);
}

TEST(Prosc, AWrongFolderOrAnimationIsToldWithItsFile) {
    const auto error = [](const prosc::Files& files) { return prosc::animationFromFiles(files, {}).error; };
    EXPECT_EQ(error({}), "animation.txt: is missing");
    prosc::Files files = folderWith("frame 3 at 1 1");
    EXPECT_EQ(error(files), "frame003.png: is missing");
    files = folderWith("");
    files["frame3.png"] = files["frame000.png"];
    EXPECT_EQ(error(files), "");
    files["frame03.png"] = files["frame000.png"];
    EXPECT_EQ(error(files), "frame3.png: another picture has the same number");
    files = folderWith("");
    files["frame001.png"].resize(40);
    EXPECT_TRUE(error(files).starts_with("frame001.png: ")) << error(files);
    files.erase("frame001.png");
    EXPECT_EQ(error(files), "frame001.png: is missing");
    EXPECT_EQ(error(folderWith("frame 1 empty 4 4")), "frame001.png: is of an empty frame");
    for (const char* name : {"frame.png", "frame-1.png", "frame1x.png", "frame65536.png", "frame0.jpg"})
        EXPECT_FALSE(prosc::frameNumber(name)) << name;

    EXPECT_EQ(prosc::filesFromAnimation("ABCD").error, "is no animation");
    const std::string whole = storedAnimation(16, kCompressionRle);
    EXPECT_TRUE(prosc::filesFromAnimation(whole.substr(0, whole.size() - 1)).error.starts_with("byte "));
    std::string damaged = whole;
    // The packet that ends the first frame's alpha plane: four bytes of its own.
    const std::size_t packet = damaged.find("\x04\xFF\x80\x01\xFE");
    ASSERT_NE(packet, std::string::npos);
    damaged[packet] = '\0';
    damaged[packet + 1] = '\0';
    EXPECT_EQ(prosc::filesFromAnimation(damaged).error, "frame 0: its planes don't decode");
}
