// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/animo_event.h"

#include "animation/animo.h"
#include "animation/animo_object.h"
#include "script/lifetime.h"

namespace {

constexpr int kTellStarted = 1, kTellFinished = 3;

}  // namespace

CAnimoEventPlayable::CAnimoEventPlayable(CWindow* window, CAnimo* animation, int event)
    : SequenceElement(window), event_(event), animation_(animation) {
    type_ = kType;
}

CAnimoEventPlayable::CAnimoEventPlayable(CWindow* window, CMC_Animo* object, int event)
    : CAnimoEventPlayable(window, object->getAnimo(), event) {
    object_ = object;
    object->addSeq(this);
}

CAnimoEventPlayable::~CAnimoEventPlayable() { CAnimoEventPlayable::leave(); }

void CAnimoEventPlayable::leave() {
    if (CMC_Animo* object = object_.get()) object->removeSeq(this);
    object_ = nullptr;
    CAnimoEventPlayable::substAnimation(nullptr);
}

void CAnimoEventPlayable::substAnimation(CAnimo* animation) {
    if (CAnimo* former = animation_.get()) former->removeNotifier(this);
    animation_ = animation;
}

void CAnimoEventPlayable::play() {
    const ScriptScope scope;
    notify(kTellStarted);
    if (CAnimo* animation = animation_.get()) {
        animation->setCurrentEvent(event_);
        animation->play();
    }
    if (CAnimo* animation = animation_.get()) animation->addNotifier(this);
}

void CAnimoEventPlayable::stop(bool tell) {
    const ScriptScope scope;
    status_ &= ~1;
    if (CAnimo* animation = animation_.get()) animation->stop(tell);
    if (CAnimo* animation = animation_.get()) animation->removeNotifier(this);
}

void CAnimoEventPlayable::pause() {
    if (CAnimo* animation = animation_.get()) animation->pause();
}

void CAnimoEventPlayable::resume() {
    if (CAnimo* animation = animation_.get()) animation->resume();
}

bool CAnimoEventPlayable::isPlaying() const {
    const CAnimo* animation = animation_.get();
    return animation && animation->isPlaying();
}

bool CAnimoEventPlayable::isVisible() const {
    const CAnimo* animation = animation_.get();
    return animation ? animation->isVisible() : CPlayable::isVisible();
}

void CAnimoEventPlayable::setVisibility(bool visible) {
    CPlayable::setVisibility(visible);
    if (CAnimo* animation = animation_.get()) animation->setVisibility(visible);
}

bool CAnimoEventPlayable::onPlayableFinished(CPlayable* playable) {
    const ScriptScope scope;
    playable->removeNotifier(this);
    notify(kTellFinished);
    return false;
}
