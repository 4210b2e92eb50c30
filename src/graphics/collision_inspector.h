// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <vector>

#include "foundation/xobject.h"

class CGraphicsObject;

// Tells when monitored objects begin and end to overlap. It keeps the list of them and tests none yet: no picture
// exists that could move.
class CCollisionInspector : public CXObject {
public:
    void addMonitoredObject(CGraphicsObject* object, bool useAlpha);
    void removeMonitoredObject(const CGraphicsObject* object);

private:
    struct Monitored {
        CGraphicsObject* object;  // not owned
        bool useAlpha;
    };
    std::vector<Monitored> monitored_;
};
