// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xobject.h"

// A text and two pointers that it doesn't own.
class CXPair : public CXObject {
public:
    CXPair(CXString text, void* pointer);  // the text in lower case, the pointer as both
    CXPair(void* first, void* second) : first_(first), second_(second) {}

    const CXString& getText() const { return text_; }
    void* getFirst() const { return first_; }
    void* getSecond() const { return second_; }
    void setFirst(void* first) { first_ = first; }
    void setSecond(void* second) { second_ = second; }

    CXObject* clone() override;

private:
    CXString text_;
    void* first_;
    void* second_;
};
