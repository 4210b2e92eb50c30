// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "foundation/xstring.h"

// A file of section headers and `key=value` lines in memory, and back on the disk.
//
// Every line that isn't changed stays byte for byte: comments, blank lines, lines that mean nothing, and keys that
// stand twice, of which the first counts. Names are compared without regard to case, blanks round them don't count.
// A changed value replaces the old one in its line; a new key goes behind the last one of its section, a new section
// behind everything.
class ConfigFile {
public:
    explicit ConfigFile(const CXString& name);  // a missing file is an empty one

    // The value without the blanks round it, and without one pair of equal quotes round that. Empty: no such key. The
    // view lives until the next `put`.
    std::optional<std::string_view> get(std::string_view section, std::string_view key) const;
    // Line ends become blanks. A name that no line could hold is dropped: an empty key, one with `=`, one that begins
    // like a header or a comment, a section with `]`.
    void put(std::string_view section, std::string_view key, std::string_view value);

    bool isChanged() const { return changed_; }
    // Writes the whole file, if it has changed. False when that failed, which is told to the debug output once; after
    // that, and for a file that stands on the disk but couldn't be read, nothing is written any more unless `insist`.
    bool write(bool insist);

private:
    struct Line {
        std::string text;            // with its line end
        std::size_t valueBegin = 0;  // for an entry: where its value stands, behind blanks
        std::size_t valueSize = 0;
    };
    struct Section {
        std::string key;  // of index_: the name in lower case
        std::vector<std::size_t> lines;
        std::size_t entriesEnd = 0;  // index in `lines` behind the header and the last entry
    };

    void parse(std::string_view content);
    void addLine(std::string text);
    Section& sectionFor(std::string_view name);
    void endLine(std::size_t line);
    void tell(const char* what) const;

    CXString name_;
    std::deque<Line> lines_;        // in no order; the sections tell it
    std::deque<Section> sections_;  // in file order; the first holds what stands before any header
    std::unordered_map<std::string, std::size_t> sectionIndex_;  // the first section of each name
    std::unordered_map<std::string, std::size_t> entryIndex_;    // the first line of each section and key
    std::string lineEnd_ = "\r\n";                               // as the file has it
    bool changed_ = false;
    bool locked_ = false;  // it can't be read, so it isn't overwritten
    bool failed_ = false;
};
