// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <vector>

#include "foundation/xobject.h"

class CWindow;

// A buffered stream on a file, which is looked for in several places.
//
// A mode is a set of bits: 0x01 reads an existing file, without it a new one is made; 0x04 allows the other direction
// too; 0x10 is binary unless 0x08 is set. What isn't binary is text: on reading, carriage return and line feed come
// through as one line feed; on writing, bytes go out as they are. A failed open is error word 2000. With no stream,
// every operation answers as for an empty file.
class CFile : public CXObject {
public:
    static constexpr int kReadText = 0x09;
    static constexpr int kReadBinary = 0x11;
    static constexpr int kCreateText = 0x0E;
    static constexpr int kCreateBinary = 0x16;
    static constexpr int kFileNotFound = 2000;
    static constexpr int kLongestLine = 10239;

    CFile() = default;
    CFile(CWindow* window, const CXString& name, int mode) { Open(window, name, mode); }
    ~CFile() override;
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;

    // The same file under the program's folder, by the first well-known folder name in the path; "" without one.
    virtual CXString getLocalPath(const CXString& path) const;

    // 0, or 2000 when no attempt succeeded. The name may be a script's. The copy under the program's folder comes
    // before the file itself, and before each of them its translated copy. Without a window there is no data root.
    int Open(CWindow* window, const CXString& name, int mode);
    int Close();  // the error word
    std::FILE* GetHandle() const { return stream_; }
    const CXString& getName() const { return name_; }  // the full path asked for
    int getMode() const { return mode_; }

    int Length();                               // -1 with no stream
    int Tell() const;                           // 0 with no stream
    int Seek(int offset, int whence);           // 0, or not 0 when it failed
    int Read(void* target, int count);          // the number of bytes read
    int left();                                 // the bytes that lie ahead
    std::vector<std::byte> readRest(int most);  // what lies ahead, up to that many bytes
    int Write(const void* source, int count);   // 1, or 0 when it failed or there was nothing to write

    // From now on nothing outside these bytes of the file is read, wherever the stream stands, and what lies ahead ends
    // with them. Lifted by `unconfine` and by the next Open.
    void confine(int begin, std::int64_t end);
    void unconfine() { confined_.reset(); }

    // A line with its line end, cut at size - 1 characters and ended by a zero byte. The buffer stays untouched with no
    // stream, and holds "" at the end.
    void GetLine(char* buffer, int size);
    CXString getLine();                                               // at most 10239 characters
    void putLine(const CXString& text);                               // adds no line end
    bool eof() const { return !stream_ || std::feof(stream_) != 0; }  // after a read has met the end

private:
    bool openAs(const CXString& path, const char* streamMode);
    bool isText() const { return (mode_ & 0x08) != 0 || (mode_ & 0x10) == 0; }
    void beginReading();
    int within(int count) const;  // what of the next `count` bytes may be read
    int readText(char* target, int count);
    int nextCharacter();

    struct Bounds {
        int begin;
        int end;
    };

    std::FILE* stream_ = nullptr;
    std::optional<Bounds> confined_;
    CXString name_;
    int mode_ = 0;
    bool writing_ = false;  // the last transfer; the stream must be told when the direction changes
};
