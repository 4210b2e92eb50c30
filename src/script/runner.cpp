// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/runner.h"

#include "foundation/integer.h"
#include "platform/platform.h"
#include "script/array.h"
#include "script/behaviour.h"
#include "script/group.h"
#include "script/method_table.h"
#include "structure/scene.h"

namespace {

// The first character `@` marks a key as it stands; any other text is the qualifier of ONSIGNAL.
CMC_Variable* send(const MethodCall& c) {
    const CXString text = c.text(0);
    c.object->onSignal(text.GetAt(0) == '@' ? text : "ONSIGNAL^" + text);
    return nullptr;
}

template <class Holder>
CMC_Variable* addTo(const MethodCall& c) {
    CMC_Object* found = c.scene ? c.scene->lookUp(c.text(0).view()) : nullptr;
    if (found && found->getType() == Holder::kType) static_cast<Holder*>(found)->join(c.object);
    return nullptr;
}

CMC_Variable* getName(const MethodCall& c) { return toScript(c.object->getName()); }

CMC_Variable* clone(const MethodCall& c) {
    c.object->clone(c.count() > 0 ? c.integer(0) : 1);
    return nullptr;
}

// `$` stands for `^`, which would make the parameter a call.
CXString keyOf(const MethodCall& c) {
    CXString key = c.text(0);
    key.Replace('$', '^');
    return key;
}

CMC_Variable* addBehaviour(const MethodCall& c) {
    if (c.count() < 2 || c.scene == nullptr) return nullptr;
    const CXString key = keyOf(c);
    CMC_Object* found = c.scene->lookUp(c.text(1).view());
    if (found == nullptr || found->getType() != CMC_Behaviour::kType) return nullptr;
    auto params = std::make_unique<CodeParams>();
    for (int i = 2; i < c.count(); ++i)
        params->push_back(c.text(i));
    c.object->addBehaviour(key, static_cast<CMC_Behaviour*>(found), std::move(params));
    return nullptr;
}

CMC_Variable* removeBehaviour(const MethodCall& c) {
    if (c.count() > 0) c.object->removeBehaviour(keyOf(c));
    return nullptr;
}

CMC_Variable* messageBox(const MethodCall& c) {
    if (c.scene == nullptr) return nullptr;
    const CXString caption = c.object->getName() + " (" + CMC_Object::typeToString(c.object->getType()) + ")";
    platform::current().shell.messageBox(caption.view(), c.object->toString().view(), 0);
    return nullptr;
}

constexpr MethodRow kMethods[] = {
    {96,  "SEND",            {send, "s"}                   },
    {97,  "ADDTOGROUP",      {addTo<CMC_Groupped>, "s"}    },
    {98,  "ADDTOARRAY",      {addTo<CMC_Array>, "s"}       },
    {99,  "GETNAME",         {getName, ""}                 },
    {100, "CLONE",           {clone, "i"}                  },
    {101, "ADDBEHAVIOUR",    {addBehaviour, "ss*"}         },
    {102, "GETCLONEINDEX",   bind<&CMC_Object::getCloneIdx>},
    {103, "MSGBOX",          {messageBox, ""}              },
    {104, "RESETCLONES",     bind<&CMC_Object::resetClones>},
    {105, "REMOVEBEHAVIOUR", {removeBehaviour, "s"}        },
};
static_assert(isMethodTable(kMethods, CMC_Runner::kLastId));

// What a parameter reads as that isn't there. Nobody writes to it.
CMC_Variable* emptyValue() {
    static CMC_String empty("");
    return &empty;
}

template <class T>
T* converted(CMC_Variable* value) {
    CMC_Variable* result = value->convert(T::kType);
    // The slot goes back, and keeps the value for a lap.
    if (result != value) CMC_Object::flush(result);
    return static_cast<T*>(result);
}

}  // namespace

CMC_Runner::CMC_Runner() : methods_(101, 0.75, true) {}

CMC_Runner::~CMC_Runner() {
    for (CXObject* id : methods_.getAllValues()->elements())
        delete id;
}

void CMC_Runner::prepareMthHashSet() { enterMethods(kMethods); }

void CMC_Runner::enterMethods(std::span<const MethodRow> rows) {
    for (const MethodRow& row : rows) {
        if (auto* earlier = static_cast<CInteger*>(valueNamed(methods_, row.name)))
            earlier->setValue(row.id);
        else
            methods_.put(new CStringHashCode(CXString(row.name)), new CInteger(row.id));
        rows_[static_cast<std::size_t>(row.id)] = &row;
    }
}

void CMC_Runner::toDebug(const CXString&, CXVector*) {}

CMC_Variable* CMC_Runner::getParameter(CXVector* params, int i) {
    auto* object = params ? static_cast<CMC_Object*>(params->at(i)) : nullptr;
    CMC_Variable* value = object ? object->asVariable() : nullptr;
    if (value && value->isComputed()) value = value->current();
    return value ? value : emptyValue();
}

CMC_Bool* CMC_Runner::getParameterBool(CXVector* params, int i) { return converted<CMC_Bool>(getParameter(params, i)); }
CMC_Double* CMC_Runner::getParameterDouble(CXVector* params, int i) {
    return converted<CMC_Double>(getParameter(params, i));
}
CMC_Integer* CMC_Runner::getParameterInteger(CXVector* params, int i) {
    return converted<CMC_Integer>(getParameter(params, i));
}
CMC_String* CMC_Runner::getParameterString(CXVector* params, int i) {
    return converted<CMC_String>(getParameter(params, i));
}

CMC_Variable* CMC_Runner::run(int id, CMC_Object* object, CMC_Scene* scene, CXVector* params) {
    const MethodRow* row = methodOf(id);
    return row && object ? row->does.handler({*this, object, scene, params}) : nullptr;
}

CMC_Variable* CMC_Runner::run(CXString name, CMC_Object* object, CMC_Scene* scene, CXVector* params) {
    return run(resolveMethod(name), object, scene, params);
}

int CMC_Runner::resolveMethod(const CXString& name) {
    const auto* id = static_cast<const CInteger*>(valueNamed(methods_, name.view()));
    return id ? id->getValue() : -1;
}

CMC_Variable* toScript(int value) {
    CMC_Integer* result = CMC_VariableFactory::allocInteger();
    result->assign(value);
    return result;
}

CMC_Variable* toScript(bool value) {
    CMC_Bool* result = CMC_VariableFactory::allocBool();
    result->assign(value);
    return result;
}

CMC_Variable* toScript(double value) {
    CMC_Double* result = CMC_VariableFactory::allocDouble();
    result->assign(value);
    return result;
}

CMC_Variable* toScript(const CXString& value) {
    CMC_String* result = CMC_VariableFactory::allocString();
    result->assign(value);
    return result;
}
