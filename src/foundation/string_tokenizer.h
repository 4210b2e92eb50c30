// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xobject.h"

// Cuts a text at single separator characters. Runs of separators, and separators at the ends, make no empty tokens.
class CStringTokenizer : public CXObject {
public:
    CStringTokenizer(CXString text, CXString separators);

    bool hasMoreTokens() const { return current_.IsString(); }
    // The current token, "" behind the last one; moves on to the next.
    CXString nextToken();
    bool isSeparator(char c) const;

private:
    void read();

    CXString text_;
    CXString separators_;
    CXString current_;
    int position_ = 0;
};
