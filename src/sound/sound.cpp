// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/sound.h"

#include <algorithm>
#include <utility>

#include "definition/element.h"
#include "frame/error.h"
#include "frame/window.h"
#include "platform/platform.h"
#include "sound/sound_manager.h"
#include "sound/wave_file.h"
#include "storage/big_file.h"
#include "storage/file.h"

namespace {

constexpr int kPlaying = 1, kPaused = 2;  // status
constexpr int kTellStarted = 1, kTellFinished = 3;

}  // namespace

CSound4::CSound4(CWindow* window) : CPlayable(window), window_(window) {
    type_ = kType;
    CSoundManager::add(this, false);
}

CSound4::CSound4(CWindow* window, const CXString& fileName, bool preload, bool flushAfterPlayed) : CSound4(window) {
    flushAfterPlayed_ = flushAfterPlayed;
    CreatePrimarySoundBuffer(window);
    setFilename(fileName);
    if (preload) load();
}

CSound4::CSound4(CWindow* window, CMElement* element) : CSound4(window) {
    const CXString name = element->getPropertyValue("FILENAME");
    setFilename(window ? window->GetSoundFXFullPath(name) : name);
    loop_ = element->getPropertyBoolValue("LOOP");
    flushAfterPlayed_ = element->getPropertyBoolValue("FLUSHAFTERPLAYED");
    CreatePrimarySoundBuffer(window);
    if (element->getPropertyBoolValue("PRELOAD") && name.IsString()) load();
}

CSound4::~CSound4() { CSoundManager::remove(this); }

int CSound4::CreateDirectSoundInterface(CWindow*) { return platform::current().audio.isPresent() ? 0 : kErrorSound; }

bool CSound4::load() {
    Flush();
    if (!getFileName().IsString()) return false;
    CFile file;
    if (file.Open(window_, getFileName(), CFile::kReadBinary) == 0) return load(&file);
    CBigFile* archive = window_ ? window_->Resource() : nullptr;
    return archive && archive->Seek(getFileName()) != -1 && load(archive->GetFile());
}

bool CSound4::Load(const CXString& fileName) {
    setFilename(fileName);
    return load();
}

bool CSound4::load(CFile* file) {
    Flush();
    const auto head = readWaveHead(*file, file->left());
    if (!head || head->formatTag != WaveHead::kPcm) return false;
    const int blockAlign = std::max(head->format.blockAlign(), 1);
    dataLength_ = head->dataLength / blockAlign * blockAlign;
    auto buffer = platform::current().audio.createBuffer(static_cast<std::size_t>(dataLength_), head->format);
    if (!buffer) return false;
    const auto [samples, none] = buffer->lock(0, buffer->size());
    const int count = file->Read(samples.data(), static_cast<int>(samples.size()));
    buffer->unlock();
    if (count != static_cast<int>(samples.size())) return false;
    buffer_ = std::move(buffer);
    setVolume(volume_);
    setPanning(panning_);
    if (frequency_ > 0) setFrequency(frequency_);
    return true;
}

void CSound4::Flush() { buffer_.reset(); }

void CSound4::Play() {
    if (!buffer_) load();
    if (!buffer_) return;
    buffer_->setPosition(static_cast<std::size_t>(std::exchange(startPosition_, 0)));
    CSoundManager::play(this);
    buffer_->play(false);
    status_ = kPlaying;
    notify(kTellStarted);
}

void CSound4::Play(bool loop) {
    if (!buffer_) load();
    if (!buffer_) return;
    buffer_->setPosition(0);
    buffer_->play(loop);
    notify(kTellStarted);
}

void CSound4::Stop() {
    if (buffer_) buffer_->stop();
    status_ = 0;
}

void CSound4::stop(bool notify) {
    notifyAtEnd_ = notify;
    Stop();
}

void CSound4::pause() {
    if (status_ != kPlaying) return;
    startPosition_ = buffer_ ? static_cast<int>(buffer_->cursors().play) : 0;
    Stop();
    status_ = kPaused;
}

void CSound4::resume() {
    if (status_ == kPaused) Play();
}

void CSound4::SetPosition(int position) {
    if (buffer_) buffer_->setPosition(static_cast<std::size_t>(std::max(position, 0)));
}

bool CSound4::IsPlaying() const { return buffer_ && buffer_->isPlaying(); }

void CSound4::setVolume(int volume) {
    CPlayable::setVolume(volume);
    if (buffer_) buffer_->setVolume(volume);
}

void CSound4::setPanning(int panning) {
    CPlayable::setPanning(panning);
    if (buffer_) buffer_->setPan(panning);
}

void CSound4::setFrequency(int frequency) {
    CPlayable::setFrequency(frequency);
    if (buffer_) buffer_->setFrequency(frequency);
}

// Who hears of the end may play the sound again, or give it up.
void CSound4::OnWAVFinished() {
    const std::weak_ptr<const CPlayable*> alive = life();
    status_ = 0;
    if (std::exchange(notifyAtEnd_, true)) notify(kTellFinished);
    if (!alive.expired() && flushAfterPlayed_ && !IsPlaying() && !isPaused()) Flush();
}
