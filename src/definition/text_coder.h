// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "definition/text_file_reader.h"

// The reader of every definition file. It tells by the first line whether the file is coded, and delivers plain lines
// of either kind.
//
// A coded file's first line is "{<C:CYCLE>}", or "{<D:CYCLE>}" to ask for a plain copy when it is opened. Each further
// line holds up to CYCLE records, and a record is one plain line, coded and ended by "<E>". A character is coded by
// adding an offset to its byte; the offsets are 1, -1, 2, -2 and so on, CYCLE of them, over and over, whatever records
// and lines they fall on. The form knows no escape: a coded character that is a line feed, or forms "<E>" with its
// neighbours, damages the file.
class CTextCoder : public CXObject {
public:
    // The name is used as it stands. A file that can't be opened leaves an error word that is not 0, and no lines.
    CTextCoder(const CXString& name, bool noAutoDecode);
    // The same from bytes; `name` is for messages alone, and no plain copy is made.
    struct Bytes {
        std::string_view bytes;
        const char* name = "";
    };
    explicit CTextCoder(const Bytes& source);

    virtual int getOffset(int index) const;  // what is added to the character at that place of the cycle
    virtual bool _eof() const { return coded_ ? ended_ : !reader_ || reader_->eof(); }
    // The next plain line with a line feed at its end, always. The last call on a coded file gives an empty line.
    virtual CXString getLine();
    // A line of coded records, from up to CYCLE lines of a plain file; "" at its end, and for a coded file. Blanks at
    // the ends of a line and all tabs get lost.
    virtual CXString codeLine();
    virtual bool isCoded() const { return coded_; }

    // The next plain line without a line feed; good until the next call.
    std::string_view nextLine();

    void setCycle(int cycle) { cycle_ = cycle; }

    // Write the other form of a file. False, and nothing is written, when the source can't be read or has that form
    // already, or the target can't be made; coding needs a cycle above 0.
    static bool code(const CXString& source, const CXString& target, int cycle);
    static bool decode(const CXString& source, const CXString& target);

private:
    void open(bool noAutoDecode);
    int nextOffset();

    CXString name_;
    std::unique_ptr<CTextFileReader> reader_;
    bool coded_ = false;
    int cycle_ = 0;
    int offsetIndex_ = 0;
    bool ended_ = true;
    std::size_t linePosition_ = 0;
    int records_ = 0;
    std::string_view currentLine_;  // into the reader's text
    std::string decoded_;
};
