// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/graphics_object.h"

#include "graphics/refresh_screen.h"

CGraphicsObject::~CGraphicsObject() {
    if (canvas_) *canvas_ >> this;
}

void CGraphicsObject::Move(int dx, int dy) {
    CXRect changed = GetBoundingBox();
    position_ = position_ + CXPoint(dx, dy);
    changed.Sum(GetBoundingBox());
    if (canvas_) canvas_->Invalidate(&changed);
}

void CGraphicsObject::Visible(bool visible) {
    if (!window_) return;
    visible_ = visible;
    Invalidate();
}

CXRect CGraphicsObject::GetBoundingBox() const {
    const CXPoint end = position_ + CXPoint(size_);
    return {position_.x < 0 ? 0 : position_.x, position_.y < 0 ? 0 : position_.y, end.x, end.y};
}

void CGraphicsObject::Invalidate() {
    if (!window_ || !canvas_) return;
    const CXRect box = GetBoundingBox();
    canvas_->Invalidate(&box);
}
