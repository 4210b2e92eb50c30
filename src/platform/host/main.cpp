// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <cstdio>
#include <exception>

#include "platform/host/options.h"
#include "platform/host/run.h"

int main(int argc, char** argv) {
    try {
        const host::ParsedCommandLine parsed =
            host::parseCommandLine(std::span<const char* const>(argv, static_cast<std::size_t>(argc)));
        std::fputs(parsed.output.c_str(), stdout);
        if (!parsed.error.empty()) std::fprintf(stderr, "%s\n", parsed.error.c_str());
        return parsed.exitStatus ? *parsed.exitStatus : host::run(parsed.options);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "proscenium: %s\n", error.what());
        return host::kUsageError;
    }
}
