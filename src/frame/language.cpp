// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "frame/language.h"

#include <cstdio>
#include <string_view>

#include "frame/application.h"
#include "frame/config.h"
#include "frame/config_file.h"
#include "frame/window.h"
#include "platform/platform.h"

namespace {

constexpr std::size_t kLongestFolder = 254;  // characters

struct LanguageFolder {
    std::string_view code;
    const char* folder;
};

constexpr LanguageFolder kFolders[] = {
    {"0405", "CZE"},
    {"0402", "BUL"},
    {"0418", "ROM"},
    {"0419", "RUS"},
    {"040E", "HUN"},
    {"041B", "SLO"},
    {"0415", "POL"},
};

// Asks the configuration that the application has open, whose changes may not be on the disk yet; without one the file.
CXString readEntry(const CXString& fileName, const CXString& key) {
    CWindow* window = CWindow::current();
    CApplication* application = window ? window->GetApplicationInterface() : nullptr;
    const CConfig* config = application ? application->GetConfigInterface() : nullptr;
    const auto read = [&](const ConfigFile& file) {
        return CXString(file.get("LANGUAGE", key.view()).value_or("").substr(0, kLongestFolder));
    };
    if (config && config->getFullName() == fileName) return read(config->file());
    if (!fileName.IsString()) return {};
    return read(ConfigFile(fileName));
}

}  // namespace

CXString CLanguageOSVer::iniFileName;
CXString CLanguageOSVer::subFolder;

void CLanguageOSVer::initialize(const CXString& iniFile) {
    iniFileName = iniFile;
    const std::string code = platform::current().shell.localeCode();
    if (!code.empty()) setLanguageFolder(code.c_str());
}

void CLanguageOSVer::setLanguageFolder(const char* code) { subFolder = getSubFolder(code); }

CXString CLanguageOSVer::getSubFolder(const CXString& code) {
    // What stands in the file wins over the table, and may name languages that the table doesn't have.
    CXString configured = readEntry(iniFileName, code);
    if (configured.IsString()) return configured;
    CXString upper = code;
    upper.Upper();
    for (const LanguageFolder& entry : kFolders) {
        if (upper.view() == entry.code) return entry.folder;
    }
    return {};
}

CXString CLanguageOSVer::getLocalFileName(const CXString& path) {
    if (!subFolder.IsString()) return path;
    const std::string_view whole = path.view();
    const std::size_t nameBegin = whole.rfind('\\') + 1;  // 0 without a backslash
    CXString candidate(whole.substr(0, nameBegin));
    candidate += subFolder;
    candidate += "\\";
    candidate += whole.substr(nameBegin);
    std::FILE* file = platform::current().files.open(candidate.view(), "rb");
    if (!file) return path;
    std::fclose(file);
    return candidate;
}

void CLanguageOSVer::done() {
    iniFileName = "";
    subFolder = "";
}
