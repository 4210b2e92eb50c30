// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "sound/playable.h"

// A whole WAV in a buffer of the sound device. There is no device yet: a sound keeps its name and its settings, and
// what is played is over at once.
class CSound4 : public CPlayable {
public:
    CSound4(CWindow* window, const CXString& fileName) : CPlayable(window) { setFilename(fileName); }

    // Null: no device, so that sounds load nothing and say nothing.
    static void* CreateDirectSoundInterface(CWindow*) { return nullptr; }
    static void DestroySoundBuffer() {}

    using CPlayable::play;
    void play() override {}
    void stop(bool) override { status_ = 0; }
    void pause() override {}
    void resume() override {}
    void seek(int) override {}
    bool isPlaying() const override { return false; }
};
