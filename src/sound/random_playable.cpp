// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/random_playable.h"

#include <algorithm>
#include <utility>

#include "foundation/random.h"
#include "frame/window.h"

namespace {

constexpr unsigned kPeriod = 1000;
constexpr int kTries = 10;  // to find an event that plays
constexpr double kLongestWait = 1e9;

}  // namespace

CRandomPlayableEntry::CRandomPlayableEntry(CRandomPlayable* owner, CPlayable* playable, double seconds, int maxRuns,
                                           CXString event)
    : owner_(owner),
      playable_(playable),
      life_(playable->life()),
      seconds_(seconds),
      maxRuns_(maxRuns),
      event_(std::move(event)) {
    playable->addNotifier(this);
    initialize();
}

CRandomPlayableEntry::~CRandomPlayableEntry() {
    if (!life_.expired()) playable_->removeNotifier(this);
}

void CRandomPlayableEntry::initialize() {
    // The comparison is false for what isn't a number.
    const int wait = seconds_ > 0 ? static_cast<int>(std::min(seconds_, kLongestWait)) : 0;
    countdown_ = CXRandom::random(wait) + 1;
    wantedRuns_ = CXRandom::random(std::max(maxRuns_, 1) - 1);
    runs_ = 0;
}

bool CRandomPlayableEntry::isPlaying() const {
    const CPlayable* playable = getPlayable();
    return playable && playable->isPlaying();
}

void CRandomPlayableEntry::tick() {
    if (!getPlayable() || isPlaying() || --countdown_ != 0) return;
    ++runs_;
    if (!owner_->notify(this, true) || removed || !getPlayable()) return;
    if (event_.IsString()) {
        playable_->play(event_);
        return;
    }
    for (int i = 0; i < kTries && getPlayable() && !playable_->isPlaying(); ++i)
        playable_->playRandomEvent();
}

bool CRandomPlayableEntry::onPlayableFinished(CPlayable* playable) {
    if (playable != playable_ || removed) return false;
    ++owner_->calls_;
    if (owner_->notify(this, false) || runs_ < wantedRuns_) {
        countdown_ = 1;
    } else {
        initialize();
    }
    --owner_->calls_;
    return false;
}

CRandomPlayable::CRandomPlayable(CWindow* window, CUnit6*) : timer_(window->GetTimerInterface()) {
    timer_->add(objectId(), kPeriod, this);
}

CRandomPlayable::~CRandomPlayable() { timer_->remove(objectId()); }

void CRandomPlayable::add(CPlayable* playable, double seconds, int maxRuns, const CXString& event) {
    entries_.push_back(std::make_unique<CRandomPlayableEntry>(this, playable, seconds, maxRuns, event));
}

void CRandomPlayable::remove(const CPlayable* playable) {
    for (const auto& entry : entries_) {
        if (entry->getPlayable() == playable) entry->removed = true;
    }
    sweep();
}

void CRandomPlayable::sweep() {
    if (calls_ > 0) return;
    std::erase_if(entries_, [](const auto& entry) { return entry->removed || !entry->getPlayable(); });
}

void CRandomPlayable::addNotifier(CRandomPlayableNotifier* notifier) { notifiers_.push_back(notifier); }

void CRandomPlayable::removeNotifier(CRandomPlayableNotifier* notifier) { std::erase(notifiers_, notifier); }

bool CRandomPlayable::notify(CRandomPlayableEntry* entry, bool started) {
    bool answer = false;
    const std::vector<CRandomPlayableNotifier*> notifiers = notifiers_;
    for (CRandomPlayableNotifier* notifier : notifiers) {
        if (std::find(notifiers_.begin(), notifiers_.end(), notifier) == notifiers_.end()) continue;
        CPlayable* playable = entry->getPlayable();
        answer = started ? notifier->onRandomPlayableStarted(playable, entry->getSeqTime())
                         : notifier->onRandomPlayableFinished(playable, entry->getSeqTime());
    }
    return answer;
}

void CRandomPlayable::onTimer(int) {
    ++calls_;
    // By index: what a call adds waits behind the others.
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        if (!entries_[i]->removed) entries_[i]->tick();
    }
    --calls_;
    sweep();
}
