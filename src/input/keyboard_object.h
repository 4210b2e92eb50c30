// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "input/key_listener.h"
#include "script/object.h"
#include "script/runner.h"

class CWindow;

// KEYBOARD, the script object that hears the keys: those with a word by that word, characters by themselves.
class CMC_Keyboard : public CMC_Object, public CKeyListener {
public:
    static constexpr int kType = 101;

    CMC_Keyboard(CMC_Scene* scene, CMElement* element);
    ~CMC_Keyboard() override;

    static CXString getKeySignal(int key);  // its word; "": it has none

    bool done(bool keep) override;
    void retire() override;
    std::span<const std::string_view> getBehavioursList() const override;

    void onChar(unsigned char character) override;
    void onKeyDown(int key) override;
    void onKeyUp(int key) override;

    // The script's methods.
    void enable() { enabled_ = true; }
    void disable() { enabled_ = false; }
    void setAutoRepeat(bool on);  // of the window's keyboard
    bool isAnyKeyDown() const;    // also while disabled
    bool isKeyDown(const CXString& name) const;
    CXString getLatestKey() const { return latestKey_; }  // the latest character that a handler could hear

private:
    void fireKey(int signal, int key);
    void letGo();

    CWindow* window_;  // outlives every scene
    bool listens_ = true;
    bool enabled_ = true;
    CXString latestKey_;
};

class CMC_Keyboard_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
