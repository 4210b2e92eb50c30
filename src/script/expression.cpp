// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/expression.h"

#include <algorithm>
#include <array>

#include "definition/element.h"
#include "script/behaviour.h"
#include "script/code_line.h"
#include "script/integer.h"
#include "script/lifetime.h"
#include "script/variable_factory.h"
#include "structure/scene.h"

namespace {

struct OperatorRow {
    char sign;
    std::string_view word;
    Operation op;
};

constexpr std::array kOperators = {
    OperatorRow{'+', "ADD", Operation::add     },
    OperatorRow{'-', "SUB", Operation::subtract},
    OperatorRow{'*', "MUL", Operation::multiply},
    OperatorRow{'@', "DIV", Operation::divide  },
    OperatorRow{'%', "MOD", Operation::modulo  },
};

const OperatorRow* findSign(char c) {
    const auto* row = std::ranges::find(kOperators, c, &OperatorRow::sign);
    return row == kOperators.end() ? nullptr : row;
}

// An unknown word adds, as a declared operator does before anything is read.
Operation operatorOf(const CXString& word) {
    if (word.GetLength() == 1)
        if (const OperatorRow* row = findSign(word.GetAt(0))) return row->op;
    const auto* row = std::ranges::find(kOperators, word.view(), &OperatorRow::word);
    return row == kOperators.end() ? Operation::add : row->op;
}

}  // namespace

CMC_Expression::CMC_Expression(CMC_Scene* scene, CXString text) : CMC_Variable("temp", kType) {
    setScene(scene);
    split(text);
    compile();
}

CMC_Expression::CMC_Expression(CMC_Scene* scene, CMElement* element) : CMC_Variable(scene, element, kType) {
    texts_ = {element->getPropertyValue("OPERAND1"), element->getPropertyValue("OPERAND2")};
    operators_ = {operatorOf(element->getPropertyValue("OPERATOR"))};
    initializeBehaviours(scene, element);
}

CMC_Expression::~CMC_Expression() {
    operands_.clear();  // before their owner
}

void CMC_Expression::split(const CXString& text) {
    int brackets = 0;
    int start = 0;
    for (int i = 0; i < text.GetLength(); ++i) {
        const char c = text.GetAt(i);
        if (c == '[') ++brackets;
        if (c == ']') --brackets;
        const OperatorRow* row = brackets == 0 ? findSign(c) : nullptr;
        if (row == nullptr) continue;
        texts_.push_back(text.Mid(start, i));
        operators_.push_back(row->op);
        start = i + 1;
    }
    texts_.push_back(text.Right(start));
}

void CMC_Expression::compile() {
    operands_.clear();
    if (!owner_) owner_ = std::make_unique<CMC_Behaviour>(getScene(), "", "temp");
    for (const CXString& text : texts_)
        operands_.push_back(std::make_unique<CMC_CodeLine>(owner_.get(), text));
}

void CMC_Expression::init() {
    CMC_Variable::init();
    compile();
}

void CMC_Expression::calculate() {
    if (operands_.empty() || !ScriptScope::mayEnter()) return keep(result_, nullptr);
    const ScriptScope scope;
    CMC_Variable* value = operands_[0]->run(this, nullptr);
    for (std::size_t i = 0; i < operators_.size(); ++i) {
        CMC_Variable* right = operands_[i + 1]->run(this, nullptr);
        // A missing first operand is 0, so that a leading minus sign makes a negative number.
        CMC_Variable* next = nullptr;
        if (value) {
            next = value->calculate(right, operators_[i]);
        } else {
            CMC_Integer zero(0);
            next = zero.calculate(right, operators_[i]);
        }
        release(value);
        release(right);
        value = next;
    }
    keep(result_, value ? value->current() : nullptr);
    release(value);
}

CMC_Variable* CMC_Expression::current() {
    calculate();
    return result_.get();
}

CMC_Variable* CMC_Expression::calculate(CMC_Variable* other, Operation op) {
    calculate();
    return result_ ? result_->calculate(other, op) : nullptr;
}

CMC_Variable* CMC_Expression::convert(int type) {
    calculate();
    return result_ ? result_->convert(type) : nullptr;
}

bool CMC_Expression::equals(CMC_Variable* other) {
    calculate();
    return result_ && result_->equals(other);
}

int CMC_Expression::compare(CMC_Variable* other) {
    calculate();
    return result_ ? result_->compare(other) : -1;
}

CXObject* CMC_Expression::clone() {
    calculate();
    return result_ ? result_->clone() : nullptr;
}

int CMC_Expression::asInteger() {
    calculate();
    return result_ ? result_->asInteger() : 0;
}

double CMC_Expression::asDouble() {
    calculate();
    return result_ ? result_->asDouble() : 0.0;
}

bool CMC_Expression::asBool() {
    calculate();
    return result_ && result_->asBool();
}

CXString CMC_Expression::asString() {
    calculate();
    return result_ ? result_->asString() : CXString();
}
