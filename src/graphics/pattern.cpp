// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/pattern.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "frame/window.h"
#include "graphics/refresh_screen.h"

CPattern::CPattern(CWindow* window, const CXSize& size, const CXSize& grid) : CGraphicsObject(window), grid_(grid) {
    size_ = CXSize(std::max(size.width, 0), std::max(size.height, 0));
}

CPattern::~CPattern() { CPattern::removeAll(); }

void CPattern::add(const CXString& name, int cellX, int cellY, CGraphicsObject* object, int priority) {
    if (!object || object == this) return;
    cells_.add({object, priority, cellX, cellY, name});
    object->addInvalidateObserver(this);
}

template <class Matches>
void CPattern::removeIf(Matches matches) {
    cells_.removeIf(matches, [this](CGraphicsObject* object) {
        if (!cells_.contains(object)) object->removeInvalidateObserver(this);
    });
}

void CPattern::remove(const CXString& name) {
    removeIf([&](const Cell& cell) { return cell.name == name; });
}

void CPattern::remove(const CGraphicsObject* object) {
    removeIf([=](const Cell& cell) { return cell.object == object; });
}

void CPattern::removeAll() {
    removeIf([](const Cell&) { return true; });
}

void CPattern::setGrid(const CXSize& grid) {
    if (grid == grid_) return;
    grid_ = grid;
    Invalidate();
}

bool CPattern::placeInCell(const Cell& cell) const {
    const std::int64_t x = static_cast<std::int64_t>(grid_.width) * cell.x;
    const std::int64_t y = static_cast<std::int64_t>(grid_.height) * cell.y;
    if (!std::in_range<int>(x) || !std::in_range<int>(y)) return false;
    cell.object->placeAt({static_cast<int>(x), static_cast<int>(y)});
    return true;
}

void CPattern::Redraw() {
    // By way of a canvas a pattern may stand in itself; there it is not drawn, and keeps its destiny and clip.
    if (!destiny_ || isDrawing_) return;
    isDrawing_ = true;
    const bool wasLocked = isCanvasLocked();
    lockCanvas(true);
    cells_.walk([this](const Cell& cell) {
        if (cell.object->isVisible()) drawCell(cell);
    });
    lockCanvas(wasLocked);
    isDrawing_ = false;
}

void CPattern::drawCell(const Cell& cell) {
    CGraphicsObject* object = cell.object;
    const CXRect keptClip = object->GetClippingRect();
    const CXPoint keptPosition = object->getPosition();
    CGraphicsObject* keptDestiny = object->GetDestiny();
    object->SetDestiny(destiny_);
    bool isSeen = placeInCell(cell);
    if (isSeen && !clip_.IsEmpty()) {
        CXRect part = object->GetBoundingBox().Common(clip_);
        isSeen = !part.IsEmpty();
        if (isSeen) object->SetClippingRect(part -= object->GetPosition());
    }
    if (isSeen) object->Redraw();
    if (!cell.object) return;
    object->SetDestiny(keptDestiny);
    object->placeAt(keptPosition);
    object->SetClippingRect(keptClip);
}

void CPattern::onInvalidate(CGraphicsObject* object, const CXRect*) {
    CRefreshScreen* screen = canvas_ || !window_ ? canvas_ : window_->GetRefreshScreenInterface();
    if (!screen) return;
    const CXRect box = GetBoundingBox();
    const CXPoint kept = object->getPosition();
    cells_.walk([&](const Cell& cell) {
        if (cell.object != object || !placeInCell(cell)) return;
        const CXRect changed = object->GetBoundingBox().Common(box);
        if (!changed.IsEmpty()) screen->Invalidate(&changed);
    });
    object->placeAt(kept);
}

void CPattern::onDestroy(CGraphicsObject* object) {
    onInvalidate(object, nullptr);
    remove(object);
}
