// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "script/object.h"
#include "script/runner.h"

// SYSTEM, of which each running scene has one. Its clock and calendar come with the other utilities; until then it
// knows no method, the generic ones neither, as is its way.
class CMC_System : public CMC_Object {
public:
    static constexpr int kType = 11000;

    CMC_System() : CMC_Object("SYSTEM", kType) {}
};

class CMC_System_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override {}
};
