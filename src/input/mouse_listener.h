// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "graphics/geometry.h"

// Hears every mouse event, by priority. Points are in the window's client area; buttons are 0 left, 1 middle, 2 right.
// True ends the event for the listeners below.
class CMouseListener {
public:
    virtual ~CMouseListener() = default;
    virtual bool onMouseMove(CXPoint) { return false; }
    virtual bool onClick(int /*button*/, CXPoint) { return false; }
    virtual bool onClick(CXPoint) { return false; }  // the left button, asked before the form with a number
    virtual bool onRelease(int /*button*/, CXPoint) { return false; }
    virtual bool onRelease(CXPoint) { return false; }
    virtual bool onDblClick(CXPoint) { return false; }
    virtual void onSetFocus() {}
    virtual void onLooseFocus() {}
};
