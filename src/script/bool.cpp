// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/bool.h"

#include "foundation/byte_reader.h"

void CMC_Bool::setValue(bool value) {
    value_ = value;
    onChange(false);
}

// A truth value has one other value, whatever the two are.
void CMC_Bool::swap(CMC_Variable*, CMC_Variable*) {
    value_ = !value_;
    onChange(true);
}

void CMC_Bool::inc() { swap(nullptr, nullptr); }
void CMC_Bool::dec() { swap(nullptr, nullptr); }

int CMC_Bool::compare(CMC_Variable* other) {
    if (other == nullptr) return -1;
    if (value_ == other->asBool()) return 0;
    return value_ ? 1 : -1;
}

int CMC_Bool::getBufferLen() { return 5; }

void CMC_Bool::netstore(void* buffer) {
    auto* at = static_cast<std::byte*>(buffer);
    putInt32(at, kType);
    at[4] = std::byte{value_};
}

bool CMC_Bool::netrestore(std::span<const std::byte> bytes) {
    ByteReader reader(bytes);
    const int type = reader.i32();
    const bool value = reader.u8() != 0;
    if (!reader.ok() || type != kType) return false;
    value_ = value;
    return true;
}

void CMC_Bool::store(CXArchive* archive) { *archive << kType << (value_ ? 1 : 0); }

void CMC_Bool::restore(CXArchive* archive) {
    int value = value_ ? 1 : 0;
    *archive >> value;
    value_ = value != 0;
}

int CMC_Bool::asInteger() { return value_ ? 1 : 0; }
double CMC_Bool::asDouble() { return value_ ? 1.0 : 0.0; }
bool CMC_Bool::asBool() { return value_; }
CXString CMC_Bool::asString() { return CXString::toString(value_); }

bool CMC_Bool::read(CMC_Variable* other) { return other->asBool(); }
bool CMC_Bool::readProperty(CMElement* element, const char* name) { return element->getPropertyBoolValue(name); }
bool CMC_Bool::same(const bool& a, const bool& b) { return a == b; }

bool CMC_Bool::compute(const bool& a, const bool& b, Operation op) {
    if (op == Operation::add) return a && b;
    if (op == Operation::multiply) return a || b;
    return a;
}
