// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "script/object.h"
#include "script/runner.h"

// The methods of behaviours: running one as a subroutine, once or in a loop.
class CMC_Behaviour_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};

// Script parameters from number `from` on as the texts of $1, $2, ...: each read as a string, and put in double quotes
// when it names an object that is no value.
CodeParams getParams(CMC_Runner& runner, CMC_Scene* scene, CXVector* params, int from = 0);
