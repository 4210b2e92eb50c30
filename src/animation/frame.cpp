// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/frame.h"

CFrame::CFrame(const CFrame& other)
    : CGraphicsObject(other.getWindow(), other),
      storedForm(other.storedForm),
      channelCount(other.channelCount),
      framePosition_(other.framePosition_),
      offset_(other.offset_) {}

void CFrame::SetPosition(int x, int y) {
    offset_ = {};
    framePosition_ = {x, y};
    CGraphicsObject::SetPosition(x, y);
}

void CFrame::Move(int dx, int dy) {
    const CXPoint by(dx, dy);
    framePosition_ = framePosition_ + by;
    offset_ = offset_ + by;
    CGraphicsObject::Move(dx, dy);
}

void CFrame::decode() {
    DeCompress();
    DeCompressRLE2();
}

void CFrame::Redraw() {
    decode();
    CGraphicsObject::Redraw();
}

void CFrame::drawFor(const CGraphicsObject& animation, const CXPoint& at) {
    const CXRect clip = clip_;
    const CXPoint position = position_;
    clip_ = animation.GetClippingRect();
    position_ = at;
    SetDestiny(animation.GetDestiny());
    SetViewport(animation.GetViewport());
    SetOpacity(animation.GetOpacity());
    Redraw();
    clip_ = clip;
    position_ = position;
}
