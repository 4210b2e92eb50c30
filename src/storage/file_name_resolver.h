// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <vector>

#include "foundation/xobject.h"

// Splits a path at its backslashes, and the file name at its full stops.
class CFileNameResolver : public CXObject {
public:
    explicit CFileNameResolver(const CXString& path) : path_(path) { resolve(); }

    void resolve();

    char getDrive() const { return drive_; }                       // 0: the path names none
    const CXString& getFileName() const { return fileName_; }      // with its extension
    const CXString& getPureFileName() const { return pureName_; }  // up to the first full stop
    const CXString& getExtension() const { return extension_; }    // up to the second one
    const CXString& getPath() const { return folder_; }            // all before the file name, with its backslash
    const std::vector<CXString>& getFolders() const { return folders_; }  // in order, without the drive

private:
    CXString path_;
    char drive_ = '\0';
    CXString fileName_;
    CXString pureName_;
    CXString extension_;
    CXString folder_;
    std::vector<CXString> folders_;
};
