// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <chrono>
#include <thread>

#include "platform/clock.h"

namespace sdl {

// Real time. Ticks may begin at any number, and the date at another one than today's.
class SystemClock : public platform::Clock {
public:
    SystemClock(std::uint32_t ticks, std::int64_t utcSeconds) : ticks_(ticks), utcSeconds_(utcSeconds) {}

    std::uint32_t ticks() const override { return ticks_ + static_cast<std::uint32_t>(elapsed().count()); }
    std::int64_t utcSeconds() const override { return utcSeconds_ + elapsed().count() / 1000; }
    void sleep(std::uint32_t milliseconds) override {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    }

private:
    std::chrono::milliseconds elapsed() const {
        return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start_);
    }

    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::uint32_t ticks_;
    std::int64_t utcSeconds_;
};

}  // namespace sdl
