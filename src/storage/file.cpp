// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "storage/file.h"

#include <algorithm>
#include <limits>

#include "frame/language.h"
#include "frame/window.h"
#include "platform/platform.h"
#include "storage/folder.h"
#include "storage/path.h"

CFile::~CFile() { Close(); }

CXString CFile::getLocalPath(const CXString& path) const {
    const auto below = [&](int at) { return CWindow::getEXEPath() + path.Right(at); };
    if (const int at = path.FindSubString(CFolder::DATA_FOLDER); at >= 0) return below(at);
    if (const int at = path.FindSubString(CFolder::COMMON_FOLDER); at >= 0) return below(at);
    CXString upper = path;
    if (const int at = upper.Upper().FindSubString(CFolder::WAVS_FOLDER); at >= 0) {
        return CWindow::getEXEPath() + upper.Right(at);
    }
    return {};
}

int CFile::Open(CWindow* window, const CXString& name, int mode) {
    Close();
    unconfine();
    CXString full = CPath::resolveFileName(window, name);
    if (full.GetAt(1) != ':') {
        full = CPath::getFullPath(CXString(std::string_view(platform::current().files.currentFolder())), full);
    }
    name_ = full;
    mode_ = mode;
    writing_ = false;
    const bool update = (mode & 0x04) != 0;
    const char* streamMode = (mode & 0x01) != 0 ? (update ? "r+b" : "rb") : (update ? "w+b" : "wb");

    const CXString local = getLocalPath(full);
    const bool opened = openAs(CLanguageOSVer::getLocalFileName(local), streamMode) ||
                        openAs(CLanguageOSVer::getLocalFileName(full), streamMode) || openAs(local, streamMode) ||
                        openAs(full, streamMode);
    setErrorCode(opened ? 0 : kFileNotFound);
    return LastError();
}

bool CFile::openAs(const CXString& path, const char* streamMode) {
    if (path.IsString()) stream_ = platform::current().files.open(path.view(), streamMode);
    return stream_ != nullptr;
}

int CFile::Close() {
    if (stream_) std::fclose(stream_);
    stream_ = nullptr;
    return LastError();
}

int CFile::Length() {
    if (!stream_) return -1;
    const long position = std::ftell(stream_);
    std::fseek(stream_, 0, SEEK_END);
    const long length = std::ftell(stream_);
    std::fseek(stream_, position, SEEK_SET);
    return static_cast<int>(std::min<long>(length, std::numeric_limits<int>::max()));
}

int CFile::Tell() const {
    return stream_ ? static_cast<int>(std::min<long>(std::ftell(stream_), std::numeric_limits<int>::max())) : 0;
}

int CFile::Seek(int offset, int whence) { return stream_ ? std::fseek(stream_, offset, whence) : -1; }

void CFile::beginReading() {
    if (writing_) std::fseek(stream_, 0, SEEK_CUR);
    writing_ = false;
}

void CFile::confine(int begin, std::int64_t end) {
    confined_ = {begin, static_cast<int>(std::min<std::int64_t>(end, std::numeric_limits<int>::max()))};
}

int CFile::within(int count) const {
    if (!confined_) return count;
    const int position = Tell();
    return position < confined_->begin ? 0 : std::clamp(confined_->end - position, 0, count);
}

int CFile::left() { return within(std::max(Length() - Tell(), 0)); }

int CFile::Read(void* target, int count) {
    if (!stream_ || count <= 0) return 0;
    beginReading();
    count = within(count);
    if (isText()) return readText(static_cast<char*>(target), count);
    return static_cast<int>(std::fread(target, 1, static_cast<std::size_t>(count), stream_));
}

std::vector<std::byte> CFile::readRest(int most) {
    std::vector<std::byte> bytes(static_cast<std::size_t>(std::min(left(), most)));
    bytes.resize(static_cast<std::size_t>(Read(bytes.data(), static_cast<int>(bytes.size()))));
    return bytes;
}

int CFile::readText(char* target, int count) {
    int kept = 0;
    while (kept < count) {
        const char* raw = target + kept;
        const std::size_t got = std::fread(target + kept, 1, static_cast<std::size_t>(count - kept), stream_);
        if (got == 0) break;
        for (std::size_t i = 0; i < got; ++i) {
            if (raw[i] == '\r') {
                int next = i + 1 < got ? raw[i + 1] : std::getc(stream_);
                if (i + 1 == got && next != EOF) std::ungetc(next, stream_);
                if (next == '\n') continue;
            }
            target[kept++] = raw[i];
        }
    }
    return kept;
}

int CFile::Write(const void* source, int count) {
    if (!stream_ || count <= 0) return 0;
    if (!writing_ && (mode_ & 0x04) != 0) std::fseek(stream_, 0, SEEK_CUR);
    writing_ = true;
    return static_cast<int>(std::fwrite(source, static_cast<std::size_t>(count), 1, stream_));
}

int CFile::nextCharacter() {
    if (within(1) == 0) return EOF;
    const int c = std::getc(stream_);
    if (c != '\r' || !isText()) return c;
    const int next = std::getc(stream_);
    if (next == '\n') return next;
    if (next != EOF) std::ungetc(next, stream_);
    return c;
}

void CFile::GetLine(char* buffer, int size) {
    if (!stream_ || size <= 0) return;
    beginReading();
    int length = 0;
    for (int c = 0; length < size - 1 && c != '\n';) {
        c = nextCharacter();
        if (c == EOF) break;
        buffer[length++] = static_cast<char>(c);
    }
    buffer[length] = '\0';
}

CXString CFile::getLine() {
    char line[kLongestLine + 1] = "";
    GetLine(line, sizeof line);
    return line;
}

void CFile::putLine(const CXString& text) { Write(text.c_str(), text.GetLength()); }
