// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "foundation/xobject.h"

class CPlayable;
class CRefreshScreen;

// Steps every playing entry by its own rate: at most one step a frame, and lost time isn't made up. The period counts
// from the entry's latest step, however long ago that was, so that what is played after a rest steps in the same frame.
class CAnimationManager : public CXObject {
public:
    void add(CPlayable* playable, CRefreshScreen* screen);  // neither is owned
    void remove(const CPlayable* playable);                 // also from inside a step
    void domodal();
    virtual void pause();   // all that play
    virtual void resume();  // all that are paused

private:
    struct Entry {
        CPlayable* playable;  // null once removed
        bool due;
        std::uint32_t lastStep;
    };
    void sweep();

    std::vector<Entry> entries_;
    int walks_ = 0;  // while above 0 entries are only marked as removed
};
