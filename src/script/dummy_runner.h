// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "script/runner.h"

// The built-in statements: control flow, temporaries and conversions. They have no object type; a statement that
// begins with `@` reaches them, and the object that they are handed is the block that it stands in, or null.
class CMC_Dummy_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;  // without the generic methods
    using CMC_Runner::run;
    CMC_Variable* run(int id, CMC_Object* object, CMC_Scene* scene, CXVector* params) override;
};
