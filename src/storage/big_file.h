// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "foundation/xobject.h"

class CFile;
class CWindow;
class CXArchive;

inline constexpr unsigned kAttributeFolder = 0x10;

// What a search found. The name is part of the interface.
struct _finddata_t {
    unsigned attrib = 0;  // kAttributeFolder or 0; going in, kAttributeFolder asks for folders alone
    std::uint64_t size = 0;
    std::string name;
};

struct _entry;

// A packed file.
struct _file {
    CXString name;
    std::int64_t reserved = 0;
    int size = 0;    // in bytes
    int offset = 0;  // of its first byte, from the start of the big file
    _entry* parent = nullptr;
};

// A packed folder.
struct _entry {
    CXString name;  // the root's is the source folder's path
    _entry* parent = nullptr;
    std::vector<_entry*> folders;
    std::vector<_file*> files;
};

// The table of contents. Owns every record, so that a tree of any depth comes to its end without recursion.
struct _rootentry {
    CXString name;
    CXString rootPath;
    int totalSize = 0;
    std::int64_t reserved[2] = {};
    int fileCount = 0;
    int folderCount = 0;  // without the root
    _entry* root = nullptr;
    std::deque<_entry> allFolders;
    std::deque<_file> allFiles;
};

// A folder tree packed into one file: a table of contents and then the contents of all files. docs/formats/big.md tells
// it byte by byte. This is both its reader and its writer.
//
// Names are searched without regard to case, from the current folder, which is always the root. A name that a
// sub-folder doesn't hold is looked for in the folder around it too. Of equal names in a folder the first one counts.
class CBigFile : public CXObject {
public:
    CBigFile(CWindow* window, bool verbose, const CXString& unused);  // empty, for Create
    // GetFile() is null when the file isn't there or its table can't be read to the end.
    CBigFile(CWindow* window, const CXString& file, bool verbose, const CXString& unused);
    ~CBigFile() override;
    CBigFile(const CBigFile&) = delete;
    CBigFile& operator=(const CBigFile&) = delete;

    // Packs a folder, telling its progress on the standard output. False when the output can't be written, when a file
    // can't be read or has changed since it was listed, and beyond 2 gigabytes; what stands in the output is then of no
    // use. Afterwards the tree is here and no file is open.
    bool Create(const CXString& sourceFolder, const CXString& name, const CXString& outputFile);

    CFile* GetFile() const { return stream_.get(); }
    // Puts the stream at the file's first byte and confines it to the file; the offset. -1: not found, nothing moves.
    int Seek(const CXString& name);
    int Seek(int offset, int whence);  // to any byte of the whole; 0, or not 0 when it failed
    bool seekTo(const _file& file);
    int Tell() const;
    int GetSize(const CXString& name) const;  // -1: not found
    bool FileExists(const CXString& name) const { return find(name) != nullptr; }
    // The file on a stream of its own, for whoever reads beside the other loaders. False: not found.
    bool open(const CXString& name, CFile& own) const;

    CXString GetCurrentDirectoryA() const;  // the current folder's path without a backslash at its end
    void GetCurrentDirectoryA(int, char*) const {}
    // The first file, else the first folder, of the current folder that fits; its index, folders counting behind the
    // files. -1: none.
    int FindFirst(CXString pattern, _finddata_t* data) const;
    int FindNext(int, _finddata_t*) const { return -1; }

    // Without effect.
    int ChDir(const CXString&) { return 0; }
    int GetOffset(const CXString&) const { return 0; }
    bool DirExists(const CXString&) const { return true; }
    bool Update(const CXString&) { return true; }
    bool UpdateFile(const CXString&) { return true; }
    bool ExtractFile(const CXString&) { return true; }

    const _rootentry* table() const { return table_.get(); }  // null: none read or made
    // Every folder from the root on and every file, in the order of the table.
    void walk(const std::function<void(_entry&)>& onFolder, const std::function<void(_file&)>& onFile) const;
    // The names of the folders from below the root, each followed by a backslash; "" for the root.
    static CXString pathOf(const _entry& folder);

private:
    struct Place {
        const _entry* folder;
        std::string_view name;  // of a record of the table
    };
    struct PlaceHash {
        std::size_t operator()(const Place& place) const;
    };
    struct SamePlace {
        bool operator()(const Place& a, const Place& b) const;
    };
    template <class Record>
    using Index = std::unordered_map<Place, const Record*, PlaceHash, SamePlace>;

    const _file* find(const CXString& name) const;
    _entry* addFolder(_entry* parent, const CXString& name);
    _file* addFile(_entry* parent, const CXString& name);
    bool readTable();
    bool scan(const CXString& sourceFolder);
    bool writeTable(CXArchive& archive);
    bool copyFiles(CFile& output);
    void makeIndex();

    CWindow* window_;
    std::unique_ptr<CFile> stream_;
    CXString path_;
    bool verbose_;
    std::unique_ptr<_rootentry> table_;
    _entry* current_ = nullptr;
    int dataOffset_ = 0;  // while writing: of the next file, from the end of the table
    int tableSize_ = 0;
    // What a walk through the records would find first.
    Index<_entry> folders_;
    Index<_file> files_;
};
