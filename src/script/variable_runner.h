// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "script/runner.h"

// The methods of INTEGER, DOUBLE, BOOL, STRING and of expressions: one table for all. A method that the receiver's
// type doesn't serve does nothing and gives null.
class CMC_Variable_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
