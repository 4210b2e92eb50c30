// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "frame/timer.h"

#include <vector>

#include "frame/unit.h"
#include "frame/window.h"
#include "platform/platform.h"

namespace {
std::uint32_t now() { return platform::current().clock.ticks(); }
}  // namespace

bool CXTimer::enabled = true;

CXTimer::~CXTimer() {
    for (CXObject* timer : timers_.elements())
        delete timer;
}

CTimerObject* CXTimer::append(int id, unsigned period) {
    auto* timer = new CTimerObject;
    timer->id = id;
    timer->period = period;
    timer->lastTime = now();
    timers_.add(timer);
    return timer;
}

void CXTimer::add(int id, unsigned period, CUnit6* unit, bool onlyActive) {
    CTimerObject* timer = append(id, period);
    timer->unit = unit;
    timer->onlyActive = onlyActive;
}

void CXTimer::add(int id, unsigned period, CWindow* window) { append(id, period)->window = window; }

void CXTimer::add(int id, unsigned period, CTimerNotificator* notificator) {
    append(id, period)->notificator = notificator;
}

CTimerObject* CXTimer::find(int id) const {
    for (CXObject* element : timers_.elements()) {
        auto* timer = static_cast<CTimerObject*>(element);
        if (timer->id == id && !timer->removed) return timer;
    }
    return nullptr;
}

void CXTimer::remove(int id) {
    CTimerObject* timer = find(id);
    if (!timer) return;
    timer->removed = true;
    if (passes_ == 0) sweep();
}

void CXTimer::sweep() {
    for (int i = timers_.size() - 1; i >= 0; --i) {
        auto* timer = static_cast<CTimerObject*>(timers_.at(i));
        if (!timer->removed) continue;
        timers_.removeAt(i);
        delete timer;
    }
}

void CXTimer::reset(int id) {
    if (CTimerObject* timer = find(id)) timer->lastTime = now();
}

int CXTimer::domodal() {
    if (!enabled) return 0;
    ++passes_;
    // New timers are added behind the others and removed ones stay listed until the end, so an index is a safe place.
    const int count = timers_.size();
    for (int i = 0; i < count; ++i) {
        auto* timer = static_cast<CTimerObject*>(timers_.at(i));
        // Both wrap with the tick count, the sum too.
        if (timer->removed || now() < timer->period + timer->lastTime) continue;
        ++timer->firings;
        const int id = timer->id;
        CUnit6* unit = timer->unit;
        if (unit && (!timer->onlyActive || (unit->isActive() && unit->wasInitiallyUpdated()))) {
            unit->onTimer(id);
        } else if (timer->window) {
            timer->window->OnTimer(id);
        } else if (timer->notificator) {
            timer->notificator->onTimer(id);
        }
        // Read again, so that the time of the handler doesn't count.
        if (!timer->removed) timer->lastTime = now();
    }
    if (--passes_ == 0) sweep();
    return 0;
}

void CXTimer::pause() {
    for (CXObject* element : timers_.elements()) {
        auto* timer = static_cast<CTimerObject*>(element);
        timer->pausedElapsed = now() - timer->lastTime;
    }
}

void CXTimer::resume() {
    for (CXObject* element : timers_.elements()) {
        auto* timer = static_cast<CTimerObject*>(element);
        timer->lastTime = now() - timer->pausedElapsed;
    }
}
