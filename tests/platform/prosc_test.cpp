// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include "animation/image.h"
#include "prosc/commands.h"
#include "prosc/image.h"
#include "support/pictures.h"

namespace {

std::string coded(std::string_view plain) { return prosc::code(plain).result.value_or("(refused)"); }
std::string decoded(std::string_view text) { return prosc::decode(text).result.value_or("(refused)"); }

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
