// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "script/runner.h"

struct MethodCall;

// What script code sees of the running scene: calling methods by name, removing objects, pausing, music.
class CMC_Scene_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};

// RUN of a scene and of the application: the method of parameter 1 on the object that parameter 0 names, with the
// parameters behind. On a behaviour RUN and RUNC take those as texts; `isWord` compares the method with these words.
CMC_Variable* runNamed(const MethodCall& c, bool (*isWord)(const CXString& method, const char* word));
