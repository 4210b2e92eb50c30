// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "input/edit_box.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

#include "frame/unit.h"
#include "frame/window.h"
#include "graphics/refresh_screen.h"
#include "input/button.h"
#include "script/lifetime.h"
#include "text/text.h"

namespace {

constexpr int kMousePriority = 100'001;  // just above the unit's
constexpr unsigned kBlink = 400;         // milliseconds
constexpr int kBelowCursor = 5;

enum Kind { kFocusOn = 1, kFocusOff, kChanged, kEnter, kEsc };

constexpr void (CEditBoxNotifier::*kTold[])(CEditBox6*) = {
    &CEditBoxNotifier::onFocusOn, &CEditBoxNotifier::onFocusOff, &CEditBoxNotifier::onChanged,
    &CEditBoxNotifier::onEnter,   &CEditBoxNotifier::onEsc,
};

enum Key {
    kKeyEsc = 0x01,
    kKeyBackspace = 0x0E,
    kKeyEnter = 0x1C,
    kKeyHome = 0xC7,
    kKeyLeft = 0xCB,
    kKeyRight = 0xCD,
    kKeyEnd = 0xCF,
    kKeyDelete = 0xD3,
};

}  // namespace

EditBoxLink& EditBoxLink::operator=(CEditBox6* box) {
    slot_ = box ? box->self_ : nullptr;
    return *this;
}

CEditBox6::CEditBox6(CWindow* window, CUnit6* unit, CSimpleFont6* font, const CXRect& rect)
    : CEditBox6(window, unit, font, rect, "") {}

CEditBox6::CEditBox6(CWindow* window, CUnit6* unit, CSimpleFont6* font, const CXRect& rect, const CXString& text)
    : window_(window),
      unit_(unit),
      rect_(rect),
      text_(text),
      button_(std::make_unique<CButton>(window, rect, 0, nullptr, 0)),
      display_(std::make_unique<CText6>(window, unit)),
      self_(std::make_shared<CEditBox6*>(this)) {
    button_->addNotifier(this);
    button_->setUnit(unit);
    display_->setFont(font);
    display_->setJustify(rect, kJustifyLeft, kJustifyCenter);
    if (text.IsString()) display_->setText(text);
    display_->Visible(true);
    display_->SetClippingRect({0, 0, rect.Width(), rect.Height()});
    if (CRefreshScreen* screen = window->GetRefreshScreenInterface()) *screen << display_.get();
    window->registerKeyListener(this);
    window->registerMouseListener(this, kMousePriority);
}

CEditBox6::~CEditBox6() { retire(); }

void CEditBox6::discard(CEditBox6* box) {
    if (!box || box->isRetired()) return;
    const ScriptScope scope;
    box->retire();
    destroyLate(std::unique_ptr<CXObject>(box));
}

// Everything that reaches outside happens here: what is left to the destructor may run when window and unit are gone.
void CEditBox6::retire() {
    if (isRetired()) return;
    const ScriptScope scope;
    *self_ = nullptr;
    window_->removeKeyListener(this);
    window_->removeMouseListener(this);
    active_ = false;
    stopBlinking();
    if (textList_) textList_->remove(this);
    button_->removeNotifier(this);
    button_->retire();
    if (CUnit6* unit = std::exchange(unit_, nullptr)) unit->removeEditBox(this);
    notify(kFocusOff);
    notifiers_.clear();
    display_->Visible(false);
    if (CRefreshScreen* screen = display_->GetCanvas()) *screen >> display_.get();
}

void CEditBox6::setText(const CXString& text) {
    text_ = text;
    display_->setText(text);
}

// Those whom the script of another one has taken out aren't told any more.
void CEditBox6::notify(int kind) {
    if (kind < kFocusOn || kind > kEsc) return;
    const ScriptScope scope;
    const std::vector<CEditBoxNotifier*> listed = notifiers_;
    for (CEditBoxNotifier* notifier : listed) {
        const bool still = std::find(notifiers_.begin(), notifiers_.end(), notifier) != notifiers_.end();
        if (still) (notifier->*kTold[kind - 1])(this);
    }
}

void CEditBox6::addNotifier(CEditBoxNotifier* notifier) {
    const bool isListed = std::find(notifiers_.begin(), notifiers_.end(), notifier) != notifiers_.end();
    if (notifier && !isListed) notifiers_.push_back(notifier);
}

void CEditBox6::removeNotifier(CEditBoxNotifier* notifier) { std::erase(notifiers_, notifier); }

int CEditBox6::getCaret() const { return std::min(caret_, text_.GetLength()); }

void CEditBox6::updateCursor() {
    if (!cursor_) return;
    cursor_->Invalidate();
    const int caret = getCaret();
    const int width = CText6::getLength(display_->getFont(), text_.view().substr(0, static_cast<std::size_t>(caret)));
    if (caret == 0 || std::int64_t{rect_.left} + width < rect_.right) {
        const CXPoint start = rect_.LeftBottom() - CXPoint(0, cursor_->Height()) - CXPoint(0, kBelowCursor);
        cursor_->SetPosition(start + CXPoint(width, 0));
    }
    cursor_->Invalidate();
}

void CEditBox6::activate(bool active) {
    if (isRetired()) return;
    if (!active) return loseFocus();
    const ScriptScope scope;
    active_ = true;
    caret_ = text_.GetLength();
    stopBlinking();  // one period, however often it is activated
    if (CXTimer* timers = window_->GetTimerInterface()) timers->add(objectId(), kBlink, this);
    updateCursor();
    notify(kFocusOn);
}

// The cursor stays as it is, lit or dark: it is somebody else's.
void CEditBox6::loseFocus() {
    const ScriptScope scope;
    active_ = false;
    stopBlinking();
    notify(kFocusOff);
}

void CEditBox6::stopBlinking() {
    if (CXTimer* timers = window_->GetTimerInterface()) timers->remove(objectId());
}

void CEditBox6::onTimer(int) {
    if (cursor_) cursor_->Visible(!cursor_->isVisible());
}

void CEditBox6::enable(bool enabled) {
    if (isRetired()) return;
    enabled_ = enabled;
    button_->Enable(enabled);
    if (active_) loseFocus();
}

// A hidden box is as live as a shown one: it keeps focus, keys and its area, and its cursor goes on blinking.
void CEditBox6::setVisibility(bool visible) { display_->Visible(visible); }

void CEditBox6::setColor(int colour) { display_->setColor(colour); }

void CEditBox6::eraseAt(int place) {
    std::string text(text_.view());
    text.erase(static_cast<std::size_t>(place), 1);
    caret_ = place;
    setText(CXString(std::string_view(text)));
    updateCursor();
}

void CEditBox6::moveCaret(int place) {
    caret_ = place;
    updateCursor();
}

// A caret that a shorter text has left behind counts as at its end.
void CEditBox6::onKeyDown(int key) {
    if (!enabled_ || !active_) return;
    const ScriptScope scope;
    const int caret = getCaret(), length = text_.GetLength();
    const bool isBehindText = caret > 0, isBeforeText = caret < length;
    switch (key) {
        case kKeyEsc:
            return notify(kEsc);
        case kKeyEnter:
            return notify(kEnter);
        case kKeyBackspace:
            if (isBehindText) eraseAt(caret - 1);
            return;
        case kKeyDelete:
            if (isBeforeText) eraseAt(caret);
            return;
        case kKeyLeft:
            if (isBehindText) moveCaret(caret - 1);
            return;
        case kKeyRight:
            if (isBeforeText) moveCaret(caret + 1);
            return;
        case kKeyHome:
            if (isBehindText) moveCaret(0);
            return;
        case kKeyEnd:
            if (isBeforeText) moveCaret(length);
            return;
        default:
            return;
    }
}

void CEditBox6::onChar(unsigned char character) {
    if (!enabled_ || !active_) return;
    const ScriptScope scope;
    const int caret = getCaret();
    std::string text(text_.view());
    text.insert(static_cast<std::size_t>(caret), 1, static_cast<char>(character));
    if (CText6::getLength(display_->getFont(), std::string_view(text)) > rect_.Width()) return;
    caret_ = caret + 1;
    setText(CXString(std::string_view(text)));
    updateCursor();
    notify(kChanged);
}

void CEditBox6::onControlAction(CControl*, CXPoint) {
    if (unit_ && !active_) unit_->activateEditBox(this);
}

bool CEditBox6::onClick(CXPoint point) {
    const ScriptScope scope;
    if (unit_ && !rect_.IsInRect(point)) unit_->activateEditBox(nullptr);
    return false;
}
