// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "definition/element.h"

#include <utility>

#include "foundation/string_tokenizer.h"

CXPoint CMProperty::getPointValue() const {
    CStringTokenizer numbers(value_, ", ");
    const int x = CXString::toNumber(numbers.nextToken());
    return {x, CXString::toNumber(numbers.nextToken())};
}

CXRect CMProperty::getRectValue() const {
    CStringTokenizer numbers(value_, ", ");
    int edges[4];
    for (int& edge : edges)
        edge = CXString::toNumber(numbers.nextToken());
    return {edges[0], edges[1], edges[2], edges[3]};
}

bool CMProperty::equals(const CXObject* other) const {
    return other && static_cast<const CMProperty*>(other)->name_ == name_;
}

CMProperty* CMProperties::lookUp(std::string_view name) const {
    for (CXObject* element : elements()) {
        auto* property = static_cast<CMProperty*>(element);
        if (property->getName().view() == name) return property;
    }
    return nullptr;
}

void CMProperties::remove(const CXObject* property) { removeAt(find(property)); }

void CMProperties::removeAt(int i) {
    const CXObject* property = at(i);
    CXVector::removeAt(i);
    delete property;
}

void CMProperties::removeAll() {
    for (CXObject* property : elements())
        delete property;
    CXVector::removeAll();
}

CMElement::CMElement(CXString name) : name_(std::move(name)) {}

CMElement::~CMElement() = default;

CMElements* CMElement::getChildren() {
    if (!children_) children_ = std::make_unique<CMElements>(false);
    return children_.get();
}

void CMElement::addChild(CMElement* child) { getChildren()->add(child); }

CXString CMElement::getPropertyValue(const CXString& name) const {
    const CMProperty* property = properties_.get(name);
    return property ? property->getValue() : CXString();
}

int CMElement::getPropertyIntValue(const CXString& name) const {
    const CMProperty* property = properties_.get(name);
    return property ? property->getIntValue() : 0;
}

bool CMElement::getPropertyBoolValue(const CXString& name) const {
    const CMProperty* property = properties_.get(name);
    return property && property->getBoolValue();
}

double CMElement::getPropertyDoubleValue(const CXString& name) const {
    const CMProperty* property = properties_.get(name);
    return property ? property->getDoubleValue() : 0.0;
}

CXArray* CMElement::getPropertyListValue(const CXString& name) const {
    const CMProperty* property = properties_.get(name);
    return property ? property->getListValue() : nullptr;
}

CXPoint CMElement::getPropertyPointValue(const CXString& name) const {
    const CMProperty* property = properties_.get(name);
    return property ? property->getPointValue() : CXPoint();
}

CXRect CMElement::getPropertyRectValue(const CXString& name) const {
    const CMProperty* property = properties_.get(name);
    return property ? property->getRectValue() : CXRect();
}

bool CMElement::hasProperty(const CXString& name) const {
    CXString upper = name;
    return properties_.contains(upper.Upper());
}

void CMElement::addProperty(const CXString& name) {
    if (!properties_.contains(name)) addProperty(name, "");
}

void CMElement::addProperty(const CXString& name, const CXString& value) {
    properties_.add(new CMProperty(name, value));
}

void CMElement::setProperty(const CXString& name, const CXString& value) {
    if (CMProperty* property = properties_.get(name)) property->setValue(value);
}

void CMElement::removeProperty(const CXString& name) { properties_.remove(properties_.get(name)); }

CMElement* CMElements::lookUp(std::string_view name) const {
    for (; indexed_ < size(); ++indexed_) {
        CMElement* element = getAt(indexed_);
        index_.try_emplace(element->getName().view(), element);
    }
    const auto found = index_.find(name);
    return found == index_.end() ? nullptr : found->second;
}

void CMElements::forgetIndex() const {
    index_.clear();
    indexed_ = 0;
}

void CMElements::remove(const CXObject* element) { removeAt(find(element)); }

void CMElements::removeAt(int i) {
    const CXObject* element = at(i);
    if (!element) return;
    if (i < indexed_) forgetIndex();
    CXVector::removeAt(i);
    if (ownsElements_) delete element;
}

void CMElements::removeAll() {
    forgetIndex();
    if (ownsElements_) {
        for (CXObject* element : elements())
            delete element;
    }
    CXVector::removeAll();
}

CXObject* CMElements::setAt(int i, CXObject* element) {
    forgetIndex();
    return CXVector::setAt(i, element);
}

bool CMElements::replace(const CXObject* old, CXObject* by) {
    forgetIndex();
    return CXVector::replace(old, by);
}

void CMElements::insertAt(int i, CXObject* element) {
    if (i < indexed_) forgetIndex();
    CXVector::insertAt(i, element);
}
