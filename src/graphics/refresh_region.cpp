// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/refresh_region.h"

#include <vector>

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
    std::vector<CXRect> pieces = {*rect};
    while (!pieces.empty() && !whole_) {
        const CXRect piece = pieces.back();
        pieces.pop_back();
        bool met = false;
        for (int i = 0; i < size() && !met; ++i) {
            CXRect* entry = rectAt(i);
            if (entry->Common(piece).IsEmpty()) continue;
            met = true;
            if (piece.IsPartOf(*entry)) break;
            if (entry->IsPartOf(piece)) {
                removeAt(i);
                delete entry;
                pieces.push_back(piece);
                break;
            }
            CXArray* rest = piece.sub(*entry);
            for (int k = 0; k < rest->size(); ++k) {
                auto* part = static_cast<CXRect*>(rest->at(k));
                pieces.push_back(*part);
                delete part;
            }
            delete rest;
        }
        if (!met) add(new CXRect(piece));
    }
}
