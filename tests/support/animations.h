// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <vector>

#include "storage/lzo_compression.h"
#include "storage/rle_compression.h"
#include "support/pictures.h"

// Stored animations, built from their byte tables.
namespace animations {

using pictures::put;

struct Frame {
    int width = 0, height = 0;
    std::vector<std::uint16_t> pixels;
    std::string alpha;
    int x = 0, y = 0;
};

struct Step {
    int dx = 0, dy = 0;
    std::string name, sound;
    int opacity = 255;
};

struct Event {
    std::string name;
    std::vector<int> frames;
    int loopStart = 0, loopEnd = 0, loopCount = 0;
    unsigned flags = 0;
    std::vector<Step> steps;  // fewer than frames: the rest are plain
};

// Frames of one size and place, the pixels of each its number plus 1.
inline std::vector<Frame> sheet(int count, int width = 4, int height = 3, int x = 10, int y = 20) {
    std::vector<Frame> frames;
    for (int i = 0; i < count; ++i) {
        const auto pixels = static_cast<std::size_t>(width * height);
        frames.push_back({width, height, std::vector<std::uint16_t>(pixels, static_cast<std::uint16_t>(i + 1)),
                          std::string(pixels, '\xFF'), x, y});
    }
    return frames;
}

inline std::string coded(const std::string& raw, int form, bool isAlpha) {
    Bytes bytes(raw.begin(), raw.end());
    if (form >= 3) bytes = isAlpha ? CRLECompression::__compresschar(bytes) : CRLECompression::__compress(bytes);
    if (form == 2 || form == 3) {
        std::size_t length = 0;
        bytes = CLZWCompression2(Bytes(bytes)).compress(length);
    }
    return {bytes.begin(), bytes.end()};
}

// Headers of all frames, then their planes. `mode`: 1 to 3 the oldest kinds, 4 the header of 32 bytes, 5 that of 52.
inline std::string frameTables(const std::vector<Frame>& frames, int mode, int form) {
    std::string headers, planes;
    for (const Frame& frame : frames) {
        const std::string data = coded(pictures::plane(frame.pixels), form, false);
        const std::string alpha = frame.alpha.empty() ? "" : coded(frame.alpha, form, true);
        const auto dataSize = static_cast<std::int64_t>(data.size()),
                   alphaSize = static_cast<std::int64_t>(alpha.size());
        if (mode == 1) {
            put(headers, dataSize, 4);
            put(headers, alphaSize, 4);
        }
        if (mode <= 3) {
            for (const int value : {frame.width, frame.x, frame.height, frame.y, 0, 4})
                put(headers, value, 2);
        } else {
            for (const int value : {frame.width, frame.height, frame.x, frame.y, form})
                put(headers, value, 2);
            put(headers, dataSize, 4);
            put(headers, 4, 2);
        }
        if (mode == 2 || mode == 3) put(headers, 4, 4);
        if (mode == 2 || mode == 3) put(headers, dataSize, 4);
        if (mode >= 4) put(headers, 0, 4);
        if (mode != 1) {
            put(headers, 0, 8);
            put(headers, alphaSize, 4);
        }
        if (mode == 5) headers.append(20, '\0');
        planes += data + alpha;
    }
    return headers + planes;
}

inline std::string text(const std::string& chars) {
    std::string bytes;
    put(bytes, static_cast<std::int64_t>(chars.size()), 4);
    return bytes + chars;
}

inline std::string fixed(std::string chars, std::size_t size) {
    chars.resize(size);
    return chars;
}

inline std::string numbers(const std::vector<int>& values) {
    std::string bytes;
    for (const int value : values)
        put(bytes, value, 2);
    return bytes;
}

// "NVP", "NVI" or "NV+".
inline std::string third(const std::string& magic, const std::vector<Frame>& frames, const std::vector<Event>& events,
                         int form = 0, unsigned flags = 0, int bpp = 16) {
    std::string bytes = fixed(magic, 4);
    bytes += numbers({static_cast<int>(frames.size()), bpp, static_cast<int>(events.size())}) + fixed("", 13);
    put(bytes, 15, 4);
    put(bytes, flags, 4);
    put(bytes, 255, 1);
    bytes += fixed("", 12) + text("maker") + text("told");
    for (const Event& event : events) {
        bytes += fixed(event.name, 32) + numbers({static_cast<int>(event.frames.size()), 0, 0}) +
                 numbers({event.loopStart, event.loopEnd, event.loopCount, 0});
        put(bytes, 15, 4);
        put(bytes, event.flags, 4);
        put(bytes, 255, 1);
        bytes += fixed("", 12) + numbers(event.frames);
        for (std::size_t i = 0; i < event.frames.size(); ++i) {
            const Step step = i < event.steps.size() ? event.steps[i] : Step();
            put(bytes, step.name.empty() ? 0 : 1, 4);
            put(bytes, 0, 4);
            bytes += numbers({step.dx, step.dy});
            put(bytes, -1, 4);
            put(bytes, step.sound.empty() ? 0 : 1, 4);
            put(bytes, 0, 4);
            put(bytes, step.opacity, 1);
            put(bytes, 0, 5);
            for (const std::string& chars : {step.name, step.sound}) {
                if (!chars.empty()) bytes += text(chars + '\0');
            }
        }
    }
    return bytes + frameTables(frames, magic == "NV+" ? 4 : 5, form);
}

// "PAK". An event's loop start counts, and its loop end doesn't.
inline std::string packed(const std::vector<Frame>& frames, const std::vector<Event>& events, int form = 0) {
    std::string bytes = fixed("PAK", 4) + numbers({static_cast<int>(frames.size())}) + fixed("maker", 128) +
                        fixed("told", 256) + numbers({16, static_cast<int>(events.size())}) + fixed("", 13);
    for (const Event& event : events) {
        bytes += fixed(event.name, 32) +
                 numbers({static_cast<int>(event.frames.size()), event.loopStart, 0, event.loopCount}) +
                 numbers(event.frames);
        for (std::size_t i = 0; i < event.frames.size(); ++i) {
            const Step step = i < event.steps.size() ? event.steps[i] : Step();
            bytes += numbers({step.dx, step.dy, 0, 0, 0});
        }
    }
    return bytes + frameTables(frames, 4, form);
}

// "MVL", "MV2" or "MV3", with all the chunks or with none.
inline std::string first(const std::string& magic, const std::vector<Frame>& frames, bool chunks) {
    std::string bytes = fixed(magic, 4) + numbers({static_cast<int>(frames.size()), 4, 0, 0});
    if (chunks) {
        bytes += "EXT" + text("") + text("maker") + text("told");
        bytes += "SEQ" + numbers({2, 0}) + fixed("", 8);
        bytes += "POS" + fixed("", 66);
    }
    const int mode = magic == "MVL" ? 1 : magic == "MV2" ? 2 : 3;
    return bytes + frameTables(frames, mode, mode == 3 ? 2 : 0);
}

}  // namespace animations
