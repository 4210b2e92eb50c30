// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/group.h"

#include <algorithm>
#include <array>

#include "definition/element.h"
#include "script/code_line.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "structure/scene.h"

namespace {

constexpr std::array<std::string_view, 3> kSignals = {"ONINIT", "ONDONE", "ONSIGNAL"};

CMC_Groupped& group(const MethodCall& c) { return static_cast<CMC_Groupped&>(*c.object); }

CMC_Object* named(const MethodCall& c, int i) { return c.scene ? c.scene->lookUp(c.text(i).view()) : nullptr; }

CMC_Variable* add(const MethodCall& c) {
    for (int i = 0; i < c.count(); ++i)
        if (CMC_Object* object = named(c, i)) group(c).add(object);
    return nullptr;
}

CMC_Variable* remove(const MethodCall& c) {
    if (CMC_Object* object = named(c, 0)) group(c).remove(object);
    return nullptr;
}

CMC_Variable* getName(const MethodCall& c) {
    CMC_Object* member = group(c).get(c.integer(0));
    return member ? toScript(member->getName()) : nullptr;
}

constexpr MethodRow kMethods[] = {
    {1, "ADD",       {add, "*"}                    },
    {2, "REMOVE",    {remove, "s"}                 },
    {3, "REMOVEALL", bind<&CMC_Groupped::removeAll>},
    {4, "GETSIZE",   bind<&CMC_Groupped::getSize>  },
    {5, "GETNAME",   {getName, "i"}                },
};
static_assert(isMethodTable(kMethods));

}  // namespace

CMC_Groupped::CMC_Groupped(CMC_Scene* scene, CMElement* element) : CMC_Object(scene, element, kType) {
    initializeBehaviours(scene, element);
}

CMC_Groupped::CMC_Groupped(CXString name, CMC_Scene* scene) : CMC_Object(std::move(name), kType) { setScene(scene); }

std::span<const std::string_view> CMC_Groupped::getBehavioursList() const { return kSignals; }

void CMC_Groupped::forgetTheDead() {
    std::erase_if(members_, [](const Ref<CMC_Object>& member) { return !member; });
}

void CMC_Groupped::add(CMC_Object* object) {
    if (std::ranges::find(members_, object, &Ref<CMC_Object>::get) == members_.end()) members_.emplace_back(object);
}

void CMC_Groupped::remove(CMC_Object* object) {
    const auto at = std::ranges::find(members_, object, &Ref<CMC_Object>::get);
    if (at != members_.end()) members_.erase(at);
}

int CMC_Groupped::getSize() {
    forgetTheDead();
    return static_cast<int>(members_.size());
}

CMC_Object* CMC_Groupped::get(int index) {
    return index >= 0 && index < getSize() ? members_[static_cast<std::size_t>(index)].get() : nullptr;
}

std::vector<CMC_Object*> CMC_Groupped::getList() {
    std::vector<CMC_Object*> list;
    for (const Ref<CMC_Object>& member : members_)
        if (member) list.push_back(member.get());
    return list;
}

CXObject* CMC_Groupped::clone() {
    auto* copy = new CMC_Groupped("cloned", getScene());
    copy->members_ = members_;
    return copy;
}

void CMC_Groupped_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}

CMC_Variable* CMC_Groupped_Runner::run(CXString name, CMC_Object* object, CMC_Scene* scene, CXVector* params) {
    const int id = resolveMethod(name);
    if (id != -1) return run(id, object, scene, params);
    // A group may stand in itself.
    if (object == nullptr || !ScriptScope::mayEnter()) return nullptr;
    const ScriptScope scope;
    for (CMC_Object* member : static_cast<CMC_Groupped*>(object)->getList()) {
        if (member->isRetired()) continue;
        if (CMC_Runner* runner = runnerOf(member)) CMC_Object::release(runner->run(name, member, scene, params));
    }
    return nullptr;
}
