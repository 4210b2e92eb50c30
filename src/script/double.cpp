// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/double.h"

#include <bit>

#include "foundation/byte_reader.h"
#include "script/integer.h"

void CMC_Double::setValue(double value) {
    value_ = value;
    onChange(false);
}

void CMC_Double::inc() {
    value_ += 1;
    onChange(true);
}

void CMC_Double::dec() {
    value_ -= 1;
    onChange(true);
}

int CMC_Double::compare(CMC_Variable* other) {
    if (other == nullptr) return -1;
    const double value = other->asDouble();
    if (value_ == value) return 0;
    return value < value_ ? 1 : -1;
}

int CMC_Double::getBufferLen() { return 12; }

void CMC_Double::netstore(void* buffer) {
    auto* at = static_cast<std::byte*>(buffer);
    putInt32(at, kType);
    const auto bits = std::bit_cast<std::uint64_t>(value_);
    putInt32(at + 4, static_cast<int>(static_cast<std::uint32_t>(bits)));
    putInt32(at + 8, static_cast<int>(static_cast<std::uint32_t>(bits >> 32)));
}

bool CMC_Double::netrestore(std::span<const std::byte> bytes) {
    ByteReader reader(bytes);
    const int type = reader.i32();
    const double value = reader.f64();
    if (!reader.ok() || type != kType) return false;
    value_ = value;
    return true;
}

void CMC_Double::store(CXArchive* archive) { *archive << kType << value_; }
void CMC_Double::restore(CXArchive* archive) { *archive >> value_; }

int CMC_Double::asInteger() { return truncated(value_); }
double CMC_Double::asDouble() { return value_; }
bool CMC_Double::asBool() { return value_ != 0.0; }
CXString CMC_Double::asString() { return CXString::toString(value_); }

double CMC_Double::read(CMC_Variable* other) { return other->asDouble(); }
double CMC_Double::readProperty(CMElement* element, const char* name) { return element->getPropertyDoubleValue(name); }
bool CMC_Double::same(const double& a, const double& b) { return a == b; }

double CMC_Double::compute(const double& a, const double& b, Operation op) {
    switch (op) {
        case Operation::add:
            return a + b;
        case Operation::subtract:
            return a - b;
        case Operation::multiply:
            return a * b;
        case Operation::divide:
            return b == 0.0 ? 0.0 : a / b;
        case Operation::modulo:
            return CMC_Integer::compute(truncated(a), truncated(b), Operation::modulo);
    }
    return a;
}
