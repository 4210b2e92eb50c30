// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "graphics/child_list.h"
#include "graphics/graphics_object.h"

// A picture made of other objects: a compositor in little. Each time it is drawn it paints its children anew, low
// priorities first, at their positions within it.
//
// With a back plane it also has pixels that stay, below all children: objects can be drawn into them, what the children
// show can be flattened into them, and with alpha planes parts can be rubbed out. The plane starts transparent and
// black.
//
// It owns the back plane alone. A child that dies is one no more, and all of them may stand in other places too.
class CCanvas : public CGraphicsObject, public CInvalidateObserver {
public:
    // Which one of the changes of children between two drawings repaints the whole canvas.
    static inline int maxRegions = 10;

    // A size of less than a pixel, or of more pixels than 35 screens have, gives a canvas of size 0 by 0.
    CCanvas(CWindow* window, const CXSize& size, int bpp, bool alpha, bool backPlane);
    ~CCanvas() override;

    // Lists the object unless it is listed; the canvas itself never is.
    virtual void add(CGraphicsObject* object, int priority);
    virtual void remove(CGraphicsObject* object);  // invalidates nothing
    virtual void removeAll();                      // all but the back plane
    // Pixels and alpha become 0 within the clipping rectangle, else everywhere; of the back plane, too, for `both`.
    virtual void clear(bool both);
    // What the children show goes into the back plane and they leave. Without a back plane they just leave.
    virtual void capture();
    // Subtracts the alpha of the object, with its corner at (x, y), from the canvas and the back plane. An object
    // without alpha is opaque. No effect unless the canvas has alpha and a back plane.
    virtual void erase(CGraphicsObject* object, int x, int y);
    // Draws the object into the back plane, where its position would be (x, y). No effect without a back plane.
    virtual void draw(CGraphicsObject* object, int x, int y);

    void Redraw() override;
    void onInvalidate(CGraphicsObject* object, const CXRect* rect) override;
    void onDestroy(CGraphicsObject* object) override { remove(object); }
    // Over the same children, with a copy of the back plane, and on the screen if this one is.
    CXObject* clone() override;

    bool hasBackPlane() const { return backPlane_ != nullptr; }

private:
    struct Child {
        CGraphicsObject* object;
        int priority;
    };

    void enter(CGraphicsObject* object, int priority);
    void removeChildren();
    void drawChild(const Child& child);
    void invalidateOnScreen(CXRect rect);
    CRefreshScreen* screen() const;  // null: none

    ChildList<Child> children_;
    std::unique_ptr<CGraphicsObject> backPlane_;
    int notifications_ = 0;  // since the latest drawing
    bool isDrawing_ = false;
    bool isTelling_ = false;
};
