// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <SDL_scancode.h>

namespace sdl {

// The library's number, a DirectInput scan code, of a key by its place on the keyboard; 0: it has none.
int keyNumber(SDL_Scancode place);

}  // namespace sdl
