// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "definition/text_file_reader.h"

#include <algorithm>

#include "storage/file.h"

CTextFileReader::CTextFileReader(CWindow* window, const char* name) {
    CFile file(window, name, CFile::kReadText);
    setErrorCode(file.LastError());
    if (LastError() != 0) return;
    text_.resize(static_cast<std::size_t>(std::max(file.Length(), 0)));
    text_.resize(static_cast<std::size_t>(file.Read(text_.data(), static_cast<int>(text_.size()))));
}

CTextFileReader::CTextFileReader(std::string_view bytes) {
    text_.reserve(bytes.size());
    for (std::size_t end; (end = bytes.find("\r\n")) != std::string_view::npos; bytes.remove_prefix(end + 1))
        text_ += bytes.substr(0, end);
    text_ += bytes;
}

std::string_view CTextFileReader::nextLine() {
    const std::string_view rest = std::string_view(text_).substr(std::min(position_, text_.size()));
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    position_ += end + 1;
    return rest.substr(0, end);
}
