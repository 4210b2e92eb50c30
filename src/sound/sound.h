// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "sound/playable.h"

namespace platform {
class SoundBuffer;
}

class CFile;
class CMElement;

// A whole WAV file in a buffer of the sound device, for effects and speech. It is loaded when it is first played,
// unless earlier. What can't be loaded, for want of a device, of the file or of a form that the device plays, stays
// silent and never starts; nothing is told.
//
// The sound manager watches every sound and tells when one has come to its end.
class CSound4 : public CPlayable {
public:
    static constexpr int kType = 1;

    explicit CSound4(CWindow* window);
    CSound4(CWindow* window, const CXString& fileName, bool preload = false, bool flushAfterPlayed = false);
    CSound4(CWindow* window, CMElement* element);
    ~CSound4() override;
    CSound4(const CSound4&) = delete;
    CSound4& operator=(const CSound4&) = delete;

    // The device mixes at a rate of its own, so there is no primary buffer to be made: both only tell whether sounds
    // can be heard, 0, or not, -997.
    static int CreateDirectSoundInterface(CWindow* window);
    static int CreatePrimarySoundBuffer(CWindow* window) { return CreateDirectSoundInterface(window); }
    static void DestroySoundBuffer() {}

    bool load();                          // the file whose name it has
    bool Load(const CXString& fileName);  // that file from now on
    bool load(CFile* file);               // from where the stream stands; true when there is something to play
    void Flush();                         // gives the buffer back; the next play loads again

    virtual void Play(bool loop);  // from the start, and without the manager's watch
    virtual void Play();
    virtual void Stop();
    virtual bool IsPlaying() const;
    virtual void OnWAVFinished();  // the manager's call

    using CPlayable::play;
    void play() override { Play(); }
    // With false, the next end isn't told, be it this one or, of a sound that isn't playing, a later one.
    void stop(bool notify) override;
    void pause() override;
    void resume() override;
    void seek(int position) override { SetPosition(position); }  // in bytes of the samples
    void SetPosition(int position);
    bool isPlaying() const override { return IsPlaying(); }
    // Are kept, and hold for every buffer that is loaded.
    void setVolume(int volume) override;
    void setPanning(int panning) override;
    void setFrequency(int frequency) override;

    bool isLoaded() override { return buffer_ != nullptr; }
    int getDataLength() const { return dataLength_; }

private:
    CWindow* window_;
    std::unique_ptr<platform::SoundBuffer> buffer_;  // null until loaded
    bool loop_ = false;
    int dataLength_ = 0;  // bytes
    bool flushAfterPlayed_ = false;
    bool notifyAtEnd_ = true;
    int startPosition_ = 0;  // set by `pause`
};
