// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/sdl/audio.h"

#include <SDL.h>
#include <cstdio>

#include "platform/headless/call_thread.h"

namespace sdl {

namespace {

constexpr Uint16 kSamplesAtOnce = 512;  // 12 ms: what is played is heard that much later

}  // namespace

Audio::Audio() {
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) == 0) {
        SDL_AudioSpec wanted{};
        wanted.freq = headless::Mixer::kFrequency;
        wanted.format = AUDIO_S16SYS;
        wanted.channels = 2;
        wanted.samples = kSamplesAtOnce;
        wanted.callback = &Audio::fill;
        wanted.userdata = this;
        device_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
    }
    if (device_ == 0) {
        std::fprintf(stderr, "proscenium: sounds can't be heard: %s\n", SDL_GetError());
        return;
    }
    SDL_PauseAudioDevice(device_, 0);
}

Audio::~Audio() {
    if (device_ != 0) SDL_CloseAudioDevice(device_);
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

void Audio::fill(void* self, std::uint8_t* bytes, int count) {
    static_cast<Audio*>(self)->mixer_.mix(
        {reinterpret_cast<std::int16_t*>(bytes), static_cast<std::size_t>(count) / sizeof(std::int16_t)});
}

std::unique_ptr<platform::SoundBuffer> Audio::createBuffer(std::size_t size, const platform::SoundFormat& format) {
    return isHeard() ? mixer_.createBuffer(size, format) : unheard_.createBuffer(size, format);
}

std::unique_ptr<platform::PeriodicCall> Audio::callEvery(std::uint32_t milliseconds, std::function<void()> call) {
    if (!isHeard()) return unheard_.callEvery(milliseconds, std::move(call));
    return std::make_unique<headless::CallThread>(milliseconds, std::move(call));
}

}  // namespace sdl
