// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "storage/file_name_resolver.h"

#include "foundation/string_tokenizer.h"

void CFileNameResolver::resolve() {
    drive_ = '\0';
    fileName_ = "";
    folders_.clear();
    CStringTokenizer tokens(path_, "\\");
    for (bool first = true; tokens.hasMoreTokens(); first = false) {
        const CXString token = tokens.nextToken();
        if (first && token.lastChar() == ':') {
            drive_ = token.GetAt(0);
        } else if (tokens.hasMoreTokens()) {
            folders_.push_back(token);
        } else {
            fileName_ = token;
        }
    }
    folder_ = path_.Left(path_.FindLast('\\') + 1);
    CStringTokenizer parts(fileName_, ".");
    pureName_ = parts.nextToken();
    extension_ = parts.nextToken();
}
