// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "input/graphic_control.h"

#include <algorithm>

#include "frame/unit.h"
#include "frame/window.h"
#include "graphics/refresh_screen.h"
#include "script/lifetime.h"
#include "sound/sound.h"

namespace {
constexpr auto kEvents = static_cast<_event>(kMouseMove | kLeftDown);
}

SoundLink& SoundLink::operator=(CSound4* sound) {
    sound_ = sound;
    life_.reset();
    if (sound) life_ = sound->life();
    return *this;
}

void SoundLink::play() const {
    if (CSound4* sound = get()) sound->Play();
}

void SoundLink::stopIfPlaying() const {
    if (CSound4* sound = get(); sound && sound->IsPlaying()) sound->Stop();
}

CControlHotSpot::CControlHotSpot(CWindow* window, CHotSpot* parent, CGraphicControl& control, int flags)
    : CHotSpot(window, parent, kEvents, flags), control_(control) {}

int CControlHotSpot::getPriority() const {
    const CGraphicsObject* picture = control_.picture();
    const CRefreshScreen* screen = control_.screen();
    return picture && screen ? screen->GetPriority(picture) : CHotSpot::getPriority();
}

// Each of these may run script that removes the control: the scope keeps it until the event is over.

int CControlHotSpot::OnFocusOn(CXPoint point, int flags, void* parent) {
    const ScriptScope scope;
    return control_.focusOn(point, flags, parent);
}

int CControlHotSpot::OnMouseMove(CXPoint point, int, void*) {
    const ScriptScope scope;
    control_.onMouseMove(point);
    return 0;
}

int CControlHotSpot::OnFocusOff(CXPoint point, int, void*) {
    const ScriptScope scope;
    if (!control_.isPassive()) {
        control_.focusOff();
        over_ = false;
    }
    control_.onFocusOff(point);
    return 0;
}

int CControlHotSpot::OnLButtonDown(CXPoint point, int flags, void* parent) {
    if (!control_.IsEnabled() || control_.isDragged()) return 0;
    const ScriptScope scope;
    return control_.pressed(point, flags, parent);
}

int CControlHotSpot::OnLButtonUp(CXPoint point, int, void*) {
    if (control_.isPassive()) return 0;
    const ScriptScope scope;
    control_.click_ = point;
    return control_.released(point);
}

int CControlHotSpot::OnRButtonDown(CXPoint point, int, void*) {
    const ScriptScope scope;
    if (control_.IsEnabled()) control_.onRClick(point);
    return 0;
}

int CControlHotSpot::OnLButtonDblClk(CXPoint, int, void*) {
    const ScriptScope scope;
    return control_.IsEnabled() ? control_.pressedTwice() : 0;
}

CGraphicControl::CGraphicControl(CWindow* window, const CXRect& rect, int id, CHotSpot* parent, int flags)
    : CControl(window), rect_(rect), hotSpot_(window, parent, *this, flags) {
    CGraphicControl::SetID(id);
    SetFlags(flags);
    hotSpot_.SetActiveRect(rect);
}

CGraphicControl::~CGraphicControl() { retire(); }

bool CGraphicControl::retire() {
    if (retired_) return false;
    retired_ = true;
    CUnit6* unit = getUnit();
    const bool wasDragged = unit && unit->forgetControl(this);
    CHotSpot::remove(&hotSpot_);
    CControl::Enable(false);
    hotSpot_.setUnit(nullptr);
    return wasDragged;
}

void CGraphicControl::SetID(int id) {
    CControl::SetID(id);
    hotSpot_.SetID(id);
}

void CGraphicControl::SetActiveRect(const CXRect& rect) {
    rect_ = rect;
    hotSpot_.SetActiveRect(rect);
}

void CGraphicControl::shapeLike(CGraphicsObject* graphic) {
    shape_ = graphic;
    hotSpot_.Set(graphic, kEvents, hotSpot_.GetFlags());
}

void CGraphicControl::Accent(CGraphicsObject* graphic) {
    shapeLike(graphic);
    accent_ = graphic;
    dragging_ = graphic;
}

bool CGraphicControl::isDragged() const {
    const CUnit6* unit = getUnit();
    return unit && unit->isDragging();
}

bool CGraphicControl::isPassive() const {
    const CUnit6* unit = getUnit();
    return !IsEnabled() || (unit && (!unit->isActive() || unit->isDragging()));
}

CRefreshScreen* CGraphicControl::screen() const { return window_ ? window_->GetRefreshScreenInterface() : nullptr; }

void CGraphicControl::putHidden(CGraphicsObject* graphic, int priority) {
    if (!graphic) return;
    if (CRefreshScreen* canvas = screen()) canvas->put(graphic, priority);
    graphic->Visible(false);
}

bool CGraphicControl::startDragging(CGraphicsObject* graphic, CXPoint point) {
    CUnit6* unit = getUnit();
    if (!draggingEnabled_ || !unit || !graphic) return false;
    Enable(false);
    graphic->Visible(true);
    if (unit->onStartDragging(graphic, point, static_cast<CControl*>(this))) return true;
    Enable(true);
    return false;
}

void CGraphicControl::show(CGraphicsObject* graphic, bool visible) {
    if (graphic) graphic->Visible(visible);
}

// One graphic may stand for several states.
void CGraphicControl::moveAll(std::initializer_list<CGraphicsObject*> graphics, CXPoint by) {
    for (auto it = graphics.begin(); it != graphics.end(); ++it) {
        if (*it && std::find(graphics.begin(), it, *it) == it) (*it)->Move(by);
    }
}

void CGraphicControl::copySettings(const CGraphicControl& other) {
    CControl::Enable(other.IsEnabled());
    hotSpot_.Enable(other.IsEnabled());
    hotSpot_.setUnit(other.getUnit());
    hotSpot_.setPriority(other.hotSpot_.CHotSpot::getPriority());
    shapeLike(other.shape_);
    accent_ = other.accent_;
    dragging_ = other.dragging_;
    click_ = other.click_;
    draggingEnabled_ = other.draggingEnabled_;
    frozen_ = other.frozen_;
    soundLocked_ = other.soundLocked_;
}
