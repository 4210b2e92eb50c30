// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>

#include "foundation/xvector.h"

class CUnit6;
class CWindow;

// Receives the firings of a timer.
class CTimerNotificator {
public:
    virtual ~CTimerNotificator() = default;
    virtual void onTimer(int /*id*/) {}
};

// One timer. It has at most one receiver, and owns none.
struct CTimerObject : public CXObject {
    int id = 0;
    std::uint32_t period = 0;         // milliseconds
    std::uint64_t firings = 0;        // periods passed, whether or not anybody was told
    std::uint32_t lastTime = 0;       // tick count at which the period began
    std::uint32_t pausedElapsed = 0;  // how much of the period had passed at `pause`
    CUnit6* unit = nullptr;
    CWindow* window = nullptr;
    CTimerNotificator* notificator = nullptr;
    bool onlyActive = true;
    bool removed = false;  // during a pass: to be skipped and freed at its end
};

// The timers of a window. They are polled once a frame: a timer fires at most once a frame, and a late frame is not
// made up for.
//
// The ids of all receivers share one space and may repeat. Receivers may add and remove timers, also their own, from
// inside a call.
class CXTimer : public CXObject {
public:
    explicit CXTimer(CWindow* window) : window_(window) {}
    ~CXTimer() override;

    // A unit's timer; with `onlyActive` its firings are lost while the unit isn't active and updated.
    void add(int id, unsigned period, CUnit6* unit, bool onlyActive);
    void add(int id, unsigned period, CWindow* window);
    void add(int id, unsigned period, CTimerNotificator* notificator);
    CTimerObject* find(int id) const;  // the first of that id; null: none
    void remove(int id);               // the first of that id
    void reset(int id);                // its period starts over; no effect when there is none

    // Fires what is due, in order of adding. Timers added meanwhile wait for the next frame. Returns 0.
    int domodal();

    // Stops all timers together. Time goes on: what came due meanwhile fires once at the next frame.
    static void enable(bool on) { enabled = on; }
    static bool isEnabled() { return enabled; }

    void pause();   // notes how much of each period has passed
    void resume();  // and puts it back, as if no time had passed in between

private:
    CTimerObject* append(int id, unsigned period);
    void sweep();

    static bool enabled;

    CWindow* window_;
    CXVector timers_;  // of CTimerObject, owned
    int passes_ = 0;   // while above 0 timers are only marked as removed
};
