// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>

namespace platform {

// Where all time comes from. Nothing else in the library asks the operating system what time it is.
class Clock {
public:
    virtual ~Clock() = default;

    // Milliseconds from an arbitrary start. Wraps to 0 after 2^32 (49.7 days): subtract, never compare.
    virtual std::uint32_t ticks() const = 0;

    // Seconds since 1970-01-01 00:00:00 UTC, or -1 if the machine doesn't know.
    virtual std::int64_t utcSeconds() const = 0;

    // Returns after `milliseconds` at the earliest. A virtual clock moves by that much and returns at once.
    virtual void sleep(std::uint32_t milliseconds) = 0;
};

}  // namespace platform
