// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <string>

#include "frame/command_line.h"
#include "frame/window.h"
#include "input/keyboard.h"
#include "platform/headless/headless.h"

inline headless::Options startingAt(std::uint32_t ticks) {
    headless::Options options;
    options.ticks = ticks;
    return options;
}

inline headless::Options speaking(const char* localeCode) {
    headless::Options options;
    options.localeCode = localeCode;
    return options;
}

// A window over a platform in memory, with a screen of 640 to 480 unless told otherwise.
struct FrameStage {
    explicit FrameStage(const char* switches = "", const headless::Options& options = {}) : platform(options) {
        commandLine = std::make_unique<CCommandLine6>(switches);
        window = std::make_unique<CWindow>(nullptr, commandLine.get(), CXSize(640, 480), &cursors[0]);
        window->SetActiveCursor(&cursors[1]);
        window->SetWaitCursor(&cursors[2]);
    }

    // Frames of 10 ms, each as a host runs it.
    bool frames(int count) {
        bool leave = false;
        for (int i = 0; i < count && !leave; ++i) {
            platform.clock.advance(10);
            window->getKeyboardInterface()->tick();
            window->processMessages();
            leave = window->domodal();
        }
        return leave;
    }

    headless::HeadlessPlatform platform;
    int cursors[3] = {};
    std::unique_ptr<CCommandLine6> commandLine;
    std::unique_ptr<CWindow> window;
    std::string log;  // what the test's listeners have heard
};
