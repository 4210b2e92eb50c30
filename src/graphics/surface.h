// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "frame/handles.h"
#include "graphics/graphics_object.h"

class CColor;

// A picture of 16-bit pixels that the display layer can copy: the compositor's target.
class CDirectDrawSurface : public CGraphicsObject {
public:
    explicit CDirectDrawSurface(CWindow* window);  // of the screen's size and format, black
    CDirectDrawSurface(CWindow* window, const CXSize& size, int bpp, bool video);  // `video`: all memory is the same

    char* GetDataPtr() override { return reinterpret_cast<char*>(pixels_.data()); }
    std::span<const std::uint16_t> pixels() const { return pixels_; }

private:
    std::vector<std::uint16_t> pixels_;  // rows without gaps
};

// The display. Its error word is that of its construction: 0, or -998 when the display can't be had.
class CSurface : public CXObject {
public:
    // Full screen. The display's own format goes to `bpp`. With `flip` whole frames are shown by `Flip`.
    CSurface(CWindow* window, const CXSize& size, int& bpp, HWND handle, bool flip);
    CSurface(CWindow* window, const CXSize& size);  // in the window

    CXSize GetScreenSize() const { return size_; }
    int GetBPP() const { return bpp_; }
    bool IsFlippingEnabled() const { return flip_; }
    // Which surface `Flip` shows; it stays the caller's.
    void setBackBuffer(const CDirectDrawSurface* backBuffer) { backBuffer_ = backBuffer; }

    // Copies that part of the source to (x, y), in coordinates of the desktop. Clipped to both.
    void Blt(const CDirectDrawSurface* source, int x, int y, const CXRect* part);
    void Flip();

private:
    void open();

    CXSize size_;
    int bpp_ = 0;
    bool flip_ = false;
    const CDirectDrawSurface* backBuffer_ = nullptr;
    std::vector<std::uint16_t> primary_;  // what the display shows
};
