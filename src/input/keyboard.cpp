// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "input/keyboard.h"

#include <algorithm>
#include <string_view>

#include "frame/window.h"
#include "platform/platform.h"

namespace {

constexpr std::uint32_t kFirstRepeat = 200;  // milliseconds
constexpr std::uint32_t kNextRepeat = 10;
constexpr int kLeftShift = 0x2A;
constexpr int kRightShift = 0x36;

struct NamedKey {
    std::string_view name;
    int key;
    int orKey;
};

constexpr NamedKey kNamedKeys[] = {
    {"left",   0xCB,        0xCB       },
    {"up",     0xC8,        0xC8       },
    {"down",   0xD0,        0xD0       },
    {"right",  0xCD,        0xCD       },
    {"lshift", kLeftShift,  kLeftShift },
    {"rshift", kRightShift, kRightShift},
    {"shift",  kLeftShift,  kRightShift},
    {"lctrl",  0x1D,        0x1D       },
    {"rctrl",  0x9D,        0x9D       },
    {"ctrl",   0x1D,        0x9D       },
    {"lalt",   0x38,        0x38       },
    {"ralt",   0xB8,        0xB8       },
    {"alt",    0x38,        0xB8       },
    {"space",  0x39,        0x39       },
};

}  // namespace

void CKeyboard::tick() {
    std::array<std::uint8_t, 256> state{};
    if (!platform::current().input.keyState(state)) return;
    state_ = state;
    const std::uint32_t now = platform::current().clock.ticks();
    for (int key = 0; key < 256; ++key) {
        Key& slot = keys_[static_cast<std::size_t>(key)];
        if (!isDown(key)) {
            if (!slot.held) continue;
            slot = {};
            window_->OnKeyUp(key, 0);
        } else if (!slot.held) {
            press(key);
            slot.held = true;
            slot.lastEvent = now;
        } else if (autoRepeat_) {
            if (now - slot.lastEvent < (slot.repeats ? kNextRepeat : kFirstRepeat)) continue;
            press(key);
            slot.repeats = true;
            slot.lastEvent = now;
        }
    }
}

void CKeyboard::press(int key) {
    window_->OnKeyDown(key, 256);
    onChar(key);
}

void CKeyboard::onChar(int key) {
    char c = CWindow::tranlateToChar(key);
    if (c == 0) return;
    if (c >= 'A' && c <= 'Z') {
        const bool shift = isDown(kLeftShift) || isDown(kRightShift);
        if (shift == platform::current().input.capsLock()) c = static_cast<char>(c + 0x20);
    }
    window_->OnChar(static_cast<unsigned char>(c), 0);
}

bool CKeyboard::isAnyKeyPressed() const {
    return std::any_of(state_.begin(), state_.end(), [](std::uint8_t s) { return (s & 0x80) != 0; });
}

bool CKeyboard::isKeyPressed(const CXString& name) const {
    for (const NamedKey& named : kNamedKeys) {
        if (name.equalsIgnoreCase(named.name)) return isDown(named.key) || isDown(named.orKey);
    }
    const char c = upperCase(name.GetAt(0));
    if (c == 0 || c == ' ') return false;
    for (int key = 0; key < 256; ++key) {
        if (CWindow::tranlateToChar(key) == c) return isDown(key);
    }
    return false;
}
