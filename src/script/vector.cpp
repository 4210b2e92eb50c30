// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/vector.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numeric>

#include "definition/element.h"
#include "script/method_table.h"
#include "storage/archive.h"
#include "structure/scene.h"

namespace {

constexpr std::array<std::string_view, 3> kSignals = {"ONINIT", "ONDONE", "ONSIGNAL"};

constexpr int kMostElements = 100000;  // a wrong number must not eat the machine

CMC_Vector& self(const MethodCall& c) { return static_cast<CMC_Vector&>(*c.object); }

// The vector that a parameter is or names; null: neither.
CMC_Vector* vectorOf(const MethodCall& c, int i) {
    auto* given = c.params ? static_cast<CMC_Object*>(c.params->at(i)) : nullptr;
    if (given && given->asVariable()) given = c.scene ? c.scene->lookUp(c.text(i).view()) : nullptr;
    return given && given->getType() == CMC_Vector::kType ? static_cast<CMC_Vector*>(given) : nullptr;
}

template <void (CMC_Vector::*apply)(const CMC_Vector&)>
CMC_Variable* withEach(const MethodCall& c) {
    for (int i = 0; i < c.count(); ++i)
        if (const CMC_Vector* other = vectorOf(c, i)) (self(c).*apply)(*other);
    return nullptr;
}

CMC_Variable* smul(const MethodCall& c) {
    const CMC_Vector* other = vectorOf(c, 0);
    return toScript(other ? self(c).dot(*other) : 0.0);
}

CMC_Variable* reflect(const MethodCall& c) {
    const CMC_Vector* normal = vectorOf(c, 0);
    CMC_Vector* out = vectorOf(c, 1);
    if (normal && out) self(c).reflect(*normal, *out);
    return nullptr;
}

// A single number fills the vector, a single text names another one.
CMC_Variable* set(const MethodCall& c) {
    if (c.count() >= 2) {
        const int i = c.integer(0);
        self(c).setAt(i, c.real(1));
    } else if (const CMC_Vector* other = vectorOf(c, 0)) {
        self(c).assign(*other);
    } else if (c.count() == 1) {
        CMC_Variable* value = c.value(0);
        if (value->getType() == CMC_Integer::kType || value->getType() == CMC_Double::kType)
            self(c).fill(value->asDouble());
    }
    return nullptr;
}

CMC_Variable* assign(const MethodCall& c) {
    for (int i = 0; i < c.count(); ++i)
        self(c).setAt(i, c.real(i));
    return nullptr;
}

// The name stands for a vector product, which nothing asks for.
CMC_Variable* vmul(const MethodCall&) { return nullptr; }

constexpr MethodRow kMethods[] = {
    {1,  "ADD",       {withEach<&CMC_Vector::add>, "s*"}},
    {2,  "GET",       bind<&CMC_Vector::at>             },
    {3,  "GETSIZE",   bind<&CMC_Vector::getSize>        },
    {4,  "VMUL",      {vmul, "ss"}                      },
    {5,  "SMUL",      {smul, "s"}                       },
    {6,  "MUL",       bind<&CMC_Vector::mul>            },
    {7,  "LEN",       bind<&CMC_Vector::length>         },
    {8,  "NORMALIZE", bind<&CMC_Vector::normalize>      },
    {9,  "REFLECT",   {reflect, "ss"}                   },
    {10, "EXPAND",    bind<&CMC_Vector::expand>         },
    {11, "SET",       {set, "vd"}                       },
    {12, "ASSIGN",    {assign, "d*"}                    },
    {13, "SUB",       {withEach<&CMC_Vector::sub>, "s*"}},
    {14, "NEG",       bind<&CMC_Vector::neg>            },
};
static_assert(isMethodTable(kMethods));

}  // namespace

CMC_Vector::CMC_Vector(CMC_Scene* scene) : CMC_Object("temp", kType) { setScene(scene); }

CMC_Vector::CMC_Vector(CMC_Scene* scene, CMElement* element) : CMC_Object(scene, element, kType) {
    initializeBehaviours(scene, element);
    expand(element->getPropertyIntValue("SIZE"));
    CXArray* numbers = element->getPropertyListValue("VALUE");
    for (int i = 0; numbers && i < numbers->size(); ++i)
        setAt(i, CXString::toDouble(*numbers->stringAt(i)));
    deleteStrings(numbers);
}

std::span<const std::string_view> CMC_Vector::getBehavioursList() const { return kSignals; }

double CMC_Vector::at(int i) const { return i >= 0 && i < getSize() ? values_[static_cast<std::size_t>(i)] : 0.0; }

void CMC_Vector::setAt(int i, double value) {
    if (i >= 0 && i < getSize()) values_[static_cast<std::size_t>(i)] = value;
}

double CMC_Vector::length() const { return std::sqrt(dot(*this)); }

void CMC_Vector::add(const CMC_Vector& other) {
    if (other.getSize() != getSize()) return;
    std::ranges::transform(values_, other.values_, values_.begin(), std::plus());
}

void CMC_Vector::sub(const CMC_Vector& other) {
    if (other.getSize() != getSize()) return;
    std::ranges::transform(values_, other.values_, values_.begin(), std::minus());
}

double CMC_Vector::dot(const CMC_Vector& other) const {
    if (other.getSize() != getSize()) return 0;
    return std::inner_product(values_.begin(), values_.end(), other.values_.begin(), 0.0);
}

void CMC_Vector::mul(double factor) {
    for (double& value : values_)
        value *= factor;
}

void CMC_Vector::neg() {
    for (double& value : values_)
        value = -value;
}

void CMC_Vector::normalize() {
    const double by = length();
    for (double& value : values_)
        value /= by;
}

void CMC_Vector::reflect(const CMC_Vector& normal, CMC_Vector& out) const {
    const double along = dot(normal);
    for (int i = 0; i < out.getSize(); ++i)
        out.setAt(i, 2 * along * normal.at(i) - at(i));
}

void CMC_Vector::expand(int size) {
    if (size <= getSize() || size > kMostElements) return;
    values_.insert(values_.begin(), static_cast<std::size_t>(size - getSize()), 0.0);
}

void CMC_Vector::assign(const CMC_Vector& other) {
    const std::size_t common = std::min(values_.size(), other.values_.size());
    std::copy_n(other.values_.begin(), common, values_.begin());
}

void CMC_Vector::fill(double value) { std::ranges::fill(values_, value); }

CXObject* CMC_Vector::clone() {
    auto* copy = new CMC_Vector(getScene());
    copy->setName("clone");
    copy->values_ = values_;
    return copy;
}

CXString CMC_Vector::toString() {
    CXString text;
    for (int i = 0; i < getSize(); ++i) {
        if (i > 0) text += ",";
        text += CXString::toString(at(i));
    }
    return text;
}

void CMC_Vector::serialize(CXArchive* archive) {
    CMC_Object::serialize(archive);
    if (archive->isStoring()) {
        *archive << getSize();
        for (const double value : values_)
            *archive << value;
        return;
    }
    int size = 0;
    *archive >> size;
    values_.clear();
    for (int i = 0; i < size && archive->ok(); ++i) {
        double value = 0;
        *archive >> value;
        if (archive->ok()) values_.push_back(value);
    }
}

void CMC_Vector_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
