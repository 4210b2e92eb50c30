// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

class CWindow;

// A whole WAV in a buffer of the sound device. Only the device's own operations exist yet, and no device behind them.
class CSound4 {
public:
    // Null: no device, so that sounds load nothing and say nothing.
    static void* CreateDirectSoundInterface(CWindow*) { return nullptr; }
    static void DestroySoundBuffer() {}
};
