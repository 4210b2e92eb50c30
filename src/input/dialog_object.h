// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "script/object.h"
#include "script/runner.h"

class CGraphicsObject;
class CXDialog;

// DIALOG, the script object of a dialog. Scripts fill it with other objects of the scene, which stay theirs.
class CMC_Dialog : public CMC_Object {
public:
    static constexpr int kType = 2013;

    CMC_Dialog(CMC_Scene* scene, CMElement* element);
    ~CMC_Dialog() override;

    CXDialog* getDialog() const { return dialog_.get(); }  // never null

    void retire() override;
    std::span<const std::string_view> getBehavioursList() const override;

    // The script's methods. Names of objects of other types, and of none, do nothing.
    void show();
    void hide();
    void setBackground(const CXString& name);  // of an IMAGE or ANIMO
    void add(const CXString& name);            // of a BUTTON, IMAGE, ANIMO or TEXT

private:
    std::unique_ptr<CXDialog> dialog_;
};

class CMC_Dialog_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
