// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "prosc/big_file.h"

#include <algorithm>
#include <fmt/format.h>
#include <fstream>
#include <set>

#include "platform/headless/code_page.h"
#include "platform/platform.h"
#include "storage/file.h"

namespace fs = std::filesystem;

namespace prosc {

namespace {

// A name as a person may see it: nothing in it moves the cursor.
std::string shown(std::string_view name) {
    std::string text(name);
    for (char& c : text)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = '?';
    return headless::toUtf8(text);
}

std::string shownPath(const _file& file) { return shown((CBigFile::pathOf(*file.parent) + file.name).view()); }

// One step down and nothing else, on this system and on those where names have drives.
bool isPlainName(std::string_view name) {
    if (name.empty() || name == "." || name == "..") return false;
    return std::ranges::none_of(
        name, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == '/' || c == '\\' || c == ':'; });
}

// Where a folder of the big file goes; "": nowhere.
fs::path placeOf(const _entry& entry, const fs::path& folder) {
    std::vector<const _entry*> way;
    for (const _entry* at = &entry; at->parent; at = at->parent)
        way.push_back(at);
    fs::path place = folder;
    for (auto at = way.rbegin(); at != way.rend(); ++at) {
        if (!isPlainName((*at)->name.view())) return {};
        place /= headless::toUtf8((*at)->name.view());
    }
    return place;
}

// Makes the folder and those above it up to `top`. "" or what is wrong.
std::string makeFolder(const fs::path& folder, const fs::path& top) {
    fs::path at = top;
    for (const fs::path& step : folder.lexically_relative(top)) {
        if (step != ".") at /= step;
        std::error_code error;
        if (at != top && fs::is_symlink(fs::symlink_status(at, error))) return "a link is in its way";
        fs::create_directories(at, error);
        if (error) return error.message();
        if (!fs::is_directory(at, error)) return "a file is in its way";
    }
    return "";
}

std::string writeFile(CBigFile& bigFile, const _file& file, const fs::path& place) {
    std::error_code error;
    const fs::file_status status = fs::symlink_status(place, error);
    if (fs::exists(status) && !fs::is_regular_file(status)) return "something else is in its place";
    if (!bigFile.seekTo(file)) return "can't be read";
    const std::vector<std::byte> bytes = bigFile.GetFile()->readRest(file.size);
    fs::remove(place, error);  // what stands there may have another name as well
    std::ofstream stream(place, std::ios::binary | std::ios::trunc);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream) return "can't be written";
    if (static_cast<int>(bytes.size()) != file.size)
        return fmt::format("is cut off: {} of {} bytes", bytes.size(), file.size);
    return "";
}

}  // namespace

CXString libraryName(const fs::path& file) {
    std::string name = "C:" + headless::fromUtf8(fs::weakly_canonical(fs::absolute(file)).string());
    std::ranges::replace(name, '/', '\\');
    return std::string_view(name);
}

std::string packFolder(const fs::path& folder, const std::string& name, const fs::path& output) {
    const fs::path target = fs::weakly_canonical(fs::absolute(output));
    const fs::path relative = target.lexically_relative(fs::canonical(folder));
    if (!relative.empty() && *relative.begin() != "..") return "stands in the folder that is packed";
    platform::Files& files = platform::current().files;
    const std::string before = files.currentFolder();
    const fs::path temporary = target.string() + ".new";
    // A file whose path holds a well-known folder name is looked for below the current folder first; from the root of
    // the disk that finds nothing but what is meant.
    files.changeFolder("C:\\");
    CBigFile bigFile(nullptr, true, "");
    const bool done =
        bigFile.Create(libraryName(folder), std::string_view(headless::fromUtf8(name)), libraryName(temporary));
    files.changeFolder(before);
    std::error_code error;
    if (done) fs::rename(temporary, target, error);
    if (done && !error) return "";
    std::error_code ignored;
    fs::remove(temporary, ignored);
    return error ? error.message() : "can't be written, or a file of the folder can't be read or is too large";
}

std::string listBigFile(const CBigFile& bigFile) {
    std::string text;
    bigFile.walk(
        [](_entry&) {},
        [&](_file& file) { text += fmt::format("{:>10} {:>10} {}\n", file.size, file.offset, shownPath(file)); });
    return text;
}

std::vector<std::string> extractBigFile(CBigFile& bigFile, const fs::path& folder) {
    std::vector<std::string> wrong;
    const auto tell = [&](const std::string& name, const std::string& what) {
        if (!what.empty()) wrong.push_back(name + ": " + what);
    };
    std::set<std::string> written;
    bigFile.walk(
        [&](_entry& entry) {
            const fs::path place = placeOf(entry, folder);
            const std::string what = place.empty() ? "leads out of the folder" : makeFolder(place, folder);
            tell(shown(CBigFile::pathOf(entry).view()), what);
        },
        [&](_file& file) {
            const fs::path place = placeOf(*file.parent, folder);
            if (place.empty() || !isPlainName(file.name.view()))
                return tell(shownPath(file), "leads out of the folder");
            const fs::path target = place / headless::toUtf8(file.name.view());
            if (!written.insert(target.string()).second) return tell(shownPath(file), "is there twice");
            const std::string unmade = makeFolder(place, folder);
            tell(shownPath(file), unmade.empty() ? writeFile(bigFile, file, target) : unmade);
        });
    return wrong;
}

}  // namespace prosc
