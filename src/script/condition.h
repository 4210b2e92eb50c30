// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "script/object.h"
#include "script/runner.h"

class CMC_Behaviour;
class CMC_CodeLine;

// A declared test. Its signals tell the outcome of each test that asks for them.
class CMC_BasicCondition : public CMC_Object {
public:
    static bool isConditionType(int type) { return type == 10 || type == 11; }

    std::span<const std::string_view> getBehavioursList() const override;

    // The outcome; with `fire` the signal ONRUNTIMESUCCESS or ONRUNTIMEFAILED runs.
    virtual bool valid(bool fire) = 0;

protected:
    CMC_BasicCondition(CMC_Scene* scene, CMElement* element, int type);
    void initializeBehaviours(CMC_Scene* scene, CMElement* element) override;
    // Runs the handler of that outcome. Only what the definition bound is heard, not what a script adds later.
    void tell(bool outcome);

private:
    bool hasSuccess_ = false;
    bool hasFailure_ = false;
};

// How two values are compared.
enum class Comparison { none = 0, equal, notEqual, less, lessEqual, greater, greaterEqual, instanceOf };

// CONDITION: compares two operands, each an atom, an expression or a call.
class CMC_Condition : public CMC_BasicCondition {
public:
    static constexpr int kType = 10;

    CMC_Condition(CMC_Scene* scene, CMElement* element);
    ~CMC_Condition() override;

    void init() override;  // compiles the operands
    bool valid(bool fire) override;
    void serialize(CXArchive* archive) override;

    // The test behind IF and WHILE: both operands are text, resolved at the moment. An unknown operator is false.
    static bool valid(CMC_Scene* scene, const CXString& a, const CXString& op, const CXString& b);

private:
    CXString operatorText_, text1_, text2_;
    Comparison operator_ = Comparison::equal;
    std::unique_ptr<CMC_Behaviour> owner_;  // of the lines; empty, it gives them the scene
    std::unique_ptr<CMC_CodeLine> operand1_, operand2_;
};

// COMPLEXCONDITION: joins two conditions by AND or OR. The second is asked only when the first doesn't decide.
class CMC_ComplexCondition : public CMC_BasicCondition {
public:
    static constexpr int kType = 11;

    CMC_ComplexCondition(CMC_Scene* scene, CMElement* element);

    bool valid(bool fire) override;
    void serialize(CXArchive* archive) override;

private:
    CXString operatorText_, condition1_, condition2_;
};

// CHECK answers the outcome; BREAK leaves the running block when the condition holds.
class CMC_BasicCondition_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
