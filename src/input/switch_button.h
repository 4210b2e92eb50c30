// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "input/graphic_control.h"

// A button of two states, each with a graphic and a sound: A while the state is false, B while it is true. A press and
// its release on it change the state. Over it the on-move graphic shows in place of the state's.
class CSwitchButton : public CGraphicControl {
public:
    CSwitchButton(CWindow* window, const CXRect& rect, int id, CHotSpot* parent, int flags)
        : CGraphicControl(window, rect, id, parent, flags) {}

    void SetOnMove(CGraphicsObject* graphic, CSound4* sound);    // hidden
    void SetOnClickA(CGraphicsObject* graphic, CSound4* sound);  // shown, as the current one
    void SetOnClickB(CGraphicsObject* graphic, CSound4* sound);  // hidden
    using CGraphicControl::Accent;
    void Accent(_accent which);  // the hit shape alone
    void Move(CXPoint by);
    bool getState() const { return state_; }
    CGraphicsObject* getCurrent() const { return current_; }

    void Enable(bool enabled) override;
    void Freeze(bool frozen) override;
    void Force(bool state) override;  // nothing in the same state, and while frozen
    int OnClick(CXPoint point, int flags, void* parent) override;

private:
    int focusOn(CXPoint point, int flags, void* parent) override;
    void focusOff() override;
    int pressed(CXPoint point, int flags, void* parent) override;
    int released(CXPoint point) override;
    CGraphicsObject* picture() const override { return current_; }

    GraphicsLink current_, onMove_, onClickA_, onClickB_;
    SoundLink moveSound_, soundA_, soundB_;
    bool state_ = false;
};
