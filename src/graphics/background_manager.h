// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "graphics/geometry.h"

class CColor;
class CDirectDrawSurface;
class CGraphicsObject;
class CRefreshRegion;
class CWindow;

// Paints the background of the compositor. A background larger than the screen scrolls with its position; one that is
// larger in one direction alone goes on from its other end there.
class CBackgroundManager {
public:
    CBackgroundManager(CWindow* window, const CXSize& screen);
    ~CBackgroundManager();
    CBackgroundManager(const CBackgroundManager&) = delete;
    CBackgroundManager& operator=(const CBackgroundManager&) = delete;

    // Null, and an object without pixels, leaves no background.
    void SetBackground(const CColor* color);
    void SetBackground(CGraphicsObject* object);
    void setBackground(std::unique_ptr<CDirectDrawSurface> surface);
    CDirectDrawSurface* getSurface() const { return background_.get(); }
    void checkScrollMode();

    void Redraw(CDirectDrawSurface* target, const CRefreshRegion& region);

private:
    enum class ScrollMode { plain, horizontal, vertical, offset };

    void paint(CDirectDrawSurface* target, const CXRect& part);

    std::unique_ptr<CDirectDrawSurface> background_;
    CWindow* window_;
    CXSize screen_;
    ScrollMode scrollMode_ = ScrollMode::offset;
};
