// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/string.h"

#include <algorithm>

#include "foundation/byte_reader.h"
#include "script/lifetime.h"

void CMC_String::setValue(CXString value) {
    ScriptBudget::spendOnText(value.GetLength());
    change(std::move(value));
}

void CMC_String::upper() { value_.Upper(); }

void CMC_String::inc() {}
void CMC_String::dec() {}

int CMC_String::compare(CMC_Variable* other) {
    if (other == nullptr) return -1;
    const int order = value_.view().compare(other->asString().view());
    return order < 0 ? -1 : order > 0;
}

int CMC_String::getBufferLen() { return value_.GetLength() + 5; }

void CMC_String::netstore(void* buffer) {
    auto* at = static_cast<std::byte*>(buffer);
    putInt32(at, kType);
    std::ranges::copy(std::as_bytes(std::span(value_.view())), at + 4);
    at[4 + value_.GetLength()] = std::byte{0};
}

bool CMC_String::netrestore(std::span<const std::byte> bytes) {
    ByteReader reader(bytes);
    const int type = reader.i32();
    const std::string_view value = reader.textToZero();
    if (!reader.ok() || type != kType) return false;
    value_ = CXString(value);
    return true;
}

void CMC_String::store(CXArchive* archive) { *archive << kType << value_; }
void CMC_String::restore(CXArchive* archive) { *archive >> value_; }

int CMC_String::asInteger() { return CXString::toNumber(value_); }
double CMC_String::asDouble() { return CXString::toDouble(value_); }
bool CMC_String::asBool() { return CXString::toBool(value_); }
CXString CMC_String::asString() { return value_; }

CXString CMC_String::read(CMC_Variable* other) { return other->asString(); }
CXString CMC_String::readProperty(CMElement* element, const char* name) { return element->getPropertyValue(name); }
bool CMC_String::same(const CXString& a, const CXString& b) { return a.equalsIgnoreCase(b); }

CXString CMC_String::compute(const CXString& a, const CXString& b, Operation op) {
    if (op != Operation::add) return a;
    ScriptBudget::spendOnText(a.GetLength() + b.GetLength());
    return a + b;
}
