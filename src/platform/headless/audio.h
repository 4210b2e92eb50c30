// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "platform/headless/mixer.h"

namespace headless {

// A sound device that moves with a clock that is not its own: whoever moves the clock moves the device by as much, and
// hears meanwhile what it plays. Periodic calls come from within `advance`, at their times between the samples.
class VirtualAudio : public platform::Audio {
public:
    // Gets the samples as they are heard, left and right in turn.
    using Listener = std::function<void(std::span<const std::int16_t>)>;

    void advance(std::uint32_t milliseconds);
    void setListener(Listener listener) { listener_ = std::move(listener); }
    // A machine without sound: nothing can be played from now on.
    void unplug() { isPresent_ = false; }

    bool isPresent() const override { return isPresent_; }
    std::unique_ptr<platform::SoundBuffer> createBuffer(std::size_t size, const platform::SoundFormat& format) override;
    std::unique_ptr<platform::PeriodicCall> callEvery(std::uint32_t milliseconds, std::function<void()> call) override;

private:
    struct Call {
        std::uint64_t due;  // milliseconds of the device
        std::uint32_t period;
        std::function<void()> call;
    };
    class Registration;

    void playUntil(std::uint64_t milliseconds);

    Mixer mixer_;
    Listener listener_;
    std::uint64_t now_ = 0;     // milliseconds
    std::uint64_t played_ = 0;  // samples
    // In the order in which they were asked for. Shared with the one who asked, who may end it while it is called.
    std::vector<std::shared_ptr<Call>> calls_;
    std::vector<std::int16_t> samples_;
    bool isPresent_ = true;
};

}  // namespace headless
