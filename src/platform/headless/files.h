// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <sys/stat.h>
#include <unordered_map>

#include "platform/files.h"

namespace headless {

// The operating system's disk, seen as platform::Files tells.
//
// Names on the disk are taken as UTF-8; a character that Windows-1250 lacks is seen as '_', and a name that isn't UTF-8
// as Windows-1250 already. Of several names that differ only in case, the one spelt exactly as asked for wins, else
// the first in byte order. Only ordinary files are opened: nothing waits on a pipe or reads a device.
class DiskFiles : public platform::Files {
public:
    // `systemFolder`, in the operating system's form, becomes the current folder, "/" when it isn't there.
    explicit DiskFiles(const std::string& systemFolder);

    std::FILE* open(std::string_view name, const char* mode) override;
    bool changeFolder(std::string_view name) override;
    std::string currentFolder() const override;
    std::vector<platform::FileEntry> find(std::string_view pattern) const override;
    bool replaceFile(std::string_view name, std::span<const std::byte> content) override;
    std::optional<std::string> readFile(std::string_view name) const override;
    std::optional<std::string> systemPath(std::string_view name) const override;

private:
    struct IndexEntry {
        std::string folded;      // Windows-1250 in lower case
        std::string name;        // Windows-1250
        std::string systemName;  // as it stands on the disk
    };
    // The names in a folder as they were when its time stamp was `stamp`, ordered by `folded`, then `systemName`.
    struct FolderIndex {
        timespec stamp{};
        // The folder had changed so shortly before it was read that a later change may bear the same time stamp: what
        // isn't found in the index is looked for on the disk again.
        bool settled = false;
        std::vector<IndexEntry> entries;
    };
    // The parts of a name from the root on, without "." and ".."; none for a name that can't be.
    std::optional<std::vector<std::string>> parts(std::string_view name) const;
    // The path in the system's form to what is there already; none when a part of it is missing.
    std::optional<std::string> resolve(std::span<const std::string> parts) const;
    // The spelling that `part` has in the folder; none when there is no such entry.
    std::optional<std::string> spelling(const std::string& systemFolder, const std::string& part) const;
    // The path of the file to be written: an existing one's, or that of a new one in an existing folder.
    std::optional<std::string> writablePath(std::string_view name) const;
    // Valid until the next call. Empty for a folder that can't be read.
    const FolderIndex& index(const std::string& systemFolder, bool readAnew) const;

    std::vector<std::string> current_;  // the parts of the current folder's name, Windows-1250
    mutable std::unordered_map<std::string, FolderIndex> indices_;
};

}  // namespace headless
