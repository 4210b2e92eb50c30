// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/playable.h"

#include <algorithm>

namespace {

constexpr int kStepBack = -3;
constexpr int kStepForward = -4;

bool isListed(const std::vector<CPlayableObserver*>& observers, const CPlayableObserver* observer) {
    return std::find(observers.begin(), observers.end(), observer) != observers.end();
}

}  // namespace

void CPlayable::setNotifier(CPlayableObserver* observer) {
    notifiers_.clear();
    addNotifier(observer);
}

CXString CPlayable::getParameter(const CXString& key) const {
    for (const Event& event : events_) {
        if (event.key.equalsIgnoreCase(key)) return event.value;
    }
    return {};
}

void CPlayable::play(const CXString& event) {
    lastEvent_ = event;
    status_ = 1;
    parameter_ = getParameter(event);
    play();
}

int CPlayable::previous() {
    seek(kStepBack);
    return step_;
}

int CPlayable::next() {
    seek(kStepForward);
    return step_;
}

bool CPlayable::notify(int kind) {
    std::vector<CPlayableObserver*> observers = notifiers_;
    if (genericNotifier_) observers.push_back(genericNotifier_);
    const std::weak_ptr<const CPlayable*> alive = life_;
    bool answer = true;
    for (CPlayableObserver* observer : observers) {
        if (observer != genericNotifier_ && !isListed(notifiers_, observer)) continue;
        if (kind == 1) answer = observer->onPlayableStarted(this);
        if (kind == 2) answer = observer->onPlayableTick(this);
        if (kind == 3) answer = observer->onPlayableFinished(this);
        if (alive.expired()) break;
    }
    return answer;
}

void CPlayable::addEvent(const CXString& key, const CXString& value) { events_.push_back({key, value}); }

void CPlayable::setParameter(const CXString& key, const CXString& value) {
    const auto it = std::find_if(events_.begin(), events_.end(), [&](const Event& event) { return event.key == key; });
    if (it != events_.end()) it->value = value;
}

void CPlayable::addNotifier(CPlayableObserver* observer) {
    if (!isListed(notifiers_, observer)) notifiers_.push_back(observer);
}

void CPlayable::removeNotifier(CPlayableObserver* observer) { std::erase(notifiers_, observer); }
