// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "sound/playable.h"

// A link to a playable of somebody else's: null once that one is gone.
template <class T>
class PlayableLink {
public:
    PlayableLink() = default;
    PlayableLink(T* playable) : playable_(playable) {  // NOLINT(google-explicit-constructor): it stands for a pointer
        if (playable) life_ = playable->life();
    }

    T* get() const { return life_.expired() ? nullptr : playable_; }

private:
    T* playable_ = nullptr;
    std::weak_ptr<const CPlayable*> life_;
};

// What a sequence file makes, sounds excepted, which are the cache's. It plays things that others own and that may go
// whenever a script runs, so it holds them by links and looks again after each call that can reach a script.
class SequenceElement : public CPlayable, public CPlayableObserver {
public:
    using CPlayable::CPlayable;

    // Lets go of all that it plays and hears. An operation under way, and every later one, does nothing more.
    virtual void leave() = 0;
};
