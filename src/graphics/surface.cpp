// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/surface.h"

#include <algorithm>

#include "frame/error.h"
#include "frame/window.h"
#include "platform/platform.h"

namespace {
std::size_t pixelCount(const CXSize& size) {
    return static_cast<std::size_t>(std::max(size.width, 0)) * static_cast<std::size_t>(std::max(size.height, 0));
}
}  // namespace

CDirectDrawSurface::CDirectDrawSurface(CWindow* window)
    : CDirectDrawSurface(window, window->GetScreenSize(), window->GetBpp(), false) {}

CDirectDrawSurface::CDirectDrawSurface(CWindow* window, const CXSize& size, int bpp, bool)
    : CGraphicsObject(window, size, bpp), pixels_(pixelCount(size)) {}

CSurface::CSurface(CWindow*, const CXSize& size, int& bpp, HWND, bool flip) : size_(size), flip_(flip) {
    open();
    bpp = bpp_;
}

CSurface::CSurface(CWindow*, const CXSize& size) : size_(size) { open(); }

void CSurface::open() {
    platform::Display& display = platform::current().display;
    if (!display.open(size_.width, size_.height)) {
        setErrorCode(kErrorGraphics);
        return;
    }
    bpp_ = display.bitsPerPixel();
    primary_.resize(pixelCount(size_));
}

void CSurface::Blt(const CDirectDrawSurface* source, int x, int y, const CXRect* part) {
    // The display is the client area, whatever place on the desktop it has.
    const platform::ClientArea client = platform::current().shell.clientArea();
    const CXPoint shift = CXPoint(x, y) - CXPoint(client.left, client.top) - part->LeftTop();
    const CXSize sourceSize = source->Size();
    CXRect target = part->Common({0, 0, sourceSize.width, sourceSize.height}) + shift;
    target = target.Common({0, 0, size_.width, size_.height});
    if (target.IsEmpty()) return;

    const std::span<const std::uint16_t> pixels = source->pixels();
    for (int row = target.top; row < target.bottom; ++row) {
        const auto from = static_cast<std::size_t>(row - shift.y) * static_cast<std::size_t>(sourceSize.width) +
                          static_cast<std::size_t>(target.left - shift.x);
        const auto to = static_cast<std::size_t>(row) * static_cast<std::size_t>(size_.width) +
                        static_cast<std::size_t>(target.left);
        std::copy_n(pixels.begin() + static_cast<std::ptrdiff_t>(from), target.Width(),
                    primary_.begin() + static_cast<std::ptrdiff_t>(to));
    }
    platform::current().display.present(primary_, {target.left, target.top, target.right, target.bottom});
}

void CSurface::Flip() {
    if (!backBuffer_ || backBuffer_->Size() != size_) return;
    platform::current().display.present(backBuffer_->pixels(), {0, 0, size_.width, size_.height});
}
