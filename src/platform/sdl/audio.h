// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <memory>

#include "platform/headless/audio.h"
#include "platform/headless/mixer.h"

namespace sdl {

// The loudspeakers, through SDL. Without any, or when they can't be had, what is played goes on all the same and
// unheard, in step with the frames, so that sounds end when they should.
class Audio : public platform::Audio {
public:
    Audio();
    ~Audio() override;
    Audio(const Audio&) = delete;
    Audio& operator=(const Audio&) = delete;

    bool isHeard() const { return device_ != 0; }
    // To be told how real time goes by.
    void advance(std::uint32_t milliseconds) {
        if (!isHeard()) unheard_.advance(milliseconds);
    }

    bool isPresent() const override { return true; }
    std::unique_ptr<platform::SoundBuffer> createBuffer(std::size_t size, const platform::SoundFormat& format) override;
    // On a thread of its own when the loudspeakers are there, else from `advance`.
    std::unique_ptr<platform::PeriodicCall> callEvery(std::uint32_t milliseconds, std::function<void()> call) override;

private:
    static void fill(void* self, std::uint8_t* bytes, int count);

    headless::Mixer mixer_;
    headless::VirtualAudio unheard_;
    std::uint32_t device_ = 0;  // SDL's number; 0: none
};

}  // namespace sdl
