// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "frame/timer.h"
#include "sound/playable.h"

class CRandomPlayable;
class CUnit6;

// Hears when a random playable begins and ends; `run` counts its runs. False refuses the start.
class CRandomPlayableNotifier {
public:
    virtual ~CRandomPlayableNotifier() = default;
    virtual bool onRandomPlayableStarted(CPlayable*, int /*run*/) { return false; }
    virtual bool onRandomPlayableFinished(CPlayable*, int /*run*/) { return false; }
};

// A playable that runs a few times after a random wait, and then waits anew.
class CRandomPlayableEntry : public CXObject, public CPlayableObserver {
public:
    CRandomPlayableEntry(CRandomPlayable* owner, CPlayable* playable, double seconds, int maxRuns, CXString event);
    ~CRandomPlayableEntry() override;
    CRandomPlayableEntry(const CRandomPlayableEntry&) = delete;
    CRandomPlayableEntry& operator=(const CRandomPlayableEntry&) = delete;

    virtual bool isPlaying() const;
    virtual CPlayable* getPlayable() const { return life_.expired() ? nullptr : playable_; }  // null once it is gone
    virtual int getSeqTime() const { return runs_; }
    virtual void tick();

    bool onPlayableFinished(CPlayable* playable) override;

    bool removed = false;  // out of service; freed once no call is under way

private:
    void initialize();

    CRandomPlayable* owner_;
    CPlayable* playable_;
    std::weak_ptr<const CPlayable*> life_;
    double seconds_;
    int maxRuns_;
    int countdown_ = 0;  // in seconds
    int wantedRuns_ = 0;
    int runs_ = 0;
    CXString event_;
};

// A unit's idle activity: plays its entries at random times. What it plays may go at any time; its entry plays no more.
class CRandomPlayable : public CXObject, public CTimerNotificator {
public:
    CRandomPlayable(CWindow* window, CUnit6* unit);
    ~CRandomPlayable() override;
    CRandomPlayable(const CRandomPlayable&) = delete;
    CRandomPlayable& operator=(const CRandomPlayable&) = delete;

    virtual void add(CPlayable* playable, double seconds, int maxRuns, const CXString& event);
    virtual void remove(const CPlayable* playable);
    void addNotifier(CRandomPlayableNotifier* notifier);  // not owned
    void removeNotifier(CRandomPlayableNotifier* notifier);

    // Tells all notifiers; the last one's answer, false when there is none.
    bool notify(CRandomPlayableEntry* entry, bool started);
    void onTimer(int id) override;  // once a second

private:
    friend class CRandomPlayableEntry;
    void sweep();

    CXTimer* timer_;
    std::vector<std::unique_ptr<CRandomPlayableEntry>> entries_;
    std::vector<CRandomPlayableNotifier*> notifiers_;
    int calls_ = 0;  // while above 0 entries are only marked as removed
};
