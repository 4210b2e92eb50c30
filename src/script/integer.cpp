// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/integer.h"

#include <cstring>

#include "foundation/byte_reader.h"

namespace {

int wrapped(std::uint32_t value) { return static_cast<int>(value); }

}  // namespace

void CMC_Integer::setValue(int value) {
    value_ = value;
    onChange(false);
}

void CMC_Integer::inc() {
    value_ = compute(value_, 1, Operation::add);
    onChange(true);
}

void CMC_Integer::dec() {
    value_ = compute(value_, 1, Operation::subtract);
    onChange(true);
}

int CMC_Integer::compare(CMC_Variable* other) {
    if (other == nullptr) return 1;
    const int value = other->asInteger();
    return value_ < value ? -1 : value_ > value;
}

int CMC_Integer::getBufferLen() { return 8; }

void CMC_Integer::netstore(void* buffer) {
    putInt32(static_cast<std::byte*>(buffer), kType);
    putInt32(static_cast<std::byte*>(buffer) + 4, value_);
}

bool CMC_Integer::netrestore(std::span<const std::byte> bytes) {
    ByteReader reader(bytes);
    const int type = reader.i32();
    const int value = reader.i32();
    if (!reader.ok() || type != kType) return false;
    value_ = value;
    return true;
}

void CMC_Integer::store(CXArchive* archive) { *archive << kType << value_; }
void CMC_Integer::restore(CXArchive* archive) { *archive >> value_; }

int CMC_Integer::asInteger() { return value_; }
double CMC_Integer::asDouble() { return value_; }
bool CMC_Integer::asBool() { return value_ != 0; }
CXString CMC_Integer::asString() { return CXString::toString(value_); }

int CMC_Integer::read(CMC_Variable* other) { return other->asInteger(); }
int CMC_Integer::readProperty(CMElement* element, const char* name) { return element->getPropertyIntValue(name); }
bool CMC_Integer::same(const int& a, const int& b) { return a == b; }

int CMC_Integer::compute(const int& a, const int& b, Operation op) {
    const auto x = static_cast<std::uint32_t>(a);
    const auto y = static_cast<std::uint32_t>(b);
    switch (op) {
        case Operation::add:
            return wrapped(x + y);
        case Operation::subtract:
            return wrapped(x - y);
        case Operation::multiply:
            return wrapped(x * y);
        case Operation::divide:
            if (b == 0) return 0;
            return b == -1 ? wrapped(0 - x) : a / b;
        case Operation::modulo:
            return b == 0 || b == -1 ? 0 : a % b;
    }
    return a;
}
