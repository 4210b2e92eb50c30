// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "input/control.h"

#include <algorithm>

#include "script/lifetime.h"

void CControl::removeNotifier(CControlNotifier* notifier) {
    const auto it = std::find(notifiers_.begin(), notifiers_.end(), notifier);
    if (it != notifiers_.end()) notifiers_.erase(it);
}

void CControl::tell(void (CControlNotifier::*what)(CControl*, CXPoint), CXPoint point) {
    const ScriptScope scope;
    const std::vector<CControlNotifier*> listed = notifiers_;
    for (CControlNotifier* notifier : listed) {
        const bool still = std::find(notifiers_.begin(), notifiers_.end(), notifier) != notifiers_.end();
        if (still) (notifier->*what)(this, point);
    }
}

void CControl::onMouseMove(CXPoint point) { tell(&CControlNotifier::onControlOnMove, point); }
void CControl::onFocusOn(CXPoint point) { tell(&CControlNotifier::onControlFocusOn, point); }
void CControl::onFocusOff(CXPoint point) { tell(&CControlNotifier::onControlFocusOff, point); }
void CControl::onClick(CXPoint point) { tell(&CControlNotifier::onControlClicked, point); }
void CControl::onRelease(CXPoint point) { tell(&CControlNotifier::onControlReleased, point); }
void CControl::onRClick(CXPoint point) { tell(&CControlNotifier::onControlPopup, point); }
void CControl::onAction(CXPoint point) { tell(&CControlNotifier::onControlAction, point); }
void CControl::onStartDragging(CXPoint point) { tell(&CControlNotifier::onStartDragging, point); }
void CControl::onDragging(CXPoint point) { tell(&CControlNotifier::onDragging, point); }
void CControl::onEndDragging(CXPoint point) { tell(&CControlNotifier::onEndDragging, point); }
