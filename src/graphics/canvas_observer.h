// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

// Hears of the compositor's frames. `onUpdate` and `onUpdated` come before and behind the drawing of the objects.
class CCanvasObserver {
public:
    virtual ~CCanvasObserver() = default;
    virtual void onInitialUpdate() {}
    virtual void onUpdate() {}
    virtual void onUpdated() {}
    virtual void onWindowFocusOn() {}
    virtual void onWindowFocusOff() {}
};
