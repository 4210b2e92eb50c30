// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "frame/timer.h"
#include "script/object.h"
#include "script/runner.h"

// TIMER, the script object that fires ONTICK at a period.
//
// It rides on the window's one CXTimer, which polls once a frame: at most one tick a frame, and a late frame is not
// made up for. The count is kept here, not in CXTimer, so that DISABLE can keep it and SET can move it.
class CMC_Timer : public CMC_Object, public CTimerNotificator {
public:
    static constexpr int kType = 2007;

    explicit CMC_Timer(CMC_Scene* scene);  // "temp"; it never ticks
    // Reads ELAPSE, in milliseconds, and TICKS. Without ELAPSE it is registered nowhere and never ticks.
    CMC_Timer(CMC_Scene* scene, CMElement* element);
    ~CMC_Timer() override;

    // Called by CXTimer at the end of each period. A handler may leave the scene, and this object with it.
    void onTimer(int id) override;

    void enable();   // counts from 0 again, also after the limit
    void disable();  // the period goes on, unheard
    void pause();    // with all timers of the window
    void resume();
    void reset();
    void set(int ticks);
    void setElapse(int milliseconds);
    int ticks() const { return ticks_; }

    std::span<const std::string_view> getBehavioursList() const override;
    void serialize(CXArchive* archive) override;
    void retire() override;

private:
    void start();

    CXTimer* timers_ = nullptr;  // the window's; outlives every scene
    bool enabled_ = true;
    int ticks_ = 0;
    int limit_ = 0;  // stops by itself at this tick; 0 or less: never
    CXString elapse_;
};

class CMC_Timer_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
