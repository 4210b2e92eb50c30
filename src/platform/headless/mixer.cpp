// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/headless/mixer.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace headless {

using platform::SoundBuffer;
using platform::SoundFormat;

namespace {

constexpr int kGainBits = 14;  // a sample times a gain, times the number of voices, stays inside 32 bits
constexpr int kFull = 1 << kGainBits;
constexpr int kFractionBits = 32;
constexpr std::uint64_t kOneSample = std::uint64_t{1} << kFractionBits;
constexpr int kLowest = 100, kHighest = 200'000;  // frequencies

int gainOf(int hundredths) {
    if (hundredths <= SoundBuffer::kSilence) return 0;
    return static_cast<int>(std::lround(kFull * std::pow(10.0, std::min(hundredths, 0) / 2000.0)));
}

struct Sides {
    int left = kFull, right = kFull;
};

template <int Bits>
int sampleAt(const std::byte* data) {
    if constexpr (Bits == 8) {
        return (std::to_integer<int>(*data) - 0x80) * 256;
    } else {
        std::int16_t sample;
        std::memcpy(&sample, data, sizeof sample);
        return sample;
    }
}

}  // namespace

class MixedBuffer : public SoundBuffer {
public:
    MixedBuffer(Mixer& mixer, std::size_t size, const SoundFormat& format)
        : mixer_(mixer), format_(format), data_(size), samples_(size / static_cast<std::size_t>(format.blockAlign())) {
        setStep(format.frequency);
    }
    MixedBuffer(const MixedBuffer&) = delete;
    MixedBuffer& operator=(const MixedBuffer&) = delete;
    ~MixedBuffer() override {
        const std::lock_guard guard(mixer_.mutex_);
        silence();
    }

    std::size_t size() const override { return data_.size(); }

    // What is written stands aside until it is whole: the device never waits for a disk.
    Regions lock(std::size_t offset, std::size_t size) override {
        if (locked_ != 0 || size == 0 || size > data_.size() || offset >= data_.size()) return {};
        aside_.resize(data_.size());
        lockedAt_ = offset;
        locked_ = size;
        const std::span<std::byte> all(aside_);
        const std::size_t first = std::min(size, data_.size() - offset);
        return {all.subspan(offset, first), all.first(size - first)};
    }

    void unlock() override {
        if (locked_ == 0) return;
        const std::size_t size = std::exchange(locked_, 0);
        const std::size_t first = std::min(size, data_.size() - lockedAt_);
        {
            const std::lock_guard guard(mixer_.mutex_);
            if (size == data_.size()) {
                data_.swap(aside_);
            } else {
                std::copy_n(aside_.begin() + static_cast<std::ptrdiff_t>(lockedAt_), first,
                            data_.begin() + static_cast<std::ptrdiff_t>(lockedAt_));
                std::copy_n(aside_.begin(), size - first, data_.begin());
            }
        }
        if (size == data_.size()) {  // a sound that is filled once needs its memory once
            aside_.clear();
            aside_.shrink_to_fit();
        }
    }

    void play(bool looping) override {
        const std::lock_guard guard(mixer_.mutex_);
        looping_ = looping;
        if (playing_) return;
        playing_ = true;
        // The beginning of a sound is its own; anywhere else it comes in softly.
        ramped_ = position_ < kOneSample ? Mixer::kRamp : 0;
        from_ = {0, 0};
        mixer_.playing_.push_back(this);
    }

    void stop() override {
        const std::lock_guard guard(mixer_.mutex_);
        silence();
    }

    bool isPlaying() const override {
        const std::lock_guard guard(mixer_.mutex_);
        return playing_;
    }

    // Both are one: a sample is read when it is to be heard, as far as this device knows.
    Cursors cursors() const override {
        const std::lock_guard guard(mixer_.mutex_);
        const std::size_t at = static_cast<std::size_t>(position_ >> kFractionBits) * blockAlign();
        return {at, at};
    }

    void setPosition(std::size_t offset) override {
        const std::lock_guard guard(mixer_.mutex_);
        const bool wasPlaying = playing_;
        silence();
        position_ = std::uint64_t{offset < data_.size() ? offset / blockAlign() : 0} << kFractionBits;
        if (position_ >> kFractionBits >= samples_) position_ = 0;
        if (!wasPlaying) return;
        playing_ = true;
        ramped_ = 0;
        from_ = {0, 0};
        mixer_.playing_.push_back(this);
    }

    void setVolume(int volume) override {
        const std::lock_guard guard(mixer_.mutex_);
        volume_ = volume;
        setGains();
    }

    void setPan(int pan) override {
        const std::lock_guard guard(mixer_.mutex_);
        pan_ = pan;
        setGains();
    }

    void setFrequency(int frequency) override {
        const std::lock_guard guard(mixer_.mutex_);
        setStep(frequency == 0 ? format_.frequency : frequency);
    }

    void playedOut() { playing_ = false; }

    // Adds the next samples to the sums, as many pairs as fit or as there are. False when the sound has come to its
    // end.
    bool mixInto(std::span<std::int32_t> sums) {
        const bool isWide = format_.bitsPerSample == 16;
        if (format_.channels == 2) return isWide ? add<16, 2>(sums) : add<8, 2>(sums);
        return isWide ? add<16, 1>(sums) : add<8, 1>(sums);
    }

private:
    std::size_t blockAlign() const { return static_cast<std::size_t>(format_.blockAlign()); }

    void setStep(int frequency) {
        step_ = kOneSample * static_cast<std::uint64_t>(std::clamp(frequency, kLowest, kHighest)) / Mixer::kFrequency;
    }

    void setGains() {
        const int all = std::clamp(volume_, kSilence, 0);
        from_ = gain(ramped_);
        ramped_ = playing_ ? 0 : Mixer::kRamp;
        wanted_.left = gainOf(pan_ > 0 ? std::max(all - pan_, int{kSilence}) : all);
        wanted_.right = gainOf(pan_ < 0 ? std::max(all + pan_, int{kSilence}) : all);
    }

    // Out of the mix. What would have followed fades away over a few milliseconds.
    void silence() {
        if (!playing_) return;
        const std::uint64_t position = position_;
        const Sides wanted = wanted_;
        from_ = gain(ramped_);
        ramped_ = 0;
        wanted_ = {0, 0};
        mixInto(mixer_.tail_);
        wanted_ = wanted;
        ramped_ = Mixer::kRamp;
        position_ = position;
        playing_ = false;
        std::erase(mixer_.playing_, this);
    }

    template <int Bits, int Channels>
    bool add(std::span<std::int32_t> sums) {
        std::size_t done = 0;
        const std::size_t count = sums.size() / 2;
        const std::uint64_t end = std::uint64_t{samples_} << kFractionBits;
        const std::uint64_t last = end - kOneSample;
        while (done < count) {
            // As far as neither the buffer's last sample nor the end of the ramp is met.
            const bool isRamp = ramped_ < Mixer::kRamp;
            const std::size_t most =
                std::min(count - done, isRamp ? static_cast<std::size_t>(Mixer::kRamp - ramped_) : count);
            std::size_t run = 1;
            if (position_ >= last) {
                // The last sample leads on to the first one, or to nothing.
                addLast<Bits, Channels>(sums.data() + 2 * done);
            } else {
                run = static_cast<std::size_t>(std::min<std::uint64_t>(most, (last - position_ - 1) / step_ + 1));
                const auto part = sums.subspan(2 * done, 2 * run);
                if (isRamp) {
                    addRun<Bits, Channels, true>(part);
                } else {
                    addRun<Bits, Channels, false>(part);
                }
            }
            done += run;
            if (isRamp) ramped_ += static_cast<int>(run);
            if (position_ < end) continue;
            position_ = looping_ ? position_ % end : 0;
            if (!looping_) {
                ramped_ = Mixer::kRamp;
                return false;
            }
        }
        return true;
    }

    // On a straight line from the gain before the last change to the wanted one.
    Sides gain(int at) const {
        return {from_.left + (wanted_.left - from_.left) * at / Mixer::kRamp,
                from_.right + (wanted_.right - from_.right) * at / Mixer::kRamp};
    }

    // Samples with a next one beside them.
    template <int Bits, int Channels, bool Ramp>
    void addRun(std::span<std::int32_t> sums) {
        constexpr std::size_t kBytes = Bits / 8;
        Sides sides = wanted_;
        const std::byte* data = data_.data();
        std::uint64_t position = position_;
        const std::uint64_t step = step_;
        std::int32_t* out = sums.data();
        const std::size_t count = sums.size() / 2;
        for (std::size_t i = 0; i < count; ++i) {
            const std::byte* here = data + (position >> kFractionBits) * (kBytes * Channels);
            const int fraction = static_cast<int>(static_cast<std::uint32_t>(position) >> 17);  // 15 bits
            if constexpr (Ramp) sides = gain(ramped_ + static_cast<int>(i));
            const int left0 = sampleAt<Bits>(here), left1 = sampleAt<Bits>(here + kBytes * Channels);
            const int left = left0 + (((left1 - left0) * fraction) >> 15);
            int right = left;
            if constexpr (Channels == 2) {
                const int right0 = sampleAt<Bits>(here + kBytes), right1 = sampleAt<Bits>(here + kBytes * 3);
                right = right0 + (((right1 - right0) * fraction) >> 15);
            }
            out[2 * i] += (left * sides.left) >> kGainBits;
            out[2 * i + 1] += (right * sides.right) >> kGainBits;
            position += step;
        }
        position_ = position;
    }

    template <int Bits, int Channels>
    void addLast(std::int32_t* out) {
        constexpr std::size_t kBytes = Bits / 8;
        const std::byte* here = data_.data() + (position_ >> kFractionBits) * (kBytes * Channels);
        const int fraction = static_cast<int>(static_cast<std::uint32_t>(position_) >> 17);
        const auto sample = [&](std::size_t channel) {
            const int first = sampleAt<Bits>(here + kBytes * channel);
            const int next = looping_ ? sampleAt<Bits>(data_.data() + kBytes * channel) : 0;
            return first + (((next - first) * fraction) >> 15);
        };
        const int left = sample(0);
        const Sides sides = gain(ramped_);
        out[0] += (left * sides.left) >> kGainBits;
        out[1] += ((Channels == 2 ? sample(1) : left) * sides.right) >> kGainBits;
        position_ += step_;
    }

    Mixer& mixer_;
    SoundFormat format_;
    std::vector<std::byte> data_;
    std::vector<std::byte> aside_;  // what is locked, at its own offsets
    std::size_t lockedAt_ = 0, locked_ = 0;
    std::size_t samples_;         // of each channel
    std::uint64_t position_ = 0;  // in samples, with 32 bits behind the point
    std::uint64_t step_ = 0;
    int volume_ = 0, pan_ = 0;
    Sides wanted_, from_;
    int ramped_ = Mixer::kRamp;  // samples since the last change of gain
    bool playing_ = false, looping_ = false;
};

Mixer::~Mixer() = default;

std::unique_ptr<SoundBuffer> Mixer::createBuffer(std::size_t size, const SoundFormat& format) {
    const bool isKnown = (format.bitsPerSample == 8 || format.bitsPerSample == 16) &&
                         (format.channels == 1 || format.channels == 2) && format.frequency > 0 &&
                         format.frequency <= kHighest;
    if (!isKnown || size < static_cast<std::size_t>(format.blockAlign())) return nullptr;
    return std::make_unique<MixedBuffer>(*this, size, format);
}

void Mixer::mix(std::span<std::int16_t> stereo) {
    const std::lock_guard guard(mutex_);
    sums_.assign(stereo.size(), 0);
    const std::size_t faded = std::min(stereo.size(), tail_.size());
    std::copy_n(tail_.begin(), faded, sums_.begin());
    std::copy(tail_.begin() + static_cast<std::ptrdiff_t>(faded), tail_.end(), tail_.begin());
    std::fill(tail_.end() - static_cast<std::ptrdiff_t>(faded), tail_.end(), 0);
    std::erase_if(playing_,
                  [this](MixedBuffer* buffer) { return !buffer->mixInto(sums_) && (buffer->playedOut(), true); });
    std::transform(sums_.begin(), sums_.end(), stereo.begin(), [](std::int32_t sum) {
        return static_cast<std::int16_t>(std::clamp<std::int32_t>(sum, INT16_MIN, INT16_MAX));
    });
}

}  // namespace headless
