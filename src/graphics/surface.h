// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "frame/handles.h"
#include "graphics/graphics_object.h"

// A picture of 16-bit pixels that the display layer can copy: the compositor's target, the background. All of them lie
// in plain memory, so none is ever lost and the pixels need no lock.
class CDirectDrawSurface : public CGraphicsObject {
public:
    explicit CDirectDrawSurface(CWindow* window);  // of the screen's size and format, black
    CDirectDrawSurface(CWindow* window, const CXSize& size, int bpp, bool video);  // `video`: all memory is the same

    std::span<const std::uint16_t> pixels() const { return data_.pixels(); }

    // Copies that part of the source to (x, y), clipped to both. A source smaller than the part in either direction is
    // copied whole, into the middle of the part moved to the origin.
    void Blt(const CDirectDrawSurface* source, int x, int y, const CXRect* part);
    void Blt(const CDirectDrawSurface* source, const CXPoint& to, const CXRect* part) { Blt(source, to.x, to.y, part); }
    // Rectangle to rectangle; to another size with the nearest pixel.
    void Blt(const CDirectDrawSurface* source, const CXRect* from, const CXRect* to);

    // Copies the surface to its destiny, which is a surface, at this one's position. Where the copy reaches the
    // destiny's right or bottom edge it is cut as for a screen of 800 by 600, whatever size the destiny has.
    void Redraw() override;
    void Release() {}  // there is no lock to give back
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
    bool hasClipper() const { return hasClipper_; }
    void CreateClipper(HWND) { hasClipper_ = true; }
    // Which surface `Flip` shows; it stays the caller's.
    void setBackBuffer(const CDirectDrawSurface* backBuffer) { backBuffer_ = backBuffer; }

    char* Lock() { return reinterpret_cast<char*>(primary_.data()); }  // the pixels that the display shows
    void UnLock() { show({0, 0, size_.width, size_.height}); }

    // Copies that part of the source to (x, y), in coordinates of the desktop. Clipped to both.
    void Blt(const CDirectDrawSurface* source, int x, int y, const CXRect* part);
    void Blt(const CDirectDrawSurface* source, const CXPoint& to, const CXRect* part) { Blt(source, to.x, to.y, part); }
    void Blt(const CDirectDrawSurface* source, const CXRect* from, const CXRect* to);
    void Flip();

    // Counts a frame, and writes the frames of the latest whole second into the screen's corner.
    void ShowFPS(const CXPoint& position, CDirectDrawSurface* surface);
    int getFPS() const { return fps_; }

private:
    void open();
    void show(const CXRect& rect);

    CXSize size_;
    int bpp_ = 0;
    bool flip_ = false;
    bool hasClipper_ = false;
    const CDirectDrawSurface* backBuffer_ = nullptr;
    std::vector<std::uint16_t> primary_;  // what the display shows
    int frames_ = 0;
    int fps_ = 0;
    std::uint32_t secondBegan_ = 0;
};
