// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "storage/big_file.h"

namespace prosc {

// Packs a folder. "" or what is wrong. The output appears when it is whole; it may not stand in the folder.
std::string packFolder(const std::filesystem::path& folder, const std::string& name,
                       const std::filesystem::path& output);

// A line a file: size, offset and path.
std::string listBigFile(const CBigFile& bigFile);

// Writes every file below the folder, which is made if need be; what is wrong, a line each. A name that leads anywhere
// else, by "..", a separator, a drive letter or a link that stands in the way, is told and left out; of equal names the
// first one is written, as it is the one that is found.
std::vector<std::string> extractBigFile(CBigFile& bigFile, const std::filesystem::path& folder);

// The library's name of a file of the operating system.
CXString libraryName(const std::filesystem::path& file);

}  // namespace prosc
