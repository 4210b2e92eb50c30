// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "input/switch_button.h"

#include "frame/unit.h"

namespace {
constexpr int kMovePriority = 0x43;
constexpr int kSwitchPriority = 0x66;
}  // namespace

void CSwitchButton::SetOnMove(CGraphicsObject* graphic, CSound4* sound) {
    onMove_ = graphic;
    putHidden(graphic, kMovePriority);
    moveSound_ = sound;
}

void CSwitchButton::SetOnClickA(CGraphicsObject* graphic, CSound4* sound) {
    onClickA_ = graphic;
    putHidden(graphic, kSwitchPriority);
    show(graphic, true);
    current_ = graphic;
    soundA_ = sound;
    if (rect_.IsEmpty()) Accent(graphic);
}

void CSwitchButton::SetOnClickB(CGraphicsObject* graphic, CSound4* sound) {
    onClickB_ = graphic;
    putHidden(graphic, kSwitchPriority);
    soundB_ = sound;
}

void CSwitchButton::Accent(_accent which) {
    CGraphicsObject* graphic = which == kAccentOnMove     ? onMove_.get()
                               : which == kAccentOnClickA ? onClickA_.get()
                               : which == kAccentOnClickB ? onClickB_.get()
                                                          : nullptr;
    if (!graphic) return;
    shapeLike(graphic);
    accent_ = graphic;
}

void CSwitchButton::Move(CXPoint by) {
    if (!accent_) SetActiveRect(rect_ + by);
    moveAll({onMove_, onClickA_, onClickB_}, by);
}

void CSwitchButton::Enable(bool enabled) {
    if (isRetired()) return;
    CControl::Enable(enabled);
    show(current_, enabled);
    if (!enabled) {
        frozen_ = false;
        show(onMove_, false);
    }
    hotSpot_.Enable(enabled);
}

void CSwitchButton::Freeze(bool frozen) {
    frozen_ = frozen;
    show(onMove_, frozen);
}

void CSwitchButton::Force(bool state) {
    if (frozen_ || state == state_) return;
    show(onMove_, false);
    moveSound_.stopIfPlaying();
    show(current_, false);
    state_ = state;
    current_ = state ? onClickB_.get() : onClickA_.get();
    show(current_, true);
    (state ? soundA_ : soundB_).stopIfPlaying();
    if (!soundLocked_) (state ? soundB_ : soundA_).play();
}

int CSwitchButton::focusOn(CXPoint point, int, void*) {
    if (isPassive()) return 0;
    if (const CUnit6* unit = getUnit(); unit && !unit->wasInitiallyUpdated()) return onFocusOn(point), 0;
    if (onMove_) {
        show(current_, false);
        show(onMove_, true);
    }
    if (!hotSpot_.isOver() && !soundLocked_) moveSound_.play();
    hotSpot_.setOver(true);
    onFocusOn(point);
    return 0;
}

void CSwitchButton::focusOff() {
    if (onMove_ && !frozen_) {
        show(onMove_, false);
        show(current_, true);
    }
    moveSound_.stopIfPlaying();
}

int CSwitchButton::pressed(CXPoint point, int flags, void* parent) {
    OnClick(point, flags, parent);
    return 1;
}

int CSwitchButton::OnClick(CXPoint point, int, void*) {
    const bool started = startDragging(dragging_ ? dragging_.get() : current_.get(), point);
    onClick(point);
    return started ? 1 : 0;
}

int CSwitchButton::released(CXPoint point) {
    Force(!state_);
    onRelease(point);
    onAction(point);
    return 1;
}
