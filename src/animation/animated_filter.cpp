// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/animated_filter.h"

#include <utility>

#include "frame/window.h"
#include "script/lifetime.h"

namespace {
constexpr unsigned kPeriod = 1;  // milliseconds: as often as timers are polled
}

CAnimatedFilter::CAnimatedFilter(CWindow* window, std::unique_ptr<CFilterProperties> properties)
    : CFilterBase(window, std::move(properties)) {
    if (window_) window_->GetTimerInterface()->add(objectId(), kPeriod, static_cast<CTimerNotificator*>(this));
}

CAnimatedFilter::~CAnimatedFilter() { CAnimatedFilter::release(); }

void CAnimatedFilter::release() {
    CFilterBase::release();
    if (window_ && window_->GetTimerInterface()) window_->GetTimerInterface()->remove(objectId());
    window_ = nullptr;
}

// An object that another script object shares is linked anew in that one's name.
void CAnimatedFilter::link(CGraphicsObject* object, CMC_Object* scriptObject) {
    CFilterEntry* entry = find(object);
    if (entry && entry->isOrphan()) drop(entry);
    CFilterBase::link(object, scriptObject);
}

bool CAnimatedFilter::isActive(CGraphicsObject* object) const {
    const CFilterEntry* entry = find(object);
    return entry && entry->active;
}

void CAnimatedFilter::tell(CFilterEntry& entry, Telling what) {
    const std::vector<CFilterListener*> listeners = listeners_;
    for (CFilterListener* listener : listeners)
        (listener->*what)(&entry, this);
}

void CAnimatedFilter::start(CGraphicsObject* object) {
    const ScriptScope scope;
    forEachEntry([&](CFilterEntry& entry) {
        if (entry.getObject() != object || entry.active || entry.starting) return;
        entry.starting = true;
        tell(entry, &CFilterListener::onStarted);
        entry.starting = false;
        if (!entry.getObject()) return;
        activate(entry);
        entry.active = true;
    });
}

void CAnimatedFilter::stop(CGraphicsObject* object) {
    const ScriptScope scope;
    forEachEntry([&](CFilterEntry& entry) {
        if (entry.getObject() == object) finish(entry);
    });
}

void CAnimatedFilter::finish(CFilterEntry& entry) {
    if (!std::exchange(entry.active, false)) return;
    tell(entry, &CFilterListener::onFinished);
}

void CAnimatedFilter::onTimer(int) {
    const ScriptScope scope;
    forEachEntry([this](CFilterEntry& entry) { round(entry); });
}

void CAnimatedFilter::round(CFilterEntry& entry) {
    if (entry.isOrphan()) {
        drop(&entry);
        return;
    }
    if (!entry.active) return;
    ++static_cast<AnimatedState&>(*entry.state).counter;
    const bool isLast = step(entry);
    // A step that moves the object may have had scripts run.
    if (!entry.active) return;
    if (isLast) {
        finish(entry);
    } else {
        tell(entry, &CFilterListener::onTick);
    }
}
