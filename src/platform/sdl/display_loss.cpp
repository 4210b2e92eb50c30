// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/sdl/display_loss.h"

#include <SDL.h>
#include <SDL_syswm.h>
#include <dlfcn.h>

namespace sdl {

void tellLossOfDisplay([[maybe_unused]] SDL_Window* window, [[maybe_unused]] std::atomic<bool>& isLost) {
#ifdef SDL_VIDEO_DRIVER_X11
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (SDL_GetWindowWMInfo(window, &info) != SDL_TRUE || info.subsystem != SDL_SYSWM_X11) return;
    // SDL loads the X library by itself; the host isn't linked against it.
    void* library = dlopen("libX11.so.6", RTLD_LAZY | RTLD_NOLOAD);
    if (library == nullptr) return;
    // The first is called on the error and ends the process by default, and so does the second, which is called when
    // the first returns; it is there since version 1.7 of the library.
    using Handler = int (*)(Display*);
    using ExitHandler = void (*)(Display*, void*);
    const auto setHandler = reinterpret_cast<Handler (*)(Handler)>(dlsym(library, "XSetIOErrorHandler"));
    const auto setExitHandler =
        reinterpret_cast<void (*)(Display*, ExitHandler, void*)>(dlsym(library, "XSetIOErrorExitHandler"));
    if (setHandler && setExitHandler) {
        setHandler([](Display*) { return 0; });
        setExitHandler(
            info.info.x11.display, [](Display*, void* flag) { static_cast<std::atomic<bool>*>(flag)->store(true); },
            &isLost);
    }
    dlclose(library);
#endif
}

}  // namespace sdl
