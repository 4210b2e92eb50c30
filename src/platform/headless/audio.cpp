// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/headless/audio.h"

#include <algorithm>

namespace headless {

class VirtualAudio::Registration : public platform::PeriodicCall {
public:
    Registration(VirtualAudio& audio, std::shared_ptr<Call> call) : audio_(audio), call_(std::move(call)) {}
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() override { std::erase(audio_.calls_, call_); }

private:
    VirtualAudio& audio_;
    std::shared_ptr<Call> call_;
};

std::unique_ptr<platform::SoundBuffer> VirtualAudio::createBuffer(std::size_t size,
                                                                  const platform::SoundFormat& format) {
    return isPresent_ ? mixer_.createBuffer(size, format) : nullptr;
}

std::unique_ptr<platform::PeriodicCall> VirtualAudio::callEvery(std::uint32_t milliseconds,
                                                                std::function<void()> call) {
    const std::uint32_t period = std::max(milliseconds, 1U);
    calls_.push_back(std::make_shared<Call>(Call{now_ + period, period, std::move(call)}));
    return std::make_unique<Registration>(*this, calls_.back());
}

void VirtualAudio::advance(std::uint32_t milliseconds) {
    const std::uint64_t end = now_ + milliseconds;
    for (;;) {
        const auto next = std::min_element(calls_.begin(), calls_.end(),
                                           [](const auto& a, const auto& b) { return a->due < b->due; });
        if (next == calls_.end() || (*next)->due > end) break;
        const std::shared_ptr<Call> call = *next;
        playUntil(call->due);
        call->due += call->period;
        call->call();
    }
    playUntil(end);
}

void VirtualAudio::playUntil(std::uint64_t milliseconds) {
    constexpr std::size_t kAtOnce = 4096;  // samples
    const std::uint64_t wanted = milliseconds * Mixer::kFrequency / 1000;
    while (played_ < wanted) {
        const std::size_t count = static_cast<std::size_t>(std::min<std::uint64_t>(kAtOnce, wanted - played_));
        samples_.resize(2 * count);
        mixer_.mix(samples_);
        played_ += count;
        if (listener_) listener_(samples_);
    }
    now_ = milliseconds;
}

}  // namespace headless
