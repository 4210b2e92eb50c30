// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xobject.h"

// The key of every table of names: a text and its hash. Two keys are equal when their texts are, byte by byte.
class CStringHashCode : public CXObject {
public:
    explicit CStringHashCode(const CXString& text);

    void set(std::string_view text);  // allocates nothing once the buffer is large enough
    CXString getString() const { return text_; }
    std::string_view view() const { return text_.view(); }

    int getHashcode() const override { return hash_; }
    bool equals(const CXObject* other) const override;  // `other` must be a CStringHashCode
    CXObject* clone() override;
    CXString toString() override { return text_; }

    // The sum over the characters c, as signed bytes, at index i of (1 << i % 16) + (i + 1) * c, wrapping at 32 bits.
    static int hashOf(std::string_view text);

private:
    int hash_;
    CXString text_;
};
