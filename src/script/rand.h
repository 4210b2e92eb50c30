// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "script/object.h"
#include "script/runner.h"

// RANDOM, of which each running scene has one: a bare object of this type. All it has is its methods.
inline constexpr int kRandomType = 102;

class CMC_Rand_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
