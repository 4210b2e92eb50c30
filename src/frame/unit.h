// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "foundation/xvector.h"
#include "graphics/geometry.h"
#include "graphics/graphics_link.h"
#include "input/control.h"
#include "input/key_listener.h"
#include "input/mouse_listener.h"
#include "sound/playable.h"
#include "sound/random_playable.h"

class CApplication;
class CEditBox6;
class CMC_Scene;
class CMElement;
class CMElements;
class CRefreshScreen;
class CResourcesManager;
class CSimpleFont6;
class CUnitData;  // what one unit hands to the next; units from modules know what it is
class CWindow;

// What is on the screen at a time: the owner of background, music, listeners, edit boxes and the drag that is going on.
//
// A scripted application has one, "Default", which each scene takes over for its life. A module may derive its own.
class CUnit6 : public CXObject,
               public CControlNotifier,
               public CPlayableObserver,
               public CKeyListener,
               public CMouseListener,
               public CRandomPlayableNotifier {
public:
    CUnit6(CWindow* window, const CXString& name);
    ~CUnit6() override;
    CUnit6(const CUnit6&) = delete;
    CUnit6& operator=(const CUnit6&) = delete;

    using CControlNotifier::onDragging;
    using CControlNotifier::onEndDragging;
    using CControlNotifier::onStartDragging;
    using CMouseListener::onClick;
    using CMouseListener::onRelease;

    virtual bool initialize(CUnitData* data, CMC_Scene* scene, CUnit6* previous);
    virtual void onInitialUpdate();
    virtual void onCanvasRefreshed() {}
    virtual bool wasInitiallyUpdated() const { return updated_; }
    virtual bool domodal() { return returnCode_ != 0; }  // true: the return code waits to be served
    virtual bool done(CUnitData* data, CMC_Scene* scene, CUnit6* next);
    virtual CWindow* getWindow() const { return window_; }
    virtual CRefreshScreen* getCanvas() const { return canvas_; }
    virtual CUnitData* getUnitData() { return nullptr; }
    virtual CRefreshScreen* getRefreshScreenInterface() const { return canvas_; }
    virtual bool isActive() const { return active_; }
    virtual void startMusic();
    virtual void stopMusic();
    virtual CXString getMusicFileName() const { return musicFileName_; }
    virtual CXString getBackgroundFileName() const { return backgroundFileName_; }
    virtual void setBackground();
    virtual void onTimer(int) {}
    // Carries the object with the mouse; `control`, a CControl or null, hears of it.
    virtual bool onStartDragging(CGraphicsObject* object, CXPoint point, void* control);
    virtual bool onDragging(CXPoint point);  // whether a drag goes on
    virtual bool onEndDragging(CXPoint point);
    virtual bool quitOnError(CXObject*) { return false; }  // true: the unit has dealt with the failure
    virtual void addRandomPlayable(CPlayable* playable, double seconds, int maxRuns, const CXString& event);
    virtual void removeRandomPlayable(CPlayable* playable);
    virtual CResourcesManager* getResourcesManager() const { return resources_.get(); }
    // May make objects from elements itself; returns those that it left.
    virtual CMElements* resolveObjects(CMC_Scene*, CMElements* elements) { return elements; }
    virtual void onNotify(CControl*) {}
    virtual CEditBox6* addEditBox(CSimpleFont6* font, const CXRect& rect, const CXString& text);  // stays the unit's
    virtual void activateEditBox(CEditBox6* box);                                                 // null: none
    virtual void removeEditBox(CEditBox6* box);  // it is the caller's from now on
    virtual void flushEditBoxes();
    virtual int getCurrentEditBoxIndex() const;  // -1: none
    virtual void nextEditBox();                  // from the last to the first
    virtual void prevEditBox();                  // from the first to the last

    bool onMouseMove(CXPoint point) override;
    bool onClick(CXPoint point) override;
    bool onRelease(CXPoint point) override;
    void onKeyDown(int key) override;

    const CXString& getUnitName() const { return name_; }
    void setUnitName(const CXString& name) { name_ = name; }
    bool isDragging() const { return dragging_; }
    bool getDraggingMode() const { return draggingMode_; }
    void setDraggingMode(bool endsOnClick) { draggingMode_ = endsOnClick; }  // false: on release
    void bringBackDraggingObjectPosition();
    // For a control that goes out of service: a drag that it has begun ends where it stands, and nobody hears of that.
    // False when there was none.
    bool forgetControl(const CControl* control);
    void setBackgroundFileName(const CXString& name) { backgroundFileName_ = name; }
    int getRetCode() const { return returnCode_; }
    void setRetCode(int code) { returnCode_ = code; }
    CXArray* getRetPath() { return &returnPath_; }  // of codes, each stored as the pointer's number
    void setActivity(bool active) { active_ = active; }
    void setCursor(CGraphicsObject* cursor) { editBoxCursor_ = cursor; }  // for edit boxes to come; not owned
    void exit() { returnCode_ = 1; }
    void setTimer(int id, int period, bool onlyActive);
    void killTimer(int id);
    // Puts the object on the screen if the element's TOCANVAS says so, at its ALWAYSONTOP or PRIORITY.
    void putOnCanvas(CGraphicsObject* object, CMElement* element);

private:
    bool loseGoneObject();
    void forgetDrag();

    CXString name_;
    bool dragging_ = false;
    bool draggingMode_ = false;
    bool startedByPress_ = false;  // the press that has started the drag is still on its way
    int draggedPriority_ = 0;
    CXPoint draggedPoint_;
    CXPoint startPosition_;
    CControl* dragControl_ = nullptr;
    GraphicsLink draggedObject_;
    CApplication* application_;
    bool updated_ = false;
    CXString backgroundFileName_ = "bkg.img";
    CMC_Scene* scene_ = nullptr;
    CWindow* window_;
    CRefreshScreen* canvas_;
    int returnCode_ = 0;
    CXArray returnPath_;
    bool active_ = false;
    std::unique_ptr<CResourcesManager> resources_;
    std::unique_ptr<CRandomPlayable> randomPlayable_;
    GraphicsLink editBoxCursor_;
    CXVector editBoxes_;  // of CEditBox6, owned
    CEditBox6* activeEditBox_ = nullptr;
    CXString musicFileName_;
};
