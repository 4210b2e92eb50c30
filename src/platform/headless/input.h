// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "platform/input.h"

namespace headless {

// Keys that are down because a test or an input file says so.
class ScriptedInput : public platform::Input {
public:
    void setKey(int scanCode, bool down) { keys_[static_cast<std::size_t>(scanCode & 0xFF)] = down ? 0x80 : 0; }
    void setCapsLock(bool on) { capsLock_ = on; }
    void setAvailable(bool available) { available_ = available; }  // false: `keyState` fails

    platform::CursorKind cursor() const { return cursor_; }
    int showCount() const { return showCount_; }
    int pointerX() const { return pointerX_; }
    int pointerY() const { return pointerY_; }

    bool keyState(std::array<std::uint8_t, 256>& keys) override {
        if (available_) keys = keys_;
        return available_;
    }
    bool capsLock() const override { return capsLock_; }
    void setCursor(platform::CursorKind kind) override { cursor_ = kind; }
    void showCursor(bool show) override { showCount_ += show ? 1 : -1; }
    void setCursorPosition(int x, int y) override {
        pointerX_ = x;
        pointerY_ = y;
    }

private:
    std::array<std::uint8_t, 256> keys_{};
    bool capsLock_ = false;
    bool available_ = true;
    platform::CursorKind cursor_ = platform::CursorKind::main;
    int showCount_ = 0;
    int pointerX_ = 0;
    int pointerY_ = 0;
};

}  // namespace headless
