// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/headless/mixer.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace {

using Samples = std::vector<int>;

std::unique_ptr<platform::SoundBuffer> bufferOf(headless::Mixer& mixer, const platform::SoundFormat& format,
                                                const Samples& values) {
    const std::size_t width = static_cast<std::size_t>(format.bitsPerSample) / 8;
    auto buffer = mixer.createBuffer(values.size() * width, format);
    if (!buffer) return nullptr;
    const auto [all, none] = buffer->lock(0, buffer->size());
    for (std::size_t i = 0; i < values.size(); ++i)
        std::memcpy(all.data() + i * width, &values[i], width);
    buffer->unlock();
    return buffer;
}

// The next samples of one side.
Samples heard(headless::Mixer& mixer, int count, int side = 0) {
    std::vector<std::int16_t> both(static_cast<std::size_t>(count) * 2);
    mixer.mix(both);
    Samples result;
    for (std::size_t i = static_cast<std::size_t>(side); i < both.size(); i += 2)
        result.push_back(both[i]);
    return result;
}

int largestJump(const Samples& samples) {
    int jump = 0;
    for (std::size_t i = 1; i < samples.size(); ++i)
        jump = std::max(jump, std::abs(samples[i] - samples[i - 1]));
    return jump;
}

TEST(Mixer, SamplesOfEveryFormComeOutAtTheirTimes) {
    struct Row {
        platform::SoundFormat format;
        Samples values;
        bool looping;
        Samples left, right;
    };
    const Row rows[] = {
        {{1, 44100, 16}, {1000, -2000, 3000}, false, {1000, -2000, 3000, 0, 0}, {1000, -2000, 3000, 0, 0}},
        // Twice as long, with the middle between two samples; the last one leads to silence.
        {{1, 22050, 16},
         {1000, 2000, -400},
         false,
         {1000, 1500, 2000, 800, -400, -200, 0},
         {1000, 1500, 2000, 800, -400, -200, 0}},
        {{1, 88200, 16}, {10, 20, 30, 40, 50}, false, {10, 30, 50, 0}, {10, 30, 50, 0}},
        {{2, 44100, 16}, {1, -1, 2, -2}, false, {1, 2, 0}, {-1, -2, 0}},
        {{1, 44100, 8}, {128, 255, 0}, false, {0, 127 * 256, -128 * 256, 0}, {0, 127 * 256, -128 * 256, 0}},
        {{2, 44100, 8}, {129, 127, 130, 126}, false, {256, 512, 0}, {-256, -512, 0}},
        // Round and round, the last sample leads to the first.
        {{1, 22050, 16},
         {1000, 2000},
         true,
         {1000, 1500, 2000, 1500, 1000, 1500},
         {1000, 1500, 2000, 1500, 1000, 1500}},
        {{1, 66150, 16}, {0, 100, 200}, true, {0, 150, 0, 150}, {0, 150, 0, 150}},
        {{1, 100, 16}, {7}, true, {7, 7, 7}, {7, 7, 7}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::Message()
                     << row.format.channels << " " << row.format.frequency << " " << row.format.bitsPerSample);
        for (const int side : {0, 1}) {
            headless::Mixer mixer;
            const auto buffer = bufferOf(mixer, row.format, row.values);
            ASSERT_NE(buffer, nullptr);
            buffer->play(row.looping);
            const Samples& wanted = side == 0 ? row.left : row.right;
            EXPECT_EQ(heard(mixer, static_cast<int>(wanted.size()), side), wanted);
            EXPECT_EQ(buffer->isPlaying(), row.looping);
            if (!row.looping) {
                EXPECT_EQ(buffer->cursors().play, 0U);  // the next play begins at the start
            }
        }
    }
}

TEST(Mixer, FormsThatNoDevicePlaysAreRefused) {
    headless::Mixer mixer;
    const platform::SoundFormat odd[] = {{0, 44100, 16}, {3, 44100, 16}, {1, 0, 16},         {1, -1, 16},
                                         {1, 44100, 24}, {1, 44100, 0},  {1, 0x7FFFFFFF, 16}};
    for (const platform::SoundFormat& format : odd)
        EXPECT_EQ(mixer.createBuffer(1000, format), nullptr) << format.channels << " " << format.frequency;
    EXPECT_EQ(mixer.createBuffer(0, {1, 44100, 16}), nullptr);
    EXPECT_EQ(mixer.createBuffer(3, {2, 44100, 16}), nullptr);  // not one sample of both channels
}

TEST(Mixer, VolumeAndPanWeakenTheirSideByHundredthsOfADecibel) {
    struct Row {
        int volume, pan;
        double left, right;  // hundredths; below -10000: silent
    };
    constexpr double kNone = -20000;
    const Row rows[] = {
        {0, 0, 0, 0},
        {-600, 0, -600, -600},
        {-10000, 0, kNone, kNone},
        {0, -10000, 0, kNone},
        {0, 10000, kNone, 0},
        {0, 300, -300, 0},
        {-200, -300, -200, -500},
        {500, 0, 0, 0},  // a device makes nothing louder
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::Message() << row.volume << " " << row.pan);
        headless::Mixer mixer;
        const auto buffer = bufferOf(mixer, {1, 44100, 16}, Samples(4000, 16000));
        buffer->setVolume(row.volume);
        buffer->setPan(row.pan);
        buffer->play(true);
        std::vector<std::int16_t> both(8);
        mixer.mix(both);
        EXPECT_NEAR(both[0], row.left < -10000 ? 0 : 16000 * std::pow(10, row.left / 2000), 2);
        EXPECT_NEAR(both[1], row.right < -10000 ? 0 : 16000 * std::pow(10, row.right / 2000), 2);
    }
}

TEST(Mixer, NothingClicks) {
    struct Row {
        const char* what;
        void (*change)(platform::SoundBuffer&);
        int after;  // what is heard in the end
    };
    const Row rows[] = {
        {"softer", [](platform::SoundBuffer& b) { b.setVolume(-10000); }, 0},
        {"aside", [](platform::SoundBuffer& b) { b.setPan(10000); }, 0},
        {"stopped", [](platform::SoundBuffer& b) { b.stop(); }, 0},
        {"moved", [](platform::SoundBuffer& b) { b.setPosition(20000); }, 16000},
        {"resumed", [](platform::SoundBuffer& b) { b.stop(), b.play(true); }, 16000},
        {"faster", [](platform::SoundBuffer& b) { b.setFrequency(88200); }, 16000},
    };
    constexpr int kLevel = 16000;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        headless::Mixer mixer;
        const auto buffer = bufferOf(mixer, {1, 44100, 16}, Samples(20000, kLevel));
        buffer->play(true);
        Samples all = heard(mixer, 500);
        row.change(*buffer);
        for (int i = 0; i < 10; ++i) {
            const Samples more = heard(mixer, 100);
            all.insert(all.end(), more.begin(), more.end());
        }
        EXPECT_LE(largestJump(all), 2 * kLevel / headless::Mixer::kRamp + 2);
        EXPECT_EQ(all.back(), row.after);
    }
}

TEST(Mixer, SumsAreClippedOnce) {
    headless::Mixer mixer;
    std::vector<std::unique_ptr<platform::SoundBuffer>> buffers;
    for (const int level : {30000, 30000, -25000, -30000, -30000, -30000}) {
        buffers.push_back(bufferOf(mixer, {1, 44100, 16}, Samples(1, level)));
        buffers.back()->play(true);  // one sample, for ever
        if (buffers.size() == 2) {
            EXPECT_EQ(heard(mixer, 1), Samples{32767});
        }
        if (buffers.size() == 3) {
            EXPECT_EQ(heard(mixer, 1), Samples{32767});  // 35000, and not 32767 - 25000
        }
    }
    EXPECT_EQ(heard(mixer, 1), Samples{-32768});
}

TEST(Mixer, ALockedRingIsWrittenRoundItsEndAndHeardOnlyWhenUnlocked) {
    headless::Mixer mixer;
    const auto buffer = bufferOf(mixer, {1, 44100, 8}, {129, 129, 129, 129, 129});
    const auto [first, second] = buffer->lock(3, 4);
    ASSERT_EQ(first.size(), 2U);
    ASSERT_EQ(second.size(), 2U);
    std::ranges::fill(first, std::byte{130});
    std::ranges::fill(second, std::byte{131});
    EXPECT_TRUE(buffer->lock(0, 1).first.empty());  // one at a time
    buffer->play(true);
    EXPECT_EQ(heard(mixer, 5), Samples(5, 256));
    buffer->unlock();
    EXPECT_EQ(heard(mixer, 5), (Samples{3 * 256, 3 * 256, 256, 2 * 256, 2 * 256}));
    for (const auto& [offset, size] : {std::pair{5, 1}, {0, 6}, {0, 0}})
        EXPECT_TRUE(buffer->lock(static_cast<std::size_t>(offset), static_cast<std::size_t>(size)).first.empty());
}

// Worth its while under a sanitizer of threads: one thread hears, another changes everything it hears.
TEST(Mixer, BuffersComeChangeAndGoWhileTheDeviceReadsThem) {
    headless::Mixer mixer;
    std::atomic<bool> isOver = false;
    std::thread device([&] {
        std::array<std::int16_t, 128> out{};
        while (!isOver)
            mixer.mix(out);
    });
    for (int round = 0; round < 300; ++round) {
        const auto buffer = bufferOf(mixer, {1 + round % 2, 22050, 16}, Samples(400, 100));
        buffer->play(round % 3 == 0);
        buffer->setVolume(-round);
        buffer->setPan(round);
        const auto regions = buffer->lock(600, 400);
        std::ranges::fill(regions.first, std::byte{1});
        buffer->unlock();
        buffer->setFrequency(1000 + 100 * round);
        buffer->setPosition(static_cast<std::size_t>(round));
        if (round % 2 == 0) buffer->stop();
    }
    isOver = true;
    device.join();
}

}  // namespace
