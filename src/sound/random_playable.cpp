// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/random_playable.h"

CRandomPlayable::CRandomPlayable(CWindow*, CUnit6*) {}

void CRandomPlayable::add(CPlayable* playable, double seconds, int maxRuns, const CXString& event) {
    entries_.push_back({playable, seconds, maxRuns, event});
}

void CRandomPlayable::remove(const CPlayable* playable) {
    std::erase_if(entries_, [=](const Entry& entry) { return entry.playable == playable; });
}

void CRandomPlayable::addNotifier(CRandomPlayableNotifier* notifier) { notifiers_.push_back(notifier); }

void CRandomPlayable::removeNotifier(CRandomPlayableNotifier* notifier) { std::erase(notifiers_, notifier); }
