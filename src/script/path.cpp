// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/path.h"

#include <array>

#include "definition/element.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "storage/archive.h"
#include "structure/scene.h"

namespace {

constexpr std::array<std::string_view, 3> kSignals = {"ONINIT", "ONDONE", "ONSIGNAL"};

// Paths of paths grow fast: a text that has reached this takes no further node.
constexpr int kLongText = 65536;

CMC_Path& self(const MethodCall& c) { return static_cast<CMC_Path&>(*c.object); }

CMC_Variable* getNode(const MethodCall& c) {
    const CMC_Object* node = self(c).getNode(c.integer(0));
    return node ? toScript(node->getName()) : nullptr;
}

CMC_Variable* setProperty(const MethodCall& c) {
    if (c.text(0).view() == "DENSITY") self(c).setDensity(c.real(1));
    return nullptr;
}

CMC_Variable* getProperty(const MethodCall& c) {
    return c.text(0).view() == "DENSITY" ? toScript(self(c).getDensity()) : nullptr;
}

constexpr MethodRow kMethods[] = {
    {1, "ADD",         bind<&CMC_Path::add>    },
    {2, "GETNODE",     {getNode, "i"}          },
    {3, "GETSIZE",     bind<&CMC_Path::getSize>},
    {4, "SETPROPERTY", {setProperty, "sd"}     },
    {5, "GETPROPERTY", {getProperty, "s"}      },
};
static_assert(isMethodTable(kMethods));

}  // namespace

CMC_Path::CMC_Path(CMC_Scene* scene) : CMC_Object("temp", kType) { setScene(scene); }

CMC_Path::CMC_Path(CMC_Scene* scene, CMElement* element) : CMC_Object(scene, element, kType) {
    initializeBehaviours(scene, element);
    CXArray* names = element->getPropertyListValue("NODES");
    for (int i = 0; names && i < names->size(); ++i)
        add(*names->stringAt(i));
    deleteStrings(names);
}

std::span<const std::string_view> CMC_Path::getBehavioursList() const { return kSignals; }

CMC_Object* CMC_Path::getNode(int i) const {
    return i >= 0 && i < getSize() ? nodes_[static_cast<std::size_t>(i)].get() : nullptr;
}

void CMC_Path::add(CXString name) { nodes_.emplace_back(getScene() ? getScene()->lookUp(name.view()) : nullptr); }

CXString CMC_Path::toString() {
    CXString text;
    if (isTelling_ || !ScriptScope::mayEnter()) return text;
    // A node may be an expression, which runs script.
    const ScriptScope scope;
    isTelling_ = true;
    for (int i = 0; i < getSize() && text.GetLength() < kLongText; ++i) {
        CMC_Object* node = getNode(i);
        text += "[" + (node ? node->toString() : CXString()) + "]";
    }
    isTelling_ = false;
    return text;
}

void CMC_Path::serialize(CXArchive* archive) {
    CMC_Object::serialize(archive);
    if (archive->isStoring()) {
        *archive << getSize();
        for (int i = 0; i < getSize(); ++i)
            *archive << (getNode(i) ? getNode(i)->getName() : CXString());
        return;
    }
    int size = 0;
    *archive >> size;
    nodes_.clear();
    for (int i = 0; i < size && archive->ok(); ++i) {
        CXString name;
        *archive >> name;
        if (archive->ok()) add(name);
    }
}

void CMC_Path_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
