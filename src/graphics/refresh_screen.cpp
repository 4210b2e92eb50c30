// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/refresh_screen.h"

#include <algorithm>

#include "frame/unit.h"
#include "frame/window.h"
#include "graphics/color.h"

CRefreshRegion::CRefreshRegion() : CXArray(101, 0.75F) { addRect(nullptr); }

CRefreshRegion::~CRefreshRegion() {
    for (int i = 0; i < size(); ++i)
        delete rectAt(i);
}

void CRefreshRegion::removeAll() {
    for (int i = 0; i < size(); ++i)
        delete rectAt(i);
    CXArray::removeAll();
    whole_ = false;
}

void CRefreshRegion::addRect(const CXRect* rect) {
    if (whole_) return;
    // These numbers stand for the whole screen whatever size it has.
    if (!rect || *rect == CXRect(0, 0, 800, 600)) {
        removeAll();
        whole_ = true;
        add(nullptr);
        return;
    }
    for (int i = 0; i < size(); ++i) {
        CXRect* entry = rectAt(i);
        if (entry->Common(*rect).IsEmpty()) continue;
        if (rect->IsPartOf(*entry)) return;
        if (entry->IsPartOf(*rect)) {
            const CXRect piece = *rect;
            removeAt(i);
            delete entry;
            addRect(&piece);
            return;
        }
        CXArray* pieces = rect->sub(*entry);
        for (int k = 0; k < pieces->size(); ++k) {
            auto* piece = static_cast<CXRect*>(pieces->at(k));
            addRect(piece);
            delete piece;
        }
        delete pieces;
        return;
    }
    add(new CXRect(*rect));
}

CRefreshScreen::CRefreshScreen(CWindow* window, bool)
    : CGraphicsObject(window, window->GetScreenSize(), window->GetBpp()) {}

CRefreshScreen::~CRefreshScreen() { Empty(); }

std::vector<CRefreshScreen::Element>::iterator CRefreshScreen::find(const CGraphicsObject* object) {
    return std::find_if(elements_.begin(), elements_.end(), [=](const Element& e) { return e.object == object; });
}

void CRefreshScreen::put(CGraphicsObject* object, int priority) {
    if (!object || find(object) != elements_.end()) return;
    object->SetCanvas(this);
    const auto place = std::upper_bound(elements_.begin(), elements_.end(), priority,
                                        [](int p, const Element& e) { return p < e.priority; });
    elements_.insert(place, {object, priority});
    if (object->isVisible()) {
        const CXRect box = object->GetBoundingBox();
        Invalidate(&box);
    }
}

void CRefreshScreen::operator>>(CGraphicsObject* object) {
    const auto it = find(object);
    if (it == elements_.end()) return;
    object->SetCanvas(nullptr);
    elements_.erase(it);
}

void CRefreshScreen::Empty() {
    for (const Element& element : elements_)
        element.object->SetCanvas(nullptr);
    elements_.clear();
}

void CRefreshScreen::SetPriority(CGraphicsObject* object, int priority) {
    const auto it = find(object);
    if (it == elements_.end()) return;
    elements_.erase(it);
    const auto place = std::upper_bound(elements_.begin(), elements_.end(), priority,
                                        [](int p, const Element& e) { return p < e.priority; });
    elements_.insert(place, {object, priority});
}

int CRefreshScreen::GetPriority(const CGraphicsObject* object) const {
    for (const Element& element : elements_) {
        if (element.object == object) return element.priority;
    }
    return -1;
}

void CRefreshScreen::Invalidate(const CGraphicsObject* object) {
    if (!object || !object->isVisible() || find(object) == elements_.end()) return;
    const CXRect box = object->GetBoundingBox();
    Invalidate(&box);
}

void CRefreshScreen::Invalidate(const CXRect* rect) {
    const CXRect screen(0, 0, size_.width, size_.height);
    const CXRect changed = rect ? rect->Common(screen) : screen;
    if (!changed.IsEmpty()) region_.addRect(&changed);
}

void CRefreshScreen::SetBackground(const CColor*) { backgroundName_ = ""; }
void CRefreshScreen::SetBackground(CGraphicsObject*) { backgroundName_ = ""; }
void CRefreshScreen::SetBackground(const CXString& fileName) { backgroundName_ = fileName; }
void CRefreshScreen::flush() { backgroundName_ = ""; }

bool CRefreshScreen::Redraw(CDirectDrawSurface*, CSurface*, bool* fullRefresh) {
    if (CUnit6* unit = window_->GetCurrentUnit()) {
        if (unit->wasInitiallyUpdated()) {
            unit->onCanvasRefreshed();
        } else {
            unit->onInitialUpdate();
            window_->Invalidate();
            *fullRefresh = true;
        }
        // The unit may have handed over to another one, which then waits for the next frame.
        unit = window_->GetCurrentUnit();
        if (unit && !unit->wasInitiallyUpdated()) return false;
    }
    return !region_.isEmpty();
}
