// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/collision_inspector.h"

#include <algorithm>

#include "graphics/graphics_object.h"

namespace {

// Handlers that move each other's objects for ever come to an end here.
constexpr int kDeepest = 100;
int depth = 0;

}  // namespace

CCollisionInspector::CMonitoredObject* CCollisionInspector::find(const CGraphicsObject* object) {
    for (const auto& entry : monitored_) {
        if (entry->object == object) return entry.get();
    }
    return nullptr;
}

void CCollisionInspector::addMonitoredObject(CGraphicsObject* object, bool useAlpha) {
    if (CMonitoredObject* entry = find(object)) {
        entry->useAlpha = useAlpha;
    } else {
        monitored_.push_back(std::make_unique<CMonitoredObject>(CMonitoredObject{object, useAlpha, false}));
    }
}

void CCollisionInspector::removeMonitoredObject(const CGraphicsObject* object) {
    std::erase_if(monitored_, [=](const auto& entry) { return entry->object == object; });
}

void CCollisionInspector::addNotifier(CCollisionObserver* observer) {
    if (std::find(observers_.begin(), observers_.end(), observer) == observers_.end()) observers_.push_back(observer);
}

void CCollisionInspector::removeNotifier(CCollisionObserver* observer) { std::erase(observers_, observer); }

void CCollisionInspector::notify(int what, CGraphicsObject* moved, CGraphicsObject* met) {
    const std::vector<CCollisionObserver*> observers = observers_;
    for (CCollisionObserver* observer : observers) {
        // One that is gone must not be called, nor be told of objects that are.
        if (std::find(observers_.begin(), observers_.end(), observer) == observers_.end()) continue;
        if (!find(moved) || !find(met)) return;
        if (what == 1) observer->onCollision(moved, met);
        if (what == 2) observer->onCollisionFinished(moved, met);
    }
}

bool CCollisionInspector::solidPixelsMeet(CGraphicsObject* a, CGraphicsObject* b, const CXRect& common) {
    // A coded plane is decoded once for all the reads. Without an alpha plane every pixel is solid.
    const bool codedA = a->getCompression() == kCompressionRle, codedB = b->getCompression() == kCompressionRle;
    if (codedA) a->DeCompressRLE2();
    if (codedB) b->DeCompressRLE2();
    bool meet = false;
    for (int x = common.left; x < common.right && !meet; ++x) {
        for (int y = common.top; y < common.bottom && !meet; ++y)
            meet = a->isSolidAt({x, y}) && b->isSolidAt({x, y});
    }
    if (codedA) a->bringBackCompressed();
    if (codedB) b->bringBackCompressed();
    return meet;
}

void CCollisionInspector::onPositionChanged(CGraphicsObject* moved) {
    if (!find(moved) || depth >= kDeepest) return;
    ++depth;
    const CXRect box = moved->GetBoundingBox();
    std::vector<CGraphicsObject*> others;
    others.reserve(monitored_.size());
    for (const auto& entry : monitored_)
        others.push_back(entry->object);
    for (CGraphicsObject* other : others) {
        if (other == moved) continue;
        // A handler may have taken out either of them.
        if (!find(moved)) break;
        CMonitoredObject* entry = find(other);
        if (!entry) continue;
        const CXRect common = box.Common(other->GetBoundingBox());
        if (common.IsEmpty()) {
            if (!entry->inCollision) continue;
            entry->inCollision = false;
            notify(2, moved, other);
        } else if (!entry->inCollision) {
            const bool byAlpha = entry->useAlpha;
            if (byAlpha && !solidPixelsMeet(moved, other, common)) continue;
            entry->inCollision = true;
            notify(1, moved, other);
            if (byAlpha) break;
        }
    }
    --depth;
}
