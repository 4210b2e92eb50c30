// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/array.h"

#include <array>

#include "script/method_table.h"
#include "storage/archive.h"
#include "storage/file.h"
#include "structure/scene.h"

namespace {

constexpr std::array<std::string_view, 4> kSignals = {"ONINIT", "ONDONE", "ONSIGNAL", "ONCHANGED"};

CMC_Variable* add(const MethodCall& c) {
    for (int i = 0; i < c.count(); ++i)
        static_cast<CMC_Array*>(c.object)->add(c.value(i));
    return nullptr;
}

CMC_Variable* get(const MethodCall& c) {
    CMC_Variable* value = static_cast<CMC_Array*>(c.object)->get(c.integer(0));
    return value ? CMC_VariableFactory::copyVariable(value) : toScript(CXString("NULL"));
}

constexpr MethodRow kMethods[] = {
    {1,  "ADD",         {add, "*"}                   },
    {2,  "GETSIZE",     bind<&CMC_Array::getSize>    },
    {6,  "REMOVEALL",   bind<&CMC_Array::removeAll>  },
    {7,  "GET",         {get, "i"}                   },
    {35, "GETSUMVALUE", bind<&CMC_Array::getSumValue>},
    {37, "LOAD",        bind<&CMC_Array::load>       },
    {38, "SAVE",        bind<&CMC_Array::save>       },
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

void CMC_Array::removeAll() { values_.clear(); }

int CMC_Array::getSumValue() {
    int sum = 0;
    for (const auto& value : values_)
        if (value->getType() == CMC_Integer::kType) sum = CMC_Integer::compute(sum, value->asInteger(), Operation::add);
    return sum;
}

void CMC_Array::load(CXString fileName) {
    removeAll();
    CFile file;
    if (file.Open(getScene()->getWindow(), fileName, 0x11) != 0) return;
    CXArchive archive(&file, false);
    int count = 0;
    archive >> count;
    for (int i = 0; i < count && archive.ok(); ++i) {
        CMC_Variable* value = CMC_VariableFactory::restore(&archive);
        if (value == nullptr) return;
        add(value);
        flush(value);
    }
}

void CMC_Array::save(CXString fileName) {
    CFile file;
    if (file.Open(getScene()->getWindow(), fileName, 0x16) != 0) return;
    CXArchive archive(&file, true);
    archive << getSize();
    for (const auto& value : values_)
        value->store(&archive);
}

void CMC_Array_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
