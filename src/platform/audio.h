// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>

namespace platform {

// PCM, samples of several channels side by side: unsigned at 8 bits, signed and little-endian at 16.
struct SoundFormat {
    int channels = 1;        // 1 or 2
    int frequency = 22050;   // samples of each channel a second
    int bitsPerSample = 16;  // 8 or 16

    int blockAlign() const { return channels * bitsPerSample / 8; }  // bytes of one sample of all channels
    bool operator==(const SoundFormat&) const = default;
};

// Sound in the device's memory, played once or round and round. Positions and sizes are in bytes. Volume and pan are in
// hundredths of a decibel: a volume from 0, as it is, down to -10000, silence; a pan from -10000, the left side alone,
// to 10000, the right side alone, where a value between weakens the far side by as much.
//
// Every operation may be called from any thread, also while the device plays.
class SoundBuffer {
public:
    static constexpr int kSilence = -10000;
    static constexpr int kOneSide = 10000;

    struct Regions {
        std::span<std::byte> first, second;  // the second behind the buffer's end, at its start; both empty: refused
    };
    struct Cursors {
        std::size_t play = 0;   // what is heard now
        std::size_t write = 0;  // from here on the buffer may be written: the device has not read it yet
    };

    virtual ~SoundBuffer() = default;

    virtual std::size_t size() const = 0;
    // Memory to be filled, from that offset round the end; what is not filled is undefined. Nothing of it is heard
    // before `unlock`, and nothing else may be locked until then.
    virtual Regions lock(std::size_t offset, std::size_t size) = 0;
    virtual void unlock() = 0;
    virtual void play(bool looping) = 0;  // from the position on
    virtual void stop() = 0;              // the position stays
    virtual bool isPlaying() const = 0;
    virtual Cursors cursors() const = 0;
    virtual void setPosition(std::size_t offset) = 0;  // down to the beginning of a sample; past the end: the start
    virtual void setVolume(int volume) = 0;
    virtual void setPan(int pan) = 0;
    virtual void setFrequency(int frequency) = 0;  // 100 to 200000; 0: the format's own; others are brought inside
};

// A call that comes again and again, from another thread where the platform has real time. When this is destroyed, no
// call is under way and none will come; it isn't destroyed from within the call.
class PeriodicCall {
public:
    virtual ~PeriodicCall() = default;
};

class Audio {
public:
    virtual ~Audio() = default;

    // Without a device nothing is played.
    virtual bool isPresent() const = 0;
    // Null: no device, no such format, or a size of 0. The device must outlive the buffer.
    virtual std::unique_ptr<SoundBuffer> createBuffer(std::size_t size, const SoundFormat& format) = 0;
    virtual std::unique_ptr<PeriodicCall> callEvery(std::uint32_t milliseconds, std::function<void()> call) = 0;
};

}  // namespace platform
