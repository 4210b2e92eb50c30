// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "script/typed_variable.h"

// STRING. Adding joins texts; equality ignores case, order goes by bytes.
class CMC_String : public CMC_TypedVariable<CMC_String, CXString> {
public:
    using CMC_TypedVariable::clone;
    using CMC_TypedVariable::compare;
    using CMC_TypedVariable::equals;

    static constexpr int kType = 2;

    explicit CMC_String(CXString name, int poolId = -1) : CMC_TypedVariable(std::move(name), poolId, CXString()) {}
    CMC_String(CXString name, CXString value) : CMC_TypedVariable(std::move(name), -1, std::move(value)) {}
    CMC_String(CMC_Scene* scene, CMElement* element) : CMC_TypedVariable(scene, element) {}

    void setValue(CXString value);
    void upper();  // a to z and nine Polish letters; signals nothing

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

    static CXString read(CMC_Variable* other);
    static CXString readProperty(CMElement* element, const char* name);
    static bool same(const CXString& a, const CXString& b);
    static CXString compute(const CXString& a, const CXString& b, Operation op);
};
