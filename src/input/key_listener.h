// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

// Hears the keyboard. Keys are DirectInput scan codes, characters Windows-1250.
class CKeyListener {
public:
    virtual ~CKeyListener() = default;
    virtual void onChar(unsigned char) {}
    virtual void onKeyDown(int /*key*/) {}
    virtual void onKeyUp(int /*key*/) {}
};
