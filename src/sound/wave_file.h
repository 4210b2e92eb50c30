// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <optional>

#include "platform/audio.h"

class CFile;

// What stands at the beginning of a RIFF wave file.
struct WaveHead {
    static constexpr int kPcm = 1;

    int formatTag = 0;
    platform::SoundFormat format;  // as the file says, which may be nothing that a device plays
    int dataStart = 0;             // where the samples begin, from the start of the stream
    int dataLength = 0;            // in bytes, never more than the stream has
};

// Reads from where the stream stands up to the samples; at most `available` bytes belong to the file. None: it is no
// wave file, or cut off before its samples.
std::optional<WaveHead> readWaveHead(CFile& file, int available);
