// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/animation_manager.h"

#include "platform/platform.h"
#include "sound/playable.h"

void CAnimationManager::add(CPlayable* playable, CRefreshScreen*) { entries_.push_back({playable, false, 0}); }

void CAnimationManager::remove(const CPlayable* playable) {
    for (Entry& entry : entries_) {
        if (entry.playable == playable) {
            entry.playable = nullptr;
            break;
        }
    }
    if (walks_ == 0) sweep();
}

void CAnimationManager::sweep() {
    std::erase_if(entries_, [](const Entry& entry) { return !entry.playable; });
}

void CAnimationManager::domodal() {
    const std::uint32_t now = platform::current().clock.ticks();
    // All are chosen before the first one steps, so that none sees another half-way.
    for (Entry& entry : entries_) {
        if (!entry.playable || !entry.playable->isPlaying()) continue;
        const int rate = entry.playable->getFPS();
        if (rate <= 0 || static_cast<std::uint32_t>(1000 / rate) > now - entry.lastStep) continue;
        entry.lastStep = platform::current().clock.ticks();
        entry.due = true;
    }
    ++walks_;
    // By index: a step may add entries, which wait for the next frame, and mark others as removed.
    const std::size_t count = entries_.size();
    for (std::size_t i = 0; i < count; ++i) {
        const bool due = entries_[i].due;
        entries_[i].due = false;
        if (due && entries_[i].playable) entries_[i].playable->next();
    }
    if (--walks_ == 0) sweep();
}

void CAnimationManager::pause() {
    ++walks_;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        CPlayable* playable = entries_[i].playable;
        if (playable && playable->isPlaying()) playable->pause();
    }
    if (--walks_ == 0) sweep();
}

void CAnimationManager::resume() {
    ++walks_;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        CPlayable* playable = entries_[i].playable;
        if (playable && playable->isPaused()) playable->resume();
    }
    if (--walks_ == 0) sweep();
}
