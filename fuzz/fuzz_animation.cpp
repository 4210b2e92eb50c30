// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Stored animations: whatever is read is decoded and drawn; written and read again, it is the same.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

#include "animation/animation_file.h"
#include "animation/frame.h"
#include "graphics/pixel_conversion.h"

namespace {

void require(bool good, const char* what) {
    if (good) return;
    std::fprintf(stderr, "not the same: %s\n", what);
    std::abort();
}

bool same(const Plane& a, const Plane& b) { return std::ranges::equal(a.bytes(), b.bytes()); }

bool same(const CXString& a, const CXString& b) { return a.view() == b.view(); }

bool same(const std::optional<CXString>& a, const std::optional<CXString>& b) {
    return a.has_value() == b.has_value() && (!a || same(*a, *b));
}

bool same(const _anmFrameInfo3& a, const _anmFrameInfo3& b) {
    return same(a.name, b.name) && same(a.text, b.text) && same(a.sound, b.sound) && a.offset.x == b.offset.x &&
           a.offset.y == b.offset.y && a.opacity == b.opacity && a.reserved12 == b.reserved12 &&
           a.reserved20 == b.reserved20 && a.reserved25 == b.reserved25;
}

void compareEvents(const _annEventInfo3& a, const _annEventInfo3& b) {
    require(same(a.name, b.name), "the name of an event");
    require(a.frames == b.frames, "the frames of an event");
    require(a.loopStart == b.loopStart && a.loopEnd == b.loopEnd && a.loopCount == b.loopCount, "a loop");
    require(a.loopCounter == b.loopCounter && a.fps == b.fps && a.flags == b.flags && a.opacity == b.opacity,
            "an event's numbers");
    for (std::size_t i = 0; i < a.reserved.size(); ++i)
        require(a.reserved[i] == b.reserved[i] || (i >= 4 && i < 8), "what is reserved");  // but for a pointer's place
    require(b.infos.size() == b.frames.size(), "the count of steps");
    for (std::size_t i = 0; i < b.infos.size(); ++i)
        require(same(i < a.infos.size() ? a.infos[i] : _anmFrameInfo3(), b.infos[i]), "a step");
}

// `before` has neither been drawn nor written. A frame that is drawn takes the target's format, and bits are lost;
// `drawnIn` is 0 when nothing was drawn.
void compareFrames(CFrame& before, CFrame& after, int drawnIn) {
    const CXPoint here = before.GetFramePosition(), there = after.GetFramePosition();
    require(here.x == there.x && here.y == there.y, "the position of a frame");
    require(before.Size().width == after.Size().width && before.Size().height == after.Size().height,
            "the size of a frame");
    const int from = before.getBpp(), to = after.getBpp();
    if (drawnIn != 0 && (from != to || from != drawnIn)) return;
    before.decode();
    after.decode();
    Plane data = before.getData(), alpha = before.getAlpha();
    if (from != to && (!data || !__convert_bpp(data, alpha, before.Size(), from, to))) data = alpha = Plane();
    require(same(data, after.getData()), "the pixels of a frame");
    require(same(alpha, after.getAlpha()), "the alpha of a frame");
}

void compare(const AnimationData& a, const AnimationData& b, int drawnIn) {
    require(a.bpp == b.bpp && a.fps == b.fps && a.opacity == b.opacity, "the header");
    require(a.randomFramesNumber == b.randomFramesNumber && a.objectFlags == b.objectFlags, "the header");
    require((a.animationFlags | kReadFromNewForm) == b.animationFlags, "the flags");
    require(same(a.author, b.author) && same(a.description, b.description), "a text");
    require(a.events.size() == b.events.size() && a.frames.size() == b.frames.size(), "a count");
    for (std::size_t i = 0; i < a.events.size(); ++i)
        compareEvents(a.events[i], b.events[i]);
    for (std::size_t i = 0; i < a.frames.size(); ++i)
        compareFrames(*a.frames[i], *b.frames[i], drawnIn);
}

void draw(AnimationData& animation, int bpp) {
    CGraphicsObject target(nullptr, {40, 30}, bpp), place(nullptr);
    place.SetDestiny(&target);
    for (std::size_t i = 0; i < std::min<std::size_t>(animation.frames.size(), 8); ++i) {
        CFrame& frame = *animation.frames[i];
        place.SetOpacity(static_cast<int>(255 - i * 32));
        frame.drawFor(place, {static_cast<int>(i) - 3, 2});
        if (i % 2 == 0) frame.bringBackCompressed();
    }
}

std::unique_ptr<AnimationData> read(std::span<const std::byte> bytes) {
    std::string reason;
    std::unique_ptr<AnimationData> animation = readAnimation(nullptr, bytes, reason);
    if (!animation) require(!reason.empty(), "a fault without a reason");
    return animation;
}

constexpr std::size_t kMostFrames = 1000;

// Of any generation. Frames of an unknown one cost no bytes, and reading thousands of them finds nothing.
bool hasManyFrames(std::span<const std::byte> bytes) {
    constexpr std::size_t kCountPlace = 4;
    return bytes.size() >= kCountPlace + 2 && std::to_integer<std::size_t>(bytes[kCountPlace]) +
                                                      std::to_integer<std::size_t>(bytes[kCountPlace + 1]) * 256 >
                                                  kMostFrames;
}

// Whether all of it can be decoded in little time and memory.
bool isSmall(const AnimationData& animation) {
    constexpr std::int64_t kMostPixels = 1 << 18;
    std::int64_t pixels = 0;
    for (const auto& frame : animation.frames) {
        const CXSize size = frame->Size();
        if (frame->getData()) pixels += static_cast<std::int64_t>(size.width) * size.height;
    }
    return pixels <= kMostPixels;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span<const std::byte> bytes = std::as_bytes(std::span(data, size));
    if (hasManyFrames(bytes)) return 0;
    for (const int bpp : {15, 16}) {
        const std::unique_ptr<AnimationData> before = read(bytes), animation = read(bytes);
        if (!animation || !isSmall(*animation)) return 0;
        const bool isDrawn = size % 2 == 0;  // else it is written as it was read
        if (isDrawn) {
            for (const auto& frame : animation->frames)
                frame->decode();
            draw(*animation, bpp);
        }
        animation->animationFlags |= kReadFromNewForm;  // as of anything that is written
        const std::vector<std::uint8_t> written = writeAnimation(*animation, kCompressionRle);
        const std::unique_ptr<AnimationData> again = read(std::as_bytes(std::span(written)));
        require(again != nullptr, "what can be read");
        require(writeAnimation(*again, kCompressionRle) == written, "the bytes written");
        compare(*before, *again, isDrawn ? bpp : 0);
    }
    return 0;
}
