// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <map>
#include <string>

#include "platform/headless/shell.h"

namespace sdl {

class Window;

// Message boxes over the window; the rest as without one. A box that has been shown isn't shown again: how often it
// would have come is told on standard error at the end.
class Shell : public headless::StreamShell {
public:
    explicit Shell(Window& window) : headless::StreamShell(nullptr, stderr), window_(window) {}
    ~Shell() override;
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;

    void messageBox(std::string_view caption, std::string_view text, unsigned flags) override;

private:
    Window& window_;
    std::map<std::string, int> shown_;  // "CAPTION: TEXT" in UTF-8 and how often it came
};

// The code of the user's language by the environment, "0409" when it isn't known here.
std::string localeCodeOfUser();

}  // namespace sdl
