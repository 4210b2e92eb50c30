// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <mutex>
#include <span>
#include <vector>

#include "platform/audio.h"

namespace headless {

class MixedBuffer;

// Mixes all buffers that play into one stream of 16-bit stereo. It knows no time: whoever wants to hear it asks for the
// next samples, from any thread.
//
// Sums are 32-bit and clipped once. Between two samples of a buffer a straight line is followed. A change of gain takes
// a few milliseconds, and so does a buffer that is stopped or moved while it sounds, so that nothing clicks.
class Mixer {
public:
    static constexpr int kFrequency = 44100;
    static constexpr int kRamp = 220;  // samples, 5 ms

    Mixer() = default;
    ~Mixer();
    Mixer(const Mixer&) = delete;
    Mixer& operator=(const Mixer&) = delete;

    // Null for what isn't 8 or 16 bits, mono or stereo, and for less than a sample. Must not outlive the mixer.
    std::unique_ptr<platform::SoundBuffer> createBuffer(std::size_t size, const platform::SoundFormat& format);

    // The next samples, left and right in turn.
    void mix(std::span<std::int16_t> stereo);

private:
    friend class MixedBuffer;

    std::mutex mutex_;  // over all buffers: the device reads what others change
    std::vector<MixedBuffer*> playing_;
    std::vector<std::int32_t> sums_;
    std::array<std::int32_t, std::size_t{2} * kRamp> tail_{};  // of what was cut off; the next to be heard is the first
};

}  // namespace headless
