// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace platform {

enum class EventKind {
    move,
    leftDown,
    leftUp,
    leftDouble,
    middleDown,
    middleUp,
    rightDown,
    rightUp,
    keyDown,
    keyUp,
    capsLock,
    active,
    close
};

// What a person did. Points are in pixels of the screen.
struct Event {
    EventKind kind = EventKind::move;
    int first = 0;   // x; the scan code, 0 to 255; 0 or 1 for capsLock and active
    int second = 0;  // y

    bool operator==(const Event&) const = default;
};

}  // namespace platform
