// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xobject.h"

class CSimpleFont6;

// A font whose letters are pictures of an animation. Nothing can load one yet; it only has a name to be passed by.
class CFont5 : public CXObject {};
