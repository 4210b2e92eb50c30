// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "foundation/pair.h"

#include <utility>

CXPair::CXPair(CXString text, void* pointer) : text_(std::move(text)), first_(pointer), second_(pointer) {
    text_.Lower();
}

CXObject* CXPair::clone() { return new CXPair(*this); }
