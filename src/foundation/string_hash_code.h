// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/hashtable.h"
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

// The value under that name in a table whose keys all are names; null: none. `hash` is the name's.
inline CXObject* valueNamed(const CHashtable& table, std::string_view name, int hash) {
    return table.find(hash,
                      [name](const CXObject* key) { return static_cast<const CStringHashCode*>(key)->view() == name; });
}
inline CXObject* valueNamed(const CHashtable& table, std::string_view name) {
    return valueNamed(table, name, CStringHashCode::hashOf(name));
}
