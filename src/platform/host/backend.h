// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/display.h"
#include "platform/event.h"
#include "platform/headless/audio.h"
#include "platform/headless/shell.h"
#include "platform/host/options.h"

namespace host {

// What a run stands on: memory and virtual time, or a window and real time. Its platform is installed from its
// construction to its end.
class Backend {
public:
    virtual ~Backend() = default;

    virtual platform::Display& display() = 0;
    virtual headless::StreamShell& shell() = 0;
    virtual std::string displayError() const = 0;  // why the display couldn't be made, "" when it doesn't know
    virtual void setKey(int key, bool down) = 0;
    virtual void setCapsLock(bool on) = 0;
    // Lets the time of the next frame come. What the person has done since the last one.
    virtual std::vector<platform::Event> nextFrame(std::uint32_t number) = 0;
    // Gets what is heard, as it is heard; a run in a window is heard by people.
    virtual void setListener(headless::VirtualAudio::Listener) {}
    virtual void frameDone() = 0;  // the screen may be shown
    // What the run stands on is gone, and it is to end: no one can be asked any more.
    virtual bool isLost() const { return false; }
};

std::unique_ptr<Backend> makeHeadlessBackend(const Options& options);
// Null: this host was built without.
std::unique_ptr<Backend> makeWindowBackend(const Options& options, bool fullScreen);

}  // namespace host
