// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xobject.h"
#include "graphics/geometry.h"

class CRefreshScreen;
class CWindow;

// The base of all that can stand on the screen: place, size and visibility.
//
// It has no pixels, alpha plane, clip or opacity yet, so its `Redraw` draws nothing.
class CGraphicsObject : public CXObject {
public:
    explicit CGraphicsObject(CWindow* window) : window_(window) {}
    CGraphicsObject(CWindow* window, const CXSize& size, int bpp) : window_(window), size_(size), bpp_(bpp) {}
    ~CGraphicsObject() override;  // leaves its canvas
    CGraphicsObject(const CGraphicsObject&) = delete;
    CGraphicsObject& operator=(const CGraphicsObject&) = delete;

    // Frees what all graphics objects share.
    static void ReleaseGraphics() {}

    virtual char* GetDataPtr() { return nullptr; }
    virtual void SetPosition(const CXPoint& p) { SetPosition(p.x, p.y); }
    virtual void SetPosition(int x, int y) { position_ = {x, y}; }
    virtual void Move(const CXPoint& by) { Move(by.x, by.y); }
    virtual void Move(int dx, int dy);  // and invalidates where it was and where it is
    virtual void Visible(bool visible);
    virtual void Redraw() {}
    virtual int Width() const { return size_.width; }
    virtual int Height() const { return size_.height; }
    virtual CXSize Size() const { return size_; }
    virtual CXPoint getPosition() const { return position_; }
    virtual CXPoint GetPosition() const { return position_; }
    virtual CXRect GetBoundingBox() const;
    virtual void Invalidate();

    void Show() { Visible(true); }
    void Hide() { Visible(false); }
    bool isVisible() const { return visible_; }
    int getBpp() const { return bpp_; }
    CWindow* getWindow() const { return window_; }
    CRefreshScreen* GetCanvas() const { return canvas_; }
    void SetCanvas(CRefreshScreen* canvas) { canvas_ = canvas; }

protected:
    CWindow* window_;
    CRefreshScreen* canvas_ = nullptr;  // the one that lists it
    CXSize size_;
    CXPoint position_;
    int bpp_ = 0;
    bool visible_ = true;
};
