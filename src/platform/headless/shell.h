// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "platform/shell.h"

namespace headless {

struct Message {
    std::string caption;  // Windows-1250, as all texts here
    std::string text;
    unsigned flags = 0;
};

// Says on two streams what a desktop would show, and keeps it for tests.
class StreamShell : public platform::Shell {
public:
    // Message boxes go to `messages`, debug output to `debug`, a line each in UTF-8; null: they are only kept. The
    // streams stay the caller's.
    StreamShell(std::FILE* messages, std::FILE* debug) : messageStream_(messages), debugStream_(debug) {}

    // What has been said so far, the first `kKept` of each.
    static constexpr std::size_t kKept = 10'000;
    const std::vector<Message>& messages() const { return messages_; }
    const std::vector<std::string>& debugLines() const { return debugLines_; }
    bool quitPosted() const { return quitPosted_; }

    void setLocaleCode(std::string code) { localeCode_ = std::move(code); }
    void setClientArea(const platform::ClientArea& area) { clientArea_ = area; }

    void messageBox(std::string_view caption, std::string_view text, unsigned flags) override;
    void debugOutput(std::string_view text) override;
    std::string localeCode() const override { return localeCode_; }
    platform::ClientArea clientArea() const override { return clientArea_; }
    void postQuit() override { quitPosted_ = true; }
    std::unique_ptr<platform::Module> loadModule(const std::string& systemPath) override;

private:
    std::FILE* messageStream_;
    std::FILE* debugStream_;
    std::vector<Message> messages_;
    std::vector<std::string> debugLines_;
    std::string localeCode_ = "0409";
    platform::ClientArea clientArea_;
    bool quitPosted_ = false;
};

}  // namespace headless
