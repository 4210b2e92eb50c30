// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "foundation/xstring.h"

class CMElements;
class CTextCoder;
class CWindow;

// Reads definition text: a flat list of named elements with named texts. It shows no message; a line that makes no
// sense is passed over.
//
// A slash anywhere in a line joins the next line on, tabs vanish, "#" in front makes a comment and "!" ends the text.
// Statements are OBJECT=NAME, IMPORT=NAME, DEF:NAME(A=1|B=2), NAME:ADD=PARENT, NAME:APPLY=CHILD and
// NAME:PROPERTY=VALUE; as ":", "=" and line feeds only separate, a run of them in a value becomes one blank, but not so
// in DEF.
class CMElementsLoader {
public:
    // A new list that owns its elements; null when the file can't be opened. With a window whose application was called
    // with the switches for it, a coded or decoded copy of the file is written first.
    static CMElements* load(CWindow* window, const CXString& fileName);
    static CMElements* load(CTextCoder* coder);
    static std::unique_ptr<CMElements> parse(std::string_view bytes);      // of a file, plain or coded
    static CXString getLine(CTextCoder* coder);                            // a line with all that is joined to it
    static bool save(const CXString&, const CMElements*) { return true; }  // writes nothing

    static constexpr int kCycle = 6;  // of the coded copies
};
