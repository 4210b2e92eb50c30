// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "script/typed_variable.h"

// BOOL. Adding is a logical and, multiplying a logical or.
class CMC_Bool : public CMC_TypedVariable<CMC_Bool, bool> {
public:
    using CMC_TypedVariable::clone;
    using CMC_TypedVariable::compare;
    using CMC_TypedVariable::equals;

    static constexpr int kType = 3;

    explicit CMC_Bool(CXString name, int poolId = -1) : CMC_TypedVariable(std::move(name), poolId, true) {}
    explicit CMC_Bool(bool value) : CMC_TypedVariable("temp", -1, value) {}
    CMC_Bool(CMC_Scene* scene, CMElement* element) : CMC_TypedVariable(scene, element) {}

    void setValue(bool value);

    void swap(CMC_Variable* a, CMC_Variable* b) override;
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

    static bool read(CMC_Variable* other);
    static bool readProperty(CMElement* element, const char* name);
    static bool same(const bool& a, const bool& b);
    static bool compute(const bool& a, const bool& b, Operation op);
};
