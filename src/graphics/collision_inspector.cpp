// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/collision_inspector.h"

void CCollisionInspector::addMonitoredObject(CGraphicsObject* object, bool useAlpha) {
    for (Monitored& entry : monitored_) {
        if (entry.object == object) {
            entry.useAlpha = useAlpha;
            return;
        }
    }
    monitored_.push_back({object, useAlpha});
}

void CCollisionInspector::removeMonitoredObject(const CGraphicsObject* object) {
    std::erase_if(monitored_, [=](const Monitored& entry) { return entry.object == object; });
}
