// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "input/hot_spot.h"

#include "frame/unit.h"
#include "frame/window.h"
#include "graphics/graphics_object.h"

namespace {
constexpr int kLowest = 0;
constexpr int kHighest = 10'000'000;
}  // namespace

std::unique_ptr<CXVector> CHotSpot::pHSList;
CWindow* CHotSpot::m_pWindow = nullptr;
int CHotSpot::minPriority = kLowest;
int CHotSpot::maxPriority = kHighest;

CHotSpot::CHotSpot(CWindow* window) {
    initialize(window);
    add(this);
}

CHotSpot::CHotSpot(CWindow* window, CHotSpot* parent, _event events, int flags)
    : parent_(parent), flags_(flags), events_(static_cast<int>(events)) {
    initialize(window);
    if (!parent) add(this);
}

CHotSpot::~CHotSpot() { remove(this); }

void CHotSpot::initialize(CWindow* window) {
    if (!pHSList) pHSList = std::make_unique<CXVector>();
    if (!m_pWindow) m_pWindow = window;
}

void CHotSpot::done() {
    pHSList.reset();
    m_pWindow = nullptr;
    minPriority = kLowest;
    maxPriority = kHighest;
}

void CHotSpot::add(CHotSpot* spot) {
    if (!pHSList) pHSList = std::make_unique<CXVector>();
    if (!pHSList->contains(spot)) pHSList->add(spot);
}

void CHotSpot::remove(CHotSpot* spot) {
    if (pHSList) pHSList->remove(spot);
}

std::vector<CHotSpot::Entry> CHotSpot::entries() {
    std::vector<Entry> listed;
    if (!pHSList) return listed;
    listed.reserve(static_cast<std::size_t>(pHSList->size()));
    for (CXObject* object : pHSList->elements())
        listed.push_back({object, object->objectId()});
    return listed;
}

CHotSpot* CHotSpot::stillListed(const Entry& entry) {
    if (!pHSList || !pHSList->contains(entry.object)) return nullptr;
    return entry.object->objectId() == entry.id ? static_cast<CHotSpot*>(entry.object) : nullptr;
}

CHotSpot* CHotSpot::findAt(const CXVector* list, CXPoint point) {
    CHotSpot* found = nullptr;
    int best = 0;
    // Only questions are asked here, and none of them changes the list.
    for (int i = 0; list && i < list->size(); ++i) {
        auto* spot = static_cast<CHotSpot*>(list->at(i));
        if (!spot->TestHit(point) || (spot->unit_ && !spot->unit_->isActive())) continue;
        const int priority = spot->getPriority();
        if (priority < minPriority || priority > maxPriority || priority < best) continue;
        found = spot;
        best = priority;
    }
    return found;
}

bool CHotSpot::TestHit(CXPoint point) const {
    if (!enabled_) return false;
    if (!activeRect_.IsEmpty()) return activeRect_.IsInRect(point);
    return graphic_ && graphic_->GetBoundingBox().IsInRect(point) && graphic_->isSolidAt(point);
}

void CHotSpot::Set(CGraphicsObject* graphic, _event events, int flags) {
    graphic_ = graphic;
    events_ = static_cast<int>(events);
    flags_ = flags;
}

void CHotSpot::Enable(bool enabled) {
    if (enabled_ && !enabled && !focus_) endActiveCursor();
    enabled_ = enabled;
}

void CHotSpot::endActiveCursor() const {
    if (cursorEnabled_ && m_pWindow) m_pWindow->EndActiveCursor();
}

int CHotSpot::OnMouseEvent(_event event, CXPoint point, int flags) {
    switch (event) {
        case kMouseMove:
            return move(point, flags);
        case kLeftDown:
            return leftDown(point, flags);
        case kLeftUp:
            return leftUp(point, flags);
        case kRightDown:
            return rightDown(point, flags);
        case kRightUp:
        case kMiddleDown:
        case kMiddleUp:
        case kLeftDoubleClick:
            return 0;
    }
    return flags;
}

int CHotSpot::move(CXPoint point, int flags) {
    // Focus goes with the point alone: a hot spot that lies under another keeps it while the point is inside.
    for (const Entry& entry : entries()) {
        CHotSpot* spot = stillListed(entry);
        if (!spot || !spot->enabled_ || !spot->focus_ || spot->TestHit(point)) continue;
        spot->endActiveCursor();
        spot->focus_ = false;
        if (spot->OnFocusOff(point, flags, spot->parent_) > 0) break;
    }

    CHotSpot* hit = hitBy(point);
    if (!hit) return 0;
    if (hit->cursorEnabled_ && m_pWindow) m_pWindow->BeginActiveCursor();
    if (hit->focus_) return hit->OnMouseMove(point, flags, hit->parent_);
    hit->focus_ = true;
    const Entry entry{hit, hit->objectId()};
    hit->OnMouseMove(point, flags, hit->parent_);
    hit = stillListed(entry);
    return hit ? hit->OnFocusOn(point, flags, hit->parent_) : 0;
}

int CHotSpot::leftDown(CXPoint point, int flags) {
    CHotSpot* hit = hitBy(point);
    if (!hit) return 0;
    hit->endActiveCursor();
    hit->focus_ = true;
    return hit->OnLButtonDown(point, flags, hit->parent_);
}

int CHotSpot::leftUp(CXPoint point, int flags) {
    CHotSpot* hit = hitBy(point);
    if (!hit) return 0;
    hit->focus_ = false;
    return hit->OnLButtonUp(point, flags, hit->parent_);
}

int CHotSpot::rightDown(CXPoint point, int flags) {
    for (const Entry& entry : entries()) {
        CHotSpot* spot = stillListed(entry);
        if (!spot || !spot->TestHit(point)) continue;
        spot->endActiveCursor();
        spot->focus_ = true;
        const int result = spot->OnRButtonDown(point, flags, spot->parent_);
        if (result > 0) return result;
    }
    return 0;
}
