// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "graphics/geometry.h"

// What the mouse did, as the window passes it to the hot spots. The numbers are part of the interface.
enum _event : unsigned {
    kMouseMove = 1,
    kLeftDown = 2,
    kLeftUp = 4,
    kRightDown = 8,
    kRightUp = 0x10,
    kMiddleDown = 0x20,
    kMiddleUp = 0x40,
    kLeftDoubleClick = 0x41,
};

// The areas of the screen that own mouse events. None can be made yet, so every event finds the list empty; the range
// of priorities that count is kept.
class CHotSpot {
public:
    static int OnMouseEvent(_event event, CXPoint point, int flags);  // 0, or the flags for an unknown event
    static int OnKeyDown(int, int) { return 0; }
    static int OnKeyUp(int, int) { return 0; }
    static void setMinPriority(int priority) { minPriority = priority; }
    static void setMaxPriority(int priority) { maxPriority = priority; }
    static int getMinPriority() { return minPriority; }
    static int getMaxPriority() { return maxPriority; }
    static void done();  // back to the state of the program's start

private:
    static int minPriority;
    static int maxPriority;
};
