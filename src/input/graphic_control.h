// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "graphics/graphics_link.h"
#include "input/control.h"
#include "input/hot_spot.h"

class CGraphicControl;
class CPlayable;
class CRefreshScreen;
class CSound4;

// Which graphic gives a hot spot its shape. The names are part of the interface.
enum _accent { kAccentStandard, kAccentOnMove, kAccentOnClick, kAccentOnClickA, kAccentOnClickB };

// A link to a sound that may die: it reads as null, and playing and stopping do nothing, from then on.
class SoundLink {
public:
    SoundLink& operator=(CSound4* sound);
    CSound4* get() const { return life_.expired() ? nullptr : sound_; }
    void play() const;  // runs handlers of the sound
    void stopIfPlaying() const;

private:
    CSound4* sound_ = nullptr;
    std::weak_ptr<const CPlayable*> life_;
};

// The hot spot of a control. It stands in the order of hits where the control's picture stands on the screen.
class CControlHotSpot : public CHotSpot {
public:
    CControlHotSpot(CWindow* window, CHotSpot* parent, CGraphicControl& control, int flags);

    int getPriority() const override;  // of the picture; without one its own
    int OnFocusOn(CXPoint point, int flags, void* parent) override;
    int OnMouseMove(CXPoint point, int flags, void* parent) override;
    int OnFocusOff(CXPoint point, int flags, void* parent) override;
    int OnLButtonDown(CXPoint point, int flags, void* parent) override;
    int OnLButtonUp(CXPoint point, int flags, void* parent) override;
    int OnRButtonDown(CXPoint point, int flags, void* parent) override;
    int OnLButtonDblClk(CXPoint point, int flags, void* parent) override;

    bool isOver() const { return over_; }
    void setOver(bool over) { over_ = over; }

private:
    CGraphicControl& control_;
    bool over_ = false;
};

// A control on the screen: pictures that belong to others, a hot spot through which the mouse arrives, and dragging.
// Any of its pictures and sounds may die; it goes on without them.
//
// Whoever gives one up while script may run gives it to `destroyLate`, for its own signals may be what removes it.
class CGraphicControl : public CControl {
public:
    ~CGraphicControl() override;

    virtual int getPriority() const { return hotSpot_.getPriority(); }
    virtual void setPriority(int priority) { hotSpot_.setPriority(priority); }
    virtual void Freeze(bool frozen) = 0;  // keeps the on-move graphic in view, or ends that
    virtual void Force(bool state) = 0;
    // Where the left button goes down; the base begins a drag and tells of the click. 1: a drag has begun.
    virtual int OnClick(CXPoint point, int flags, void* parent) = 0;

    void SetID(int id) override;
    void SetActiveRect(const CXRect& rect);  // the hit area; an empty one leaves it to the graphic
    // The hit shape, unless there is an active rectangle, and what is dragged.
    void Accent(CGraphicsObject* graphic);
    void SetDragging(CGraphicsObject* graphic) { dragging_ = graphic; }
    CGraphicsObject* GetDragging() const { return dragging_; }
    void EnableDragging(bool enabled) { draggingEnabled_ = enabled; }
    bool IsDraggingEnabled() const { return draggingEnabled_; }
    void EnableCursor(bool enabled) { hotSpot_.EnableCursor(enabled); }
    void LockSound(bool locked) { soundLocked_ = locked; }
    bool IsSoundLocked() const { return soundLocked_; }
    void setUnit(CUnit6* unit) { hotSpot_.setUnit(unit); }  // without one there is no dragging
    CUnit6* getUnit() const { return hotSpot_.getUnit(); }
    CHotSpot* getHotSpot() { return &hotSpot_; }
    CXPoint getClick() const { return click_; }  // where the left button was released last

    // Takes it out of service: no event reaches it any more, and a drag of its own ends. True when one did.
    bool retire();
    bool isRetired() const { return retired_; }

protected:
    CGraphicControl(CWindow* window, const CXRect& rect, int id, CHotSpot* parent, int flags);

    // What the hot spot tells; each returns the handler's result.
    virtual int focusOn(CXPoint point, int flags, void* parent) = 0;
    virtual void focusOff() = 0;  // the pictures and sounds alone
    virtual int pressed(CXPoint point, int flags, void* parent) = 0;
    virtual int released(CXPoint point) = 0;
    virtual int pressedTwice() { return 0; }
    virtual CGraphicsObject* picture() const = 0;  // the one whose place on the screen is the control's

    bool isDragged() const;  // something of the unit is
    bool isPassive() const;
    CRefreshScreen* screen() const;
    void putHidden(CGraphicsObject* graphic, int priority);
    void shapeLike(CGraphicsObject* graphic);
    bool startDragging(CGraphicsObject* graphic, CXPoint point);
    static void show(CGraphicsObject* graphic, bool visible);  // null is passed over
    static void moveAll(std::initializer_list<CGraphicsObject*> graphics, CXPoint by);
    void copySettings(const CGraphicControl& other);

    CXRect rect_;
    CControlHotSpot hotSpot_;
    GraphicsLink accent_;
    GraphicsLink dragging_;
    GraphicsLink shape_;  // the hot spot's graphic
    CXPoint click_;
    bool draggingEnabled_ = false;
    bool frozen_ = false;
    bool soundLocked_ = false;

private:
    friend class CControlHotSpot;

    bool retired_ = false;
};
