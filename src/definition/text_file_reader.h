// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "foundation/xobject.h"

class CWindow;

// The lines of a text file, which is read whole. Line ends of both kinds come through as one line feed. A file that
// can't be opened has no lines, and its error word is not 0.
class CTextFileReader : public CXObject {
public:
    CTextFileReader(CWindow* window, const char* name);
    explicit CTextFileReader(std::string_view bytes);  // as if they were a file's; copies them

    bool eof() const { return position_ >= text_.size(); }
    void reset() { position_ = 0; }
    // The text up to the next line feed, which is passed over, or to the end; "" there.
    CXString getLine() { return nextLine(); }
    std::string_view nextLine();  // the same as a view into the text, good as long as the reader

private:
    std::string text_;
    std::size_t position_ = 0;
};
