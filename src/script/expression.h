// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "script/variable.h"

class CMC_Behaviour;
class CMC_CodeLine;

// EXPRESSION: a value computed anew each time it is asked for. Brackets in code make one, and a definition can.
//
// Operands and operators alternate and are worked off strictly from left to right; only brackets within brackets
// group. The result has the first operand's type. Setting it does nothing.
class CMC_Expression : public CMC_Variable {
public:
    using CMC_Variable::clone;
    using CMC_Variable::compare;
    using CMC_Variable::equals;

    static constexpr int kType = 12;

    // The text between brackets: operands, and + - * @ (divide) % between them. Compiled at once.
    CMC_Expression(CMC_Scene* scene, CXString text);
    // OPERAND1, OPERATOR, OPERAND2; compiled by init.
    CMC_Expression(CMC_Scene* scene, CMElement* element);
    ~CMC_Expression() override;

    virtual void calculate();
    // The result of the last calculate; null when there is none. Belongs to the expression.
    virtual CMC_Variable* getResult() { return result_.get(); }

    void init() override;
    CMC_Variable* current() override;
    CMC_Variable* calculate(CMC_Variable* other, Operation op) override;
    CMC_Variable* convert(int type) override;
    bool equals(CMC_Variable* other) override;
    int compare(CMC_Variable* other) override;
    CXObject* clone() override;  // of the result
    int asInteger() override;
    double asDouble() override;
    bool asBool() override;
    CXString asString() override;

    void set(CMC_Variable*) override {}
    void clear() override {}
    void swap(CMC_Variable*, CMC_Variable*) override {}
    void inc() override {}
    void dec() override {}
    void setDefault(CMC_Variable*) override {}
    void resetINI() override {}
    int getBufferLen() override { return 0; }
    void netstore(void*) override {}
    bool netrestore(std::span<const std::byte>) override { return false; }
    void store(CXArchive*) override {}
    void restore(CXArchive*) override {}

private:
    void split(const CXString& text);
    void compile();

    std::vector<CXString> texts_;           // of the operands
    std::vector<Operation> operators_;      // one fewer than operands
    std::unique_ptr<CMC_Behaviour> owner_;  // of the lines; empty, it gives them the scene
    std::vector<std::unique_ptr<CMC_CodeLine>> operands_;
    std::unique_ptr<CMC_Variable> result_;
};
