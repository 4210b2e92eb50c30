// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/refresh_screen.h"

#include <algorithm>

#include "animation/image_file.h"
#include "frame/unit.h"
#include "frame/window.h"
#include "graphics/canvas_observer.h"
#include "graphics/color.h"
#include "graphics/surface.h"

namespace {

constexpr int kGrayFlag = 2;

constexpr void (CCanvasObserver::*kNotifications[])() = {&CCanvasObserver::onInitialUpdate, &CCanvasObserver::onUpdate,
                                                         &CCanvasObserver::onUpdated, &CCanvasObserver::onWindowFocusOn,
                                                         &CCanvasObserver::onWindowFocusOff};
constexpr int kInitialUpdate = 0;
constexpr int kUpdate = 1;
constexpr int kUpdated = 2;

}  // namespace

CRefreshScreen::CRefreshScreen(CWindow* window, bool localDestiny)
    : CGraphicsObject(window), background_(window, window->GetScreenSize()) {
    size_ = window->GetScreenSize();
    bpp_ = window->GetBpp();
    if (!localDestiny) return;
    localDestiny_ = std::make_unique<CDirectDrawSurface>(window, size_, bpp_, false);
    data_ = localDestiny_->getData();
}

CRefreshScreen::~CRefreshScreen() {
    Empty();
    while (!attached_.empty())
        (*attached_.begin())->SetCanvas(nullptr);
}

void CRefreshScreen::put(CGraphicsObject* object, int priority) {
    // Scripts can name the compositor like any other picture.
    if (!object || object == this || queue_.find(object)) return;
    object->SetCanvas(this);
    queue_.add(object, priority, 0);
    if (!object->isVisible()) return;
    const CXRect box = object->GetBoundingBox();
    Invalidate(&box);
}

void CRefreshScreen::operator>>(CGraphicsObject* object) { queue_.remove(object); }

void CRefreshScreen::Empty() { queue_.removeAll(); }

void CRefreshScreen::SetPriority(CGraphicsObject* object, int priority) {
    if (!queue_.find(object)) return;
    queue_.remove(object);
    queue_.add(object, priority, 0);
}

int CRefreshScreen::GetPriority(const CGraphicsObject* object) const {
    const CValidationElement* element = queue_.find(object);
    return element ? element->priority : -1;
}

int CRefreshScreen::GetFlags(const CGraphicsObject* object) const {
    const CValidationElement* element = queue_.find(object);
    return element ? element->flags : 0;
}

bool CRefreshScreen::SetFlags(const CGraphicsObject* object, int flags) {
    if (!object) {
        screenFlags_ = flags;
        return true;
    }
    CValidationElement* element = queue_.find(object);
    if (element) element->flags = flags;
    return element != nullptr;
}

void CRefreshScreen::Invalidate(const CGraphicsObject* object) {
    if (!object || !object->isVisible() || !queue_.find(object)) return;
    const CXRect box = object->GetBoundingBox();
    Invalidate(&box);
}

void CRefreshScreen::Invalidate(const CXRect* rect) {
    const CXRect changed = rect ? rect->Common(screenRect()) : screenRect();
    if (!changed.IsEmpty()) region_.addRect(&changed);
}

void CRefreshScreen::Visible(bool visible) {
    for (CValidationElement* element = queue_.first(); element; element = queue_.next())
        element->object->Visible(visible);
}

void CRefreshScreen::SetBackground(const CColor* color) { background_.SetBackground(color); }
void CRefreshScreen::SetBackground(CGraphicsObject* object) { background_.SetBackground(object); }

void CRefreshScreen::SetBackground(const CXString& fileName) {
    backgroundName_ = fileName;
    auto image = std::make_unique<CImageFile>(window_);
    const bool known = image->Load(fileName) != 0;
    backgroundImage_ = std::move(image);
    CGraphicsObject* picture = backgroundImage_->getObject();
    if (known && picture && picture->LastError() == 0) background_.SetBackground(picture);
}

void CRefreshScreen::setBackground(std::unique_ptr<CDirectDrawSurface> surface) {
    background_.setBackground(std::move(surface));
}

void CRefreshScreen::flush() {
    backgroundName_ = "";
    backgroundImage_.reset();
}

void CRefreshScreen::addNotifier(CCanvasObserver* observer) {
    if (std::find(notifiers_.begin(), notifiers_.end(), observer) == notifiers_.end()) notifiers_.push_back(observer);
}

void CRefreshScreen::removeNotifier(CCanvasObserver* observer) { std::erase(notifiers_, observer); }

void CRefreshScreen::notifyIfEnabled(int code) {
    if (!notifyFlag_ || notifiers_.empty()) return;
    const std::vector<CCanvasObserver*> notifiers = notifiers_;
    for (CCanvasObserver* observer : notifiers) {
        if (std::find(notifiers_.begin(), notifiers_.end(), observer) != notifiers_.end())
            (observer->*kNotifications[code])();
    }
}

void CRefreshScreen::Redraw() {
    if (localDestiny_) __redraw(localDestiny_.get());
}

bool CRefreshScreen::Redraw(CDirectDrawSurface* target, CSurface*, bool* fullRefresh) {
    if (CUnit6* unit = window_->GetCurrentUnit()) {
        if (unit->wasInitiallyUpdated()) {
            unit->onCanvasRefreshed();
        } else {
            notifyIfEnabled(kInitialUpdate);
            unit->onInitialUpdate();
            window_->Invalidate();
            *fullRefresh = true;
        }
        // The unit may have handed over to another one, which then waits for the next frame.
        unit = window_->GetCurrentUnit();
        if (unit && !unit->wasInitiallyUpdated()) return false;
    }
    return __redraw(target);
}

bool CRefreshScreen::__redraw(CDirectDrawSurface* target) {
    const bool changed = !region_.isEmpty();
    target_ = target;
    background_.Redraw(target, region_);
    if (!queue_.isEmpty()) {
        notifyIfEnabled(kUpdate);
        // By index: an observer's script may have taken objects out.
        for (int i = 0; i < queue_.size(); ++i) {
            CValidationElement* element = queue_.elementAt(i);
            if (element->object->isVisible()) drawObject(element, target);
        }
        notifyIfEnabled(kUpdated);
    }
    queue_.clearMarks();
    if ((screenFlags_ & kGrayFlag) != 0) target->ToGrayScale();
    return changed;
}

void CRefreshScreen::drawObject(CValidationElement* element, CDirectDrawSurface* target) {
    CGraphicsObject* object = element->object;
    if (object->isInvalidated()) {
        drawWhole(object, target);
        return;
    }
    if (region_.isEmpty()) return;
    const CXRect box = object->GetBoundingBox();
    for (int i = 0; i < region_.size() && !element->drawn; ++i) {
        const CXRect* entry = region_.rectAt(i);
        const CXRect region = entry ? box.Common(*entry) : box;
        if (!region_.isWhole() && region.IsEmpty()) continue;
        const CXRect ownClip = object->GetClippingRect();
        // A clip of its own limits the drawing by itself, so one drawing serves all rectangles.
        drawClipped(object, target, ownClip.IsEmpty() ? CXRect(region) -= object->GetPosition() : ownClip);
        const CXSize size = object->Size();
        element->drawn = !ownClip.IsEmpty() || (region.Width() == size.width && region.Height() == size.height);
    }
}

void CRefreshScreen::drawWhole(CGraphicsObject* object, CDirectDrawSurface* target) {
    CXRect clip = object->GetBoundingBox().Common(screenRect());
    if (clip.IsEmpty()) return;
    clip -= object->GetPosition();
    drawClipped(object, target, clip);
}

void CRefreshScreen::drawClipped(CGraphicsObject* object, CDirectDrawSurface* target, const CXRect& clip) {
    const CXRect saved = object->GetClippingRect();
    object->SetDestiny(target);
    object->SetClippingRect(clip);
    object->Redraw();
    object->SetClippingRect(saved);
}

CGraphicsObject* CRefreshScreen::getGraphicsAt(int x, int y, bool visibleOnly, int minPriority, int maxPriority,
                                               bool ignoreAlpha) {
    int best = -1;
    CGraphicsObject* found = nullptr;
    for (CValidationElement* element = queue_.first(); element; element = queue_.next()) {
        const int priority = element->priority;
        CGraphicsObject* object = element->object;
        if ((minPriority >= 0 && priority < minPriority) || (maxPriority >= 0 && priority > maxPriority)) continue;
        if (priority < best || (visibleOnly && !object->isVisible())) continue;
        if (!object->GetBoundingBox().IsInRect(x, y)) continue;
        if (!ignoreAlpha && !object->isSolidAt({x, y})) continue;
        best = priority;
        found = object;
    }
    return found;
}

int CRefreshScreen::Save(const CXString& name, _compression form) { return target_ ? target_->Save(name, form) : 0; }

void CRefreshScreen::_catch(const CDirectDrawSurface* source) {
    if (!catchCopy_) catchCopy_ = std::make_unique<CDirectDrawSurface>(window_, size_, bpp_, false);
    const CXRect whole = screenRect();
    catchCopy_->Blt(source, 0, 0, &whole);
}

void CRefreshScreen::_release() { catchCopy_.reset(); }
