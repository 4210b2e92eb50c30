// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xobject.h"

// The folder of translated files, by the user's language. A file's translated copy stands in that folder beside it.
class CLanguageOSVer {
public:
    // Remembers the configuration file and picks the folder of the platform's language.
    static void initialize(const CXString& iniFile);
    // By a four-digit language code, or any word that the configuration file's section LANGUAGE knows.
    static void setLanguageFolder(const char* code);
    static const CXString& getLanguageFolder() { return subFolder; }  // "": none
    // The translated copy's name if it can be opened, else the name itself.
    static CXString getLocalFileName(const CXString& path);
    // No folder, no file, as before the first application.
    static void done();

private:
    static CXString getSubFolder(const CXString& code);

    static CXString iniFileName;
    static CXString subFolder;
};
