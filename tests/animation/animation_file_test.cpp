// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/animation_file.h"

#include <gtest/gtest.h>

#include "animation/frame.h"
#include "support/animations.h"

namespace {

std::unique_ptr<AnimationData> read(std::string_view bytes, std::string& reason) {
    reason.clear();
    return readAnimation(nullptr, std::as_bytes(std::span(bytes)), reason);
}

std::unique_ptr<AnimationData> read(std::string_view bytes) {
    std::string reason;
    return read(bytes, reason);
}

std::vector<std::uint16_t> pixelsOf(CFrame& frame) {
    frame.decode();
    const std::span<const std::uint16_t> pixels = frame.getData().pixels();
    return {pixels.begin(), pixels.end()};
}

std::string alphaOf(const CFrame& frame) {
    const std::span<const std::uint8_t> bytes = frame.getAlpha().bytes();
    return {bytes.begin(), bytes.end()};
}

// Two frames that differ in everything.
std::vector<animations::Frame> pair() {
    return {{4, 2, {1, 1, 1, 1, 2, 3, 4, 5}, std::string("\0\0\0\0\1\2\3\377", 8), 10, -20},
            {2, 3, {9, 8, 7, 7, 7, 0xFFFF}, "", -30, 40}};
}

std::vector<animations::Event> walk() {
    return {{"Walk", {0, 1, 0}, 1, 2, 3, 0x20000, {{1, 2, "Left", "step.wav", 200}, {-3, 4, "", "", 255}}},
            {"Empty", {}, 0, 0, 0, 0, {}}};
}

struct Kind {
    const char* name;
    std::string bytes;
    bool hasEvents;
    int form;  // of the planes, once read
};

std::vector<Kind> kinds() {
    return {{"NVP", animations::third("NVP", pair(), walk()), true, 0},
            {"NVI, dictionary", animations::third("NVI", pair(), walk(), 2), true, 0},
            {"NV+, dictionary over runs", animations::third("NV+", pair(), walk(), 3), true, 4},
            {"NVP, runs", animations::third("NVP", pair(), walk(), 4), true, 4},
            {"NVP, plain", animations::third("NVP", pair(), walk(), 1), true, 0},
            {"PAK", animations::packed(pair(), walk()), true, 0},
            {"PAK without events", animations::packed(pair(), {}, 4), false, 4},
            {"MVL", animations::first("MVL", pair(), false), false, 0},
            {"MV2 with chunks", animations::first("MV2", pair(), true), false, 0},
            {"MV3 with chunks", animations::first("MV3", pair(), true), false, 2}};
}

}  // namespace

TEST(AnimationFile, EveryKindHoldsTheSamePictures) {
    for (const Kind& kind : kinds()) {
        SCOPED_TRACE(kind.name);
        const auto animation = read(kind.bytes);
        ASSERT_TRUE(animation);
        ASSERT_EQ(animation->frames.size(), 2U);
        for (std::size_t i = 0; i < 2; ++i) {
            const animations::Frame wanted = pair()[i];
            CFrame& frame = *animation->frames[i];
            EXPECT_EQ(frame.Size(), CXSize(wanted.width, wanted.height));
            EXPECT_EQ(frame.GetFramePosition(), CXPoint(wanted.x, wanted.y));
            EXPECT_EQ(frame.getBpp(), 16);
            EXPECT_EQ(frame.getCompression(), kind.form);
            EXPECT_EQ(pixelsOf(frame), wanted.pixels);
            EXPECT_EQ(alphaOf(frame), wanted.alpha);
        }
        ASSERT_EQ(animation->events.size(), kind.hasEvents ? 2U : 3U);
        const _annEventInfo3& event = animation->events.back();
        if (!kind.hasEvents) {
            EXPECT_EQ(event.name, "standard");
            EXPECT_EQ(event.frames, (std::vector<std::uint16_t>{1, 0})) << "the last one runs backwards";
            EXPECT_EQ(animation->events[0].frames, (std::vector<std::uint16_t>{0, 1}));
        }
    }
    EXPECT_EQ(read(animations::first("MV2", pair(), true))->author, "maker");
    EXPECT_EQ(read(animations::third("NV+", pair(), walk(), 3))->compression, kCompressionDictionaryRle) << "as stored";
}

TEST(AnimationFile, EventsKeepWhatTheirRecordsSay) {
    const auto animation = read(animations::third("NVP", pair(), walk(), 0, 0x400001));
    ASSERT_TRUE(animation);
    EXPECT_EQ(animation->objectFlags, 1U);
    EXPECT_EQ(animation->animationFlags, 0x400000U | kReadFromNewForm);
    const _annEventInfo3& event = animation->events[0];
    EXPECT_EQ(event.name, "Walk");
    EXPECT_EQ(event.frames, (std::vector<std::uint16_t>{0, 1, 0}));
    EXPECT_EQ(CXRect(event.loopStart, event.loopEnd, event.loopCount, event.fps), CXRect(1, 2, 3, 15));
    ASSERT_EQ(event.infos.size(), 3U);
    EXPECT_EQ(event.infos[0].name, CXString("Left"));
    EXPECT_EQ(event.infos[0].sound, CXString("step.wav"));
    EXPECT_EQ(event.infos[0].opacity, 200);
    EXPECT_EQ(event.infos[1].offset, CXPoint(-3, 4));
    EXPECT_FALSE(event.infos[1].name || event.infos[2].sound);
    EXPECT_TRUE(animation->events[1].infos.empty());

    const auto packed = read(animations::packed(pair(), walk()));
    EXPECT_EQ(packed->events[0].loopEnd, 1) << "the loop's start stands for its end";
    EXPECT_EQ(packed->events[0].loopCount, 3);
    EXPECT_EQ(packed->events[0].infos[0].offset, CXPoint(1, 2));
}

TEST(AnimationFile, IsWrittenAsItWasRead) {
    for (const int form : {0, 4}) {
        const std::string bytes = animations::third("NVP", pair(), walk(), form, 0x20000C);
        const auto animation = read(bytes);
        ASSERT_TRUE(animation);
        const std::vector<std::uint8_t> written = writeAnimation(*animation, static_cast<_compression>(form));
        const std::string saved(written.begin(), written.end());
        // A frame without alpha keeps the count of channels that it was read with.
        EXPECT_EQ(saved, bytes) << form;
    }
    const auto animation = read(animations::third("NV+", pair(), walk(), 3));
    animation->frames[1]->decode();  // as if it were on the screen
    const std::vector<std::uint8_t> written = writeAnimation(*animation, kCompressionRle);
    const auto again = read(std::string(written.begin(), written.end()));
    ASSERT_TRUE(again);
    EXPECT_EQ(pixelsOf(*again->frames[0]), pair()[0].pixels);
    EXPECT_EQ(pixelsOf(*again->frames[1]), pair()[1].pixels);
    EXPECT_EQ(alphaOf(*again->frames[0]), pair()[0].alpha);
}

TEST(AnimationFile, WhatIsCutOffIsTold) {
    for (const Kind& kind : kinds()) {
        SCOPED_TRACE(kind.name);
        for (std::size_t length = 0; length < kind.bytes.size(); ++length) {
            std::string reason;
            const auto animation = read(std::string_view(kind.bytes).substr(0, length), reason);
            ASSERT_FALSE(animation) << length;
            ASSERT_TRUE(reason.starts_with("byte ")) << length;
        }
    }
}

TEST(AnimationFile, LiesTakeNoMemoryAndShowNothing) {
    struct Lie {
        const char* what;
        std::string kind;
        std::size_t at;
        int size;
        std::int64_t value;
        bool isRefused;
    };
    constexpr std::size_t kEvents = 44 + 9 + 8;                            // behind the header and two texts
    constexpr std::size_t kHeaders = kEvents + 67 + 6 + 90 + 9 + 13 + 67;  // behind both events, with two strings
    const Lie lies[] = {
        {"frames", "NVP", 4, 2, 0x7FFF, true},
        {"no frames", "NVP", 4, 2, -1, false},
        {"events", "NVP", 8, 2, 0x7FFF, true},
        {"a text", "NVP", 44, 4, 0x7FFFFFFF, true},
        {"a negative text", "NVP", 44, 4, -1, true},
        {"frames of an event", "NVP", kEvents + 32, 2, 0xFFFF, true},
        {"a name's length", "NVP", kEvents + 67 + 6 + 30, 4, 0x40000000, true},
        {"width", "NVP", kHeaders, 2, 0x7FFF, false},
        {"negative height", "NVP", kHeaders + 2, 2, -3, false},
        {"an unknown form", "NVP", kHeaders + 8, 2, 9, false},
        {"runs that are none", "NVP", kHeaders + 8, 2, 4, false},
        {"a coder that isn't", "NVP", kHeaders + 8, 2, 2, false},
        {"pixels", "NVP", kHeaders + 10, 4, 0x7FFFFFFF, true},
        {"negative pixels", "NVP", kHeaders + 10, 4, -1, true},
        {"alpha", "NVP", kHeaders + 28, 4, 0x7FFFFFFF, true},
        {"a sequence", "MV2", 12 + 3 + 4 + 9 + 8 + 3, 4, 0xFFFF, true},
        {"an author", "MV2", 12 + 3 + 4, 4, 0x7FFFFFF0, true},
    };
    for (const Lie& lie : lies) {
        SCOPED_TRACE(lie.what);
        std::string bytes =
            lie.kind == "MV2" ? animations::first("MV2", pair(), true) : animations::third("NVP", pair(), walk());
        std::string patch;
        animations::put(patch, lie.value, lie.size);
        bytes.replace(lie.at, patch.size(), patch);
        std::string reason;
        const auto animation = read(bytes, reason);
        EXPECT_EQ(animation == nullptr, lie.isRefused) << reason;
        if (!animation || animation->frames.empty()) continue;
        CGraphicsObject target(nullptr, {20, 20}, 16);
        for (const auto& frame : animation->frames) {
            frame->SetDestiny(&target);
            frame->SetPosition(1, 1);
            frame->Redraw();
        }
        EXPECT_EQ(animation->frames.size(), 2U);
    }
    const auto stranger = read("XYZ" + animations::first("MVL", pair(), false).substr(3));
    ASSERT_TRUE(stranger) << "an unknown magic brings frames without pixels";
    EXPECT_EQ(stranger->frames.size(), 2U);
    EXPECT_FALSE(stranger->frames[0]->getData());
    EXPECT_EQ(stranger->events.size(), 3U);
}
