// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "foundation/xobject.h"
#include "graphics/geometry.h"
#include "input/key_listener.h"

class CControl;
class CWindow;

// Hears what happens to a control.
class CControlNotifier {
public:
    virtual ~CControlNotifier() = default;
    virtual void onControlOnMove(CControl*, CXPoint) {}
    virtual void onControlFocusOn(CControl*, CXPoint) {}
    virtual void onControlFocusOff(CControl*, CXPoint) {}
    virtual void onControlClicked(CControl*, CXPoint) {}
    virtual void onControlReleased(CControl*, CXPoint) {}
    virtual void onControlAction(CControl*, CXPoint) {}
    virtual void onControlPopup(CControl*, CXPoint) {}
    virtual void onStartDragging(CControl*, CXPoint) {}
    virtual void onDragging(CControl*, CXPoint) {}
    virtual void onEndDragging(CControl*, CXPoint) {}
};

// The base of buttons and edit boxes: passes what happens to it on to its notifiers, in their order. A notifier may
// leave the list, or take others from it, from inside a call. What it removes by script lives until the call is over.
class CControl : public CXObject, public CKeyListener {
public:
    explicit CControl(CWindow* window) : window_(window) {}

    virtual void SetID(int id) { id_ = id; }
    virtual int getId() const { return id_; }
    virtual void Enable(bool enabled) { enabled_ = enabled; }
    virtual bool IsEnabled() const { return enabled_; }
    virtual void addNotifier(CControlNotifier* notifier) { notifiers_.push_back(notifier); }  // not owned
    virtual void removeNotifier(CControlNotifier* notifier);
    virtual void onMouseMove(CXPoint point);
    virtual void onFocusOn(CXPoint point);
    virtual void onFocusOff(CXPoint point);
    virtual void onClick(CXPoint point);
    virtual void onRelease(CXPoint point);
    virtual void onRClick(CXPoint point);
    virtual void onAction(CXPoint point);
    virtual void onStartDragging(CXPoint point);
    virtual void onDragging(CXPoint point);
    virtual void onEndDragging(CXPoint point);

    // Expires with the control.
    std::weak_ptr<const CControl*> life() const { return life_; }

    int GetFlags() const { return flags_; }
    void SetFlags(int flags) { flags_ = flags; }

protected:
    CWindow* window_;

private:
    void tell(void (CControlNotifier::*what)(CControl*, CXPoint), CXPoint point);

    int id_ = -1;
    bool enabled_ = true;
    int flags_ = 0;
    std::vector<CControlNotifier*> notifiers_;
    std::shared_ptr<const CControl*> life_ = std::make_shared<const CControl*>(this);
};
