// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/mouse_target.h"

#include <utility>

#include "frame/window.h"
#include "graphics/graphics_object.h"
#include "input/mouse.h"
#include "script/lifetime.h"
#include "structure/scene.h"

namespace {

// ORDER: as they stand in every list of signals.
enum Place { kFocusOn, kFocusOff, kClick, kRelease };

}  // namespace

CMC_MouseTarget::CMC_MouseTarget(CMC_Scene* scene, CMElement* element, int type, int firstSignal)
    : CMC_Object(scene, element, type), window_(scene->getWindow()), firstSignal_(firstSignal) {}

CMC_MouseTarget::CMC_MouseTarget(CMC_Scene* scene, CXString name, int type, int firstSignal)
    : CMC_Object(std::move(name), type), window_(scene->getWindow()), firstSignal_(firstSignal) {
    setScene(scene);
}

CMC_MouseTarget::~CMC_MouseTarget() { stopListening(); }

void CMC_MouseTarget::stopListening() {
    if (mouseAware_) window_->removeMouseListener(this);
    mouseAware_ = false;
}

bool CMC_MouseTarget::verifyBehaviour(const CXString& key) {
    const std::string_view name = key.view();
    const bool ofMouse =
        name.starts_with("ONCLICK") || name.starts_with("ONRELEASE") || name == "ONFOCUSON" || name == "ONFOCUSOFF";
    if (ofMouse && !mouseAware_ && !isRetired()) {
        focus_ = false;
        mouseAware_ = true;
        window_->registerMouseListener(this, listenerPriority());
    }
    return CMC_Object::verifyBehaviour(key);
}

bool CMC_MouseTarget::holdsPoint(CXPoint point) const {
    const CGraphicsObject* graphic = getGraphic();
    return graphic && graphic->GetBoundingBox().IsInRect(point);
}

bool CMC_MouseTarget::reacts() const { return isButton() && mouseAware_ && getGraphic() && getGraphic()->isVisible(); }

bool CMC_MouseTarget::hears(int place, CXPoint point) const {
    return reacts() && isSignalUsed(firstSignal_ + place) && holdsPoint(point);
}

bool CMC_MouseTarget::onMouseMove(CXPoint point) {
    const bool signals = isSignalUsed(firstSignal_ + kFocusOn) || isSignalUsed(firstSignal_ + kFocusOff);
    if (!reacts() || !signals) return false;
    const bool inside = holdsPoint(point);
    if (inside == focus_) return false;
    // A handler may take the object out: nothing of it is touched behind the scope.
    const ScriptScope scope;
    const bool changeCursor = changeCursor_;
    CWindow* window = window_;
    focus_ = inside;
    onSignal(inside ? "ONFOCUSON" : "ONFOCUSOFF");
    if (!changeCursor) return false;
    if (inside) {
        window->BeginActiveCursor();
    } else {
        window->EndActiveCursor();
    }
    return false;
}

bool CMC_MouseTarget::onClick(int button, CXPoint point) {
    if (!hears(kClick, point)) return false;
    const ScriptScope scope;
    const bool changeCursor = changeCursor_;
    CWindow* window = window_;
    fire(firstSignal_ + kClick, CMC_Mouse::getButton(button));
    if (changeCursor) window->EndActiveCursor();
    return false;
}

bool CMC_MouseTarget::onRelease(int button, CXPoint point) {
    if (hears(kRelease, point)) fire(firstSignal_ + kRelease, CMC_Mouse::getButton(button));
    return false;
}
