// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/streamed_wav.h"

#include <algorithm>
#include <cstdio>

#include "frame/error.h"
#include "frame/window.h"
#include "storage/big_file.h"

CStreamedWAV::CStreamedWAV(CWindow* window, const CXString& fileName) {
    // The refill reads on a thread of its own, so it never shares the big file's stream with the other loaders.
    const CBigFile* archive = window ? window->Resource() : nullptr;
    if (file_.Open(window, fileName, CFile::kReadBinary) != 0 && !(archive && archive->open(fileName, file_))) {
        setErrorCode(kErrorNotFound);
        return;
    }
    auto head = readWaveHead(file_, file_.left());
    if (!head || head->formatTag != WaveHead::kPcm) return;
    const int blockAlign = std::max(head->format.blockAlign(), 1);
    head->dataLength = head->dataLength / blockAlign * blockAlign;
    if (head->dataLength > 0) head_ = head;
}

int CStreamedWAV::GetBufferSize() const {
    const std::int64_t align = std::max(format().blockAlign(), 1);
    const std::int64_t bytes = align * format().frequency * kRingMilliseconds / 1000;
    // Whole samples, so that they come out even where the ring closes.
    return static_cast<int>(std::min<std::int64_t>(bytes / align * align, INT32_MAX));
}

int CStreamedWAV::read(std::span<std::byte> target) {
    const int most = std::min(static_cast<int>(target.size()), head_->dataLength - position_);
    const int count = most > 0 ? file_.Read(target.data(), most) : 0;
    position_ += count;
    return count;
}

void CStreamedWAV::seek(int position) {
    position_ = std::clamp(position, 0, head_->dataLength);
    file_.Seek(head_->dataStart + position_, SEEK_SET);
}

void CStreamedWAV::readAround(std::span<std::byte> target) {
    bool isFresh = false;
    while (!target.empty()) {
        const int count = read(target);
        target = target.subspan(static_cast<std::size_t>(count));
        if (count == 0 && isFresh) break;  // nothing can be read at all
        if (!target.empty()) seek(0);
        isFresh = true;
    }
    std::ranges::fill(target, silence());
}
