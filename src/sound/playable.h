// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xvector.h"
#include "graphics/geometry.h"
#include "storage/file_resolver.h"

class CPlayable;
class CWindow;

// Hears of the life of a playable. Each answer is passed on by CPlayable::notify.
class CPlayableObserver {
public:
    virtual ~CPlayableObserver() = default;
    virtual bool onPlayableStarted(CPlayable*) { return false; }
    virtual bool onPlayableTick(CPlayable*) { return false; }
    virtual bool onPlayableFinished(CPlayable*) { return false; }
};

// The one interface of everything that runs in time.
//
// It has no table of events, no parameters and no parent yet, and no class of the library plays yet.
class CPlayable : public CFileResolver {
public:
    explicit CPlayable(CWindow* window) : window_(window) {}

    virtual void play() = 0;
    virtual void stop(bool notify) = 0;
    virtual void pause() = 0;
    virtual void resume() = 0;
    virtual bool isPlaying() const { return (status_ & 1) != 0; }
    virtual bool isPaused() const { return (status_ & 2) != 0; }
    virtual void seek(int position) = 0;  // 0 or more; -3: a step back, -4: a step forward
    virtual int next();                   // a step forward; the position then
    virtual int getFPS() const { return 10; }
    virtual bool isVisible() const { return visible_; }
    virtual void setVisibility(bool visible) { visible_ = visible; }
    virtual void show() { setVisibility(true); }
    virtual void hide() { setVisibility(false); }

    // Calls the observers, 1: started, 2: a step, 3: finished; the last one's answer, true when there is none.
    virtual bool notify(int kind);
    void addNotifier(CPlayableObserver* observer);  // unless it is listed; not owned
    void removeNotifier(CPlayableObserver* observer) { notifiers_.remove(observer); }

protected:
    CWindow* window_;
    int status_ = 0;  // bit 0: playing, bit 1: paused
    int position_ = -1;

private:
    bool visible_ = true;
    CXArray notifiers_;
};
