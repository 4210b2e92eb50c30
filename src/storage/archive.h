// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>

#include "foundation/xobject.h"

class CFile;
class CXRect;

// Typed values in a file, little-endian, one after the other without anything between them. Reading asks for the same
// values in the same order as writing put them there.
//
// A read that the file can't fill leaves its target as it was and turns `ok` false; from then on every read does so,
// so a loader may read all it wants and ask once. A length is compared with what is left in the file before anything
// is sized by it. A write that fails turns `ok` false too.
class CXArchive : public CXObject {
public:
    CXArchive(CFile* file, bool storing) : file_(file), storing_(storing) {}  // the file stays the caller's

    bool ok() const { return ok_; }
    bool isStoring() const { return storing_; }
    CFile* GetFileHandle() const { return file_; }
    void Separator(unsigned char separator) { separator_ = separator; }  // without effect
    void Close();                                                        // closes the file; the CFile stays
    // Writes a file's bytes. True, also when there is no such file and nothing was written.
    bool CopyFileA(const CXString& name);

    CXArchive& operator<<(int value);            // 4 bytes
    CXArchive& operator<<(unsigned value);       // 4 bytes
    CXArchive& operator<<(unsigned long value);  // the low 4 bytes
    CXArchive& operator<<(std::int64_t value);   // 8 bytes
    CXArchive& operator<<(bool value);           // 1 byte
    // Thousandths as a 4-byte integer: cut toward zero, held in its range.
    CXArchive& operator<<(double value);
    CXArchive& operator<<(const char* text);  // length in 4 bytes, characters; null: empty
    CXArchive& operator<<(const CXString& text);
    CXArchive& operator<<(const CXRect& rect);  // left, top, right, bottom
    CXArchive& operator<<(char) = delete;       // single characters can be read only
    CXArchive& operator<<(unsigned char) = delete;
    CXArchive& operator<<(const void*) = delete;

    CXArchive& operator>>(int& value);
    CXArchive& operator>>(unsigned& value);
    CXArchive& operator>>(unsigned long& value);
    CXArchive& operator>>(std::int64_t& value);
    CXArchive& operator>>(bool& value);
    CXArchive& operator>>(double& value);
    CXArchive& operator>>(char** text);     // a new char[], the caller's
    CXArchive& operator>>(CXString& text);  // a length below 0 reads as the empty text
    CXArchive& operator>>(CXRect& rect);    // whole or not at all
    CXArchive& operator>>(char& value);
    CXArchive& operator>>(unsigned char& value);

    // The length in 1 byte: of a longer text its low byte, and that many characters.
    void writeShortString(const CXString& text);
    void readShortString(CXString& text);

    // Bare characters. What is read ends at a blank, a tab or a line end, and at 1024 bytes.
    void FWrite(const CXString& text);
    void FRead(CXString& text);

private:
    template <class T>
    CXArchive& writeInteger(T value);
    template <class T>
    CXArchive& readInteger(T& value);
    void write(const void* source, int count);
    bool read(void* target, int count);
    bool readText(CXString& text, int length);
    bool fits(int length);

    CFile* file_;
    bool storing_;
    unsigned char separator_ = 0;
    bool ok_ = true;
    int fileLength_ = -1;  // asked for at the first text; a file doesn't change while it is read
};
