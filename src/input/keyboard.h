// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "foundation/xobject.h"

class CWindow;

// Polls the state of the keys and makes events for the window from its changes, with its own auto repeat: the first
// after 200 ms, then one a poll, 10 ms apart at least. Keys are DirectInput scan codes.
class CKeyboard : public CXObject {
public:
    explicit CKeyboard(CWindow* window) : window_(window) {}

    void tick();           // once a pass of the main loop
    void onChar(int key);  // sends the key's character, if it has one, to the window
    void setAutoRepeat(bool on) { autoRepeat_ = on; }
    bool isAnyKeyPressed() const;
    // A word for a key, or any text for the key of its first letter or digit; without regard to case. False: no such.
    bool isKeyPressed(const CXString& name) const;

private:
    bool isDown(int key) const { return (state_[static_cast<std::size_t>(key)] & 0x80) != 0; }
    void press(int key);

    struct Key {
        bool held = false;
        std::uint32_t lastEvent = 0;
        bool repeats = false;  // the first repeat has passed
    };

    CWindow* window_;
    bool autoRepeat_ = true;
    std::array<std::uint8_t, 256> state_{};
    std::array<Key, 256> keys_{};
};
