// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "script/typed_variable.h"

// INTEGER, 32 bits signed. Arithmetic wraps.
class CMC_Integer : public CMC_TypedVariable<CMC_Integer, int> {
public:
    using CMC_TypedVariable::clone;
    using CMC_TypedVariable::compare;
    using CMC_TypedVariable::equals;

    static constexpr int kType = 1;

    explicit CMC_Integer(CXString name, int poolId = -1) : CMC_TypedVariable(std::move(name), poolId, 0) {}
    explicit CMC_Integer(int value) : CMC_TypedVariable("temp", -1, value) {}
    CMC_Integer(CMC_Scene* scene, CMElement* element) : CMC_TypedVariable(scene, element) {}

    void setValue(int value);

    void inc() override;
    void dec() override;
    int compare(CMC_Variable* other) override;
    int getBufferLen() override;
    void netstore(void* buffer) override;
    bool netrestore(std::span<const std::byte> bytes) override;
    void store(CXArchive* archive) override;
    void restore(CXArchive* archive) override;
    int asInteger() override;
    double asDouble() override;
    bool asBool() override;
    CXString asString() override;

    static int read(CMC_Variable* other);
    static int readProperty(CMElement* element, const char* name);
    static bool same(const int& a, const int& b);
    static int compute(const int& a, const int& b, Operation op);
};
