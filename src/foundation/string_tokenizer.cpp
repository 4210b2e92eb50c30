// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "foundation/string_tokenizer.h"

#include <utility>

CStringTokenizer::CStringTokenizer(CXString text, CXString separators)
    : text_(std::move(text)), separators_(std::move(separators)) {
    read();
}

bool CStringTokenizer::isSeparator(char c) const { return separators_.Find(c) >= 0; }

CXString CStringTokenizer::nextToken() {
    CXString token = current_;
    read();
    return token;
}

void CStringTokenizer::read() {
    while (position_ < text_.GetLength() && isSeparator(text_.c_str()[position_]))
        ++position_;
    const int start = position_;
    while (position_ < text_.GetLength() && !isSeparator(text_.c_str()[position_]))
        ++position_;
    text_.mid(start, position_, &current_);
}
