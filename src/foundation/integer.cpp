// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "foundation/integer.h"

void CInteger::increment() { value_ = static_cast<int>(static_cast<std::uint32_t>(value_) + 1U); }
void CInteger::decrement() { value_ = static_cast<int>(static_cast<std::uint32_t>(value_) - 1U); }

bool CInteger::equals(const CXObject* other) const {
    return other && static_cast<const CInteger*>(other)->value_ == value_;
}

CXObject* CInteger::clone() { return new CInteger(value_); }
