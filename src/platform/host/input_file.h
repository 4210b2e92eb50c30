// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/event.h"

namespace host {

using EventKind = platform::EventKind;

// An event with the frame before which it goes in, from 1.
struct Event {
    std::uint32_t frame = 0;
    EventKind kind = EventKind::move;
    int first = 0;  // as in platform::Event
    int second = 0;

    bool operator==(const Event&) const = default;
};

struct InputFile {
    std::vector<Event> events;  // in ascending order of frames
    int errorLine = 0;          // from 1; 0: the file is right
    std::string error;
};

// Reads a text with an event a line. At the first line that doesn't fit it stops.
InputFile parseInput(std::string_view text);

// The line of an event, with its end, as `parseInput` reads it.
std::string inputLine(const Event& event);

}  // namespace host
