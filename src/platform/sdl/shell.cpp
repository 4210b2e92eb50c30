// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/sdl/shell.h"

#include <SDL.h>
#include <cstdlib>

#include "platform/headless/code_page.h"
#include "platform/sdl/window.h"

namespace sdl {

Shell::~Shell() {
    for (const auto& [box, count] : shown_) {
        if (count > 1) std::fprintf(stderr, "proscenium: this message came %d times: %s\n", count, box.c_str());
    }
}

void Shell::messageBox(std::string_view caption, std::string_view text, unsigned flags) {
    headless::StreamShell::messageBox(caption, text, flags);
    const std::string title = headless::toUtf8(caption), body = headless::toUtf8(text);
    if (++shown_[title + ": " + body] > 1) return;
    if (window_.isLost()) return;
    const Uint32 kind = (flags & platform::kMessageStop) != 0 ? SDL_MESSAGEBOX_ERROR : SDL_MESSAGEBOX_INFORMATION;
    if (SDL_ShowSimpleMessageBox(kind, title.c_str(), body.c_str(), window_.handle()) != 0)
        std::fprintf(stderr, "message: %s: %s\n", title.c_str(), body.c_str());
}

std::string localeCodeOfUser() {
    struct Language {
        std::string_view name;
        const char* code;
    };
    constexpr Language kLanguages[] = {
        {"cs", "0405"},
        {"de", "0407"},
        {"en", "0409"},
        {"es", "040A"},
        {"fr", "040C"},
        {"hu", "040E"},
        {"it", "0410"},
        {"pl", "0415"},
        {"ru", "0419"},
        {"sk", "041B"},
    };
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(variable);
        if (!value || !*value) continue;
        for (const Language& language : kLanguages) {
            if (std::string_view(value).substr(0, 2) == language.name) return language.code;
        }
        break;
    }
    return "0409";
}

}  // namespace sdl
