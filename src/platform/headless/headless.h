// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string_view>

#include "platform/headless/audio.h"
#include "platform/headless/clock.h"
#include "platform/headless/display.h"
#include "platform/headless/files.h"
#include "platform/headless/input.h"
#include "platform/headless/shell.h"
#include "platform/platform.h"

namespace headless {

// The tick count that virtual time begins with, unless told otherwise. Under stress it wraps after half a second.
#ifdef PROSCENIUM_STRESS
inline constexpr std::uint32_t kFirstTick = 0xFFFFFFFF - 500;
#else
inline constexpr std::uint32_t kFirstTick = 1000;
#endif

struct Options {
    std::string folder;  // the current folder, in the system's form; "": an empty one is made, and removed at the end
    std::uint32_t ticks = kFirstTick;
    std::int64_t utcSeconds = 946'684'800;  // 2000-01-01 00:00:00
    int bitsPerPixel = 16;
    std::string localeCode = "0409";
    std::FILE* messages = nullptr;  // where message boxes and debug output are written; null: they are only kept
    std::FILE* debug = nullptr;
};

namespace detail {

// A folder that exists as long as this does, when `folder` is empty; else that folder.
class WorkFolder {
public:
    explicit WorkFolder(const std::string& folder);
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;
    ~WorkFolder();

    const std::string& path() const { return path_; }

private:
    std::string path_;
    bool isOurs_;
};

}  // namespace detail

// A whole platform in memory over the real disk: nothing in it reads real time, so two runs on the same files give the
// same results. It is installed from its construction to its end, when the one before it comes back.
class HeadlessPlatform {
    detail::WorkFolder folder_;  // in front of the parts, for `files` starts in it

public:
    explicit HeadlessPlatform(const Options& options = {});
    HeadlessPlatform(const HeadlessPlatform&) = delete;
    HeadlessPlatform& operator=(const HeadlessPlatform&) = delete;
    ~HeadlessPlatform();

    VirtualClock clock;
    DiskFiles files;
    StreamShell shell;
    ScriptedInput input;
    MemoryDisplay display;
    VirtualAudio audio;  // moves with the clock

    // The folder that was the current one at the start, in the system's form.
    const std::string& folder() const { return folder_.path(); }
    // Writes a file below that folder, with the folders on its way. `path` is in the system's form, as "Dane/S/S.cnv".
    // False when it can't.
    bool write(const std::string& path, std::string_view content) const;

private:
    platform::Platform platform_{clock, files, shell, input, display, audio};
    platform::Platform* former_;
};

}  // namespace headless
