// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/headless/files.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <unistd.h>
#include <utility>

#include "platform/headless/code_page.h"

namespace headless {

namespace {

// The coarsest time stamps in use are those of FAT, of two seconds.
constexpr long kStampSeconds = 2;

bool isSeparator(char c) { return c == '\\' || c == '/'; }

std::optional<struct stat> status(const std::string& systemPath) {
    struct stat result {};
    if (stat(systemPath.c_str(), &result) != 0) return std::nullopt;
    return result;
}

bool isOrdinaryFile(const std::string& systemPath) {
    const auto found = status(systemPath);
    return found && S_ISREG(found->st_mode);
}

std::string joined(const std::string& systemFolder, const std::string& systemName) {
    return systemFolder.ends_with('/') ? systemFolder + systemName : systemFolder + "/" + systemName;
}

// A name of the disk as the library sees it.
std::string seen(std::string_view systemName) {
    std::string name = fromUtf8(systemName);
    std::replace(name.begin(), name.end(), '\\', '_');
    return name;
}

std::vector<std::string> seenParts(std::string_view systemPath) {
    std::vector<std::string> parts;
    while (!systemPath.empty()) {
        const std::size_t end = std::min(systemPath.find('/'), systemPath.size());
        if (end > 0) parts.push_back(seen(systemPath.substr(0, end)));
        systemPath.remove_prefix(std::min(end + 1, systemPath.size()));
    }
    return parts;
}

bool fits(std::string_view pattern, std::string_view name) {
    std::size_t p = 0;
    std::size_t n = 0;
    std::size_t star = std::string_view::npos;
    std::size_t starName = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            starName = n;
        } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n])) {
            ++p;
            ++n;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            n = ++starName;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*')
        ++p;
    return p == pattern.size();
}

// Both in lower case. A pattern with ".*" at its end takes names without an extension too.
bool fitsAsFileName(std::string_view pattern, std::string_view name) {
    if (fits(pattern, name)) return true;
    if (!pattern.ends_with(".*") || name.find('.') != std::string_view::npos) return false;
    return fits(pattern.substr(0, pattern.size() - 2), name);
}

bool writeWhole(int descriptor, std::span<const std::byte> content) {
    while (!content.empty()) {
        const ssize_t written = write(descriptor, content.data(), content.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        content = content.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

// Creates a file of a name that nothing else has; -1 when it can't. `path` becomes its name.
int createTemporary(const std::string& systemFolder, std::string& path) {
    constexpr int kAttempts = 100;  // each can only be in the way when a killed run of the same process number left it
    for (int i = 0; i < kAttempts; ++i) {
        path = joined(systemFolder, ".proscenium-" + std::to_string(getpid()) + "-" + std::to_string(i) + ".tmp");
        const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor >= 0 || errno != EEXIST) return descriptor;
    }
    return -1;
}

}  // namespace

DiskFiles::DiskFiles(const std::string& systemFolder) {
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(systemFolder.c_str(), nullptr), &std::free);
    if (real) current_ = seenParts(real.get());
}

std::optional<std::vector<std::string>> DiskFiles::parts(std::string_view name) const {
    if (name.empty() || name.find('\0') != std::string_view::npos) return std::nullopt;
    std::vector<std::string> parts;
    if (name.size() >= 2 && name[1] == ':') {
        if (foldCase(name[0]) != 'c') return std::nullopt;
        name.remove_prefix(2);
    } else if (!isSeparator(name[0])) {
        parts = current_;
    }
    while (!name.empty()) {
        const auto end = static_cast<std::size_t>(std::find_if(name.begin(), name.end(), isSeparator) - name.begin());
        const std::string_view part = name.substr(0, end);
        if (part == "..") {
            if (!parts.empty()) parts.pop_back();
        } else if (!part.empty() && part != ".") {
            // There and back: bytes that are no character become what they would be on the disk.
            parts.push_back(fromUtf8(toUtf8(part)));
        }
        name.remove_prefix(std::min(end + 1, name.size()));
    }
    return parts;
}

const DiskFiles::FolderIndex& DiskFiles::index(const std::string& systemFolder, bool readAnew) const {
    static const FolderIndex kNothing;
    const auto now = status(systemFolder);
    if (!now) {
        indices_.erase(systemFolder);
        return kNothing;
    }
    FolderIndex& index = indices_[systemFolder];
    const timespec& stamp = now->st_mtim;
    const bool known =
        index.stamp.tv_sec != 0 && index.stamp.tv_sec == stamp.tv_sec && index.stamp.tv_nsec == stamp.tv_nsec;
    if (known && !readAnew) return index;

    index = {};
    DIR* folder = opendir(systemFolder.c_str());
    if (!folder) return index;
    timespec time{};
    clock_gettime(CLOCK_REALTIME, &time);
    index.stamp = stamp;
    index.settled = time.tv_sec - stamp.tv_sec > kStampSeconds;
    while (const dirent* entry = readdir(folder)) {
        const std::string systemName = entry->d_name;
        if (systemName == "." || systemName == "..") continue;
        std::string name = seen(systemName);
        std::string folded = foldCase(name);
        index.entries.push_back({std::move(folded), std::move(name), systemName});
    }
    closedir(folder);
    std::sort(index.entries.begin(), index.entries.end(), [](const IndexEntry& a, const IndexEntry& b) {
        return a.folded != b.folded ? a.folded < b.folded : a.systemName < b.systemName;
    });
    return index;
}

std::optional<std::string> DiskFiles::spelling(const std::string& systemFolder, const std::string& part) const {
    std::string exact = toUtf8(part);
    if (status(joined(systemFolder, exact))) return exact;
    const std::string folded = foldCase(part);
    for (const bool readAnew : {false, true}) {
        const FolderIndex& names = index(systemFolder, readAnew);
        const auto at =
            std::lower_bound(names.entries.begin(), names.entries.end(), folded,
                             [](const IndexEntry& entry, const std::string& want) { return entry.folded < want; });
        const bool found = at != names.entries.end() && at->folded == folded;
        if (found && (names.settled || status(joined(systemFolder, at->systemName)))) return at->systemName;
        if (names.settled) break;
    }
    return std::nullopt;
}

std::optional<std::string> DiskFiles::resolve(std::span<const std::string> parts) const {
    std::string asGiven = "/";
    for (const std::string& part : parts)
        asGiven = joined(asGiven, toUtf8(part));
    if (status(asGiven)) return asGiven;
    std::string path = "/";
    for (const std::string& part : parts) {
        const auto systemName = spelling(path, part);
        if (!systemName) return std::nullopt;
        path = joined(path, *systemName);
    }
    return path;
}

std::optional<std::string> DiskFiles::systemPath(std::string_view name) const {
    const auto wanted = parts(name);
    return wanted ? resolve(*wanted) : std::nullopt;
}

std::optional<std::string> DiskFiles::writablePath(std::string_view name) const {
    const auto wanted = parts(name);
    if (!wanted || wanted->empty() || isSeparator(name.back())) return std::nullopt;
    if (auto existing = resolve(*wanted)) return isOrdinaryFile(*existing) ? existing : std::nullopt;
    const auto folder = resolve(std::span(*wanted).first(wanted->size() - 1));
    if (!folder) return std::nullopt;
    return joined(*folder, toUtf8(wanted->back()));
}

std::FILE* DiskFiles::open(std::string_view name, const char* mode) {
    const bool reads = mode[0] == 'r';
    const auto path = reads ? systemPath(name) : writablePath(name);
    if (!path || (reads && !isOrdinaryFile(*path))) return nullptr;
    return std::fopen(path->c_str(), mode);
}

bool DiskFiles::changeFolder(std::string_view name) {
    const auto path = systemPath(name);
    if (!path) return false;
    const auto found = status(*path);
    if (!found || !S_ISDIR(found->st_mode) || access(path->c_str(), X_OK) != 0) return false;
    current_ = seenParts(*path);
    return true;
}

std::string DiskFiles::currentFolder() const {
    std::string result = "C:";
    for (const std::string& part : current_)
        result += "\\" + part;
    if (current_.empty()) result += "\\";
    return result;
}

std::vector<platform::FileEntry> DiskFiles::find(std::string_view pattern) const {
    std::vector<platform::FileEntry> result;
    const auto behindFolder =
        std::find_if(pattern.rbegin(), pattern.rend(), [](char c) { return isSeparator(c) || c == ':'; });
    const auto folderLength = static_cast<std::size_t>(pattern.rend() - behindFolder);
    const std::string wanted = foldCase(pattern.substr(folderLength));
    const auto folder = systemPath(folderLength == 0 ? "." : pattern.substr(0, folderLength));
    if (!folder) return result;
    for (const IndexEntry& entry : index(*folder, false).entries) {
        if (!fitsAsFileName(wanted, entry.folded)) continue;
        const auto found = status(joined(*folder, entry.systemName));
        if (!found) continue;
        const bool isFolder = S_ISDIR(found->st_mode);
        result.push_back({entry.name, isFolder, isFolder ? 0 : static_cast<std::uint64_t>(found->st_size)});
    }
    return result;
}

bool DiskFiles::replaceFile(std::string_view name, std::span<const std::byte> content) {
    auto path = writablePath(name);
    if (!path) return false;
    const auto old = status(*path);
    if (old) {
        // A file that may not be written stands for "leave it as it is", though its folder would let it be replaced.
        if (access(path->c_str(), W_OK) != 0) return false;
        // A link stays one: what it leads to is replaced.
        const std::unique_ptr<char, decltype(&std::free)> real(realpath(path->c_str(), nullptr), &std::free);
        if (!real) return false;
        path = real.get();
    }
    const std::string folder = path->substr(0, path->rfind('/') + 1);
    std::string temporary;
    const int descriptor = createTemporary(folder, temporary);
    if (descriptor < 0) return false;
    bool done = writeWhole(descriptor, content);
    if (old) done = fchmod(descriptor, old->st_mode & 07777) == 0 && done;
    done = close(descriptor) == 0 && done;
    done = done && rename(temporary.c_str(), path->c_str()) == 0;
    if (!done) unlink(temporary.c_str());
    return done;
}

std::optional<std::string> DiskFiles::readFile(std::string_view name) const {
    const auto path = systemPath(name);
    if (!path || !isOrdinaryFile(*path)) return std::nullopt;
    const std::unique_ptr<std::FILE, decltype(&std::fclose)> stream(std::fopen(path->c_str(), "rb"), &std::fclose);
    if (!stream) return std::nullopt;
    std::string content;
    char block[65536];
    while (const std::size_t n = std::fread(block, 1, sizeof block, stream.get()))
        content.append(block, n);
    if (std::ferror(stream.get())) return std::nullopt;
    return content;
}

}  // namespace headless
