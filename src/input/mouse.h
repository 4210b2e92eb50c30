// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "graphics/geometry.h"
#include "input/mouse_listener.h"
#include "script/object.h"
#include "script/runner.h"

class CWindow;

// MOUSE, the script object that hears the mouse wherever it is and governs its cursor.
//
// It stands above the unit and takes nothing away from those below it.
class CMC_Mouse : public CMC_Object, public CMouseListener {
public:
    static constexpr int kType = 100;

    CMC_Mouse(CMC_Scene* scene, CMElement* element);
    ~CMC_Mouse() override;

    // "LEFT", "MIDDLE" and "RIGHT" for the buttons 0, 1 and 2; "" for others.
    static CXString getButton(int button);

    bool done(bool keep) override;
    void retire() override;
    std::span<const std::string_view> getBehavioursList() const override;

    using CMouseListener::onClick;
    using CMouseListener::onRelease;
    bool onMouseMove(CXPoint point) override;
    bool onClick(int button, CXPoint point) override;
    bool onRelease(int button, CXPoint point) override;
    bool onDblClick(CXPoint point) override;

    // The script's methods.
    void show();
    void hide();
    void enable();   // the window's mouse, too
    void disable();  // likewise: nobody hears it until a script enables it
    int getPosX() const { return position_.x; }
    int getPosY() const { return position_.y; }
    int getLastClickPosX() const { return lastClick_.x; }
    int getLastClickPosY() const { return lastClick_.y; }
    void set(const CXString& cursor);  // "ARROW", "WAIT" or "ACTIVE"
    void setPosition(int x, int y);    // in the client area; what is kept is the place on the desktop
    void move(int dx, int dy);
    void click(int x, int y, const CXString& button);  // presses and never releases; "": the left one

private:
    enum class Cursor { arrow = 1, wait, active };

    void letGo();

    CWindow* window_;  // outlives every scene
    bool listens_ = true;
    bool enabled_ = true;
    Cursor cursor_ = Cursor::arrow;  // the latest that a script has set here
    CXPoint position_;
    CXPoint lastClick_;
};

class CMC_Mouse_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
