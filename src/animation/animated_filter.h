// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "animation/filter.h"
#include "frame/timer.h"

class CAnimatedFilter;
class CMC_Scene;

// Hears of the life of an effect on one object.
class CFilterListener {
public:
    virtual ~CFilterListener() = default;
    virtual void onStarted(CFilterEntry*, CAnimatedFilter*) {}
    virtual void onFinished(CFilterEntry*, CAnimatedFilter*) {}
    virtual void onTick(CFilterEntry*, CAnimatedFilter*) {}
};

struct AnimatedState : CFilterState {
    std::uint64_t counter = 0;  // of the rounds that it was active in
};

// A running effect: with every round of the window's timers it takes each active object a step further, until that
// ends or is stopped.
//
// A listener may do anything to objects and filters; both stay in memory until the round has ended.
class CAnimatedFilter : public CFilterBase, public CTimerNotificator {
public:
    CAnimatedFilter(CWindow* window, std::unique_ptr<CFilterProperties> properties);
    ~CAnimatedFilter() override;

    void addListener(CFilterListener* listener) { listeners_.push_back(listener); }  // not owned

    void link(CGraphicsObject* object, CMC_Object* scriptObject) override;
    virtual bool isActive(CGraphicsObject* object) const;  // false for an object that isn't linked
    virtual void start(CGraphicsObject* object);           // unless it runs
    virtual void stop(CGraphicsObject* object);
    void release() override;
    void onTimer(int id) override;

protected:
    virtual void activate(CFilterEntry& entry) = 0;
    virtual bool step(CFilterEntry& entry) = 0;  // true: this was the last one

private:
    using Telling = void (CFilterListener::*)(CFilterEntry*, CAnimatedFilter*);
    void tell(CFilterEntry& entry, Telling what);
    void finish(CFilterEntry& entry);
    void round(CFilterEntry& entry);

    std::vector<CFilterListener*> listeners_;
};

// The effect that an ACTION names; null for an unknown one. The scene is where PATH looks for its path.
std::unique_ptr<CAnimatedFilter> makeAnimatedFilter(const CXString& action, CWindow* window, CMC_Scene* scene);
