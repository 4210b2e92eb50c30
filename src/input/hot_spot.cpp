// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "input/hot_spot.h"

namespace {
constexpr int kLowest = 0;
constexpr int kHighest = 10'000'000;
}  // namespace

int CHotSpot::minPriority = kLowest;
int CHotSpot::maxPriority = kHighest;

int CHotSpot::OnMouseEvent(_event event, CXPoint, int flags) {
    switch (event) {
        case kMouseMove:
        case kLeftDown:
        case kLeftUp:
        case kRightDown:
        case kRightUp:
        case kMiddleDown:
        case kMiddleUp:
        case kLeftDoubleClick:
            return 0;
    }
    return flags;
}

void CHotSpot::done() {
    minPriority = kLowest;
    maxPriority = kHighest;
}
