// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/graphics_object.h"

#include <algorithm>
#include <utility>

#include "frame/window.h"
#include "graphics/blit.h"
#include "graphics/collision_inspector.h"
#include "graphics/color.h"
#include "graphics/pixel_conversion.h"
#include "graphics/pixel_format.h"
#include "graphics/refresh_screen.h"

namespace {

// A picture of more bytes than this has no pixels: no screen shows one, and sizes come from files and scripts.
constexpr std::int64_t kMostBytes = 1 << 28;

bool isListed(const std::vector<CInvalidateObserver*>& observers, const CInvalidateObserver* observer) {
    return std::find(observers.begin(), observers.end(), observer) != observers.end();
}

// Fewer pixels than these stay in the format they have.
constexpr std::int64_t kLeastConverted = 4;

std::int64_t pixelCount(const CXSize& size) { return static_cast<std::int64_t>(size.width) * size.height; }

Plane newPlane(const CXSize& size, int bytesPerPixel) {
    if (size.width <= 0 || size.height <= 0 || pixelCount(size) * bytesPerPixel > kMostBytes) return {};
    return Plane(static_cast<std::size_t>(pixelCount(size)) * static_cast<std::size_t>(bytesPerPixel));
}

// 32 bits are known as a form of storage, though the table of pixel sizes leaves them out.
int storedPixelSize(int bpp) { return bpp == 32 ? 4 : __get_pixel_size(bpp); }

// Copies the part of a plane whose rows are `width` pixels long, row by row; what lies outside of it is 0.
Plane cutOut(const Plane& plane, const CXSize& size, const CXRect& part, int bytesPerPixel) {
    if (!plane) return {};
    const CXSize cutSize(part.Width(), part.Height());
    Plane cut = newPlane(cutSize, bytesPerPixel);
    const CXRect inside = part.Common({0, 0, size.width, size.height});
    if (inside.IsEmpty()) return cut;
    const std::span<const std::uint8_t> from = plane.bytes();
    const auto unit = static_cast<std::size_t>(bytesPerPixel);
    const std::size_t count = static_cast<std::size_t>(inside.Width()) * unit;
    for (int y = inside.top; y < inside.bottom; ++y) {
        const std::size_t source = (static_cast<std::size_t>(y) * static_cast<std::size_t>(size.width) +
                                    static_cast<std::size_t>(inside.left)) *
                                   unit;
        if (source + count > from.size()) break;
        const std::size_t target = (static_cast<std::size_t>(y - part.top) * static_cast<std::size_t>(cutSize.width) +
                                    static_cast<std::size_t>(inside.left - part.left)) *
                                   unit;
        std::copy_n(from.begin() + static_cast<std::ptrdiff_t>(source), count,
                    cut.bytes().begin() + static_cast<std::ptrdiff_t>(target));
    }
    return cut;
}

}  // namespace

CGraphicsObject::CGraphicsObject(CWindow* window, const CXSize& size, int bpp)
    : CGraphicsObject(window, size, bpp, newPlane(size, storedPixelSize(bpp))) {}

CGraphicsObject::CGraphicsObject(CWindow* window, const CXSize& size, int bpp, Plane data)
    : window_(window), size_(size), pitch_(size.width), data_(std::move(data)), bpp_(bpp) {
    dataSize_ = GetDataSize();
}

CGraphicsObject::CGraphicsObject(CWindow* window, const CGraphicsObject& other) : window_(window) { takeFrom(other); }

CGraphicsObject::~CGraphicsObject() {
    if (canvas_) *canvas_ >> this;
    SetCanvas(nullptr);
    canvasLocked_ = false;
    SetDestiny(nullptr);
    if (drawers_) {
        for (CGraphicsObject* drawer : *drawers_)
            drawer->destiny_ = nullptr;
    }
    // An observer may take itself or another out of the list.
    const std::vector<CInvalidateObserver*> observers = invalidateObservers_;
    for (CInvalidateObserver* observer : observers) {
        if (isListed(invalidateObservers_, observer)) observer->onDestroy(this);
    }
}

void CGraphicsObject::takeFrom(const CGraphicsObject& other) {
    fileName_ = other.fileName_;
    SetDestiny(other.destiny_);
    size_ = other.size_;
    pitch_ = other.pitch_;
    data_ = other.data_;
    alpha_ = other.alpha_;
    bpp_ = other.bpp_;
    scaleX_ = other.scaleX_;
    scaleY_ = other.scaleY_;
    autoClip_ = other.autoClip_;
    clip_ = other.clip_;
    viewport_ = other.viewport_;
    position_ = other.position_;
    anchor_ = other.anchor_;
    flippedH_ = other.flippedH_;
    flippedV_ = other.flippedV_;
    std::copy(std::begin(other.channelSizes_), std::end(other.channelSizes_), std::begin(channelSizes_));
    alphaAsMask_ = other.alphaAsMask_;
    dataSize_ = other.dataSize_;
    codedSize_ = other.codedSize_;
    compression_ = other.compression_;
}

CGraphicsObject::Rare& CGraphicsObject::rare() {
    if (!rare_) rare_ = std::make_unique<Rare>();
    return *rare_;
}

CXObject* CGraphicsObject::clone() { return new CGraphicsObject(window_, *this); }

void CGraphicsObject::Flush() {
    for (Plane* plane : {&data_, &alpha_, &heldData_, &heldAlpha_})
        plane->reset();
    if (rare_) rare_->red = rare_->green = rare_->blue = Plane();
    compression_ = kCompressionRaw;
}

void CGraphicsObject::Alloc() {
    Flush();
    data_ = newPlane(size_, storedPixelSize(bpp_));
    dataSize_ = GetDataSize();
}

void CGraphicsObject::setPlanes(const CXSize& size, int bpp, Plane data, Plane alpha, _compression form) {
    Flush();
    size_ = size;
    pitch_ = size.width;
    bpp_ = bpp;
    data_ = std::move(data);
    alpha_ = std::move(alpha);
    compression_ = form;
    dataSize_ = GetDataSize();
    codedSize_ = form == kCompressionRaw ? 0 : static_cast<int>(data_.size());
    channelSizes_[3] = static_cast<int>(alpha_.size());
}

void CGraphicsObject::link(CGraphicsObject* other) {
    data_ = other->data_;
    alpha_ = other->alpha_;
    compression_ = other->compression_;
}

int CGraphicsObject::GetPixelSize() const { return __get_pixel_size(bpp_); }
int CGraphicsObject::GetDataSize() const { return __get_data_size(size_.width, size_.height, bpp_); }

int CGraphicsObject::Width() const { return static_cast<int>(static_cast<float>(size_.width) * scaleX_); }
int CGraphicsObject::Height() const { return static_cast<int>(static_cast<float>(size_.height) * scaleY_); }

void CGraphicsObject::setScaleFactor(float x, float y) {
    // A factor that takes a size out of the range of an int would have no size to give.
    constexpr float kLargest = 1024.0F;
    scaleX_ = x >= 0.0F && x <= kLargest ? x : 1.0F;
    scaleY_ = y >= 0.0F && y <= kLargest ? y : 1.0F;
}

CXPoint CGraphicsObject::getCenterPoint() const { return {Width() / 2, Height() / 2}; }

void CGraphicsObject::movedTo(const CXPoint& position) {
    position_ = position;
    if (monitorCollisions_ && window_) window_->getCollisionInspectorInterface()->onPositionChanged(this);
}

void CGraphicsObject::SetPosition(int x, int y) { movedTo(CXPoint(x, y) - anchor_); }

void CGraphicsObject::Move(int dx, int dy) {
    CXRect changed = GetBoundingBox();
    position_ = position_ + CXPoint(dx, dy);
    changed.Sum(GetBoundingBox());
    if (canvas_) canvas_->Invalidate(&changed);
    invalidated_ = true;
    movedTo(position_);
}

void CGraphicsObject::FitRect(const CXRect& rect) { SetPosition(rect.GetCenteredPosition(this)); }
void CGraphicsObject::FitObject(const CGraphicsObject* other) { FitRect(other->GetBoundingBox()); }

void CGraphicsObject::Visible(bool visible) {
    if (!window_) return;
    visible_ = visible;
    Invalidate();
}

void CGraphicsObject::Invalidate() {
    if (!window_) return;
    const CXRect box = GetBoundingBox();
    if (canvas_) canvas_->Invalidate(&box);
    notifyInvalidate(&box);
    invalidated_ = true;
}

bool CGraphicsObject::isInvalidated() { return std::exchange(invalidated_, false); }

void CGraphicsObject::addInvalidateObserver(CInvalidateObserver* observer) {
    if (!isListed(invalidateObservers_, observer)) invalidateObservers_.push_back(observer);
}

void CGraphicsObject::removeInvalidateObserver(CInvalidateObserver* observer) {
    std::erase(invalidateObservers_, observer);
}

void CGraphicsObject::notifyInvalidate(const CXRect* rect) {
    if (invalidateObservers_.empty()) return;
    const std::vector<CInvalidateObserver*> observers = invalidateObservers_;
    for (CInvalidateObserver* observer : observers) {
        if (isListed(invalidateObservers_, observer)) observer->onInvalidate(this, rect);
    }
}

CXRect CGraphicsObject::GetBoundingBox() const {
    const CXPoint end = position_ + CXPoint(size_);
    CXRect box(std::max(position_.x, 0), std::max(position_.y, 0), end.x, end.y);
    if (destiny_) {
        box.right = std::min(box.right, destiny_->Size().width);
        box.bottom = std::min(box.bottom, destiny_->Size().height);
    }
    return clip_.IsEmpty() ? box : box.Common(clip_ + position_);
}

bool CGraphicsObject::isNear(const CXRect& rect, int percent) const {
    const CXRect box = GetBoundingBox();
    const CXRect common = box.Common(rect);
    const double own = static_cast<double>(box.Width()) * box.Height();
    if (own == 0.0) return false;
    return static_cast<double>(common.Width()) * common.Height() * 100.0 / own >= percent;
}

bool CGraphicsObject::isNear(const CGraphicsObject* object, int percent) const {
    return isNear(object->GetBoundingBox(), percent);
}

bool CGraphicsObject::isSolidAt(const CXPoint& p) {
    return !getDrawn()->getAlpha() || GetPixel(kChannelAlpha, ClientCoords(p)) != 0;
}

bool CGraphicsObject::isInside(int x, int y, bool useAlpha) {
    return GetBoundingBox().IsInRect(x, y) && (!useAlpha || isSolidAt({x, y}));
}

void CGraphicsObject::SetDestiny(CGraphicsObject* destiny) {
    if (canvasLocked_ || destiny_ == destiny) return;
    if (destiny_) destiny_->drawers_->erase(this);
    destiny_ = destiny;
    if (!destiny_) return;
    if (!destiny_->drawers_) destiny_->drawers_ = std::make_unique<std::unordered_set<CGraphicsObject*>>();
    destiny_->drawers_->insert(this);
}

void CGraphicsObject::SetCanvas(CRefreshScreen* canvas) {
    if (canvas_ == canvas) return;
    if (canvas_) canvas_->detach(this);
    canvas_ = canvas;
    if (canvas_) canvas_->attach(this);
}

void CGraphicsObject::SetClippingRect(const CXRect& rect) {
    if (!canvasLocked_) clip_ = rect;
}

void CGraphicsObject::AddOpacity(short by) {
    opacity_ = static_cast<std::uint8_t>(std::clamp(opacity_ + static_cast<int>(by), 0, 255));
}

void CGraphicsObject::Redraw() {
    if (!destiny_) return;
    if (compression_ == kCompressionDictionary || compression_ == kCompressionDictionaryRle) DeCompress();
    if (compression_ == kCompressionRle) {
        DeCompressRLE2();
        draw();
        bringBackCompressed();
    } else {
        draw();
    }
}

void CGraphicsObject::draw() {
    const CXSize target = destiny_->Size();
    if (!data_ || !destiny_->GetDataPtr()) return;
    if (bpp_ != destiny_->bpp_ && pixelCount(size_) >= kLeastConverted)
        __convert_bpp(data_, alpha_, size_, bpp_, destiny_->bpp_);
    bpp_ = destiny_->bpp_;
    const CXPoint end = position_ + CXPoint(size_);
    if (end.x <= 0 || end.y <= 0 || position_.x >= target.width || position_.y >= target.height) return;
    if (autoClip_) {
        const CXRect visible(position_.x < 0 ? -position_.x : 0, position_.y < 0 ? -position_.y : 0,
                             end.x > target.width ? target.width - position_.x : size_.width,
                             end.y > target.height ? target.height - position_.y : size_.height);
        if (visible.right <= visible.left || visible.bottom <= visible.top) return;
        clip_ = clip_.IsEmpty() ? visible : clip_.Common(visible);
    }

    const _canvas source{data_.bytes(), alpha_.bytes(), bpp_,         position_.x,
                         position_.y,   size_.width,    size_.height, clip_};
    const _canvas canvas{destiny_->data_.bytes(),
                         destiny_->alpha_.bytes(),
                         destiny_->bpp_,
                         0,
                         0,
                         target.width,
                         target.height,
                         viewport_};
    if (opacity_ != 255) {
        __copy_blend(&source, &canvas, opacity_);
    } else if (destiny_->alpha_) {
        copyToCanvas(&source, &canvas);
    } else if (alpha_) {
        if (alphaAsMask_) {
            __copy_alpha_as_mask(&source, &canvas);
        } else {
            __copy_alpha(&source, &canvas);
        }
    } else {
        __copy(&source, &canvas);
    }
}

int CGraphicsObject::Load(const CXString&) {
    if (window_) Convert(window_->GetBpp());
    return LastError();
}

bool CGraphicsObject::Convert(int bpp) {
    if (bpp == bpp_ || !data_ || pixelCount(size_) < kLeastConverted) return true;
    if (!__convert_bpp(data_, alpha_, size_, bpp_, bpp)) return false;
    bpp_ = bpp;
    dataSize_ = GetDataSize();
    return true;
}

void CGraphicsObject::Copy(CGraphicsObject* other) {
    const CXSize size = other->Size();
    const CXRect part = other->clip_.IsEmpty() ? CXRect(0, 0, size.width, size.height) : other->clip_;
    const bool clipped = !other->clip_.IsEmpty();
    copyPart(other, part);
    clip_ = clipped ? CXRect() : other->clip_;
    position_ = other->position_;
}

void CGraphicsObject::Copy(CGraphicsObject* other, const CXRect& part) {
    copyPart(other, part);
    clip_.Empty();
    position_ = part.LeftTop();
}

void CGraphicsObject::copyPart(CGraphicsObject* other, const CXRect& part) {
    const CXRect inside = part.Common({0, 0, other->size_.width, other->size_.height});
    const bool coded = other->compression_ == kCompressionRle;
    if (coded) other->DeCompressRLE2();
    Plane data = cutOut(other->data_, other->size_, inside, storedPixelSize(other->bpp_));
    Plane alpha = cutOut(other->alpha_, other->size_, inside, 1);
    if (coded) other->bringBackCompressed();

    setPlanes({inside.Width(), inside.Height()}, other->bpp_, std::move(data), std::move(alpha));
    fileName_ = other->fileName_ + "copy";
    window_ = other->window_;
    SetDestiny(other->destiny_);
    autoClip_ = other->autoClip_;
    viewport_ = other->viewport_;
}

void CGraphicsObject::crop(const CXRect& rect) {
    Visible(false);
    const CXRect inside = rect.Common({0, 0, size_.width, size_.height});
    if (GetPixelSize() != 2) return;
    setPlanes({inside.Width(), inside.Height()}, bpp_, cutOut(data_, size_, inside, 2),
              cutOut(alpha_, size_, inside, 1));
}
