// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "graphics/geometry.h"
#include "graphics/plane.h"

// The names are part of the interface.

// The number of the conversion between two formats; 0: there is none.
int __get_convert_code(int from, int to);

// Replaces the planes by new ones in the other format. True, and nothing changes, for the same format, for any pair to
// 32 bits and for 32 to 24; false for a pair without conversion, and for a plane that is too short for its size.
//
// From 32 bits, alpha becomes a plane of its own, turned round on the way to 16 bits and as it stands on the way to
// 15. Between 15 and 16 bits pixels go in pairs: the last of an odd number stays as it is.
bool __convert_bpp(Plane& data, Plane& alpha, const CXSize& size, int from, int to);
