// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "storage/path.h"

#include <cstdio>
#include <string>

#include "foundation/string_tokenizer.h"
#include "frame/window.h"
#include "platform/platform.h"

namespace {

CXString currentFolder(CWindow* window) {
    if (window) return window->GetCurrentDirectoryA();
    return std::string_view(platform::current().files.currentFolder());
}

bool hasBigFile(const CWindow* window) { return window && window->Resource(); }

}  // namespace

CPath::CPath(CWindow* window) : window_(window), base_(currentFolder(window)) {}

CPath::CPath(CWindow* window, const CXString& name)
    : window_(window), name_(name), extension_(name.Right(name.FindLast('.') + 1)), base_(currentFolder(window)) {
    if (name.FindLast('.') < 0) extension_ = "";
}

CXString CPath::resolveFileName(CWindow* window, const CXString& name) {
    CXString path = name;
    if (const char first = name.GetAt(0); first == '$' || first == '&') {
        path = (window ? window->getCDPath() : CXString()) + name.Right(1);
    }
    if (path.Find('?') < 0) return path;
    CStringTokenizer parts(path, "?");
    const CXString first = parts.nextToken();
    if (!parts.hasMoreTokens()) return getFullPath(currentFolder(window), "", first);
    return getFullPath(currentFolder(window), first, parts.nextToken());
}

CXString CPath::getFullPath(const CXString& folder, const CXString& name) {
    CXString path = folder;
    if (path.IsString() && path.lastChar() != '\\') path += '\\';
    return path += name;
}

CXString CPath::getFullPath(const CXString& base, const CXString& folder, const CXString& name) {
    CXString path = base;
    path += '\\';
    if (folder.IsString()) {
        path += folder;
        path += '\\';
    }
    return path += name;
}

CXString CPath::SetExtension(const CXString& extension) {
    if (const int point = name_.Find('.'); point >= 0) {
        name_.left(point + 1);
    } else {
        name_ += '.';
    }
    return name_ += extension;
}

bool CPath::DirExists(const CXString& name) const {
    if (hasBigFile(window_)) return window_->DirExists(name);
    platform::Files& files = platform::current().files;
    const std::string before = files.currentFolder();
    if (!files.changeFolder(name.view())) return false;
    files.changeFolder(before);
    return true;
}

bool CPath::FileExists(CWindow* window, const CXString& name) {
    if (hasBigFile(window)) return window->FileExists(name);
    std::FILE* stream = platform::current().files.open(name.view(), "rb");
    if (!stream) return false;
    std::fclose(stream);
    return true;
}

bool CPath::chDir(const CXString& name) const {
    if (hasBigFile(window_)) return window_->ChDir(name) == 0;
    return platform::current().files.changeFolder(name.view());
}
