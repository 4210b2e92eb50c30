// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "platform/audio.h"
#include "platform/clock.h"
#include "platform/display.h"
#include "platform/files.h"
#include "platform/input.h"
#include "platform/shell.h"

// Everything outside the process, as the library meets it. The host makes one bundle and installs it before the first
// object of the library exists; a test installs its own.
namespace platform {

struct Platform {
    Clock& clock;
    Files& files;
    Shell& shell;
    Input& input;
    Display& display;
    Audio& audio;
};

// The installed platform. Requires: one is installed.
Platform& current();
// The platform stays the caller's and must outlive what uses it; null takes it out again. Returns the former one.
Platform* install(Platform* platform);

}  // namespace platform
