// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xobject.h"

// An int as an object; also a key, whose hash is its value.
class CInteger : public CXObject {
public:
    CInteger() = default;
    explicit CInteger(int value) : value_(value) {}
    explicit CInteger(const CXString& text) { parse(text); }

    int getValue() const { return value_; }
    void setValue(int value) { value_ = value; }
    void increment();
    void decrement();
    void parse(const CXString& text) { value_ = CXString::toNumber(text); }

    int getHashcode() const override { return value_; }
    bool equals(const CXObject* other) const override;  // `other` must be a CInteger
    CXObject* clone() override;
    CXString toString() override { return CXString::toString(value_); }
    static CXString toString(int value) { return CXString::toString(value); }

private:
    int value_ = 0;
};
