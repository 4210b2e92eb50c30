// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/variable_factory.h"

#include <algorithm>

#include "foundation/byte_reader.h"
#include "script/bool.h"
#include "script/double.h"
#include "script/integer.h"
#include "script/string.h"
#include "storage/archive.h"

VariablePool<CMC_Bool> CMC_VariableFactory::variablesBool;
VariablePool<CMC_Double> CMC_VariableFactory::variablesDbl;
VariablePool<CMC_Integer> CMC_VariableFactory::variablesInt;
VariablePool<CMC_String> CMC_VariableFactory::variablesStr;

template <class T>
void VariablePool<T>::fill(int count) {
    for (int id = size(); id < count; ++id) {
        variables_.push_back(std::make_unique<T>(CXString("f"), id));
        taken_.push_back(false);
    }
}

template <class T>
void VariablePool<T>::drop() {
    variables_.clear();
    taken_.clear();
    current_ = 0;
    tried_ = 0;
}

template <class T>
void VariablePool<T>::grow() {
    tried_ = 0;
    fill(std::max(8, size() * 2));
}

template <class T>
int VariablePool<T>::taken() const {
    return static_cast<int>(std::ranges::count(taken_, true));
}

template class VariablePool<CMC_Bool>;
template class VariablePool<CMC_Double>;
template class VariablePool<CMC_Integer>;
template class VariablePool<CMC_String>;

void CMC_VariableFactory::initialize() {
    variablesBool.fill(iVariablesBoolNo);
    variablesDbl.fill(iVariablesDoubleNo);
    variablesInt.fill(iVariablesIntegerNo);
    variablesStr.fill(iVariablesStringNo);
}

void CMC_VariableFactory::done() {
    variablesBool.drop();
    variablesDbl.drop();
    variablesInt.drop();
    variablesStr.drop();
}

CMC_Bool* CMC_VariableFactory::allocBool() { return variablesBool.alloc(); }
CMC_Double* CMC_VariableFactory::allocDouble() { return variablesDbl.alloc(); }
CMC_Integer* CMC_VariableFactory::allocInteger() { return variablesInt.alloc(); }
CMC_String* CMC_VariableFactory::allocString() { return variablesStr.alloc(); }

template <>
CMC_Bool* CMC_VariableFactory::alloc<CMC_Bool>() {
    return variablesBool.alloc();
}
template <>
CMC_Double* CMC_VariableFactory::alloc<CMC_Double>() {
    return variablesDbl.alloc();
}
template <>
CMC_Integer* CMC_VariableFactory::alloc<CMC_Integer>() {
    return variablesInt.alloc();
}
template <>
CMC_String* CMC_VariableFactory::alloc<CMC_String>() {
    return variablesStr.alloc();
}

namespace {

CMC_Variable* allocOf(int type) {
    switch (type) {
        case CMC_Integer::kType:
            return CMC_VariableFactory::allocInteger();
        case CMC_String::kType:
            return CMC_VariableFactory::allocString();
        case CMC_Bool::kType:
            return CMC_VariableFactory::allocBool();
        case CMC_Double::kType:
            return CMC_VariableFactory::allocDouble();
        default:
            return nullptr;
    }
}

}  // namespace

CMC_Variable* CMC_VariableFactory::copyVariable(CMC_Variable* value) {
    CMC_Variable* copy = value ? allocOf(value->getType()) : nullptr;
    if (copy) copy->set(value);
    return copy;
}

void CMC_VariableFactory::free(CMC_Variable* value) {
    if (value == nullptr || !value->isPooled()) return;
    switch (value->getType()) {
        case CMC_Integer::kType:
            return variablesInt.free(value->getPoolId());
        case CMC_String::kType:
            return variablesStr.free(value->getPoolId());
        case CMC_Bool::kType:
            return variablesBool.free(value->getPoolId());
        default:
            return variablesDbl.free(value->getPoolId());
    }
}

CMC_Variable* CMC_VariableFactory::netrestore(std::span<const std::byte> bytes) {
    CMC_Variable* value = allocOf(ByteReader(bytes).i32());
    if (value == nullptr || value->netrestore(bytes)) return value;
    free(value);
    return nullptr;
}

CMC_Variable* CMC_VariableFactory::restore(CXArchive* archive) {
    int type = 0;
    *archive >> type;
    CMC_Variable* value = archive->ok() ? allocOf(type) : nullptr;
    if (value == nullptr) return nullptr;
    value->restore(archive);
    if (archive->ok()) return value;
    free(value);
    return nullptr;
}

int CMC_VariableFactory::takenCount() {
    return variablesBool.taken() + variablesDbl.taken() + variablesInt.taken() + variablesStr.taken();
}
