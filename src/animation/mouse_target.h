// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "input/mouse_listener.h"
#include "script/object.h"

class CGraphicsObject;
class CWindow;

// A script object with something to see that signals what the mouse does to it: while it is a button and visible, that
// the pointer comes into its box and leaves it, and presses and releases inside.
//
// It listens to the window from its first handler of these signals on until it goes out of service.
class CMC_MouseTarget : public CMC_Object, public CMouseListener {
public:
    ~CMC_MouseTarget() override;

    // Null once the object is out of service.
    virtual CGraphicsObject* getGraphic() const = 0;

    bool verifyBehaviour(const CXString& key) override;
    using CMouseListener::onClick;
    using CMouseListener::onRelease;
    bool onMouseMove(CXPoint point) override;
    bool onClick(int button, CXPoint point) override;
    bool onRelease(int button, CXPoint point) override;

protected:
    // `firstSignal`: where "ONFOCUSON" stands among the signals; "ONFOCUSOFF", "ONCLICK" and "ONRELEASE" follow it.
    CMC_MouseTarget(CMC_Scene* scene, CMElement* element, int type, int firstSignal);
    CMC_MouseTarget(CMC_Scene* scene, CXString name, int type, int firstSignal);

    virtual bool isButton() const = 0;
    virtual int listenerPriority() const = 0;
    bool holdsPoint(CXPoint point) const;
    void stopListening();

    CWindow* window_;
    bool focus_ = false;
    bool mouseAware_ = false;
    bool changeCursor_ = true;

private:
    bool reacts() const;
    bool hears(int place, CXPoint point) const;

    int firstSignal_;
};
