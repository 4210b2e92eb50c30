// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/stream.h"

#include <algorithm>

#include "frame/error.h"
#include "platform/platform.h"
#include "sound/sound_manager.h"
#include "sound/streamed_wav.h"

CSndStream::CSndStream(CWindow* window) : window_(window) {}

CSndStream::CSndStream(CWindow* window, const CXString& fileName) : CSndStream(window) { Open(fileName); }

CSndStream::~CSndStream() { Close(); }

bool CSndStream::Open(const CXString& fileName) {
    Close();
    setErrorCode(0);
    file_ = std::make_unique<CStreamedWAV>(window_, fileName);
    if (file_->isOpen()) {
        bufferSize_ = file_->GetBufferSize();
        buffer_ = platform::current().audio.createBuffer(static_cast<std::size_t>(bufferSize_), file_->format());
    }
    if (!buffer_) {
        const bool isDeaf = file_->isOpen() && !platform::current().audio.isPresent();
        setErrorCode(isDeaf ? kErrorSound : file_->LastError());
        file_.reset();
        return false;
    }
    SetFoundEnd(false);
    SetDonePlaying(false);
    reachedEnd_ = false;
    SetBytesRemaining(0);
    fill();
    buffer_->setVolume(volume_);
    buffer_->setPan(pan_);
    buffer_->setFrequency(frequency_);
    buffer_->setPosition(0);
    opened_ = true;
    return true;
}

// The whole ring, of a short file several times over.
void CSndStream::fill() {
    const auto [all, none] = buffer_->lock(0, buffer_->size());
    file_->readAround(all);
    buffer_->unlock();
    nextWriteOffset_ = 0;
    progress_ = 0;
}

void CSndStream::Play(bool loop) {
    if (!buffer_) return;
    buffer_->setPosition(0);
    looped_ = loop;
    callbackLock_ = false;
    timerBlocked_ = true;
    timer_ = platform::current().audio.callEvery(kRefillPeriod, [this] { TimeFunc(); });
    buffer_->play(true);
    timerBlocked_ = false;
    started_ = true;
}

void CSndStream::stopRefilling() {
    SetDonePlaying(true);
    timer_.reset();
    callbackLock_ = false;
}

void CSndStream::Pause() {
    stopRefilling();
    if (started_ && buffer_) buffer_->stop();
}

void CSndStream::Resume() {
    if (!opened_) return;
    stopRefilling();
    SetFoundEnd(false);
    SetDonePlaying(false);
    reachedEnd_ = false;
    SetBytesRemaining(0);
    file_->seek(std::max(file_->getPosition() - 2 * bufferSize_, 0));
    fill();
    Play(false);
}

void CSndStream::Close() {
    if (!opened_) return;
    stopRefilling();
    if (started_) buffer_->stop();
    buffer_.reset();
    SWClose();
    opened_ = started_ = false;
}

int CSndStream::GetBitsPerSample() const { return file_ ? file_->format().bitsPerSample : 0; }

void CSndStream::setVolume(int volume) {
    volume_ = volume;
    if (buffer_) buffer_->setVolume(volume);
}

void CSndStream::setPan(int pan) {
    pan_ = pan;
    if (buffer_) buffer_->setPan(pan);
}

void CSndStream::setFreq(int frequency) {
    frequency_ = frequency;
    if (buffer_) buffer_->setFrequency(frequency);
}

void CSndStream::TimeFunc() {
    if (timerBlocked_ || callbackLock_.exchange(true)) return;
    refill();
    callbackLock_ = false;
}

void CSndStream::refill() {
    const platform::SoundBuffer::Cursors cursors = buffer_->cursors();
    int room = static_cast<int>(cursors.write) - nextWriteOffset_;
    if (room == 0) return;
    if (room < 0) room += bufferSize_;
    if (foundEnd_ && bytesRemaining_ == 0) {
        // The samples that were written last lie in the ring still, and would be heard once more with each round.
        reachedEnd_ = true;
        if (!donePlaying_.exchange(true)) writeSilence(0, bufferSize_);
        return;
    }
    MoveProgress(room);
    if (foundEnd_) {
        SetBytesRemaining(std::max(GetBytesRemaining() - room, 0));
        if (!writeSilence(nextWriteOffset_, room)) return;
    } else {
        const auto [first, second] =
            buffer_->lock(static_cast<std::size_t>(nextWriteOffset_), static_cast<std::size_t>(room));
        if (first.empty()) {
            platform::current().shell.debugOutput("TimeFunc() could not lock DirectSoundBuffer");
            return;
        }
        const int unplayed = (nextWriteOffset_ - static_cast<int>(cursors.play) + bufferSize_) % bufferSize_;
        readOn(first, unplayed);
        if (!second.empty()) readOn(second, unplayed);
        buffer_->unlock();
    }
    AddNextWriteOffset(room);
}

bool CSndStream::writeSilence(int offset, int size) {
    const auto [first, second] = buffer_->lock(static_cast<std::size_t>(offset), static_cast<std::size_t>(size));
    std::ranges::fill(first, file_->silence());
    std::ranges::fill(second, file_->silence());
    buffer_->unlock();
    return !first.empty();
}

// A stream that goes round is begun anew at once, wherever in the ring it is: what a short read left as it was would be
// heard as something from 1200 milliseconds ago.
void CSndStream::readOn(std::span<std::byte> region, int unplayed) {
    auto* target = reinterpret_cast<unsigned char*>(region.data());
    const int count = foundEnd_ ? 0 : SWRead(static_cast<int>(region.size()), target);
    const std::span<std::byte> rest = region.subspan(static_cast<std::size_t>(count));
    if (rest.empty()) return;
    if (looped_) {
        SWStartRead();
        file_->readAround(rest);
        loopStarted();
        return;
    }
    std::ranges::fill(rest, file_->silence());
    if (foundEnd_.exchange(true)) return;
    SetBytesRemaining(unplayed);
}

void CSndStream::SWStartRead() { file_->seek(0); }

int CSndStream::SWRead(int count, unsigned char* target) {
    return file_->read({reinterpret_cast<std::byte*>(target), static_cast<std::size_t>(count)});
}

void CSndStream::SWClose() { file_.reset(); }

void CSndStream::loopStarted() { CSoundManager::musicLooped(); }
