// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/queue.h"

#include <array>

#include "script/lifetime.h"
#include "script/method_table.h"

namespace {

constexpr std::array<std::string_view, 4> kSignals = {"ONINIT", "ONDONE", "ONSIGNAL", "ONEMPTY"};
constexpr int kOnEmpty = 3;

CMC_Variable* push(const MethodCall& c) {
    for (int i = 0; i < c.count(); ++i)
        static_cast<CMC_Quene*>(c.object)->push(c.value(i));
    return nullptr;
}

CMC_Variable* pop(const MethodCall& c) { return static_cast<CMC_Quene*>(c.object)->pop(); }

constexpr MethodRow kMethods[] = {
    {1, "PUSH",    {push, "v*"}             },
    {2, "POP",     {pop, ""}                },
    {3, "GETSIZE", bind<&CMC_Quene::getSize>},
    {4, "ISEMPTY", bind<&CMC_Quene::isEmpty>},
};
static_assert(isMethodTable(kMethods));

}  // namespace

CMC_Quene::CMC_Quene(CMC_Scene* scene, CMElement* element, int type, std::unique_ptr<CXQuene> quene)
    : CMC_Object(scene, element, type), quene_(std::move(quene)) {
    if (element)
        initializeBehaviours(scene, element);
    else
        setName("temp");
}

CMC_Quene::~CMC_Quene() { flushElements(); }

std::span<const std::string_view> CMC_Quene::getBehavioursList() const { return kSignals; }

void CMC_Quene::push(CMC_Variable* value) {
    // A queue out of service would keep the slot beyond the life of the pool.
    if (isRetired()) return;
    if (CMC_Variable* copy = CMC_VariableFactory::copyVariable(value)) quene_->push(copy);
}

CMC_Variable* CMC_Quene::pop() {
    const ScriptScope scope;
    if (isEmpty() && isSignalUsed(kOnEmpty)) onSignal("ONEMPTY");
    return static_cast<CMC_Variable*>(quene_->pop());
}

void CMC_Quene::retire() {
    CMC_Object::retire();
    flushElements();
}

void CMC_Quene::flushElements() {
    for (void* element : quene_->elements())
        flush(static_cast<CMC_Variable*>(static_cast<CXObject*>(element)));
    quene_->removeAll();
}

void CMC_Quene_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
