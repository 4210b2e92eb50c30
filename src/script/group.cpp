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

constexpr int kMostClones = 10000;  // looked for at once; a wrong number must not hold up the application

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

template <CMC_Object* (CMC_Groupped::*move)(int)>
CMC_Variable* walk(const MethodCall& c) {
    const CMC_Object* member = (group(c).*move)(c.count() > 0 ? c.integer(0) : 1);
    return member ? toScript(member->getName()) : nullptr;
}

CMC_Variable* addClones(const MethodCall& c) {
    const CXString name = c.text(0);
    const CMC_Object* original = c.scene ? c.scene->lookUp(name.view()) : nullptr;
    if (original == nullptr) return nullptr;
    const int last = original->getClonesNo();
    const int from = c.count() > 1 ? c.integer(1) : 1;
    group(c).addClones(name, from, c.count() > 2 ? c.integer(2) : last);
    return nullptr;
}

CMC_Variable* clone(const MethodCall& c) {
    group(c).CMC_Object::clone(c.count() > 0 ? c.integer(0) : 1);
    return nullptr;
}

constexpr MethodRow kMethods[] = {
    {1,  "ADD",           {add, "s*"}                      },
    {2,  "REMOVE",        {remove, "s"}                    },
    {3,  "REMOVEALL",     bind<&CMC_Groupped::removeAll>   },
    {4,  "GETSIZE",       bind<&CMC_Groupped::getSize>     },
    {5,  "GETNAME",       {getName, "i"}                   },
    {6,  "PREV",          {walk<&CMC_Groupped::prev>, "i"} },
    {7,  "NEXT",          {walk<&CMC_Groupped::next>, "i"} },
    {8,  "ADDCLONES",     {addClones, "sii"}               },
    {9,  "RESETMARKER",   bind<&CMC_Groupped::resetMarker> },
    {10, "GETMARKERPOS",  bind<&CMC_Groupped::getMarkerPos>},
    {11, "SETMARKERPOS",  bind<&CMC_Groupped::setMarkerPos>},
    {12, "CLONE",         {clone, "i"}                     },
    {13, "GETCLONEINDEX", bind<&CMC_Object::getCloneIdx>   },
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

void CMC_Groupped::addClones(CXString name, int from, int to) {
    const auto last = std::min<std::int64_t>(to, std::int64_t{from} + kMostClones - 1);
    for (std::int64_t i = from; getScene() && i <= last; ++i) {
        const CXString clone = name + "_" + CXString::toString(static_cast<int>(i));
        if (CMC_Object* object = getScene()->lookUp(clone.view())) members_.emplace_back(object);
    }
}

CMC_Object* CMC_Groupped::moveMarker(std::int64_t to) {
    const std::int64_t size = getSize();
    if (size == 0) return nullptr;
    marker_ = static_cast<int>((to % size + size) % size);
    return get(marker_);
}

CMC_Object* CMC_Groupped::prev(int n) { return moveMarker(std::int64_t{marker_} - n); }
CMC_Object* CMC_Groupped::next(int n) { return moveMarker(std::int64_t{marker_} + n); }

void CMC_Groupped::setMarkerPos(int pos) { marker_ = std::clamp(pos, -1, getSize() - 1); }

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
    // The members may change the group, and take each other away.
    for (const Ref<CMC_Object>& member : static_cast<CMC_Groupped*>(object)->getList()) {
        if (!member || !ScriptBudget::spend()) continue;
        if (CMC_Runner* runner = runnerOf(member.get()))
            CMC_Object::release(runner->run(name, member.get(), scene, params));
    }
    return nullptr;
}
