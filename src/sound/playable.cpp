// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/playable.h"

#include <vector>

int CPlayable::next() {
    seek(-4);
    return position_;
}

bool CPlayable::notify(int kind) {
    // Observers may change the list from inside a call, so a copy is walked, and who has left it is passed over.
    const std::span<void* const> listed = notifiers_.elements();
    const std::vector<void*> observers(listed.begin(), listed.end());
    bool answer = true;
    for (void* entry : observers) {
        if (!notifiers_.contains(entry)) continue;
        auto* observer = static_cast<CPlayableObserver*>(entry);
        if (kind == 1) answer = observer->onPlayableStarted(this);
        if (kind == 2) answer = observer->onPlayableTick(this);
        if (kind == 3) answer = observer->onPlayableFinished(this);
    }
    return answer;
}

void CPlayable::addNotifier(CPlayableObserver* observer) {
    if (!notifiers_.contains(observer)) notifiers_.add(observer);
}
