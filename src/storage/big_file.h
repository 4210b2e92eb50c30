// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "foundation/xobject.h"
#include "platform/platform.h"

class CFile;
class CWindow;

inline constexpr unsigned kAttributeFolder = 0x10;

// What a search found. The name is part of the interface.
struct _finddata_t {
    unsigned attrib = 0;  // kAttributeFolder or 0; going in, kAttributeFolder asks for folders alone
    std::uint64_t size = 0;
    std::string name;
};

// A folder tree packed into one file. It can't be opened yet, and nobody attaches one to a window: everything is
// looked for in vain.
class CBigFile : public CXObject {
public:
    CBigFile(CWindow*, bool /*verbose*/, const CXString&) {}

    CFile* GetFile() const { return nullptr; }
    int Seek(const CXString&) { return -1; }  // -1: not found
    int Seek(int, int) { return -1; }
    int Tell() const { return 0; }
    bool FileExists(const CXString&) const { return false; }
    bool DirExists(const CXString&) const { return true; }  // the tree isn't asked, every folder is said to exist
    int ChDir(const CXString&) { return 0; }
    CXString GetCurrentDirectoryA() const { return CXString(platform::current().files.currentFolder()); }
    void GetCurrentDirectoryA(int, char*) const {}
    int FindFirst(const CXString&, _finddata_t*) { return -1; }
    int FindNext(int, _finddata_t*) { return -1; }
};
