// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "foundation/xstring.h"
#include "graphics/geometry.h"
#include "storage/compression_form.h"

class CFrame;
class CSound4;
class CWindow;

// What an `.ann` file holds, in memory. docs/formats/ann.md tells its three generations byte by byte.

// What happens when an event comes to one of its frames. A text that is there may still be empty.
struct _anmFrameInfo3 {
    std::optional<CXString> name;
    std::optional<CXString> text;
    std::optional<CXString> sound;  // a file, or several with ";" between them
    CXPoint offset;                 // added to the frame's position
    std::uint8_t opacity = 255;
    // Nobody reads these; they are kept for whoever saves the animation.
    std::int32_t reserved12 = -1;
    std::int32_t reserved20 = 0;
    std::uint8_t reserved25 = 0;
};

// A named sequence of frames.
struct _annEventInfo3 {
    CXString name;
    std::vector<std::uint16_t> frames;  // numbers of pictures, which may be beyond the last one
    int loopStart = 0;                  // indices into `frames`
    int loopEnd = 0;                    // inclusive; 0: no loop
    int loopCount = 0;                  // 0: without end
    int loopCounter = 0;
    int fps = 15;
    unsigned flags = 0;
    std::uint8_t opacity = 255;
    std::array<std::uint8_t, 12> reserved{};
    std::vector<_anmFrameInfo3> infos;  // one for each of `frames`, or none at all
};

// Flags of an animation and of its events.
enum _animoflags : unsigned {
    kHideAtStop = 0x100,          // of an event
    kPingPong = 0x20000,          // of an event
    kNoRestart = 0x40000,         // of either: what plays can't be started anew
    kSoundGoesOn = 0x80000,       // of either: the sound outlives the end of the event
    kLoopWithSound = 0x100000,    // of an event: the loop ends with the frame's sound
    kReadFromNewForm = 0x200000,  // set by the reader, read by nobody
    kStreamedSounds = 0x400000,   // of the animation: sounds are streamed when their frame comes
    kNextEvent = 0x800000,        // of the animation: an event's end leads into the next one
};

enum _chunk { kChunkExtra, kChunkSequence, kChunkPosition };

// An animation without its state of play, so that clones can share it.
struct AnimationData {
    static constexpr int kMostSounds = 200;  // of a file

    AnimationData();
    ~AnimationData();
    AnimationData(const AnimationData&) = delete;
    AnimationData& operator=(const AnimationData&) = delete;

    std::string form;  // the magic, for people
    int bpp = 16;
    int fps = 15;
    unsigned objectFlags = 0;     // the low byte of the stored flags
    unsigned animationFlags = 0;  // the rest
    std::uint8_t opacity = 255;
    int randomFramesNumber = 0;
    CXString author;
    CXString description;
    _compression compression = kCompressionRaw;  // of the first frame, as stored
    std::vector<_annEventInfo3> events;
    std::vector<std::unique_ptr<CFrame>> frames;
    using Sounds = std::vector<std::vector<std::unique_ptr<CSound4>>>;
    std::shared_ptr<Sounds> sounds;  // for each event's frames; empty: none at all

    // Frames of its own over the same planes, and the same sounds.
    std::shared_ptr<AnimationData> copy() const;
    // Three events over all frames, the last one backwards.
    void makeDefaultEvents();
};

// Reads a file of any generation; the window is the frames'. Null for a damaged file: `reason` then tells the place
// and what is wrong. Planes aren't decoded here, so a frame that turns out damaged is empty by itself.
std::unique_ptr<AnimationData> readAnimation(CWindow* window, std::span<const std::byte> bytes, std::string& reason);

// The bytes of an "NVP" file, the only form that is written. For form 4 the frames are coded; else each is written in
// the form that it has. Frames in another format than the animation's become frames in that.
std::vector<std::uint8_t> writeAnimation(AnimationData& animation, _compression form);
