// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "storage/folder.h"

#include <algorithm>
#include <limits>

#include "frame/window.h"
#include "platform/platform.h"
#include "storage/big_file.h"

CFolder::CFolder(CWindow* window) : window_(window) { currentPath_ = directoryNow(); }

CFolder::CFolder(CWindow* window, const CXString& start)
    : window_(window), startPath_(start), previousDirectory_(directoryNow()) {
    changeTo(start);
    currentPath_ = start.GetAt(0) == '\\' ? start : directoryNow();
}

CFolder::~CFolder() { endSearch(); }

bool CFolder::changeTo(const CXString& folder) const {
    return window_ ? window_->ChDir(folder) == 0 : platform::current().files.changeFolder(folder.view());
}

CXString CFolder::directoryNow() const {
    if (window_) return window_->GetCurrentDirectoryA();
    return std::string_view(platform::current().files.currentFolder());
}

void CFolder::back() {
    if (previousDirectory_.IsString()) changeTo(previousDirectory_);
}

void CFolder::GoStart() {
    currentPath_ = startPath_;
    changeTo(startPath_);
}

CXString CFolder::GoUp() {
    changeTo("..");
    currentPath_.left(currentPath_.FindLast('\\'));
    return GetFolderType(startPath_);
}

CXString CFolder::GoTo(int n) {
    if (n < 0 || n > 25) return {};
    CXString pattern;
    pattern = static_cast<char>('A' + n);
    folderName_ = GetFolderName(pattern + ".*");
    if (!folderName_.IsString()) return {};
    currentPath_ += '\\';
    currentPath_ += folderName_;
    changeTo(folderName_);
    return GetFolderType(folderName_);
}

CXString CFolder::GetFolderType(const CXString& name) {
    const int point = name.FindLast('.');
    if (point < 0) return {};
    return name.GetAt(point + 1) == '+' ? name.Right(point + 2) : name.Mid(point + 1, point + 2);
}

CXString CFolder::GetFolderName(const CXString& pattern) { return startSearch(pattern, true); }
CXString CFolder::GetFileName(const CXString& pattern) { return startSearch(pattern, false); }

CXString CFolder::startSearch(const CXString& pattern, bool folderOnly) {
    endSearch();
    pattern_ = pattern;
    if (window_) {
        _finddata_t data;
        data.attrib = folderOnly ? kAttributeFolder : 0;
        handle_ = window_->FindFirst(pattern_, &data);
        if (handle_ != -1) return std::string_view(data.name);
        // A big file may be attached that doesn't have it.
        if (!window_->Resource()) return {};
    }
    return startDiskSearch(folderOnly);
}

CXString CFolder::startDiskSearch(bool folderOnly) {
    found_ = platform::current().files.find(pattern_.view());
    if (folderOnly) std::erase_if(found_, [](const platform::FileEntry& entry) { return !entry.isFolder; });
    return GetNextFileName();
}

CXString CFolder::GetNextFileName() {
    if (handle_ != -1) {
        _finddata_t data;
        if (window_->FindNext(handle_, &data) == 0) return std::string_view(data.name);
        handle_ = -1;
        return {};
    }
    if (next_ >= found_.size()) return {};
    return std::string_view(found_[next_++].name);
}

void CFolder::endSearch() {
    if (handle_ != -1) window_->FindClose(handle_);
    handle_ = -1;
    found_.clear();
    next_ = 0;
}

bool CFolder::firstMatch(const CXString& name, _finddata_t& match) const {
    if (window_) {
        const int handle = window_->FindFirst(name, &match);
        if (handle == -1) return false;
        window_->FindClose(handle);
        return true;
    }
    const auto found = platform::current().files.find(name.view());
    if (found.empty()) return false;
    match = {found[0].isFolder ? kAttributeFolder : 0, found[0].size, found[0].name};
    return true;
}

bool CFolder::IsDirectory(const CXString& name) const {
    _finddata_t match;
    return firstMatch(name, match) && (match.attrib & kAttributeFolder) != 0;
}

int CFolder::GetSize(const CXString& name) const {
    _finddata_t match;
    if (!firstMatch(name, match)) return 0;
    return static_cast<int>(std::min<std::uint64_t>(match.size, std::numeric_limits<int>::max()));
}

CXArray* CFolder::list(const CXString& pattern) {
    auto* names = new CXArray(101, 0.75F);
    for (CXString name = GetFileName(pattern); name.IsString(); name = GetNextFileName())
        names->add(new CXString(name));
    return names;
}
