// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <vector>

#include "foundation/xobject.h"

class CFileResolver;
class CWindow;

// A cache of loaded media by file name, with counts. A manager also looks into its children, the units' managers under
// the application's.
//
// Users ask `get` first, and on null load the object and `add` it; each `get` or `add` is matched by one `remove`.
class CResourcesManager : public CXObject {
public:
    explicit CResourcesManager(CWindow* window) : window_(window) {}
    ~CResourcesManager() override;
    CResourcesManager(const CResourcesManager&) = delete;
    CResourcesManager& operator=(const CResourcesManager&) = delete;

    void add(CResourcesManager* child);  // not owned
    void remove(CResourcesManager* child);
    void add(CFileResolver* object);  // takes it over, with a count of 1
    void insertAt(CFileResolver* object, int index);
    // The object of that file, in any case of letters, its count raised by one; null: none here or below.
    CFileResolver* get(const CXString& name);
    // Lowers the count of an object of this manager; at 0 it is hidden, leaves the screen and is deleted.
    void remove(CFileResolver* object);
    // Deletes all objects, whatever their counts, of the children too, which it then forgets.
    void flush();

private:
    struct Entry {
        CXString fileName;
        CFileResolver* object;  // owned
        int count;
    };

    std::vector<Entry> entries_;
    std::vector<CResourcesManager*> children_;
    CWindow* window_;
};
