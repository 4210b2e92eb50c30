// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <atomic>

struct SDL_Window;

namespace sdl {

// An X server that goes away ends the process from within the X library, whatever it was doing, unless it is asked not
// to. With this the flag is set instead and every call to the display fails from then on, so that the run can end in
// order. No effect on other kinds of desktop, which send a plain wish to quit. The flag must outlive the window.
void tellLossOfDisplay(SDL_Window* window, std::atomic<bool>& isLost);

}  // namespace sdl
