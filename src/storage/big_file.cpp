// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "storage/big_file.h"

#include <algorithm>
#include <cstdio>
#include <limits>

#include "platform/platform.h"
#include "storage/archive.h"
#include "storage/file.h"
#include "storage/path.h"

namespace {

// What the records take beside their texts.
constexpr int kHeaderSize = 36;
constexpr int kFolderSize = 12;
constexpr int kFileSize = 20;

CXString lower(CXString text) { return text.Lower(); }

// Cuts the first folder off a name; without one `folder` becomes "" and the result is false.
bool splitFolder(std::string_view& name, std::string_view& folder) {
    const std::size_t at = name.find('\\');
    folder = at == std::string_view::npos ? std::string_view() : name.substr(0, at);
    if (at == std::string_view::npos) return false;
    name.remove_prefix(at + 1);
    return true;
}

template <class Index, class Place>
auto lookUp(const Index& index, const Place& place) {
    const auto at = index.find(place);
    return at == index.end() ? nullptr : at->second;
}

}  // namespace

std::size_t CBigFile::PlaceHash::operator()(const Place& place) const {
    std::uint64_t hash = 0xCBF29CE484222325U ^ reinterpret_cast<std::uintptr_t>(place.folder);
    for (const char c : place.name)
        hash = (hash ^ static_cast<unsigned char>(lowerCase(c))) * 0x100000001B3U;
    return static_cast<std::size_t>(hash ^ hash >> 32);
}

bool CBigFile::SamePlace::operator()(const Place& a, const Place& b) const {
    return a.folder == b.folder && std::ranges::equal(a.name, b.name, {}, lowerCase, lowerCase);
}

CBigFile::CBigFile(CWindow* window, bool verbose, const CXString&) : window_(window), verbose_(verbose) {}

CBigFile::CBigFile(CWindow* window, const CXString& file, bool verbose, const CXString&)
    : window_(window), stream_(std::make_unique<CFile>()), path_(file), verbose_(verbose) {
    // Nothing tells a big file from others, so one whose table doesn't come out is none.
    if (stream_->Open(window, file, CFile::kReadBinary) == 0 && readTable()) {
        makeIndex();
        stream_->Seek(0, SEEK_SET);
        return;
    }
    stream_.reset();
    table_.reset();
    current_ = nullptr;
}

CBigFile::~CBigFile() = default;

_entry* CBigFile::addFolder(_entry* parent, const CXString& name) {
    _entry& folder = table_->allFolders.emplace_back();
    folder.name = name;
    folder.parent = parent;
    if (parent) parent->folders.push_back(&folder);
    return &folder;
}

_file* CBigFile::addFile(_entry* parent, const CXString& name) {
    _file& file = table_->allFiles.emplace_back();
    file.name = name;
    file.parent = parent;
    parent->files.push_back(&file);
    return &file;
}

bool CBigFile::readTable() {
    struct Open {
        _entry* folder;
        int files;
        int folders;
    };
    table_ = std::make_unique<_rootentry>();
    CXArchive archive(stream_.get(), false);
    archive >> table_->name >> table_->rootPath >> table_->totalSize >> table_->reserved[0] >> table_->reserved[1] >>
        table_->fileCount >> table_->folderCount;
    std::vector<Open> open;
    const auto readFolder = [&](_entry* parent) {
        CXString name;
        int files = 0;
        int folders = 0;
        archive >> name >> files >> folders;
        if (!archive.ok() || files < 0 || folders < 0) return false;
        open.push_back({addFolder(parent, name), files, folders});
        return true;
    };
    const auto readFile = [&](_entry* parent) {
        CXString name;
        std::int64_t reserved = 0;
        int offset = 0;
        int size = 0;
        archive >> name >> offset >> reserved >> size;
        if (!archive.ok() || offset < 0 || size < 0) return false;
        _file* file = addFile(parent, name);
        file->offset = offset;
        file->reserved = reserved;
        file->size = size;
        return true;
    };

    if (!readFolder(nullptr)) return false;
    table_->root = current_ = open.back().folder;
    while (!open.empty()) {
        Open& top = open.back();
        if (top.folders > 0) {
            --top.folders;
            if (!readFolder(top.folder)) return false;
            continue;
        }
        for (; top.files > 0; --top.files)
            if (!readFile(top.folder)) return false;
        open.pop_back();
    }
    tableSize_ = stream_->Tell();
    return true;
}

void CBigFile::walk(const std::function<void(_entry&)>& onFolder, const std::function<void(_file&)>& onFile) const {
    struct Step {
        _entry* folder;
        std::size_t next;
    };
    std::vector<Step> steps;
    const auto enter = [&](_entry* folder) {
        onFolder(*folder);
        steps.push_back({folder, 0});
    };
    if (table_) enter(table_->root);
    while (!steps.empty()) {
        Step& top = steps.back();
        if (top.next < top.folder->folders.size()) {
            enter(top.folder->folders[top.next++]);
            continue;
        }
        for (_file* file : top.folder->files)
            onFile(*file);
        steps.pop_back();
    }
}

void CBigFile::makeIndex() {
    folders_.clear();
    files_.clear();
    for (const _entry& folder : table_->allFolders) {
        for (const _entry* sub : folder.folders)
            folders_.try_emplace({&folder, sub->name.view()}, sub);
        for (const _file* file : folder.files)
            files_.try_emplace({&folder, file->name.view()}, file);
    }
}

const _file* CBigFile::find(const CXString& name) const {
    if (!current_) return nullptr;
    std::string_view rest = name.view();
    const _entry* folder = current_;
    if (rest.starts_with('\\')) {
        rest.remove_prefix(1);
        folder = table_->root;
    }
    std::string_view part;
    if (!rest.starts_with('\\')) splitFolder(rest, part);
    // With no further folder in the name, a search that fails below goes on in the folders above, up to this one.
    const _entry* top = folder;
    while (const _entry* sub = lookUp(folders_, Place{folder, part})) {
        if (splitFolder(rest, part)) top = sub;
        folder = sub;
    }
    if (rest.empty()) return nullptr;
    for (;; folder = folder->parent) {
        if (const _file* file = lookUp(files_, Place{folder, rest})) return file;
        if (folder == top) return nullptr;
    }
}

int CBigFile::Seek(const CXString& name) {
    const _file* file = find(name);
    return file && seekTo(*file) ? file->offset : -1;
}

int CBigFile::Seek(int offset, int whence) {
    if (!stream_) return -1;
    stream_->unconfine();
    return stream_->Seek(offset, whence);
}

bool CBigFile::seekTo(const _file& file) {
    if (!stream_ || stream_->Seek(file.offset - stream_->Tell(), SEEK_CUR) != 0) return false;
    stream_->confine(file.offset, std::int64_t{file.offset} + file.size);
    return true;
}

int CBigFile::Tell() const { return stream_ ? stream_->Tell() : 0; }

int CBigFile::GetSize(const CXString& name) const {
    const _file* file = find(name);
    return file ? file->size : -1;
}

bool CBigFile::open(const CXString& name, CFile& own) const {
    const _file* file = find(name);
    if (!file || !stream_ || own.Open(window_, stream_->getName(), CFile::kReadBinary) != 0) return false;
    own.confine(file->offset, std::int64_t{file->offset} + file->size);
    return own.Seek(file->offset, SEEK_SET) == 0;
}

CXString CBigFile::pathOf(const _entry& folder) {
    std::vector<const _entry*> way;
    for (const _entry* at = &folder; at->parent; at = at->parent)
        way.push_back(at);
    CXString path;
    for (auto at = way.rbegin(); at != way.rend(); ++at) {
        path += (*at)->name;
        path += '\\';
    }
    return path;
}

CXString CBigFile::GetCurrentDirectoryA() const {
    if (!stream_) return std::string_view(platform::current().files.currentFolder());
    CXString path = pathOf(*current_);
    if (current_ == table_->root) path = table_->rootPath;
    if (path.lastChar() == '\\') path.left(path.GetLength() - 1);
    return path;
}

int CBigFile::FindFirst(CXString pattern, _finddata_t* data) const {
    if (!current_) return -1;
    pattern.Lower();
    int index = 0;
    for (const _file* file : current_->files) {
        if (pattern.FilterFits(lower(file->name))) {
            *data = {0, static_cast<std::uint64_t>(file->size), std::string(file->name.view())};
            return index;
        }
        ++index;
    }
    for (const _entry* folder : current_->folders) {
        if (pattern.FilterFits(lower(folder->name))) {
            *data = {kAttributeFolder, 0, std::string(folder->name.view())};
            return index;
        }
        ++index;
    }
    return -1;
}

// --- writing

bool CBigFile::Create(const CXString& sourceFolder, const CXString& name, const CXString& outputFile) {
    stream_.reset();
    table_ = std::make_unique<_rootentry>();
    table_->name = name;
    table_->rootPath = "\\";
    table_->root = current_ = addFolder(nullptr, sourceFolder);
    path_ = outputFile;
    const bool fits = scan(sourceFolder);
    makeIndex();
    if (!fits) return false;
    if (verbose_) {
        std::printf("Big file name: %s.\n", table_->name.c_str());
        std::printf("Number of folders: %d.\n", table_->folderCount);
        std::printf("Number of files: %d.\n", table_->fileCount);
        std::printf("Total size: %d bytes.\n", table_->totalSize);
        std::printf("TOC size: %d bytes.\n", tableSize_);
    }
    CFile output;
    if (output.Open(window_, outputFile, CFile::kCreateBinary) != 0) return false;
    dataOffset_ = 0;
    CXArchive archive(&output, true);
    if (!writeTable(archive)) return false;
    std::printf("TOC saved.\n");
    return copyFiles(output);
}

bool CBigFile::scan(const CXString& sourceFolder) {
    struct Folder {
        _entry* entry;
        CXString path;
    };
    std::int64_t tableSize = std::int64_t{kHeaderSize} + table_->name.GetLength() + table_->rootPath.GetLength() +
                             kFolderSize + sourceFolder.GetLength();
    std::int64_t totalSize = 0;
    std::vector<Folder> open{
        {table_->root, sourceFolder}
    };
    while (!open.empty()) {
        const Folder folder = std::move(open.back());
        open.pop_back();
        for (const auto& found : platform::current().files.find((folder.path + "\\*.*").view())) {
            if (found.name == "." || found.name == "..") continue;
            const CXString name{std::string_view(found.name)};
            if (found.isFolder) {
                tableSize += kFolderSize + name.GetLength();
                ++table_->folderCount;
                open.push_back({addFolder(folder.entry, name), folder.path + "\\" + name});
                continue;
            }
            tableSize += kFileSize + name.GetLength();
            totalSize += static_cast<std::int64_t>(found.size);
            // Sizes and offsets are of 32 bits.
            if (tableSize + totalSize > std::numeric_limits<int>::max()) return false;
            ++table_->fileCount;
            addFile(folder.entry, name)->size = static_cast<int>(found.size);
        }
    }
    tableSize_ = static_cast<int>(tableSize);
    table_->totalSize = static_cast<int>(totalSize);
    return true;
}

bool CBigFile::writeTable(CXArchive& archive) {
    archive << table_->name << table_->rootPath << table_->totalSize << table_->reserved[0] << table_->reserved[1]
            << table_->fileCount << table_->folderCount;
    walk(
        [&](_entry& folder) {
            archive << folder.name << static_cast<int>(folder.files.size()) << static_cast<int>(folder.folders.size());
        },
        [&](_file& file) {
            file.offset = tableSize_ + dataOffset_;
            dataOffset_ += file.size;
            archive << file.name << file.offset << file.reserved << file.size;
        });
    return archive.ok();
}

bool CBigFile::copyFiles(CFile& output) {
    bool done = true;
    int number = 0;
    walk([](_entry&) {},
         [&](_file& file) {
             if (!done) return;
             CFile source(window_, table_->root->name + "\\" + pathOf(*file.parent) + file.name, CFile::kReadBinary);
             const std::vector<std::byte> bytes = source.readRest(std::numeric_limits<int>::max());
             done = source.LastError() == 0 && static_cast<int>(bytes.size()) == file.size &&
                    (bytes.empty() || output.Write(bytes.data(), file.size) == 1);
             if (done) std::printf("\r%48s\rFile %d of %d saved.", "", ++number, table_->fileCount);
         });
    return done && std::fflush(output.GetHandle()) == 0;
}
