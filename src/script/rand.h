// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "script/object.h"
#include "script/runner.h"

// RANDOM, of which each running scene has one: a bare object of this type.
inline constexpr int kRandomType = 102;

// Its methods are the generic ones; the drawing of numbers comes with the other utilities.
class CMC_Rand_Runner : public CMC_Runner {};
