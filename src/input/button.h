// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "input/graphic_control.h"

// Which of a button's sounds. The names are part of the interface.
enum _soundtype { kSoundOnMove, kSoundOnClick };

// A button: up to three graphics and two sounds that change as the pointer comes over it and presses it.
//
// Over it the on-move graphic shows, in place of the standard one; pressed, the on-click graphic, over the standard
// one. Disabled it shows nothing. A press on one that can be dragged starts the drag at once.
class CButton : public CGraphicControl {
public:
    CButton(CWindow* window, const CXRect& rect, int id, CHotSpot* parent, int flags);  // doesn't delete its sounds
    CButton(CWindow* window, int id, CHotSpot* parent, int flags);
    ~CButton() override;

    CXObject* clone() override;  // over the same graphics and sounds, without the notifiers

    virtual int GetID() const { return getId(); }
    void Freeze(bool frozen) override;
    virtual int OnMove(CXPoint, int, void*) { return 0; }
    int OnClick(CXPoint point, int flags, void* parent) override;
    virtual void DisableButVisible();

    void Enable(bool enabled) override;
    void onAction(CXPoint point) override;
    void onKeyDown(int key) override;

    // The new graphic goes on the screen; the old one leaves it if `remove`. Without an active rectangle it becomes the
    // hit shape and what is dragged, whatever those were. `parent`, a CXObject or null, goes to the hot spot's
    // handlers.
    void Set(CGraphicsObject* graphic, void* parent, bool remove);
    void SetOnMove(CGraphicsObject* graphic, CSound4* sound);
    void SetOnClick(CGraphicsObject* graphic, CSound4* sound);
    void SetSound(_soundtype type, CSound4* sound);
    CGraphicsObject* GetStandard() const { return standard_; }
    CGraphicsObject* GetOnMove() const { return onMove_; }
    CGraphicsObject* GetOnClick() const { return onClick_; }
    CSound4* GetSOOnMove() const { return moveSound_.get(); }
    CSound4* GetSOOnClick() const { return clickSound_.get(); }
    using CGraphicControl::Accent;
    void Accent(_accent which);  // the hit shape alone
    void Move(int dx, int dy) { Move(CXPoint(dx, dy)); }
    void Move(CXPoint by);
    void Force(bool pressed) override;  // nothing in the same state
    void HideStandardWhileOnMove(bool hide) { hideStandardOnMove_ = hide; }
    void SetPlaySoundOnlyWhenSilence(bool on) { onlyWhenSilence_ = on; }
    void SetDeleteFlags(bool graphics, bool sounds);  // whether they die with the button

    // What action and hot key give to the unit as its return code.
    void setRetCode(int code);
    // Keys in a row, in any case of letters; "<ANY>": any key; "": none. Keys without a character are passed over.
    void setHotKey(const CXString& keys);

private:
    int focusOn(CXPoint point, int flags, void* parent) override;
    void focusOff() override;
    int pressed(CXPoint point, int flags, void* parent) override;
    int released(CXPoint point) override;
    int pressedTwice() override;
    CGraphicsObject* picture() const override { return standard_; }

    void force(bool pressed, bool withSound);
    bool maySound() const;  // as the pointer moves and by `Force`
    void giveRetCode();

    bool keyBound_ = false;
    CXString hotKey_;
    CXString typed_;
    bool setsRetCode_ = false;
    int retCode_ = 0;
    bool pressed_ = false;
    bool deleteGraphics_ = true;
    bool deleteSounds_ = true;
    bool hideStandardOnMove_ = true;
    bool onlyWhenSilence_ = false;
    GraphicsLink standard_, onMove_, onClick_;
    SoundLink moveSound_, clickSound_;
    void* parent_ = nullptr;
};
