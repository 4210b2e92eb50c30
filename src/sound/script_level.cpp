// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/script_level.h"

#include <algorithm>
#include <cstdint>

#include "platform/audio.h"

namespace {

using platform::SoundBuffer;

constexpr std::int64_t kRange = 3200;  // hundredths of a decibel from one end of a scale to the other
constexpr std::int64_t kFaintest = 3099;
constexpr std::int64_t kLoudest = 800, kMiddle = 400;

}  // namespace

int volumeLevel(int volume) {
    const std::int64_t level = (volume - kLoudest) * kRange / kLoudest;
    return level < -kFaintest ? SoundBuffer::kSilence : static_cast<int>(std::min<std::int64_t>(level, INT32_MAX));
}

int panLevel(int pan) {
    const std::int64_t level = (pan - kMiddle) * kRange / kMiddle;
    if (level < -kFaintest) return -SoundBuffer::kOneSide;
    return level > kFaintest ? SoundBuffer::kOneSide : static_cast<int>(level);
}
