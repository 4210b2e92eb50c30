// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "graphics/canvas_observer.h"
#include "script/object.h"
#include "script/runner.h"

class CRefreshScreen;
class CWindow;

// CANVAS_OBSERVER, the script's handle on the window's compositor. It hears of frames and of the window's focus once
// ENABLENOTIFY has been called on any of them.
class CMC_CanvasObserver : public CMC_Object, public CCanvasObserver {
public:
    static constexpr int kType = 103;

    CMC_CanvasObserver(CMC_Scene* scene, CMElement* element);
    explicit CMC_CanvasObserver(CMC_Scene* scene);  // "tempCANVAS"
    ~CMC_CanvasObserver() override;

    CRefreshScreen* getScreen() const;  // null while there is none

    bool done(bool keep) override;
    void retire() override;
    std::span<const std::string_view> getBehavioursList() const override;
    void onInitialUpdate() override;
    void onUpdate() override;
    void onUpdated() override;
    void onWindowFocusOn() override;
    void onWindowFocusOff() override;

    // The script's methods.
    void refresh();
    void add(const CXString& name, int priority);
    void remove(const CXString& name);
    void setBackground(const CXString& name);  // an object's picture, else a file
    void moveBackground(int dx, int dy);
    void setBackgroundPosition(int x, int y);
    void enableNotify(bool on);

private:
    void listen();
    void letGo();
    void tell(int signal);

    CWindow* window_;
};

class CMC_CanvasObserver_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
