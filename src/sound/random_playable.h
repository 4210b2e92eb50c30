// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <vector>

#include "foundation/xobject.h"

class CPlayable;
class CUnit6;
class CWindow;

// Hears when a random playable begins and ends; `run` counts its runs. False refuses the start.
class CRandomPlayableNotifier {
public:
    virtual ~CRandomPlayableNotifier() = default;
    virtual bool onRandomPlayableStarted(CPlayable*, int /*run*/) { return false; }
    virtual bool onRandomPlayableFinished(CPlayable*, int /*run*/) { return false; }
};

// A unit's idle activity: plays its entries at random times. It keeps the entries and starts none yet: nothing that
// could be played exists.
class CRandomPlayable : public CXObject {
public:
    CRandomPlayable(CWindow* window, CUnit6* unit);

    virtual void add(CPlayable* playable, double seconds, int maxRuns, const CXString& event);
    virtual void remove(const CPlayable* playable);
    void addNotifier(CRandomPlayableNotifier* notifier);  // not owned
    void removeNotifier(CRandomPlayableNotifier* notifier);

private:
    struct Entry {
        CPlayable* playable;  // not owned
        double seconds;
        int maxRuns;
        CXString event;
    };
    std::vector<Entry> entries_;
    std::vector<CRandomPlayableNotifier*> notifiers_;
};
