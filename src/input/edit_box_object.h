// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "input/edit_box.h"
#include "script/object.h"
#include "script/runner.h"

// EDITBOX, the script object of an edit box. The box is the unit's: one whose object is removed stays on the screen,
// mute, until the scene is left. In a level that has no unit there is no box, and the methods do nothing.
class CMC_EditBox : public CMC_Object, public CEditBoxNotifier {
public:
    static constexpr int kType = 2009;

    CMC_EditBox(CMC_Scene* scene, CMElement* element);
    ~CMC_EditBox() override;

    CEditBox6* getEditBox() const { return box_.get(); }  // null: none, or it has gone with the unit

    bool done(bool keep) override;
    void retire() override;
    void serialize(CXArchive* archive) override;
    std::span<const std::string_view> getBehavioursList() const override;

    void onFocusOn(CEditBox6*) override;
    void onFocusOff(CEditBox6*) override;
    void onChanged(CEditBox6*) override;
    void onEnter(CEditBox6*) override;
    void onEsc(CEditBox6*) override;

    // The script's methods.
    void setText(const CXString& text);
    CXString getText() const;
    void activate();    // without asking the unit: another box may be active, too
    void deactivate();  // told also when it wasn't active
    void enable();
    void disable();
    void addText(const CXString& text);

private:
    void build();
    void letGo();
    void tell(int signal);

    EditBoxLink box_;
    CXRect rect_;
    CXString text_;  // at the start
    CXString fontName_;
    CXString cursorName_;
};

class CMC_EditBox_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
