// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "definition/text_coder.h"

#include <algorithm>

#include "platform/platform.h"
#include "storage/file.h"

namespace {

constexpr std::string_view kRecordEnd = "<E>";
constexpr std::string_view kCodedHeader = "{<C:";
constexpr std::string_view kDecodedHeader = "{<D:";  // coded too, and a plain copy is wanted

}  // namespace

CTextCoder::CTextCoder(const CXString& name, bool noAutoDecode)
    : name_(name), reader_(std::make_unique<CTextFileReader>(nullptr, name.c_str())) {
    open(noAutoDecode);
}

CTextCoder::CTextCoder(const Bytes& source)
    : name_(source.name), reader_(std::make_unique<CTextFileReader>(source.bytes)) {
    open(true);
}

void CTextCoder::open(bool noAutoDecode) {
    setErrorCode(reader_->LastError());
    if (LastError() != 0) return;
    ended_ = false;
    const std::string_view header = reader_->nextLine();
    const bool wantsCopy = header.starts_with(kDecodedHeader);
    if (!wantsCopy && !header.starts_with(kCodedHeader)) {
        reader_->reset();
        return;
    }
    coded_ = true;
    cycle_ = leadingInt(header.substr(kCodedHeader.size(), header.find('>') - kCodedHeader.size()));
    if (cycle_ < 1) {
        ended_ = true;
        CXString text;
        text.Format("%s, line 1: a coded file's cycle must be above 0", name_);
        platform::current().shell.debugOutput(text.view());
        return;
    }
    if (wantsCopy && !noAutoDecode) decode(name_, name_ + ".decoded");
}

int CTextCoder::getOffset(int index) const {
    const auto offset = static_cast<int>((static_cast<unsigned>(index) + 2) / 2);
    return index % 2 == 0 ? offset : -offset;
}

int CTextCoder::nextOffset() {
    const int offset = getOffset(offsetIndex_);
    if (++offsetIndex_ >= cycle_) offsetIndex_ = 0;
    return offset;
}

std::string_view CTextCoder::nextLine() {
    if (!coded_) return reader_ ? reader_->nextLine() : std::string_view();
    if (ended_) return {};
    if (records_ % cycle_ == 0) {
        linePosition_ = 0;
        currentLine_ = reader_->nextLine();
    }
    const std::size_t end = currentLine_.find(kRecordEnd, linePosition_);
    if (end == std::string_view::npos) {
        ended_ = true;
        return {};
    }
    decoded_.assign(currentLine_.substr(linePosition_, end - linePosition_));
    for (char& c : decoded_)
        c = static_cast<char>(c - nextOffset());
    linePosition_ = end + kRecordEnd.size();
    ++records_;
    return decoded_;
}

CXString CTextCoder::getLine() {
    CXString line = nextLine();
    return line += '\n';
}

CXString CTextCoder::codeLine() {
    std::string coded;
    for (int i = 0; i < cycle_ && !coded_ && reader_ && !reader_->eof(); ++i, ++records_) {
        std::string_view line = reader_->nextLine();
        line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
        line = line.substr(0, line.find_last_not_of(' ') + 1);
        for (char c : line)
            if (c != '\t') coded += static_cast<char>(c + nextOffset());
        coded += kRecordEnd;
    }
    if (!coded.empty()) coded += '\n';
    return std::string_view(coded);
}

bool CTextCoder::code(const CXString& source, const CXString& target, int cycle) {
    CTextCoder coder(source, true);
    if (cycle < 1 || coder.LastError() != 0 || coder.isCoded()) return false;
    CFile file;
    if (file.Open(nullptr, target, CFile::kCreateText) != 0) return false;
    coder.setCycle(cycle);
    CXString header;
    header.Format("{<C:%d>}", cycle);
    file.putLine(header + "\n");
    while (!coder._eof())
        file.putLine(coder.codeLine());
    return true;
}

bool CTextCoder::decode(const CXString& source, const CXString& target) {
    CTextCoder coder(source, true);
    if (coder.LastError() != 0 || !coder.isCoded()) return false;
    CFile file;
    if (file.Open(nullptr, target, CFile::kCreateText) != 0) return false;
    while (!coder._eof())
        file.putLine(coder.getLine());
    return true;
}
