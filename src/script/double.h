// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "script/typed_variable.h"

// DOUBLE. As text it has two decimals.
class CMC_Double : public CMC_TypedVariable<CMC_Double, double> {
public:
    using CMC_TypedVariable::clone;
    using CMC_TypedVariable::compare;
    using CMC_TypedVariable::equals;

    static constexpr int kType = 4;

    explicit CMC_Double(CXString name, int poolId = -1) : CMC_TypedVariable(std::move(name), poolId, 0.0) {}
    explicit CMC_Double(double value) : CMC_TypedVariable("temp", -1, value) {}
    CMC_Double(CMC_Scene* scene, CMElement* element) : CMC_TypedVariable(scene, element) {}

    void setValue(double value);

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

    static double read(CMC_Variable* other);
    static double readProperty(CMElement* element, const char* name);
    static bool same(const double& a, const double& b);
    static double compute(const double& a, const double& b, Operation op);
};
