// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "foundation/xvector.h"
#include "platform/files.h"

class CWindow;
struct _finddata_t;

// A walker over a folder tree, and the search for names in the current folder.
//
// The tree's folders are called A.NAME, B.NAME and so on; the type of a folder is what its name tells behind the last
// full stop: all of it behind a "+", else its first character. Every move changes the window's current folder, or the
// process's without a window. With a window the search sees an attached big file first.
class CFolder : public CXObject {
public:
    inline static const CXString DATA_FOLDER{"Dane"};
    inline static const CXString WAVS_FOLDER{"WAVS"};  // upper case: it is looked for in a path in upper case
    inline static const CXString SFX_FOLDER{"Wavs\\Sfx"};
    inline static const CXString COMMON_FOLDER{"COMMON"};

    explicit CFolder(CWindow* window);
    CFolder(CWindow* window, const CXString& start);  // changes to start; `back` undoes that
    ~CFolder() override;
    CFolder(const CFolder&) = delete;
    CFolder& operator=(const CFolder&) = delete;

    // The first match of a pattern, a folder's or any name, which GetNextFileName goes on from; "": none.
    virtual CXString GetFolderName(const CXString& pattern);
    virtual CXString GetFileName(const CXString& pattern);
    virtual CXString GetNextFileName();

    const CXString& getPath() const { return currentPath_; }
    void back();
    void GoStart();
    CXString GoUp();       // the type of the start folder
    CXString GoTo(int n);  // into the sub-folder of the letter `A` + n; its type. "" and no move when there is none

    bool IsDirectory(const CXString& name) const;
    int GetSize(const CXString& name) const;  // 0: none
    // All matches in the order of the search: a new array of new texts.
    CXArray* list(const CXString& pattern);
    static void releaseFilesList(CXArray* names) { deleteStrings(names); }

private:
    static CXString GetFolderType(const CXString& name);

    bool changeTo(const CXString& folder) const;
    CXString directoryNow() const;
    bool firstMatch(const CXString& name, _finddata_t& match) const;
    CXString startSearch(const CXString& pattern, bool folderOnly);
    CXString startDiskSearch(bool folderOnly);
    void endSearch();

    CWindow* window_;
    CXString currentPath_;
    CXString startPath_;
    CXString folderName_;
    CXString pattern_;
    CXString previousDirectory_;
    int handle_ = -1;                         // of the window's search
    std::vector<platform::FileEntry> found_;  // of the search on the disk
    std::size_t next_ = 0;
};
