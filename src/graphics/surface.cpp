// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/surface.h"

#include <algorithm>
#include <string>

#include "frame/error.h"
#include "frame/window.h"
#include "platform/platform.h"

namespace {

std::size_t pixelCount(const CXSize& size) {
    return static_cast<std::size_t>(std::max(size.width, 0)) * static_cast<std::size_t>(std::max(size.height, 0));
}

std::size_t indexOf(int x, int y, const CXSize& size) {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(size.width) + static_cast<std::size_t>(x);
}

CXRect wholeOf(const CXSize& size) { return {0, 0, size.width, size.height}; }

// One side of a copy.
template <class Pixel>
struct Picture {
    std::span<Pixel> pixels;
    CXSize size;
};
using Source = Picture<const std::uint16_t>;
using Target = Picture<std::uint16_t>;

// Copies the part to (x, y), clipped to both sides. What has changed in the target.
CXRect copyPixels(const Source& source, const CXRect& part, const Target& target, const CXPoint& to) {
    if (source.pixels.size() < pixelCount(source.size) || target.pixels.size() < pixelCount(target.size)) return {};
    const CXPoint shift = to - part.LeftTop();
    const CXRect changed = (part.Common(wholeOf(source.size)) + shift).Common(wholeOf(target.size));
    if (changed.IsEmpty()) return {};
    for (int y = changed.top; y < changed.bottom; ++y) {
        std::copy_n(source.pixels.begin() +
                        static_cast<std::ptrdiff_t>(indexOf(changed.left - shift.x, y - shift.y, source.size)),
                    changed.Width(),
                    target.pixels.begin() + static_cast<std::ptrdiff_t>(indexOf(changed.left, y, target.size)));
    }
    return changed;
}

// Copies one rectangle to another, of another size with the nearest pixel. What has changed in the target.
CXRect stretchPart(const Source& source, const CXRect& from, const Target& target, const CXRect& to) {
    const CXSize fromSize(from.Width(), from.Height()), toSize(to.Width(), to.Height());
    if (fromSize == toSize) return copyPixels(source, from, target, to.LeftTop());
    if (fromSize.width <= 0 || fromSize.height <= 0 || toSize.width <= 0 || toSize.height <= 0) return {};
    if (source.pixels.size() < pixelCount(source.size) || target.pixels.size() < pixelCount(target.size)) return {};
    const CXRect changed = to.Common(wholeOf(target.size));
    const auto nearest = [](int position, int toLength, int fromLength) {
        return static_cast<int>(static_cast<std::int64_t>(position) * fromLength / toLength);
    };
    for (int y = changed.top; y < changed.bottom; ++y) {
        const int sourceY = from.top + nearest(y - to.top, toSize.height, fromSize.height);
        for (int x = changed.left; x < changed.right; ++x) {
            const int sourceX = from.left + nearest(x - to.left, toSize.width, fromSize.width);
            const bool inside =
                sourceX >= 0 && sourceY >= 0 && sourceX < source.size.width && sourceY < source.size.height;
            if (inside)
                target.pixels[indexOf(x, y, target.size)] = source.pixels[indexOf(sourceX, sourceY, source.size)];
        }
    }
    return changed;
}

// The letters of the frame counter: five rows of three pixels, the leftmost in the highest bit.
struct Glyph {
    char letter;
    std::uint8_t rows[5];
};

constexpr Glyph kGlyphs[] = {
    {'F', {7, 4, 7, 4, 4}},
    {'P', {7, 5, 7, 4, 4}},
    {'S', {7, 4, 7, 1, 7}},
    {':', {0, 2, 0, 2, 0}},
    {'0', {7, 5, 5, 5, 7}},
    {'1', {2, 6, 2, 2, 7}},
    {'2', {7, 1, 7, 4, 7}},
    {'3', {7, 1, 7, 1, 7}},
    {'4', {5, 5, 7, 1, 1}},
    {'5', {7, 4, 7, 1, 7}},
    {'6', {7, 4, 7, 5, 7}},
    {'7', {7, 1, 1, 1, 1}},
    {'8', {7, 5, 7, 5, 7}},
    {'9', {7, 5, 7, 1, 7}},
};

constexpr int kGlyphScale = 2;
constexpr int kGlyphAdvance = 4 * kGlyphScale;

void drawGlyph(const Target& target, char letter, const CXPoint& at) {
    for (const Glyph& glyph : kGlyphs) {
        if (glyph.letter != letter) continue;
        for (int y = 0; y < 5 * kGlyphScale; ++y) {
            for (int x = 0; x < 3 * kGlyphScale; ++x) {
                const bool set = (glyph.rows[y / kGlyphScale] >> (2 - x / kGlyphScale) & 1) != 0;
                const CXPoint p = at + CXPoint(x, y);
                if (set && p.x < target.size.width && p.y < target.size.height)
                    target.pixels[indexOf(p.x, p.y, target.size)] = 0xFFFF;
            }
        }
    }
}

}  // namespace

CDirectDrawSurface::CDirectDrawSurface(CWindow* window)
    : CDirectDrawSurface(window, window->GetScreenSize(), window->GetBpp(), false) {}

CDirectDrawSurface::CDirectDrawSurface(CWindow* window, const CXSize& size, int bpp, bool)
    : CGraphicsObject(window, size, bpp) {}

void CDirectDrawSurface::Blt(const CDirectDrawSurface* source, int x, int y, const CXRect* part) {
    const CXSize sourceSize = source->Size();
    CXRect from = *part;
    CXPoint to(x, y);
    if (from.Width() > sourceSize.width || from.Height() > sourceSize.height) {
        to = {(from.Width() - sourceSize.width) >> 1, (from.Height() - sourceSize.height) >> 1};
        from = wholeOf(sourceSize);
    }
    copyPixels({source->pixels(), sourceSize}, from, {data_.pixels(), size_}, to);
}

void CDirectDrawSurface::Blt(const CDirectDrawSurface* source, const CXRect* from, const CXRect* to) {
    stretchPart({source->pixels(), source->Size()}, *from, {data_.pixels(), size_}, *to);
}

void CDirectDrawSurface::Redraw() {
    if (!destiny_) return;
    const CXSize target = destiny_->Size();
    const bool meets = position_.x > -target.width && position_.x < target.width && position_.y > -target.height &&
                       position_.y < target.height;
    if (!meets) return;
    CXRect part;
    part.left = position_.x < 1 ? -position_.x : 0;
    part.top = position_.y < 1 ? -position_.y : 0;
    part.right = position_.x + size_.width >= target.width ? 800 - position_.x : size_.width;
    part.bottom = position_.y + size_.height >= target.height ? 600 - position_.y : size_.height;
    copyPixels({pixels(), size_}, part, {destiny_->getData().pixels(), target},
               {std::max(position_.x, 0), std::max(position_.y, 0)});
}

CSurface::CSurface(CWindow*, const CXSize& size, int& bpp, HWND, bool flip) : size_(size), flip_(flip) {
    open();
    bpp = bpp_;
}

CSurface::CSurface(CWindow*, const CXSize& size) : size_(size) {
    open();
    CreateClipper(nullptr);
}

void CSurface::open() {
    platform::Display& display = platform::current().display;
    if (!display.open(size_.width, size_.height)) {
        setErrorCode(kErrorGraphics);
        return;
    }
    bpp_ = display.bitsPerPixel();
    primary_.resize(pixelCount(size_));
    secondBegan_ = platform::current().clock.ticks();
}

void CSurface::show(const CXRect& rect) {
    if (!rect.IsEmpty()) platform::current().display.present(primary_, {rect.left, rect.top, rect.right, rect.bottom});
}

void CSurface::Blt(const CDirectDrawSurface* source, int x, int y, const CXRect* part) {
    // The display is the client area, whatever place on the desktop it has.
    const platform::ClientArea client = platform::current().shell.clientArea();
    show(copyPixels({source->pixels(), source->Size()}, *part, {primary_, size_},
                    CXPoint(x, y) - CXPoint(client.left, client.top)));
}

void CSurface::Blt(const CDirectDrawSurface* source, const CXRect* from, const CXRect* to) {
    const platform::ClientArea client = platform::current().shell.clientArea();
    CXRect target = *to;
    target -= CXPoint(client.left, client.top);
    show(stretchPart({source->pixels(), source->Size()}, *from, {primary_, size_}, target));
}

void CSurface::Flip() {
    if (!backBuffer_ || backBuffer_->Size() != size_) return;
    platform::current().display.present(backBuffer_->pixels(), {0, 0, size_.width, size_.height});
}

void CSurface::ShowFPS(const CXPoint&, CDirectDrawSurface*) {
    constexpr std::uint32_t kSecond = 1000;
    const std::uint32_t now = platform::current().clock.ticks();
    ++frames_;
    if (now - secondBegan_ >= kSecond) {
        fps_ = frames_;
        frames_ = 0;
        secondBegan_ = now;
    }
    const std::string text = "FPS: " + std::to_string(fps_);
    CXPoint at(10, 10);
    for (const char letter : text) {
        drawGlyph({primary_, size_}, letter, at);
        at.x += kGlyphAdvance;
    }
    show({10, 10, std::min(at.x, size_.width), std::min(10 + 5 * kGlyphScale, size_.height)});
}
