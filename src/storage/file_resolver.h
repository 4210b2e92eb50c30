// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xstring.h"

// The base of what comes from a named file and can be released and loaded again.
class CFileResolver {
public:
    virtual ~CFileResolver() = default;

    virtual void setFilename(const CXString& name) { fileName_ = name; }
    virtual CXString getFileName() { return fileName_; }
    virtual bool isLoaded() { return loaded_; }
    virtual void toRelease(bool release) { toRelease_ = release; }
    virtual bool releaseAfterUse() { return toRelease_; }

protected:
    void log(const char* text, bool flag);  // to the window's log, which drops it
    void load() {}
    void release() {}
    void setLoaded(bool loaded) { loaded_ = loaded; }

private:
    CXString fileName_;
    bool loaded_ = false;
    bool toRelease_ = false;
};
