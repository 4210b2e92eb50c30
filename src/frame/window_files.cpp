// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <algorithm>
#include <cstring>

#include "frame/window.h"
#include "platform/platform.h"
#include "storage/big_file.h"
#include "storage/file.h"

// The window's view of the disk, which is the switch between it and an attached big file.

int CWindow::ChDir(const CXString& folder) {
    if (bigFile_) return bigFile_->ChDir(folder);
    return platform::current().files.changeFolder(folder.view()) ? 0 : -1;
}

CXString CWindow::GetCurrentDirectoryA() const {
    return bigFile_ ? bigFile_->GetCurrentDirectoryA() : CXString(platform::current().files.currentFolder());
}

void CWindow::GetCurrentDirectoryA(int size, char* buffer) const {
    if (bigFile_) return bigFile_->GetCurrentDirectoryA(size, buffer);
    if (size <= 0) return;
    const std::string folder = platform::current().files.currentFolder();
    const std::size_t length = std::min(folder.size(), static_cast<std::size_t>(size) - 1);
    std::memcpy(buffer, folder.data(), length);
    buffer[length] = 0;
}

bool CWindow::fill(Search& search, _finddata_t* data) {
    while (search.next < search.found.size()) {
        const platform::FileEntry& entry = search.found[search.next++];
        if (search.foldersOnly && !entry.isFolder) continue;
        data->attrib = entry.isFolder ? kAttributeFolder : 0;
        data->size = entry.size;
        data->name = entry.name;
        return true;
    }
    return false;
}

int CWindow::FindFirst(const CXString& pattern, _finddata_t* data) {
    if (bigFile_) return bigFile_->FindFirst(pattern, data);
    Search search;
    search.found = platform::current().files.find(pattern.view());
    search.foldersOnly = (data->attrib & kAttributeFolder) != 0;
    if (!fill(search, data)) return -1;
    searches_[++lastSearch_] = std::move(search);
    return lastSearch_;
}

int CWindow::FindNext(int handle, _finddata_t* data) {
    if (bigFile_) return bigFile_->FindNext(handle, data);
    const auto it = searches_.find(handle);
    if (it == searches_.end()) return -1;
    if (fill(it->second, data)) return 0;
    searches_.erase(it);
    return -1;
}

void CWindow::FindClose(int handle) { searches_.erase(handle); }

int CWindow::FSeek(CFile* file, int offset, int whence) {
    if (bigFile_ && bigFile_->GetFile() == file) return bigFile_->Seek(offset, whence);
    return file->Seek(offset, whence);
}

int CWindow::FTell(CFile* file) {
    if (bigFile_ && bigFile_->GetFile() == file) return bigFile_->Tell();
    return file->Tell();
}

bool CWindow::DirExists(const CXString& name) const { return bigFile_ && bigFile_->DirExists(name); }

bool CWindow::FileExists(const CXString& name) const { return bigFile_ && bigFile_->FileExists(name); }

void CWindow::attach(std::unique_ptr<CBigFile> bigFile) { bigFile_ = std::move(bigFile); }
