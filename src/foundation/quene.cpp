// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "foundation/quene.h"

namespace {

void* take(CXArray& array, int i) {
    void* element = array.at(i);
    array.removeAt(i);
    return element;
}

}  // namespace

void* CFifoQuene::pop() { return take(*this, 0); }
void* CLifoQuene::pop() { return take(*this, size() - 1); }
CXObject* CXFifoQuene::pop() { return static_cast<CXObject*>(take(*this, 0)); }
CXObject* CXLifoQuene::pop() { return static_cast<CXObject*>(take(*this, size() - 1)); }
