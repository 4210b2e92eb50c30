// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

struct FileEntry {
    std::string name;  // as it stands on the disk, without a folder
    bool isFolder = false;
    std::uint64_t size = 0;  // 0 for a folder
};

// The disk as the library sees it.
//
// Names are Windows-1250 bytes with backslashes (a slash serves too), in any case of letters. A name that begins with
// "C:" or a backslash is absolute, and "C:\" is the root of the disk; any other drive letter names nothing. All other
// names are relative to the current folder, which is the library's own and not the process's.
class Files {
public:
    virtual ~Files() = default;

    // A stream of the C library in `mode`, always binary; null when it can't be opened. A file that is created bears
    // the name as given, in a folder that must exist.
    virtual std::FILE* open(std::string_view name, const char* mode) = 0;

    // Makes the folder the current one; false, and no change, when there is no such folder.
    virtual bool changeFolder(std::string_view name) = 0;

    // "C:\folder\sub", without a backslash at its end unless it is the root.
    virtual std::string currentFolder() const = 0;

    // What matches the last part of the name, in which `*` and `?` are wildcards of the usual kind ("*.*" matches
    // all), ordered by name without regard to case; empty for a folder that can't be read.
    virtual std::vector<FileEntry> find(std::string_view pattern) const = 0;

    // Writes the whole file beside the old one and renames it over it, so that the old or the new content stands
    // there at any moment. False leaves the old file.
    virtual bool replaceFile(std::string_view name, std::span<const std::byte> content) = 0;

    // The whole content; empty when there is no such file or it can't be read.
    virtual std::optional<std::string> readFile(std::string_view name) const = 0;

    // The path of an existing file or folder in the operating system's own form; empty when there is none.
    virtual std::optional<std::string> systemPath(std::string_view name) const = 0;
};

}  // namespace platform
