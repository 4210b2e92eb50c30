// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/sound_manager.h"

#include <algorithm>
#include <utility>

#include "frame/window.h"
#include "sound/sound.h"
#include "structure/scene.h"

CSoundManager::Entry* CSoundManager::find(const CSound4* sound) {
    const auto at = std::ranges::find(entries_, sound, &Entry::sound);
    return at != entries_.end() ? &*at : nullptr;
}

void CSoundManager::add(CSound4* sound, bool owned) { entries_.push_back({sound, false, owned}); }

void CSoundManager::remove(CSound4* sound) {
    Entry* entry = find(sound);
    if (entry == nullptr) return;
    if (walks_ > 0) {
        entry->sound = nullptr;
    } else {
        entries_.erase(entries_.begin() + (entry - entries_.data()));
    }
}

void CSoundManager::play(CSound4* sound) {
    if (Entry* entry = find(sound)) entry->active = true;
}

void CSoundManager::pause() {
    ++walks_;
    for (std::size_t i = 0; i < entries_.size(); ++i)
        if (entries_[i].sound && entries_[i].sound->isPlaying()) entries_[i].sound->pause();
    sweep();
}

void CSoundManager::resume() {
    ++walks_;
    for (std::size_t i = 0; i < entries_.size(); ++i)
        if (entries_[i].sound && entries_[i].sound->isPaused()) entries_[i].sound->resume();
    sweep();
}

// By index: who hears of an end may make sounds and give others up.
void CSoundManager::domodal() {
    ++walks_;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        CSound4* sound = entries_[i].sound;
        if (sound == nullptr || !entries_[i].active || sound->isPaused() || sound->isPlaying()) continue;
        entries_[i].active = false;
        sound->OnWAVFinished();
    }
    sweep();

    for (int turns = turns_.exchange(0); turns > 0; --turns) {
        const CWindow* window = CWindow::current();
        if (CMC_Scene* scene = window ? window->getCurrentScene() : nullptr) scene->onSignal("ONMUSICLOOPED");
    }
}

void CSoundManager::sweep() {
    if (--walks_ == 0) std::erase_if(entries_, [](const Entry& entry) { return entry.sound == nullptr; });
}

void CSoundManager::Flush() {
    for (Entry& entry : entries_)
        if (entry.owned) delete std::exchange(entry.sound, nullptr);
    entries_.clear();
    turns_ = 0;
}
