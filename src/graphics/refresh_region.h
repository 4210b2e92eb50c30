// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xvector.h"
#include "graphics/geometry.h"

// The rectangles of the screen that have to be painted anew, none of which overlap, and a null entry for the whole
// screen. A new list holds the null entry: the first refresh paints everything.
class CRefreshRegion : public CXArray {
public:
    CRefreshRegion();
    ~CRefreshRegion() override;

    void removeAll() override;  // frees the rectangles
    // Adds a copy, cut where others lie already; null, or exactly (0, 0, 800, 600), stands for the whole screen, behind
    // which nothing is added.
    virtual void addRect(const CXRect* rect);
    virtual bool isWhole() const { return whole_; }
    CXRect* rectAt(int i) const { return static_cast<CXRect*>(at(i)); }

private:
    bool whole_ = false;
};
