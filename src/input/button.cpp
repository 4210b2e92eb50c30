// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "input/button.h"

#include "frame/unit.h"
#include "frame/window.h"
#include "graphics/refresh_screen.h"
#include "sound/sound.h"

namespace {
constexpr int kGraphicsPriority = 71;  // of those that aren't on the screen yet
}

CButton::CButton(CWindow* window, const CXRect& rect, int id, CHotSpot* parent, int flags)
    : CGraphicControl(window, rect, id, parent, flags), deleteSounds_(false) {}

CButton::CButton(CWindow* window, int id, CHotSpot* parent, int flags)
    : CGraphicControl(window, {}, id, parent, flags) {}

CButton::~CButton() {
    retire();
    setHotKey("");
    // A link to what is gone reads as null, so that one graphic in two places, or of two clones, goes once.
    for (const GraphicsLink* graphic : {&standard_, &onMove_, &onClick_})
        if (deleteGraphics_) delete graphic->get();
    for (const SoundLink* sound : {&moveSound_, &clickSound_})
        if (deleteSounds_) delete sound->get();
}

CXObject* CButton::clone() {
    auto* copy = new CButton(window_, rect_, getId(), nullptr, GetFlags());
    copy->copySettings(*this);
    copy->hotSpot_.SetParent(static_cast<CXObject*>(parent_));
    copy->parent_ = parent_;
    copy->standard_ = standard_;
    copy->onMove_ = onMove_;
    copy->onClick_ = onClick_;
    copy->moveSound_ = moveSound_;
    copy->clickSound_ = clickSound_;
    copy->pressed_ = pressed_;
    copy->setsRetCode_ = setsRetCode_;
    copy->retCode_ = retCode_;
    copy->hideStandardOnMove_ = hideStandardOnMove_;
    copy->onlyWhenSilence_ = onlyWhenSilence_;
    copy->SetDeleteFlags(deleteGraphics_, deleteSounds_);
    copy->setHotKey(hotKey_);
    return copy;
}

void CButton::Set(CGraphicsObject* graphic, void* parent, bool remove) {
    parent_ = parent;
    CRefreshScreen* canvas = screen();
    if (canvas && standard_ && remove) {
        standard_->Invalidate();
        *canvas >> standard_;
    }
    standard_ = graphic;
    if (canvas && graphic) canvas->put(graphic, kGraphicsPriority);
    hotSpot_.SetParent(static_cast<CXObject*>(parent));
    if (rect_.IsEmpty()) Accent(graphic);
}

void CButton::SetOnMove(CGraphicsObject* graphic, CSound4* sound) {
    onMove_ = graphic;
    putHidden(graphic, kGraphicsPriority);
    moveSound_ = sound;
}

void CButton::SetOnClick(CGraphicsObject* graphic, CSound4* sound) {
    onClick_ = graphic;
    putHidden(graphic, kGraphicsPriority);
    clickSound_ = sound;
}

void CButton::SetSound(_soundtype type, CSound4* sound) {
    if (type == kSoundOnMove) moveSound_ = sound;
    if (type == kSoundOnClick) clickSound_ = sound;
}

void CButton::SetDeleteFlags(bool graphics, bool sounds) {
    deleteGraphics_ = graphics;
    deleteSounds_ = sounds;
}

void CButton::Accent(_accent which) {
    CGraphicsObject* graphic = which == kAccentStandard  ? standard_.get()
                               : which == kAccentOnMove  ? onMove_.get()
                               : which == kAccentOnClick ? onClick_.get()
                                                         : nullptr;
    if (!graphic) return;
    shapeLike(graphic);
    accent_ = graphic;
}

void CButton::Move(CXPoint by) {
    if (!accent_) SetActiveRect(rect_ + by);
    moveAll({standard_, onMove_, onClick_}, by);
}

void CButton::Enable(bool enabled) {
    if (isRetired()) return;
    CControl::Enable(enabled);
    show(standard_, enabled);
    if (!enabled) {
        frozen_ = false;
        show(onMove_, false);
        show(onClick_, false);
    }
    hotSpot_.Enable(enabled);
}

void CButton::DisableButVisible() {
    CControl::Enable(false);
    show(onClick_, false);
    show(onMove_, false);
    show(standard_, true);
    hotSpot_.Enable(false);
}

void CButton::Freeze(bool frozen) {
    frozen_ = frozen;
    show(onMove_, frozen);
}

bool CButton::maySound() const { return !soundLocked_ && (!onlyWhenSilence_ || !getUnit()); }

int CButton::focusOn(CXPoint point, int flags, void* parent) {
    if (isPassive()) return 0;
    // The screen still shows what was there before the unit.
    if (const CUnit6* unit = getUnit(); unit && !unit->wasInitiallyUpdated()) return onFocusOn(point), 0;
    if (onMove_) {
        if (hideStandardOnMove_) show(standard_, false);
        show(onMove_, true);
    }
    if (!hotSpot_.isOver() && maySound()) moveSound_.play();
    hotSpot_.setOver(true);
    const int result = OnMove(point, flags, parent);
    onFocusOn(point);
    return result;
}

void CButton::focusOff() {
    force(false, true);
    if (onMove_ && !frozen_) {
        if (hideStandardOnMove_) show(standard_, true);
        show(onMove_, false);
    }
    moveSound_.stopIfPlaying();
}

int CButton::pressed(CXPoint point, int flags, void* parent) {
    OnClick(point, flags, parent);
    // The click has its sound by now.
    if (!isRetired()) force(true, false);
    return 1;
}

int CButton::OnClick(CXPoint point, int, void*) {
    CGraphicsObject* dragged = dragging_ ? dragging_.get() : standard_ ? standard_.get() : onMove_.get();
    const bool started = startDragging(dragged, point);
    if (!soundLocked_ && !isRetired()) clickSound_.play();
    onClick(point);
    return started ? 1 : 0;
}

int CButton::released(CXPoint point) {
    force(false, true);
    onRelease(point);
    onAction(point);
    if (IsEnabled()) show(standard_, true);
    return 1;
}

int CButton::pressedTwice() {
    Force(true);
    return 0;
}

void CButton::Force(bool pressed) { force(pressed, true); }

void CButton::force(bool pressed, bool withSound) {
    if (pressed == pressed_) return;
    if (onMove_ && onMove_->isVisible() && onClick_) show(onMove_, false);
    pressed_ = pressed;
    show(onClick_, pressed);
    if (!pressed) {
        show(standard_, true);
    } else if (withSound && maySound()) {
        clickSound_.play();
    }
}

void CButton::setRetCode(int code) {
    setsRetCode_ = true;
    retCode_ = code;
}

void CButton::setHotKey(const CXString& keys) {
    hotKey_ = keys;
    hotKey_.Upper();
    typed_ = "";
    const bool wanted = hotKey_.IsString();
    if (wanted == keyBound_) return;
    keyBound_ = wanted;
    if (wanted) {
        window_->registerKeyListener(this);
    } else {
        window_->removeKeyListener(this);
    }
}

void CButton::giveRetCode() {
    CUnit6* unit = getUnit();
    if (unit && setsRetCode_) unit->setRetCode(retCode_);
}

void CButton::onAction(CXPoint point) {
    CControl::onAction(point);
    giveRetCode();
}

void CButton::onKeyDown(int key) {
    if (hotKey_ == "<ANY>") return giveRetCode();
    const char character = CWindow::tranlateToChar(key);
    if (character == 0 || !hotKey_.IsString()) return;
    typed_ += character;
    const int surplus = typed_.GetLength() - hotKey_.GetLength();
    if (surplus > 0) typed_ = CXString(typed_.view().substr(static_cast<std::size_t>(surplus)));
    if (typed_ == hotKey_) giveRetCode();
}
