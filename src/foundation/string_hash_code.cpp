// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "foundation/string_hash_code.h"

CStringHashCode::CStringHashCode(const CXString& text) : hash_(hashOf(text.view())), text_(text) {}

void CStringHashCode::set(std::string_view text) {
    hash_ = hashOf(text);
    text_.left(0);
    text_ += text;
}

bool CStringHashCode::equals(const CXObject* other) const {
    return other && static_cast<const CStringHashCode*>(other)->text_ == text_;
}

CXObject* CStringHashCode::clone() { return new CStringHashCode(text_); }

int CStringHashCode::hashOf(std::string_view text) {
    std::uint32_t sum = 0;
    for (std::uint32_t i = 0; i < text.size(); ++i) {
        const int c = (static_cast<unsigned char>(text[i]) ^ 0x80) - 0x80;  // as a signed byte
        sum += (1U << i % 16) + (i + 1) * static_cast<std::uint32_t>(c);
    }
    return static_cast<int>(sum);
}
