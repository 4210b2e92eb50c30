// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "graphics/graphics_object.h"

// One picture of an animation. Its planes stay in the form that the file has them in; of one in form 4 the pixels are
// there from the time it is drawn or looked at until `bringBackCompressed`.
class CFrame : public CGraphicsObject {
public:
    explicit CFrame(CWindow* window) : CGraphicsObject(window) { setAutoClip(true); }
    explicit CFrame(const CFrame& other);  // over the other's planes, as they are at the moment
    CFrame& operator=(const CFrame&) = delete;

    CXPoint GetPosition() const override { return framePosition_; }
    CXPoint GetFramePosition() const { return framePosition_; }  // from the file, until it is moved
    using CGraphicsObject::SetPosition;
    void SetPosition(int x, int y) override;  // and clears the offset
    using CGraphicsObject::Move;
    void Move(int dx, int dy) override;
    void SetPosOffset(const CXPoint& offset) { offset_ = offset; }
    const CXPoint& GetPosOffset() const { return offset_; }

    void Redraw() override;
    // As `Redraw`, at that place of the destiny and with what the animation says; the frame's own place and clip stay.
    void drawFor(const CGraphicsObject& animation, const CXPoint& at);
    void decode();  // until `bringBackCompressed`

    // How the planes stood in the file, and how the file's channel sizes were counted.
    _compression storedForm = kCompressionRaw;
    int channelCount = 0;

private:
    CXPoint framePosition_;
    CXPoint offset_;
};
