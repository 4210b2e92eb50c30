// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/canvas.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "frame/window.h"
#include "graphics/refresh_screen.h"

namespace {

constexpr int kBackPlanePriority = -1;
constexpr std::int64_t kMostPixels = 1 << 24;  // sizes come from definition files

CXSize usable(const CXSize& size) {
    const bool isUsable =
        size.width > 0 && size.height > 0 && static_cast<std::int64_t>(size.width) * size.height <= kMostPixels;
    return isUsable ? size : CXSize();
}

Plane alphaPlane(const CXSize& size) { return Plane(static_cast<std::size_t>(size.mul())); }

// Sets the part of a plane, of so many bytes a pixel, to 0.
void clearPart(const Plane& plane, const CXSize& size, const CXRect& part, std::size_t unit) {
    const std::span<std::uint8_t> bytes = plane.bytes();
    if (bytes.size() < static_cast<std::size_t>(size.mul()) * unit || part.IsEmpty()) return;
    const std::size_t stride = static_cast<std::size_t>(size.width) * unit;
    for (int y = part.top; y < part.bottom; ++y) {
        const std::size_t from = static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(part.left) * unit;
        std::ranges::fill(bytes.subspan(from, static_cast<std::size_t>(part.Width()) * unit), std::uint8_t{0});
    }
}

}  // namespace

CCanvas::CCanvas(CWindow* window, const CXSize& size, int bpp, bool alpha, bool backPlane)
    : CGraphicsObject(window, usable(size), bpp) {
    if (alpha) alpha_ = alphaPlane(size_);
    if (!backPlane) return;
    backPlane_ = std::make_unique<CGraphicsObject>(window, size_, bpp);
    if (alpha) backPlane_->setPlanes(size_, bpp, backPlane_->getData(), alphaPlane(size_));
    enter(backPlane_.get(), kBackPlanePriority);
}

CCanvas::~CCanvas() { removeChildren(); }

CRefreshScreen* CCanvas::screen() const {
    if (canvas_) return canvas_;
    return window_ ? window_->GetRefreshScreenInterface() : nullptr;
}

void CCanvas::invalidateOnScreen(CXRect rect) {
    rect += position_;
    if (CRefreshScreen* onto = screen()) onto->Invalidate(&rect);
}

void CCanvas::enter(CGraphicsObject* object, int priority) {
    children_.add({object, priority});
    object->addInvalidateObserver(this);
    object->SetDestiny(this);
    object->setAutoClip(true);
}

void CCanvas::add(CGraphicsObject* object, int priority) {
    if (!object || object == this || children_.contains(object)) return;
    enter(object, priority);
    object->Invalidate();
}

void CCanvas::remove(CGraphicsObject* object) {
    children_.removeIf([=](const Child& child) { return child.object == object; },
                       [this](CGraphicsObject* child) { child->removeInvalidateObserver(this); });
}

void CCanvas::removeChildren() {
    children_.removeIf([](const Child&) { return true; },
                       [this](CGraphicsObject* child) { child->removeInvalidateObserver(this); });
}

void CCanvas::removeAll() {
    removeChildren();
    if (backPlane_) add(backPlane_.get(), kBackPlanePriority);
}

void CCanvas::clear(bool both) {
    const CXRect whole(0, 0, size_.width, size_.height);
    const CXRect part = clip_.IsEmpty() ? whole : clip_.Common(whole);
    const auto clearPlanes = [&](const CGraphicsObject& object) {
        clearPart(object.getData(), size_, part, static_cast<std::size_t>(object.GetPixelSize()));
        clearPart(object.getAlpha(), size_, part, 1);
    };
    clearPlanes(*this);
    if (both && backPlane_) clearPlanes(*backPlane_);
}

void CCanvas::Redraw() {
    // By way of others a canvas may stand in itself; there it is not drawn, and keeps its destiny and clip.
    if (isDrawing_) return;
    isDrawing_ = true;
    clear(false);
    const bool wasLocked = isCanvasLocked();
    lockCanvas(true);
    children_.walk([this](const Child& child) {
        if (child.object->isVisible()) drawChild(child);
    });
    lockCanvas(wasLocked);
    CGraphicsObject::Redraw();
    notifications_ = 0;
    isDrawing_ = false;
}

void CCanvas::drawChild(const Child& child) {
    CGraphicsObject* object = child.object;
    const CXRect kept = object->GetClippingRect();
    if (!clip_.IsEmpty()) {
        CXRect part = object->GetBoundingBox().Common(clip_);
        if (part.IsEmpty()) return;
        object->SetClippingRect(part -= object->GetPosition());
    }
    object->SetDestiny(this);
    object->Redraw();
    if (child.object) object->SetClippingRect(kept);
}

void CCanvas::onInvalidate(CGraphicsObject*, const CXRect* rect) {
    // Two canvases that show each other would tell each other for ever.
    if (isTelling_) return;
    isTelling_ = true;
    if (notifications_ < maxRegions) ++notifications_;
    if (notifications_ < maxRegions) {
        invalidateOnScreen(rect ? *rect : CXRect(0, 0, size_.width, size_.height));
    } else if (!isMarkedInvalidated()) {
        Invalidate();
    }
    isTelling_ = false;
}

void CCanvas::capture() {
    const CXPoint position = position_;
    const int opacity = GetOpacity();
    if (backPlane_) remove(backPlane_.get());
    SetDestiny(backPlane_.get());
    placeAt({0, 0});
    SetOpacity(255);
    Redraw();
    placeAt(position);
    SetOpacity(opacity);
    SetDestiny(screen());
    removeAll();
}

void CCanvas::draw(CGraphicsObject* object, int x, int y) {
    if (!object || !backPlane_) return;
    const CXPoint position = object->getPosition();
    const CXRect clip = object->GetClippingRect();
    object->SetClippingRect({});
    // What is drawn here doesn't move on the screen: it meets nothing.
    object->placeAt(CXPoint(x, y) - object->getAnchor());
    object->SetDestiny(backPlane_.get());
    object->Redraw();
    object->placeAt(position);
    object->SetClippingRect(clip);
    object->SetDestiny(screen());
    const CXPoint end = CXPoint(x, y) + CXPoint(object->Width(), object->Height());
    invalidateOnScreen({x, y, end.x, end.y});
}

// The object lies over the canvas with its corner at (x, y), and what lies outside is cut off.
void CCanvas::erase(CGraphicsObject* object, int x, int y) {
    if (!object || !alpha_ || !backPlane_) return;
    CGraphicsObject* mask = object->getDrawn();
    const CXSize maskSize = mask->Size();
    const auto wide = [](int a, int b) { return static_cast<std::int64_t>(a) + b; };
    const int right = static_cast<int>(std::min<std::int64_t>(size_.width, wide(x, maskSize.width)));
    const int bottom = static_cast<int>(std::min<std::int64_t>(size_.height, wide(y, maskSize.height)));
    const CXRect part(std::max(x, 0), std::max(y, 0), right, bottom);
    if (part.right <= part.left || part.bottom <= part.top) return;

    const bool isOpaque = !mask->getAlpha();
    mask->DeCompress();
    const bool coded = mask->getCompression() == kCompressionRle;
    if (coded) mask->DeCompressRLE2();
    const Plane& rubber = mask->getAlpha();
    const std::span<std::uint8_t> own = alpha_.bytes(), back = backPlane_->getAlpha().bytes();
    for (int row = part.top; row < part.bottom; ++row) {
        for (int column = part.left; column < part.right; ++column) {
            const std::int64_t from = wide(row, -y) * maskSize.width + wide(column, -x);
            const int amount = isOpaque ? 255 : rubber.at(from);
            const auto at = static_cast<std::size_t>(row) * static_cast<std::size_t>(size_.width) +
                            static_cast<std::size_t>(column);
            for (const std::span<std::uint8_t> plane : {own, back})
                plane[at] = static_cast<std::uint8_t>(std::max(plane[at] - amount, 0));
        }
    }
    if (coded) mask->bringBackCompressed();
    invalidateOnScreen(part);
}

CXObject* CCanvas::clone() {
    auto copy = std::make_unique<CCanvas>(window_, size_, bpp_, static_cast<bool>(alpha_), hasBackPlane());
    copy->placeAt(position_);
    // A shared plane would show in both what is drawn into either.
    if (backPlane_)
        copy->backPlane_->setPlanes(size_, backPlane_->getBpp(), backPlane_->getData().copy(),
                                    backPlane_->getAlpha().copy());
    children_.walk([&](const Child& child) {
        if (child.object != backPlane_.get()) copy->add(child.object, child.priority);
    });
    if (const int priority = canvas_ ? canvas_->GetPriority(this) : -1; priority != -1)
        canvas_->put(copy.get(), priority);
    return copy.release();
}
