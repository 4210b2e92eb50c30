// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/timer.h"

#include <algorithm>
#include <array>

#include "definition/element.h"
#include "frame/window.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "storage/archive.h"
#include "structure/scene.h"

namespace {

constexpr std::array<std::string_view, 4> kSignals = {"ONINIT", "ONDONE", "ONSIGNAL", "ONTICK"};
constexpr int kOnTick = 3;

constexpr MethodRow kMethods[] = {
    {1, "ENABLE",    bind<&CMC_Timer::enable>   },
    {2, "DISABLE",   bind<&CMC_Timer::disable>  },
    {3, "PAUSE",     bind<&CMC_Timer::pause>    },
    {4, "RESUME",    bind<&CMC_Timer::resume>   },
    {5, "GETTICKS",  bind<&CMC_Timer::ticks>    },
    {6, "RESET",     bind<&CMC_Timer::reset>    },
    {7, "SET",       bind<&CMC_Timer::set>      },
    {8, "SETELAPSE", bind<&CMC_Timer::setElapse>},
};
static_assert(isMethodTable(kMethods));

CXTimer* timersOf(CMC_Scene* scene) {
    CWindow* window = scene ? scene->getWindow() : nullptr;
    return window ? window->GetTimerInterface() : nullptr;
}

}  // namespace

CMC_Timer::CMC_Timer(CMC_Scene* scene) : CMC_Object("temp", kType), timers_(timersOf(scene)) { setScene(scene); }

CMC_Timer::CMC_Timer(CMC_Scene* scene, CMElement* element)
    : CMC_Object(scene, element, kType),
      timers_(timersOf(scene)),
      limit_(element->getPropertyIntValue("TICKS")),
      elapse_(element->getPropertyValue("ELAPSE")) {
    initializeBehaviours(scene, element);
    start();
}

CMC_Timer::~CMC_Timer() {
    if (timers_) timers_->remove(objectId());
}

void CMC_Timer::start() {
    if (timers_ && elapse_.IsString())
        timers_->add(objectId(), static_cast<unsigned>(std::max(0, CXString::toNumber(elapse_))), this);
}

void CMC_Timer::retire() {
    CMC_Object::retire();
    if (timers_) timers_->remove(objectId());
    timers_ = nullptr;
}

std::span<const std::string_view> CMC_Timer::getBehavioursList() const { return kSignals; }

void CMC_Timer::onTimer(int) {
    if (!enabled_) return;
    ticks_ = CMC_Integer::compute(ticks_, 1, Operation::add);  // a script may have set the last number there is
    if (limit_ > 0 && ticks_ == limit_) enabled_ = false;      // this tick is still heard
    fire(kOnTick, CXString::toString(ticks_));
}

void CMC_Timer::enable() {
    ticks_ = 0;
    enabled_ = true;
    if (timers_) timers_->reset(objectId());
}

void CMC_Timer::disable() { enabled_ = false; }

void CMC_Timer::pause() {
    enabled_ = false;
    if (timers_) timers_->pause();
}

void CMC_Timer::resume() {
    enabled_ = true;
    if (timers_) timers_->resume();
}

void CMC_Timer::reset() { set(0); }

void CMC_Timer::set(int ticks) {
    if (timers_) timers_->reset(objectId());
    ticks_ = ticks;
}

void CMC_Timer::setElapse(int milliseconds) {
    CTimerObject* timer = timers_ ? timers_->find(objectId()) : nullptr;
    if (timer) timer->period = static_cast<unsigned>(std::max(0, milliseconds));
}

void CMC_Timer::serialize(CXArchive* archive) {
    CMC_Object::serialize(archive);
    if (archive->isStoring()) {
        *archive << elapse_ << limit_;
    } else {
        *archive >> elapse_ >> limit_;
        start();
    }
}

void CMC_Timer_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
