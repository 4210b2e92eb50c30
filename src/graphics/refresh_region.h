// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <vector>

#include "graphics/geometry.h"

// The rectangles of the screen that have to be painted anew, none of which overlap, or one null entry for the whole
// screen. A new list holds the null entry: the first refresh paints everything.
class CRefreshRegion {
public:
    void removeAll();
    // Adds a copy, cut where others lie already; null, or exactly (0, 0, 800, 600), stands for the whole screen, behind
    // which nothing is added.
    void addRect(const CXRect* rect);
    bool isWhole() const { return whole_; }
    bool isEmpty() const { return size() == 0; }
    int size() const { return whole_ ? 1 : static_cast<int>(rects_.size()); }
    const CXRect* rectAt(int i) const { return whole_ ? nullptr : &rects_[static_cast<std::size_t>(i)]; }

private:
    struct Piece {
        CXRect rect;
        std::size_t from;  // the entries before this one don't meet it
    };
    void cut(const Piece& piece);

    bool whole_ = true;
    std::vector<CXRect> rects_;
    std::vector<CXRect> asked_;  // as they came: together they cover what `rects_` cover
    std::vector<Piece> pieces_;  // still to add; kept for its memory
};
