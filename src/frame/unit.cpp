// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "frame/unit.h"

#include <span>
#include <vector>

#include "definition/element.h"
#include "frame/application.h"
#include "frame/resources_manager.h"
#include "frame/window.h"
#include "graphics/refresh_screen.h"
#include "input/edit_box.h"
#include "input/keyboard.h"
#include "script/lifetime.h"
#include "structure/scene.h"

namespace {
constexpr int kMousePriority = 100'000;
constexpr int kDraggedPriority = 10'000;
constexpr int kAlwaysOnTopPriority = 1'000'000;
constexpr int kTabKey = 0x0F;
}  // namespace

CUnit6::CUnit6(CWindow* window, const CXString& name)
    : name_(name),
      application_(window->GetApplicationInterface()),
      window_(window),
      canvas_(window->GetRefreshScreenInterface()),
      resources_(std::make_unique<CResourcesManager>(window)) {
    CResourcesManager* general = application_ ? application_->getGeneralResourcesManager() : nullptr;
    if (general) general->add(resources_.get());
}

CUnit6::~CUnit6() {
    CResourcesManager* general = application_ ? application_->getGeneralResourcesManager() : nullptr;
    if (general) general->remove(resources_.get());
    window_->removeKeyListener(this);
    window_->removeMouseListener(this);
    CUnit6::flushEditBoxes();
}

bool CUnit6::initialize(CUnitData*, CMC_Scene* scene, CUnit6* previous) {
    returnCode_ = 0;
    active_ = true;
    scene_ = scene;
    musicFileName_ = previous ? previous->getMusicFileName() : CXString();
    randomPlayable_ = std::make_unique<CRandomPlayable>(window_, this);
    randomPlayable_->addNotifier(this);
    setBackground();
    window_->registerKeyListener(this);
    window_->registerMouseListener(this, kMousePriority);
    return true;
}

void CUnit6::setBackground() {
    if (canvas_) canvas_->SetBackground(getBackgroundFileName());
}

void CUnit6::onInitialUpdate() {
    updated_ = true;
    startMusic();
}

void CUnit6::startMusic() {
    if (!scene_ || !scene_->shouldMusicBeStarted()) return;
    const CXString name = scene_->getMusicFilename();
    if (!name.IsString()) return;
    musicFileName_ = name;
    window_->StartMusic(name, true);
}

void CUnit6::stopMusic() { window_->StopMusic(); }

bool CUnit6::done(CUnitData*, CMC_Scene*, CUnit6*) {
    forgetDrag();
    if (canvas_) {
        canvas_->flush();
        canvas_->SetBackground(static_cast<CGraphicsObject*>(nullptr));
    }
    scene_ = nullptr;
    active_ = false;
    updated_ = false;
    randomPlayable_.reset();
    window_->removeKeyListener(this);
    window_->removeMouseListener(this);
    // The boxes of a screen don't stay on the next one.
    flushEditBoxes();
    resources_->flush();
    returnPath_.removeAll();
    return true;
}

bool CUnit6::onStartDragging(CGraphicsObject* object, CXPoint point, void* control) {
    if (!object || !canvas_) return false;
    dragging_ = true;
    startedByPress_ = true;
    dragControl_ = static_cast<CControl*>(control);
    draggedObject_ = object;
    draggedPriority_ = canvas_->GetPriority(object);
    canvas_->SetPriority(object, kDraggedPriority);
    startPosition_ = object->GetPosition();
    draggedPoint_ = point;
    const ScriptScope scope;
    if (dragControl_) dragControl_->onStartDragging(point);
    return true;
}

// An object that has left the screen meanwhile may be gone altogether: its drag ends without it.
bool CUnit6::loseGoneObject() {
    const bool wasListed = draggedPriority_ != -1;
    if (draggedObject_ && (!wasListed || canvas_->GetPriority(draggedObject_) != -1)) return false;
    CControl* control = dragControl_;
    forgetDrag();
    if (control) {
        // The press has switched it off for the time of the drag.
        control->Enable(true);
        if (scene_) scene_->setDraggedName("");
    }
    return true;
}

void CUnit6::forgetDrag() {
    dragging_ = false;
    draggedObject_ = nullptr;
    dragControl_ = nullptr;
}

bool CUnit6::forgetControl(const CControl* control) {
    if (!dragging_ || dragControl_ != control) return false;
    if (draggedObject_) canvas_->SetPriority(draggedObject_, draggedPriority_);
    forgetDrag();
    return true;
}

bool CUnit6::onDragging(CXPoint point) {
    if (!dragging_ || loseGoneObject()) return false;
    // Who hears of a collision or of the drag may remove what is dragged.
    const ScriptScope scope;
    draggedObject_->Move(point - draggedPoint_);
    draggedPoint_ = point;
    if (dragControl_) dragControl_->onDragging(point);
    return dragging_;
}

bool CUnit6::onEndDragging(CXPoint) {
    if (!dragging_ || loseGoneObject()) return false;
    const ScriptScope scope;
    canvas_->SetPriority(draggedObject_, draggedPriority_);
    const CXPoint position = draggedObject_->GetPosition();
    if (dragControl_) {
        dragControl_->Enable(true);
        dragControl_->onEndDragging(position);
    }
    forgetDrag();
    return true;
}

void CUnit6::bringBackDraggingObjectPosition() {
    if (!draggedObject_ || loseGoneObject()) return;
    draggedObject_->Invalidate();
    draggedObject_->SetPosition(startPosition_);
    draggedObject_->Invalidate();
}

bool CUnit6::onMouseMove(CXPoint point) {
    startedByPress_ = false;
    if (dragging_) onDragging(point);
    return CMouseListener::onMouseMove(point);
}

bool CUnit6::onClick(CXPoint point) {
    // The press that starts a drag comes by here too, after the control has had it.
    const bool startingPress = startedByPress_;
    startedByPress_ = false;
    if (dragging_ && draggingMode_ && !startingPress) onEndDragging(point);
    return CMouseListener::onClick(point);
}

bool CUnit6::onRelease(CXPoint point) {
    startedByPress_ = false;
    if (dragging_ && !draggingMode_) onEndDragging(point);
    return CMouseListener::onRelease(point);
}

void CUnit6::onKeyDown(int key) {
    if (key != kTabKey) return;
    if (window_->getKeyboardInterface()->isKeyPressed("shift")) {
        prevEditBox();
    } else {
        nextEditBox();
    }
}

void CUnit6::addRandomPlayable(CPlayable* playable, double seconds, int maxRuns, const CXString& event) {
    if (randomPlayable_) randomPlayable_->add(playable, seconds, maxRuns, event);
}

void CUnit6::removeRandomPlayable(CPlayable* playable) {
    if (randomPlayable_) randomPlayable_->remove(playable);
}

CEditBox6* CUnit6::addEditBox(CSimpleFont6* font, const CXRect& rect, const CXString& text) {
    CEditBox6* box =
        text.IsString() ? new CEditBox6(window_, this, font, rect, text) : new CEditBox6(window_, this, font, rect);
    if (editBoxCursor_) box->setCursor(editBoxCursor_);
    editBoxes_.add(box);
    return box;
}

// Whoever hears that the focus goes may take the box out that was to have it.
void CUnit6::activateEditBox(CEditBox6* box) {
    const ScriptScope scope;
    if (activeEditBox_) activeEditBox_->activate(false);
    activeEditBox_ = box && !box->isRetired() ? box : nullptr;
    if (activeEditBox_) activeEditBox_->activate(true);
}

void CUnit6::removeEditBox(CEditBox6* box) {
    if (activeEditBox_ == box) activeEditBox_ = nullptr;
    editBoxes_.remove(box);
}

void CUnit6::flushEditBoxes() {
    const ScriptScope scope;
    activeEditBox_ = nullptr;
    // Those that come while the others tell that they go stay.
    const std::span<CXObject* const> listed = editBoxes_.elements();
    const std::vector<CXObject*> boxes(listed.begin(), listed.end());
    editBoxes_.removeAll();
    for (CXObject* box : boxes)
        CEditBox6::discard(static_cast<CEditBox6*>(box));
}

int CUnit6::getCurrentEditBoxIndex() const { return activeEditBox_ ? editBoxes_.find(activeEditBox_) : -1; }

void CUnit6::nextEditBox() {
    const int count = editBoxes_.size();
    if (count > 0) activateEditBox(static_cast<CEditBox6*>(editBoxes_.at((getCurrentEditBoxIndex() + 1) % count)));
}

void CUnit6::prevEditBox() {
    const int count = editBoxes_.size();
    if (count == 0) return;
    const int index = getCurrentEditBoxIndex();
    activateEditBox(static_cast<CEditBox6*>(editBoxes_.at(index > 0 ? index - 1 : count - 1)));
}

void CUnit6::setTimer(int id, int period, bool onlyActive) {
    window_->SetTimer(id, static_cast<unsigned>(period), this, onlyActive);
}

void CUnit6::killTimer(int id) { window_->KillTimer(id); }

void CUnit6::putOnCanvas(CGraphicsObject* object, CMElement* element) {
    const bool onTop = element->getPropertyBoolValue("ALWAYSONTOP");
    const int priority = onTop ? kAlwaysOnTopPriority : element->getPropertyIntValue("PRIORITY");
    if (canvas_ && element->getPropertyBoolValue("TOCANVAS")) canvas_->put(object, priority);
}
