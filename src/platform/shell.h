// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace platform {

// A loaded module. Unloads it when destroyed: nothing that came out of it may be used after that.
class Module {
public:
    virtual ~Module() = default;

    // The address of an exported name; null when the module has none.
    virtual void* symbol(const char* name) const = 0;
};

// A window's place on the desktop.
struct ClientArea {
    int left = 0, top = 0, width = 0, height = 0;
};

inline constexpr unsigned kMessageStop = 0x10;  // a message with the stop icon

// What the desktop offers besides pictures, sound and input. All texts are Windows-1250; they become UTF-8 here.
class Shell {
public:
    virtual ~Shell() = default;

    // Shows the message and returns when it has been confirmed; without a window at once.
    virtual void messageBox(std::string_view caption, std::string_view text, unsigned flags) = 0;

    // One line for the person who looks for a fault.
    virtual void debugOutput(std::string_view text) = 0;

    // The user's language as four hexadecimal digits, "0415" for Polish; "" when it isn't known.
    virtual std::string localeCode() const = 0;

    // The window's client area in coordinates of the screen.
    virtual ClientArea clientArea() const = 0;

    // Asks the platform's event loop to end.
    virtual void postQuit() = 0;

    // Null when the module is missing or can't be loaded. `systemPath` is in the operating system's own form.
    virtual std::unique_ptr<Module> loadModule(const std::string& systemPath) = 0;
};

}  // namespace platform
