// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "foundation/xvector.h"
#include "graphics/geometry.h"
#include "graphics/graphics_link.h"

class CUnit6;
class CWindow;

// What the mouse did, as the window passes it to the hot spots. The numbers are part of the interface.
enum _event : unsigned {
    kMouseMove = 1,
    kLeftDown = 2,
    kLeftUp = 4,
    kRightDown = 8,
    kRightUp = 0x10,
    kMiddleDown = 0x20,
    kMiddleUp = 0x40,
    kLeftDoubleClick = 0x41,
};

// An area of the screen that owns mouse events: a rectangle, or without one the opaque pixels of a graphics object.
//
// All hot spots stand in one list, in the order in which they were made. A move or a left button goes to the one of the
// highest priority under the point, of equal ones to the latest; a right press goes to all of them from the first on,
// whatever their priority, until one takes it. A handler may make and destroy hot spots, its own included.
class CHotSpot : public CXObject {
public:
    explicit CHotSpot(CWindow* window);
    // With a parent it isn't listed, and handlers get the parent.
    CHotSpot(CWindow* window, CHotSpot* parent, _event events, int flags);
    ~CHotSpot() override;
    CHotSpot(const CHotSpot&) = delete;
    CHotSpot& operator=(const CHotSpot&) = delete;

    static void initialize(CWindow* window);  // the first window is kept until `done`
    static void done();                       // empties the list and is back to the state of the program's start
    static void add(CHotSpot* spot);          // as the last one; not owned
    static void remove(CHotSpot* spot);
    // Null: none, or no list.
    static CHotSpot* findAt(const CXVector* list, CXPoint point);
    static int OnMouseEvent(_event event, CXPoint point, int flags);  // the handler's result; 0: nobody's
    static int OnKeyDown(int, int) { return 0; }
    static int OnKeyUp(int, int) { return 0; }
    // The range of priorities that `findAt` finds, both ends included. None below 0 is ever found.
    static void setMinPriority(int priority) { minPriority = priority; }
    static void setMaxPriority(int priority) { maxPriority = priority; }
    static int getMinPriority() { return minPriority; }
    static int getMaxPriority() { return maxPriority; }

    // Handlers: the point, the flags and the parent. Above 0 ends a walk through the list.
    virtual int OnMouseMove(CXPoint, int, void*) { return 0; }
    virtual int OnLButtonDown(CXPoint, int, void*) { return 0; }
    virtual int OnLButtonUp(CXPoint, int, void*) { return 0; }
    virtual int OnRButtonDown(CXPoint, int, void*) { return 0; }
    virtual int OnRButtonUp(CXPoint, int, void*) { return 0; }
    virtual int OnMButtonDown(CXPoint, int, void*) { return 0; }
    virtual int OnMButtonUp(CXPoint, int, void*) { return 0; }
    virtual int OnLButtonDblClk(CXPoint, int, void*) { return 0; }
    virtual int OnChar(int, int, void*) { return 0; }
    virtual int OnKeyDown(int, int, void*) { return 0; }
    virtual int OnKeyUp(int, int, void*) { return 0; }
    virtual void setPriority(int priority) { priority_ = priority; }
    virtual int getPriority() const { return priority_; }
    virtual int OnDrag(CXPoint, int, void*) { return 0; }
    virtual int OnFocusOn(CXPoint, int, void*) { return 0; }
    virtual int OnFocusOff(CXPoint, int, void*) { return 0; }
    virtual int OnKeyTyped(int, void*) { return 0; }

    bool TestHit(CXPoint point) const;
    int GetID() const { return id_; }
    void SetID(int id) { id_ = id; }
    void SetParent(CXObject* parent) { parent_ = parent; }  // not owned
    void SetActiveRect(const CXRect& rect) { activeRect_ = rect; }
    void Set(CGraphicsObject* graphic, _event events, int flags);  // not owned; it may die
    int getEvents() const { return events_; }                      // the dispatch doesn't look at them
    int GetFlags() const { return flags_; }
    bool IsEnabled() const { return enabled_; }
    void Enable(bool enabled);
    void EnableCursor(bool enabled) { cursorEnabled_ = enabled; }
    bool hasFocus() const { return focus_; }      // the pointer came in, or a button is held
    void setUnit(CUnit6* unit) { unit_ = unit; }  // not owned; null: none
    CUnit6* getUnit() const { return unit_; }

private:
    // A hot spot when a walk began. Its address may have been given to another one since: the id tells.
    struct Entry {
        CXObject* object;
        int id;
    };
    static std::vector<Entry> entries();
    static CHotSpot* stillListed(const Entry& entry);  // null: it has left the list
    static CHotSpot* hitBy(CXPoint point) { return findAt(pHSList.get(), point); }

    static int move(CXPoint point, int flags);
    static int leftDown(CXPoint point, int flags);
    static int leftUp(CXPoint point, int flags);
    static int rightDown(CXPoint point, int flags);

    void endActiveCursor() const;

    static std::unique_ptr<CXVector> pHSList;  // of CHotSpot
    static CWindow* m_pWindow;
    static int minPriority;
    static int maxPriority;

    CXObject* parent_ = nullptr;
    int id_ = -1;
    CXRect activeRect_;
    GraphicsLink graphic_;
    int flags_ = 0;
    int events_ = 0;
    bool enabled_ = true;
    bool cursorEnabled_ = true;
    bool focus_ = false;
    CUnit6* unit_ = nullptr;
    int priority_ = 0;
};
