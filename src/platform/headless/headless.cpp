// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/headless/headless.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace headless {

namespace detail {

WorkFolder::WorkFolder(const std::string& folder) : path_(folder), isOurs_(folder.empty()) {
    if (!isOurs_) return;
    std::error_code error;
    std::string pattern = std::filesystem::temp_directory_path(error) / "proscenium-XXXXXX";
    if (mkdtemp(pattern.data())) {
        path_ = pattern;
    } else {
        isOurs_ = false;
    }
}

WorkFolder::~WorkFolder() {
    std::error_code error;
    if (isOurs_) std::filesystem::remove_all(path_, error);
}

}  // namespace detail

HeadlessPlatform::HeadlessPlatform(const Options& options)
    : folder_(options.folder),
      clock(options.ticks, options.utcSeconds),
      files(folder_.path()),
      shell(options.messages, options.debug),
      display(options.bitsPerPixel),
      former_(platform::install(&platform_)) {
    clock.setFollower([this](std::uint32_t milliseconds) { audio.advance(milliseconds); });
    shell.setLocaleCode(options.localeCode);
}

HeadlessPlatform::~HeadlessPlatform() { platform::install(former_); }

bool HeadlessPlatform::write(const std::string& path, std::string_view content) const {
    const std::filesystem::path full = std::filesystem::path(folder()) / path;
    std::error_code error;
    std::filesystem::create_directories(full.parent_path(), error);
    std::ofstream stream(full, std::ios::binary | std::ios::trunc);
    stream.write(content.data(), static_cast<std::streamsize>(content.size()));
    stream.close();
    return !stream.fail();
}

}  // namespace headless
