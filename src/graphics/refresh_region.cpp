// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/refresh_region.h"

#include <algorithm>

namespace {

bool meet(const CXRect& a, const CXRect& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

}  // namespace

void CRefreshRegion::removeAll() {
    rects_.clear();
    asked_.clear();
    whole_ = false;
}

void CRefreshRegion::addRect(const CXRect* rect) {
    if (whole_) return;
    // These numbers stand for the whole screen whatever size it has.
    if (!rect || *rect == CXRect(0, 0, 800, 600)) {
        removeAll();
        whole_ = true;
        return;
    }
    // What changes is mostly told more than once, and the pieces of a rectangle that is there take long to compare.
    if (std::any_of(asked_.rbegin(), asked_.rend(), [=](const CXRect& asked) { return rect->IsPartOf(asked); })) return;
    asked_.push_back(*rect);
    pieces_.push_back({*rect, 0});
    while (!pieces_.empty()) {
        const Piece piece = pieces_.back();
        pieces_.pop_back();
        cut(piece);
    }
}

// What waits on the stack begins its search no later than the piece in hand, so the entries that are taken away here
// lie behind all of these beginnings. What is appended meets nothing that waits, since pieces of one rectangle don't
// overlap.
void CRefreshRegion::cut(const Piece& piece) {
    const CXRect& rect = piece.rect;
    std::size_t i = piece.from;
    while (i < rects_.size()) {
        const CXRect entry = rects_[i];
        if (!meet(entry, rect)) {
            ++i;
            continue;
        }
        if (rect.IsPartOf(entry)) return;
        if (entry.IsPartOf(rect)) {
            rects_.erase(rects_.begin() + static_cast<std::ptrdiff_t>(i));
            continue;
        }
        const CXRect hole = rect.Common(entry);
        const CXRect rest[] = {
            {rect.left,  rect.top,    rect.right, hole.top   },
            {rect.left,  hole.top,    hole.left,  hole.bottom},
            {hole.right, hole.top,    rect.right, hole.bottom},
            {rect.left,  hole.bottom, rect.right, rect.bottom}
        };
        for (const CXRect& part : rest) {
            if (!part.IsEmpty()) pieces_.push_back({part, i + 1});
        }
        return;
    }
    rects_.push_back(rect);
}
