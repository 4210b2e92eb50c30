// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <atomic>
#include <memory>
#include <span>

#include "foundation/xobject.h"

class CStreamedWAV;
class CWindow;
namespace platform {
class PeriodicCall;
class SoundBuffer;
}  // namespace platform

// A WAV file played through a ring of 1200 milliseconds, for music and long sounds. Every 50 milliseconds what has been
// heard is written over with what comes next; a platform with real time does so on a thread of its own, which touches
// nothing but the stream and its file.
//
// Closed, opened, playing, perhaps paused, ending (the last samples are in the ring), done, closed.
class CSndStream : public CXObject {
public:
    static constexpr int kRefillPeriod = 50;  // milliseconds

    explicit CSndStream(CWindow* window);
    // Opens at once; a file that isn't there is error word 2000, no sound device -997. One that is no sound has none.
    CSndStream(CWindow* window, const CXString& fileName);
    ~CSndStream() override;
    CSndStream(const CSndStream&) = delete;
    CSndStream& operator=(const CSndStream&) = delete;

    bool Open(const CXString& fileName);
    void Play(bool loop);  // from what is in the ring
    void Pause();
    // Goes on a little before where it stopped, up to twice the ring, and doesn't go round any more.
    void Resume();
    void Close();
    bool IsPlaying() const { return started_ && !DonePlaying(); }
    bool IsLooped() const { return looped_; }
    bool DonePlaying() const { return donePlaying_; }
    void SetDonePlaying(bool done) { donePlaying_ = done; }
    bool FoundEnd() const { return foundEnd_; }  // the samples have run out; the last ones may still be heard
    void SetFoundEnd(bool found) { foundEnd_ = found; }
    bool HasReachedEnd() const { return reachedEnd_; }  // the last one has been heard since the file was opened
    // Real samples that are still ahead in the ring once the end was found, in bytes.
    int GetBytesRemaining() const { return bytesRemaining_; }
    void SetBytesRemaining(int bytes) { bytesRemaining_ = bytes; }
    int GetNextWriteOffset() const { return nextWriteOffset_; }  // where in the ring the refill goes on
    void AddNextWriteOffset(int bytes) { nextWriteOffset_ = (nextWriteOffset_ + bytes) % bufferSize_; }
    void MoveProgress(int bytes) { progress_ += bytes; }
    int GetProgress() const { return progress_; }  // bytes handed to the device so far, silence too
    int GetBufferSize() const { return bufferSize_; }
    int GetBitsPerSample() const;  // 0: nothing is open

    void setVolume(int volume);  // hundredths of a decibel
    void setPan(int pan);
    void setFreq(int frequency);
    int getVolume() const { return volume_; }

private:
    // Reading the file: back to the first sample; at most `count` bytes, how many came; the file goes.
    void SWStartRead();
    int SWRead(int count, unsigned char* target);
    void SWClose();
    void fill();
    void TimeFunc();
    void refill();
    bool writeSilence(int offset, int size);
    void readOn(std::span<std::byte> region, int unplayed);
    void loopStarted();
    void stopRefilling();

    CWindow* window_;
    std::unique_ptr<CStreamedWAV> file_;
    std::unique_ptr<platform::SoundBuffer> buffer_;
    bool opened_ = false;
    bool started_ = false;
    bool looped_ = false;
    int volume_ = 0;
    int pan_ = 0;
    int frequency_ = 0;  // 0: the file's own
    // Of the refill, which may run on another thread.
    std::atomic<bool> timerBlocked_ = true;
    std::atomic<bool> callbackLock_ = false;  // while the refill runs
    std::atomic<bool> foundEnd_ = false;
    std::atomic<bool> donePlaying_ = false;
    std::atomic<bool> reachedEnd_ = false;
    std::atomic<int> progress_ = 0;
    int bufferSize_ = 0;
    int bytesRemaining_ = 0;
    int nextWriteOffset_ = 0;
    // The last member: with its end no refill is under way any more.
    std::unique_ptr<platform::PeriodicCall> timer_;
};
