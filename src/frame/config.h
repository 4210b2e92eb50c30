// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "foundation/xobject.h"

class ConfigFile;
class CWindow;

// The application's configuration file, by section and key in any case of letters; all texts are Windows-1250.
//
// What is put changes the file in memory; `flush` writes it. A file that can't be written costs one line of debug
// output and nothing else.
class CConfig : public CXObject {
public:
    CConfig(CWindow* window, const CXString& fullName);
    ~CConfig() override;  // writes what isn't written yet
    CConfig(const CConfig&) = delete;
    CConfig& operator=(const CConfig&) = delete;

    int GetInt(const CXString& section, const CXString& key) const;          // 0: none
    CXString GetString(const CXString& section, const CXString& key) const;  // "": none; cut at 10239 characters
    void PutInt(const CXString& section, const CXString& key, int value);
    // Line ends in the value become blanks.
    void PutString(const CXString& section, const CXString& key, const CXString& value);
    // Writes the file whole if anything changed since it was written. Once a frame is enough.
    void flush();

    const CXString& getFullName() const { return fullName_; }
    const ConfigFile& file() const { return *file_; }

private:
    CXString fullName_;
    std::unique_ptr<ConfigFile> file_;
};
