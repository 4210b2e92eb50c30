// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/headless/shell.h"

#include <dlfcn.h>

#include "platform/headless/code_page.h"

namespace headless {

namespace {

class SharedObject : public platform::Module {
public:
    explicit SharedObject(void* handle) : handle_(handle) {}
    SharedObject(const SharedObject&) = delete;
    SharedObject& operator=(const SharedObject&) = delete;
    ~SharedObject() override { dlclose(handle_); }

    void* symbol(const char* name) const override { return dlsym(handle_, name); }

private:
    void* handle_;
};

// In UTF-8, and on one line whatever is in it.
std::string oneLine(std::string_view text) {
    std::string line;
    for (const char c : toUtf8(text)) {
        if (c == '\n') {
            line += "\\n";
        } else if (c == '\r') {
            line += "\\r";
        } else {
            line += c;
        }
    }
    return line;
}

// Each line is out when the call returns, so that the two streams interleave in the order of what happened and a
// killed run loses nothing.
void writeLine(std::FILE* stream, const std::string& line) {
    if (!stream) return;
    std::fwrite(line.data(), 1, line.size(), stream);
    std::fflush(stream);
}

}  // namespace

void StreamShell::messageBox(std::string_view caption, std::string_view text, unsigned flags) {
    if (messages_.size() < kKept) messages_.push_back({std::string(caption), std::string(text), flags});
    writeLine(messageStream_, "message: " + oneLine(caption) + ": " + oneLine(text) + "\n");
}

void StreamShell::debugOutput(std::string_view text) {
    if (debugLines_.size() < kKept) debugLines_.emplace_back(text);
    while (text.ends_with('\n') || text.ends_with('\r'))
        text.remove_suffix(1);
    writeLine(debugStream_, "debug: " + oneLine(text) + "\n");
}

std::unique_ptr<platform::Module> StreamShell::loadModule(const std::string& systemPath) {
    // A bare name would be looked for among the system's libraries, which no application means.
    if (systemPath.find('/') == std::string::npos) return nullptr;
    void* handle = dlopen(systemPath.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) return nullptr;
    return std::make_unique<SharedObject>(handle);
}

}  // namespace headless
