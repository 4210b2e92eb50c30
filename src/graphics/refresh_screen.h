// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <unordered_set>
#include <vector>

#include "foundation/xvector.h"
#include "graphics/background_manager.h"
#include "graphics/graphics_object.h"
#include "graphics/refresh_region.h"
#include "graphics/validation_queue.h"

class CCanvasObserver;
class CColor;
class CDirectDrawSurface;
class CImageFile;
class CSurface;

// The window's compositor. It keeps what stands on the screen in order of priority, and which parts of the screen have
// changed; a refresh paints these parts, the background first and then every object that touches them, low priorities
// first. Nothing is drawn outside a refresh.
class CRefreshScreen : public CGraphicsObject {
public:
    // `localDestiny`: with a surface of its own, which `Redraw()` paints.
    CRefreshScreen(CWindow* window, bool localDestiny);
    ~CRefreshScreen() override;

    // Lists the object unless it is listed; of equal priorities the later stands on top. It stays the caller's.
    void put(CGraphicsObject* object, int priority);
    void operator<<(CGraphicsObject* object) { put(object, 0); }
    void operator>>(CGraphicsObject* object);  // invalidates nothing
    void Empty();
    // Puts the object last among those of that priority and clears its flags; invalidates nothing.
    void SetPriority(CGraphicsObject* object, int priority);
    int GetPriority(const CGraphicsObject* object) const;  // -1: not listed
    int GetFlags(const CGraphicsObject* object) const;     // 0: not listed
    // True when the object is listed. Without an object, the flags of the screen; 2: every refresh ends in gray.
    bool SetFlags(const CGraphicsObject* object, int flags);

    using CGraphicsObject::Invalidate;
    void Invalidate(const CGraphicsObject* object);  // a visible, listed one
    void Invalidate(const CXRect* rect);             // null: the whole screen
    void validate() { region_.removeAll(); }
    CRefreshRegion* getRefreshList() { return &region_; }

    void Visible(bool visible) override;  // of every listed object

    void SetBackground(const CColor* color);
    void SetBackground(CGraphicsObject* object);
    // Loads the picture; a failed load leaves the background as it is.
    void SetBackground(const CXString& fileName);
    void setBackground(std::unique_ptr<CDirectDrawSurface> surface);
    CDirectDrawSurface* getBackgroundIfc() const { return background_.getSurface(); }  // null: none
    void checkScrollMode() { background_.checkScrollMode(); }
    const CXString& getBackgroundName() const { return backgroundName_; }
    void flush();  // drops the loaded background image; the background itself stays

    void Redraw() override;
    // One frame. A current unit that became current since the last one gets its `onInitialUpdate`, and everything is
    // shown anew in this frame and, by `fullRefresh`, in the next; any other gets `onCanvasRefreshed`. True when there
    // is something to show.
    bool Redraw(CDirectDrawSurface* target, CSurface* surface, bool* fullRefresh);
    CDirectDrawSurface* GetLocalDestiny() const { return localDestiny_.get(); }

    // The topmost object at the point, edges of its box included, and unless `ignoreAlpha` where it isn't transparent.
    // A negative bound of the priorities is none. Objects of negative priority are never found. Null: none.
    CGraphicsObject* getGraphicsAt(int x, int y, bool visibleOnly, int minPriority, int maxPriority, bool ignoreAlpha);

    int Save(const CXString& name, _compression form) override;  // the target of the latest refresh
    using CGraphicsObject::Save;

    // Observers hear nothing until the flag is set. None is owned.
    void addNotifier(CCanvasObserver* observer);
    void removeNotifier(CCanvasObserver* observer);
    void enableNotifyFlag(bool on) { notifyFlag_ = on; }
    void onFocusOn() { notifyIfEnabled(3); }
    void onFocusOff() { notifyIfEnabled(4); }

    void _catch(const CDirectDrawSurface* source);  // copies the surface
    void _release();                                // drops that copy
    CDirectDrawSurface* getCatchCopy() const { return catchCopy_.get(); }

    // Called by an object that takes this for its canvas, and that gives it up.
    void attach(CGraphicsObject* object) { attached_.insert(object); }
    void detach(CGraphicsObject* object) { attached_.erase(object); }

private:
    bool __redraw(CDirectDrawSurface* target);
    void drawObject(CValidationElement* element, CDirectDrawSurface* target);
    void drawWhole(CGraphicsObject* object, CDirectDrawSurface* target);
    void drawClipped(CGraphicsObject* object, CDirectDrawSurface* target, const CXRect& clip);
    void notifyIfEnabled(int code);
    CXRect screenRect() const { return {0, 0, size_.width, size_.height}; }

    CDirectDrawSurface* target_ = nullptr;  // of the latest refresh
    int screenFlags_ = 0;
    std::unique_ptr<CDirectDrawSurface> catchCopy_;
    std::unique_ptr<CDirectDrawSurface> localDestiny_;
    CRefreshRegion region_;
    std::vector<CCanvasObserver*> notifiers_;
    std::unique_ptr<CImageFile> backgroundImage_;
    CXString backgroundName_;
    bool notifyFlag_ = false;
    CBackgroundManager background_;
    CValidationQuene queue_;
    std::unordered_set<CGraphicsObject*> attached_;  // listed or not, they know this canvas
};
