// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <span>

#include "foundation/xobject.h"
#include "sound/wave_file.h"
#include "storage/file.h"

// The samples of a WAV file, read piece by piece from start to end.
class CStreamedWAV : public CXObject {
public:
    static constexpr int kRingMilliseconds = 1200;

    // A file that isn't there is error word 2000; one that is no sound leaves no samples.
    CStreamedWAV(CWindow* window, const CXString& fileName);

    bool isOpen() const { return head_.has_value(); }
    const platform::SoundFormat& format() const { return head_->format; }
    std::byte silence() const { return std::byte{static_cast<std::uint8_t>(format().bitsPerSample == 8 ? 0x80 : 0)}; }
    int GetBufferSize() const;  // of 1200 milliseconds, in bytes
    int getDataLength() const { return head_->dataLength; }
    int getPosition() const { return position_; }  // in bytes of the samples

    // Fills as much as there is; the number of bytes.
    int read(std::span<std::byte> target);
    void seek(int position);
    // Fills all of it, from the first sample again each time the last one has been read; silence when there is nothing.
    void readAround(std::span<std::byte> target);

private:
    CFile file_;
    std::optional<WaveHead> head_;
    int position_ = 0;
};
