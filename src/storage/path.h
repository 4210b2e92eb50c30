// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xobject.h"

class CWindow;

// Names of files and folders, with backslashes. With a big file attached to the window, questions go to it.
class CPath : public CXObject {
public:
    explicit CPath(CWindow* window);  // the base folder is the window's current one, or the process's without a window
    CPath(CWindow* window, const CXString& name);

    // The path that a script's file name means: "$" or "&" in front stands for the data root, and FOLDER?NAME for that
    // file in that folder below the current one. Other names are paths already.
    static CXString resolveFileName(CWindow* window, const CXString& name);
    CXString resolveFileName(const CXString& name) const { return resolveFileName(window_, name); }

    static CXString getFullPath(const CXString& folder, const CXString& name);
    static CXString getFullPath(const CXString& base, const CXString& folder, const CXString& name);
    CXString GetFullPath(const CXString& name) const { return getFullPath(base_, name); }
    CXString GetFullPath(const CXString& folder, const CXString& name) const {
        return getFullPath(base_, folder, name);
    }

    // Replaces all behind the name's first full stop; the new name. What GetExtension tells stays.
    CXString SetExtension(const CXString& extension);
    const CXString& GetExtension() const { return extension_; }

    bool DirExists(const CXString& name) const;
    static bool FileExists(CWindow* window, const CXString& name);
    bool FileExists(const CXString& name) const { return FileExists(window_, name); }
    bool chDir(const CXString& name) const;  // makes it the current folder; false: no such folder

private:
    CWindow* window_;
    CXString name_;
    CXString extension_;
    CXString base_;
};
