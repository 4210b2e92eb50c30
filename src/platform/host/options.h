// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace host {

inline constexpr int kUsageError = 2;  // exit status

struct Shot {
    std::optional<std::uint32_t> frame;  // none: the last one, whichever that is
    std::string file;
};

// What the command line of the host says. Texts are UTF-8; file names are in the operating system's form.
struct Options {
    std::string folder;
    std::string config = "application.ini";
    bool headless = false;
    bool fullScreen = false;
    int scale = 0;                // of the window at first; 0: as the desktop allows
    std::uint32_t frames = 3000;  // 0: no limit, which is usual in a window
    std::uint32_t step = 10;      // milliseconds
    std::uint32_t ticks = 1000;
    std::string now = "2000-01-01T00:00:00";
    std::int64_t utcSeconds = 946'684'800;  // the same as `now`
    int depth = 16;
    std::string language = "0409";  // "": the user's
    bool realtime = false;
    std::optional<std::string> resource;
    std::optional<std::string> input;
    std::optional<std::string> record;
    std::optional<std::string> hashes;
    std::optional<std::string> audio;
    std::vector<Shot> shots;

    // What the library's own command line gets: the program's name and every argument behind FOLDER.
    std::vector<std::string> engineArguments;
};

struct ParsedCommandLine {
    std::optional<int> exitStatus;  // none: the options are whole and there is something to play
    std::string output;             // for standard output: help or version
    std::string error;              // a line for standard error, without its end
    Options options;
};

// `arguments` begins with the program's name.
ParsedCommandLine parseCommandLine(std::span<const char* const> arguments);

// Seconds since 1970 of a time such as 2003-05-17T09:05:00; none for another form or a day that no calendar has.
std::optional<std::int64_t> parseTime(const std::string& text);
std::string formatTime(std::int64_t utcSeconds);  // and back

}  // namespace host
