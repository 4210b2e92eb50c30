// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/condition.h"

#include <algorithm>
#include <array>

#include "definition/element.h"
#include "script/behaviour.h"
#include "script/code_line.h"
#include "script/expression.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "script/variable.h"
#include "storage/archive.h"
#include "structure/scene.h"

namespace {

constexpr std::array<std::string_view, 5> kSignals = {"ONINIT", "ONDONE", "ONSIGNAL", "ONRUNTIMESUCCESS",
                                                      "ONRUNTIMEFAILED"};

struct ComparisonRow {
    Comparison code;
    std::string_view word;
    std::string_view sign;
    std::string_view otherSign;
};

// `_` stands for `=`, which definition text reserves.
constexpr std::array kComparisons = {
    ComparisonRow{Comparison::equal,        "EQUAL",        "_",  ""  },
    ComparisonRow{Comparison::notEqual,     "NOTEQUAL",     "!_", "<>"},
    ComparisonRow{Comparison::less,         "LESS",         "<",  ""  },
    ComparisonRow{Comparison::lessEqual,    "LESSEQUAL",    "<_", ""  },
    ComparisonRow{Comparison::greater,      "GREATER",      ">",  ""  },
    ComparisonRow{Comparison::greaterEqual, "GREATEREQUAL", ">_", ""  },
    ComparisonRow{Comparison::instanceOf,   "INSTANCEOF",   "?",  ""  },
};

Comparison ofWord(const CXString& word) {
    const auto* row = std::ranges::find(kComparisons, word.view(), &ComparisonRow::word);
    return row == kComparisons.end() ? Comparison::equal : row->code;
}

Comparison ofSign(const CXString& sign) {
    if (!sign.IsString()) return Comparison::none;
    for (const ComparisonRow& row : kComparisons)
        if (sign.view() == row.sign || sign.view() == row.otherSign) return row.code;
    return Comparison::none;
}

// The left operand decides the type.
bool holds(CMC_Variable* a, Comparison comparison, CMC_Variable* b) {
    switch (comparison) {
        case Comparison::equal:
            return a->equals(b);
        case Comparison::notEqual:
            return !a->equals(b);
        case Comparison::less:
            return a->compare(b) < 0;
        case Comparison::lessEqual:
            return a->compare(b) <= 0;
        case Comparison::greater:
            return a->compare(b) > 0;
        case Comparison::greaterEqual:
            return a->compare(b) >= 0;
        default:
            return false;
    }
}

// Both methods take whether signals fire, which they do unless told otherwise.
bool isValid(const MethodCall& c) {
    return static_cast<CMC_BasicCondition*>(c.object)->valid(c.count() == 0 || c.truth(0));
}

CMC_Variable* check(const MethodCall& c) { return toScript(isValid(c)); }
CMC_Variable* leave(const MethodCall& c) { return isValid(c) ? CMC_Variable::breakValue() : nullptr; }

constexpr MethodRow kMethods[] = {
    {1, "CHECK", {check, "b"}},
    {2, "BREAK", {leave, "b"}},
};
static_assert(isMethodTable(kMethods));

CMC_Variable* noBreak(CMC_Variable* value) { return value == CMC_Variable::breakValue() ? nullptr : value; }

}  // namespace

CMC_BasicCondition::CMC_BasicCondition(CMC_Scene* scene, CMElement* element, int type)
    : CMC_Object(scene, element, type) {}

std::span<const std::string_view> CMC_BasicCondition::getBehavioursList() const { return kSignals; }

void CMC_BasicCondition::initializeBehaviours(CMC_Scene* scene, CMElement* element) {
    CMC_Object::initializeBehaviours(scene, element);
    hasSuccess_ = getBehaviour("ONRUNTIMESUCCESS") != nullptr;
    hasFailure_ = getBehaviour("ONRUNTIMEFAILED") != nullptr;
}

void CMC_BasicCondition::tell(bool outcome) {
    if (outcome && hasSuccess_) onSignal("ONRUNTIMESUCCESS");
    if (!outcome && hasFailure_) onSignal("ONRUNTIMEFAILED");
}

CMC_Condition::CMC_Condition(CMC_Scene* scene, CMElement* element)
    : CMC_BasicCondition(scene, element, kType),
      operatorText_(element->getPropertyValue("OPERATOR")),
      text1_(element->getPropertyValue("OPERAND1")),
      text2_(element->getPropertyValue("OPERAND2")),
      operator_(ofWord(operatorText_)) {
    initializeBehaviours(scene, element);
}

CMC_Condition::~CMC_Condition() {
    operand1_.reset();  // before their owner
    operand2_.reset();
}

void CMC_Condition::init() {
    CMC_BasicCondition::init();
    if (!owner_) owner_ = std::make_unique<CMC_Behaviour>(getScene(), "", "temp");
    operand1_ = std::make_unique<CMC_CodeLine>(owner_.get(), text1_);
    operand2_ = std::make_unique<CMC_CodeLine>(owner_.get(), text2_);
}

bool CMC_Condition::valid(bool fire) {
    if (!operand1_ || !operand2_ || !ScriptScope::mayEnter()) return false;
    const ScriptScope scope;
    CMC_Variable* a = noBreak(operand1_->run(nullptr, nullptr));
    CMC_Variable* b = noBreak(operand2_->run(nullptr, nullptr));
    const bool outcome = a && b && holds(a, operator_, b);
    release(a);
    release(b);
    if (fire) tell(outcome);
    return outcome;
}

void CMC_Condition::serialize(CXArchive* archive) {
    CMC_BasicCondition::serialize(archive);
    if (archive->isStoring()) {
        *archive << text1_ << text2_ << operatorText_;
    } else {
        *archive >> text1_ >> text2_ >> operatorText_;
        operator_ = ofWord(operatorText_);
    }
}

bool CMC_Condition::valid(CMC_Scene* scene, const CXString& a, const CXString& op, const CXString& b) {
    const ScriptScope scope;
    const int trash = CMC_Behaviour::trashSize();
    CMC_Variable* left = noBreak(CMC_Behaviour::resolveParameter(scene, nullptr, a, nullptr));
    CMC_Variable* right = noBreak(CMC_Behaviour::resolveParameter(scene, nullptr, b, nullptr));
    const Comparison comparison = ofSign(op);
    bool outcome = false;
    if (comparison == Comparison::instanceOf) {
        CMC_Object* object = scene ? scene->lookUp(a.view()) : nullptr;
        outcome = object && right && typeToString(object->getType()) == right->asString();
    } else if (left && right) {
        outcome = holds(left, comparison, right);
    }
    release(left);
    release(right);
    // The expressions that the operands made have served.
    CMC_Behaviour::flushTrash(trash);
    return outcome;
}

CMC_ComplexCondition::CMC_ComplexCondition(CMC_Scene* scene, CMElement* element)
    : CMC_BasicCondition(scene, element, kType),
      operatorText_(element->getPropertyValue("OPERATOR")),
      condition1_(element->getPropertyValue("CONDITION1")),
      condition2_(element->getPropertyValue("CONDITION2")) {
    initializeBehaviours(scene, element);
}

bool CMC_ComplexCondition::valid(bool fire) {
    if (!ScriptScope::mayEnter()) return false;
    const ScriptScope scope;
    const auto find = [this](const CXString& name) -> CMC_BasicCondition* {
        CMC_Object* object = getScene() ? getScene()->lookUp(name.view()) : nullptr;
        if (object == nullptr || !isConditionType(object->getType())) return nullptr;
        return static_cast<CMC_BasicCondition*>(object);
    };
    CMC_BasicCondition* first = find(condition1_);
    const Ref<CMC_BasicCondition> second = find(condition2_);
    if (first == nullptr || !second) return false;
    const auto askSecond = [&second] { return second && second->valid(true); };
    bool outcome = false;
    if (operatorText_ == "AND") outcome = first->valid(true) && askSecond();
    if (operatorText_ == "OR") outcome = first->valid(true) || askSecond();
    if (fire) tell(outcome);
    return outcome;
}

void CMC_ComplexCondition::serialize(CXArchive* archive) {
    CMC_BasicCondition::serialize(archive);
    if (archive->isStoring())
        *archive << condition1_ << condition2_ << operatorText_;
    else
        *archive >> condition1_ >> condition2_ >> operatorText_;
}

void CMC_BasicCondition_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
