// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <array>
#include <cstdint>

namespace platform {

enum class CursorKind { main, active, wait };

// Keyboard state and mouse cursor. Keys are DirectInput scan codes, 0 to 255.
class Input {
public:
    virtual ~Input() = default;

    // The state of every key, bit 7 set while it is down; false when the state can't be had now.
    virtual bool keyState(std::array<std::uint8_t, 256>& keys) = 0;
    virtual bool capsLock() const = 0;

    virtual void setCursor(CursorKind kind) = 0;
    // Each true raises the cursor's show count, each false lowers it; the cursor shows while the count isn't negative.
    virtual void showCursor(bool show) = 0;
    virtual void setCursorPosition(int x, int y) = 0;  // in coordinates of the desktop, as `Shell::clientArea`
};

}  // namespace platform
