// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "storage/archive.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <memory>
#include <type_traits>

#include "graphics/geometry.h"
#include "storage/file.h"

void CXArchive::Close() {
    if (file_) file_->Close();
}

bool CXArchive::CopyFileA(const CXString& name) {
    CFile source(nullptr, name, CFile::kReadBinary);
    char block[4096];
    while (const int got = source.Read(block, sizeof block))
        write(block, got);
    return true;
}

void CXArchive::write(const void* source, int count) {
    if (count <= 0) return;
    if (!file_ || file_->Write(source, count) != 1) ok_ = false;
}

bool CXArchive::read(void* target, int count) {
    if (ok_ && (!file_ || file_->Read(target, count) != count)) ok_ = false;
    return ok_;
}

bool CXArchive::fits(int length) {
    if (ok_ && file_ && fileLength_ < 0) fileLength_ = file_->Length();
    if (!file_ || length < 0 || length > fileLength_ - file_->Tell()) ok_ = false;
    return ok_;
}

template <class T>
CXArchive& CXArchive::writeInteger(T value) {
    auto bits = static_cast<std::make_unsigned_t<T>>(value);
    unsigned char bytes[sizeof(T)];
    for (unsigned char& byte : bytes) {
        byte = static_cast<unsigned char>(bits);
        bits >>= 8;
    }
    write(bytes, sizeof bytes);
    return *this;
}

template <class T>
CXArchive& CXArchive::readInteger(T& value) {
    unsigned char bytes[sizeof(T)];
    if (!read(bytes, sizeof bytes)) return *this;
    std::make_unsigned_t<T> bits = 0;
    for (std::size_t i = sizeof bytes; i-- > 0;)
        bits = bits << 8 | bytes[i];
    value = static_cast<T>(bits);
    return *this;
}

CXArchive& CXArchive::operator<<(int value) { return writeInteger(value); }
CXArchive& CXArchive::operator<<(unsigned value) { return writeInteger(value); }
CXArchive& CXArchive::operator<<(unsigned long value) { return writeInteger(static_cast<std::uint32_t>(value)); }
CXArchive& CXArchive::operator<<(std::int64_t value) { return writeInteger(value); }

CXArchive& CXArchive::operator<<(bool value) {
    const char byte = value ? 1 : 0;
    write(&byte, 1);
    return *this;
}

CXArchive& CXArchive::operator<<(double value) {
    using Limits = std::numeric_limits<int>;
    const double thousandths = std::isnan(value) ? 0 : std::trunc(value * 1000);
    return *this << static_cast<int>(std::clamp<double>(thousandths, Limits::min(), Limits::max()));
}

CXArchive& CXArchive::operator<<(const char* text) { return *this << CXString(text); }

CXArchive& CXArchive::operator<<(const CXString& text) {
    *this << text.GetLength();
    write(text.c_str(), text.GetLength());
    return *this;
}

CXArchive& CXArchive::operator<<(const CXRect& rect) {
    return *this << rect.left << rect.top << rect.right << rect.bottom;
}

CXArchive& CXArchive::operator>>(int& value) { return readInteger(value); }
CXArchive& CXArchive::operator>>(unsigned& value) { return readInteger(value); }
CXArchive& CXArchive::operator>>(std::int64_t& value) { return readInteger(value); }

CXArchive& CXArchive::operator>>(unsigned long& value) {
    unsigned read = 0;
    *this >> read;
    if (ok_) value = read;
    return *this;
}

CXArchive& CXArchive::operator>>(bool& value) {
    char byte = 0;
    if (read(&byte, 1)) value = byte != 0;
    return *this;
}

CXArchive& CXArchive::operator>>(double& value) {
    int thousandths = 0;
    *this >> thousandths;
    if (ok_) value = thousandths * 0.001;
    return *this;
}

CXArchive& CXArchive::operator>>(char** text) {
    int length = 0;
    *this >> length;
    if (!ok_ || !fits(length)) return *this;
    auto chars = std::make_unique<char[]>(static_cast<std::size_t>(length) + 1);
    if (length == 0 || read(chars.get(), length)) *text = chars.release();
    return *this;
}

CXArchive& CXArchive::operator>>(CXString& text) {
    int length = 0;
    *this >> length;
    if (ok_) readText(text, std::max(length, 0));
    return *this;
}

bool CXArchive::readText(CXString& text, int length) {
    if (!fits(length)) return false;
    char small[256];
    std::unique_ptr<char[]> large;
    char* chars = small;
    if (length > static_cast<int>(sizeof small)) {
        large = std::make_unique_for_overwrite<char[]>(static_cast<std::size_t>(length));
        chars = large.get();
    }
    if (length > 0 && !read(chars, length)) return false;
    text = CXString(std::string_view(chars, static_cast<std::size_t>(length)));
    return true;
}

CXArchive& CXArchive::operator>>(CXRect& rect) {
    CXRect whole;
    *this >> whole.left >> whole.top >> whole.right >> whole.bottom;
    if (ok_) rect = whole;
    return *this;
}

CXArchive& CXArchive::operator>>(char& value) {
    char byte = 0;
    if (read(&byte, 1)) value = byte;
    return *this;
}

CXArchive& CXArchive::operator>>(unsigned char& value) {
    unsigned char byte = 0;
    if (read(&byte, 1)) value = byte;
    return *this;
}

void CXArchive::writeShortString(const CXString& text) {
    const auto length = static_cast<unsigned char>(text.GetLength());
    write(&length, 1);
    write(text.c_str(), length);
}

void CXArchive::readShortString(CXString& text) {
    unsigned char length = 0;
    *this >> length;
    if (ok_) readText(text, length);
}

void CXArchive::FWrite(const CXString& text) { write(text.c_str(), text.GetLength()); }

void CXArchive::FRead(CXString& text) {
    constexpr std::string_view kBlanks = " \t\n\v\f\r";
    const auto isBlank = [&](char c) { return kBlanks.find(c) != std::string_view::npos; };
    if (!ok_ || !file_) return;
    char c = ' ';
    int got = 1;
    while (isBlank(c) && got == 1)
        got = file_->Read(&c, 1);
    if (got != 1) {
        ok_ = false;
        return;
    }
    CXString token;
    while (got == 1 && !isBlank(c) && token.GetLength() < 1024) {
        token += std::string_view(&c, 1);
        got = file_->Read(&c, 1);
    }
    // The character behind the token is the next one's.
    if (got == 1) file_->Seek(-1, SEEK_CUR);
    text = token;
}
