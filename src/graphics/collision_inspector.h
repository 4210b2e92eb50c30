// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "foundation/xobject.h"

class CGraphicsObject;
class CXRect;

// Hears that monitored objects begin and end to overlap: the one that moved, and the one it met.
class CCollisionObserver {
public:
    virtual ~CCollisionObserver() = default;
    virtual void onCollision(CGraphicsObject* moved, CGraphicsObject* met) = 0;
    virtual void onCollisionFinished(CGraphicsObject* moved, CGraphicsObject* met) = 0;
};

// Tells when two monitored objects begin and end to overlap. Nothing is polled: an object that moves is tested against
// all others. Every observer hears of every pair.
//
// The mark of a running collision belongs to the entry of the object that was met, not to the pair.
class CCollisionInspector : public CXObject {
public:
    // For an object that is listed, only stores whether its alpha plane counts. Nothing is owned.
    void addMonitoredObject(CGraphicsObject* object, bool useAlpha);
    void removeMonitoredObject(const CGraphicsObject* object);
    void addNotifier(CCollisionObserver* observer);  // unless it is listed
    void removeNotifier(CCollisionObserver* observer);

    virtual void notify(int what, CGraphicsObject* moved, CGraphicsObject* met);  // 1: begun, 2: ended
    // An observer may move, add and remove objects, the moved one too.
    virtual void onPositionChanged(CGraphicsObject* moved);

private:
    struct CMonitoredObject {
        CGraphicsObject* object;
        bool useAlpha;
        bool inCollision;
    };
    CMonitoredObject* find(const CGraphicsObject* object);
    static bool solidPixelsMeet(CGraphicsObject* a, CGraphicsObject* b, const CXRect& common);

    std::vector<std::unique_ptr<CMonitoredObject>> monitored_;
    std::vector<CCollisionObserver*> observers_;
};
