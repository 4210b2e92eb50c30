// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/array.h"

#include <array>

#include "script/method_table.h"
#include "structure/scene.h"

namespace {

constexpr std::array<std::string_view, 4> kSignals = {"ONINIT", "ONDONE", "ONSIGNAL", "ONCHANGED"};

CMC_Variable* add(const MethodCall& c) {
    for (int i = 0; i < c.count(); ++i) static_cast<CMC_Array*>(c.object)->add(c.value(i));
    return nullptr;
}

CMC_Variable* get(const MethodCall& c) {
    CMC_Variable* value = static_cast<CMC_Array*>(c.object)->get(c.integer(0));
    return value ? CMC_VariableFactory::copyVariable(value) : toScript(CXString("NULL"));
}

constexpr MethodRow kMethods[] = {
    {1,  "ADD",         {add, "*"}                    },
    {2,  "GETSIZE",     bind<&CMC_Array::getSize>     },
    {7,  "GET",         {get, "i"}                    },
    {35, "GETSUMVALUE", bind<&CMC_Array::getSumValue> },
};
static_assert(isMethodTable(kMethods));

}  // namespace

CMC_Array::CMC_Array(CMC_Scene* scene, CMElement* element) : CMC_Object(scene, element, kType) {
    initializeBehaviours(scene, element);
}

CMC_Array::~CMC_Array() = default;

std::span<const std::string_view> CMC_Array::getBehavioursList() const { return kSignals; }

CMC_Variable* CMC_Array::get(int index) {
    return index >= 0 && index < getSize() ? values_[static_cast<std::size_t>(index)].get() : nullptr;
}

void CMC_Array::add(CMC_Variable* value) {
    if (auto* copy = static_cast<CMC_Variable*>(value->clone())) values_.emplace_back(copy);
}

void CMC_Array::join(CMC_Object* object) {
    if (CMC_Variable* value = object->asVariable()) add(value);
}

int CMC_Array::getSumValue() {
    int sum = 0;
    for (const auto& value : values_)
        if (value->getType() == CMC_Integer::kType) sum = CMC_Integer::compute(sum, value->asInteger(), Operation::add);
    return sum;
}

void CMC_Array_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
