// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <functional>

#include "platform/clock.h"

namespace headless {

// Time that moves only when it is told to.
class VirtualClock : public platform::Clock {
public:
    // `utcSeconds` is what the wall clock shows at the start.
    VirtualClock(std::uint32_t ticks, std::int64_t utcSeconds) : ticks_(ticks), utcStart_(utcSeconds) {}

    void advance(std::uint32_t milliseconds) {
        ticks_ += milliseconds;
        elapsed_ += milliseconds;
        if (follower_) follower_(milliseconds);
    }

    // Moves with this clock; called behind each step.
    void setFollower(std::function<void(std::uint32_t milliseconds)> follower) { follower_ = std::move(follower); }

    std::uint32_t ticks() const override { return ticks_; }
    std::int64_t utcSeconds() const override { return utcStart_ + static_cast<std::int64_t>(elapsed_ / 1000); }
    void sleep(std::uint32_t milliseconds) override { advance(milliseconds); }

private:
    std::uint32_t ticks_;
    std::function<void(std::uint32_t)> follower_;
    std::int64_t utcStart_;
    std::uint64_t elapsed_ = 0;  // milliseconds; apart from the ticks, which wrap
};

}  // namespace headless
