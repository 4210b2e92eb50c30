// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "foundation/xvector.h"
#include "graphics/graphics_object.h"

class CColor;
class CDirectDrawSurface;
class CSurface;

// The rectangles of the screen that have to be shown anew, and a null entry for the whole screen. A new list holds the
// null entry: the first refresh paints everything.
class CRefreshRegion : public CXArray {
public:
    CRefreshRegion();
    ~CRefreshRegion() override;

    void removeAll() override;  // frees the rectangles
    // Adds a copy; null, or exactly (0, 0, 800, 600), stands for the whole screen, behind which nothing is added.
    // It doesn't cut rectangles that meet others yet, so a part may be shown twice.
    void addRect(const CXRect* rect);
    bool isWhole() const { return whole_; }
    CXRect* rectAt(int i) const { return static_cast<CXRect*>(at(i)); }

private:
    bool whole_ = false;
};

// The window's compositor: what stands on the screen, in order of priority, and which parts have changed.
//
// It paints neither background nor objects yet, so the screen stays black; a background's name is kept and no picture
// loaded.
class CRefreshScreen : public CGraphicsObject {
public:
    CRefreshScreen(CWindow* window, bool localDestiny);
    ~CRefreshScreen() override;

    // Lists the object unless it is listed; of equal priorities the later stands on top. It stays the caller's.
    void put(CGraphicsObject* object, int priority);
    void operator<<(CGraphicsObject* object) { put(object, 0); }
    void operator>>(CGraphicsObject* object);
    void Empty();
    void SetPriority(CGraphicsObject* object, int priority);
    int GetPriority(const CGraphicsObject* object) const;  // -1: not listed

    using CGraphicsObject::Invalidate;
    void Invalidate(const CGraphicsObject* object);
    void Invalidate(const CXRect* rect);  // null: the whole screen
    void validate() { region_.removeAll(); }
    CRefreshRegion* getRefreshList() { return &region_; }

    void SetBackground(const CColor* color);
    void SetBackground(CGraphicsObject* object);
    void SetBackground(const CXString& fileName);
    const CXString& getBackgroundName() const { return backgroundName_; }
    void flush();  // drops the loaded background image

    using CGraphicsObject::Redraw;
    // One frame. A current unit that became current since the last one gets its `onInitialUpdate`, and everything is
    // shown anew in this frame and, by `fullRefresh`, in the next; any other gets `onCanvasRefreshed`. True when there
    // is something to show.
    bool Redraw(CDirectDrawSurface* target, CSurface* surface, bool* fullRefresh);

    void onFocusOn() {}
    void onFocusOff() {}

private:
    struct Element {
        CGraphicsObject* object;
        int priority;
    };
    std::vector<Element>::iterator find(const CGraphicsObject* object);
    bool drawUnit(bool* fullRefresh);

    CRefreshRegion region_;
    std::vector<Element> elements_;  // by ascending priority
    CXString backgroundName_;
};
