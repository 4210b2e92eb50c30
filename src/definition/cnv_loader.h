// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "script/object.h"
#include "script/runner.h"

class CWindow;

// CNVLOADER, of which each running scene has one: loads a further definition file into the scene and drops it again.
class CMC_CNVLoader : public CMC_Object {
public:
    static constexpr int kType = 12000;

    CMC_CNVLoader(CWindow* window, CMC_Scene* scene);

    // Builds the file's objects in file order and joins them in a group that bears the file's name. Nothing happens
    // when the file is missing or empty, or the scene has an object of that name.
    virtual void load(CXString fileName);
    // Removes what `load` of that name brought, the objects' clones too.
    virtual void release(CXString fileName);

private:
    CWindow* window_;
};

class CMC_CNVLoader_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
