// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xobject.h"

class CWindow;

// Music from a WAV file. There is no sound device yet: opening fails with the error word -997.
class CSndStream : public CXObject {
public:
    CSndStream(CWindow* window, const CXString& fileName);

    bool Open(const CXString& fileName);
    void Play(bool loop);
    void Close();
    bool IsPlaying() const { return started_; }
    void setVolume(int volume) { volume_ = volume; }
    void setPan(int pan) { pan_ = pan; }
    void setFreq(int frequency) { frequency_ = frequency; }
    int getVolume() const { return volume_; }

private:
    bool opened_ = false;
    bool started_ = false;
    int volume_ = 0;
    int pan_ = 0;
    int frequency_ = 0;
};
