// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/object.h"

#include <algorithm>
#include <string>

#include "definition/element.h"
#include "platform/platform.h"
#include "script/behaviour.h"
#include "script/lifetime.h"
#include "script/object_factory.h"
#include "script/variable.h"
#include "script/variable_factory.h"
#include "storage/archive.h"
#include "structure/scene.h"

namespace {

constexpr int kMostClones = 10000;  // at once; a wrong number must not eat the machine

}  // namespace

CMC_Handler::CMC_Handler(CMC_Behaviour* behaviour, std::unique_ptr<CodeParams> params)
    : behaviour_(behaviour), name_(behaviour->getName()), params_(std::move(params)) {}

CMC_Handler::CMC_Handler(CXString name, std::unique_ptr<CodeParams> params)
    : name_(std::move(name)), params_(std::move(params)) {}

CMC_Handler::~CMC_Handler() = default;

CMC_Behaviour* CMC_Handler::getBehaviour() const { return static_cast<CMC_Behaviour*>(behaviour_.get()); }

void CMC_Handler::rebind(CMC_Behaviour* behaviour) { behaviour_ = behaviour; }

std::unique_ptr<CMC_Handler> CMC_Handler::copy() const {
    auto params = params_ ? std::make_unique<CodeParams>(*params_) : nullptr;
    auto handler = std::make_unique<CMC_Handler>(name_, std::move(params));
    handler->behaviour_ = behaviour_;
    return handler;
}

CMC_Object::CMC_Object(CXString name, int type) : name_(std::move(name)), type_(type) {}

CMC_Object::CMC_Object(CMC_Scene* scene, CMElement* element, int type)
    : name_(element ? element->getName() : CXString()), type_(type), scene_(scene) {}

CMC_Object::~CMC_Object() {
    // No ONDONE from here: what it runs could reach a half-destroyed object. Who takes an object out of a scene
    // retires it first.
    if (refSlot_) RefRegistry::release(refSlot_);
    if (!handlers_) return;
    for (CXObject* handler : handlers_->getAllValues()->elements())
        delete handler;
}

void CMC_Object::init() {
    if (isSignalUsed(kOnInit)) onSignal("ONINIT");
}

bool CMC_Object::done(bool) {
    fireDone();
    return true;
}

void CMC_Object::fireDone() {
    if (isDone_) return;
    isDone_ = true;
    if (isSignalUsed(kOnDone)) onSignal("ONDONE");
}

void CMC_Object::retire() {
    if (isRetired_) return;
    isRetired_ = true;
    fireDone();
    if (refSlot_ == 0) return;
    RefRegistry::release(refSlot_);
    refSlot_ = 0;
}

int CMC_Object::getCloneIdx() const {
    const int at = name_.FindLast('_');
    if (at <= 0 || at == name_.GetLength() - 1) return 0;
    return CXString::toNumber(name_.Right(at + 1));
}

CXString CMC_Object::getCloneName() {
    ++clonesNo_;
    return name_ + "_" + CXString::toString(clonesNo_);
}

void CMC_Object::clone(CMC_Object* target) {
    target->isClone_ = true;
    target->scene_ = scene_;
    target->name_ = getCloneName();
    target->signalUsed_ = signalUsed_;
    if (handlers_) {
        const std::unique_ptr<CXVector> keys(handlers_->getKeys());
        for (CXObject* object : keys ? keys->elements() : std::span<CXObject* const>()) {
            auto* key = static_cast<CStringHashCode*>(object);
            if (key->view() == "ONINIT") continue;
            auto* handler = static_cast<CMC_Handler*>(handlers_->get(key));
            if (!target->handlers_) target->handlers_ = std::make_unique<CHashtable>(101, 0.75, true);
            target->handlers_->put(key->clone(), handler->copy().release());
        }
    }
    if (scene_)
        scene_->addObject(target);
    else
        delete target;
}

void CMC_Object::clone(int n) {
    if (n > kMostClones) {
        n = kMostClones;
        platform::current().shell.debugOutput("script: too many clones asked for of " + std::string(name_.view()));
    }
    for (int i = 0; i < n && ScriptBudget::spend(); ++i) {
        auto* copy = static_cast<CMC_Object*>(clone());
        if (copy == nullptr) return;
        clone(copy);
    }
}

int CMC_Object::getBehaviourIndex(const CXString& key) const {
    const auto list = getBehavioursList();
    for (std::size_t i = 0; i < list.size(); ++i)
        if (key.view().starts_with(list[i])) return static_cast<int>(i);
    return -1;
}

int CMC_Object::getSignalIndex(const CXString& key) const {
    const auto list = getBehavioursList();
    const auto at = std::ranges::find(list, key.view().substr(0, key.view().find('^')));
    return at == list.end() ? -1 : static_cast<int>(at - list.begin());
}

void CMC_Object::initializeBehaviours(CMC_Scene* scene, CMElement* element) {
    signalUsed_ = 0;
    const auto list = getBehavioursList();
    if (element == nullptr) {
        const std::unique_ptr<CXVector> keys(handlers_ ? handlers_->getKeys() : nullptr);
        for (CXObject* object : keys ? keys->elements() : std::span<CXObject* const>()) {
            auto* key = static_cast<CStringHashCode*>(object);
            auto* handler = static_cast<CMC_Handler*>(handlers_->get(key));
            const int index = getBehaviourIndex(key->getString());
            CMC_Object* found = scene ? scene->getObject(handler->getBehaviourName().c_str()) : nullptr;
            if (index < 0 || found == nullptr || found->getType() != CMC_Behaviour::kType) continue;
            handler->rebind(static_cast<CMC_Behaviour*>(found));
            signalUsed_ |= 1U << index;
        }
        return;
    }
    for (CXObject* object : element->getProperties()->elements()) {
        auto* property = static_cast<CMProperty*>(object);
        const CXString& key = property->getName();
        for (std::size_t i = 0; i < list.size(); ++i) {
            if (!key.view().starts_with(list[i])) continue;
            CXString value = property->getValue();
            value.AllTrim(' ');
            if (!value.IsString()) continue;
            CMC_Behaviour* behaviour = nullptr;
            std::unique_ptr<CodeParams> params;
            if (value.GetAt(0) == '{') {
                auto made = std::make_unique<CMC_Behaviour>(scene, value, "beh_" + name_ + "_" + key);
                made->init();
                behaviour = made.get();
                scene->addObject(made.release());
            } else {
                if (const int open = value.Find('('); open >= 0) {
                    int close = value.Find(')', open);
                    if (close < 0) close = value.GetLength();
                    CXString inner = value.Mid(open + 1, close);
                    inner.AllTrim(' ');
                    value.left(open);
                    value.AllTrim(' ');
                    params = std::make_unique<CodeParams>();
                    CXArray* pieces = inner.toVector();
                    for (int p = 0; p < pieces->size(); ++p)
                        params->push_back(*pieces->stringAt(p));
                    deleteStrings(pieces);
                }
                CMC_Object* found = scene->getObject(value.c_str());
                if (found && found->getType() == CMC_Behaviour::kType) behaviour = static_cast<CMC_Behaviour*>(found);
            }
            if (behaviour == nullptr) continue;
            addBehaviour(key, behaviour, std::move(params));
            signalUsed_ |= 1U << i;
        }
    }
}

void CMC_Object::addBehaviour(const CXString& key, CMC_Behaviour* behaviour, std::unique_ptr<CodeParams> params) {
    if (behaviour == nullptr || !verifyBehaviour(key)) return;
    if (!handlers_) handlers_ = std::make_unique<CHashtable>(101, 0.75, true);
    removeBehaviour(key);
    if (const int index = getSignalIndex(key); index >= 0) signalUsed_ |= 1U << index;
    handlers_->put(new CStringHashCode(key), new CMC_Handler(behaviour, std::move(params)));
}

void CMC_Object::removeBehaviour(const CXString& key) {
    CMC_Handler* handler = getBehaviour(key);
    if (handler == nullptr) return;
    handlers_->remove(handler);
    delete handler;
}

CMC_Handler* CMC_Object::getBehaviour(const CXString& key) const {
    if (!handlers_) return nullptr;
    static CStringHashCode lookup("temp");
    lookup.set(key.view());
    return static_cast<CMC_Handler*>(handlers_->get(&lookup));
}

bool CMC_Object::onSignal(CXString key) {
    const CMC_Handler* handler = getBehaviour(key);
    if (handler == nullptr) return false;
    if (handler->getParams() == nullptr) {
        if (CMC_Behaviour* behaviour = handler->getBehaviour()) {
            const ScriptScope scope;
            behaviour->run(this, nullptr, true);
        }
        return true;
    }
    // The handler may be replaced by the code that it runs.
    const CodeParams params = *handler->getParams();
    return onSignal(key, &params);
}

bool CMC_Object::onSignal(CXString key, const CodeParams* params) {
    const CMC_Handler* handler = getBehaviour(key);
    if (handler == nullptr) return false;
    const ScriptScope scope;
    if (CMC_Behaviour* behaviour = handler->getBehaviour()) behaviour->run(this, params, true);
    return true;
}

bool CMC_Object::fire(int index, const CXString& qualifier) {
    if (!isSignalUsed(index)) return false;
    const ScriptScope scope;
    const CXString name(getBehavioursList()[static_cast<std::size_t>(index)]);
    return onSignal(name + "^" + qualifier) || onSignal(name);
}

void CMC_Object::flushBehList() {
    signalUsed_ = 0;
    if (!handlers_) return;
    const auto values = handlers_->getAllValues()->elements();
    for (CXObject* object : std::vector<CXObject*>(values.begin(), values.end())) {
        if (static_cast<CMC_Handler*>(object)->getBehaviour()) continue;
        handlers_->remove(object);
        delete object;
    }
}

void CMC_Object::serialize(CXArchive* archive) {
    if (archive->isStoring()) {
        *archive << name_ << (handlers_ ? handlers_->getCount() : 0);
        const std::unique_ptr<CXVector> keys(handlers_ ? handlers_->getKeys() : nullptr);
        for (CXObject* object : keys ? keys->elements() : std::span<CXObject* const>()) {
            auto* key = static_cast<CStringHashCode*>(object);
            auto* handler = static_cast<CMC_Handler*>(handlers_->get(key));
            const CodeParams* params = handler->getParams();
            *archive << key->getString() << handler->getBehaviourName()
                     << (params ? static_cast<int>(params->size()) : 0);
            if (params)
                for (const CXString& text : *params)
                    *archive << text;
        }
        return;
    }
    int count = 0;
    *archive >> name_ >> count;
    for (int i = 0; i < count && archive->ok(); ++i) {
        CXString key, name;
        int paramCount = 0;
        *archive >> key >> name >> paramCount;
        std::unique_ptr<CodeParams> params;
        for (int p = 0; p < paramCount && archive->ok(); ++p) {
            if (!params) params = std::make_unique<CodeParams>();
            CXString text;
            *archive >> text;
            params->push_back(text);
        }
        if (!archive->ok()) return;
        if (!handlers_) handlers_ = std::make_unique<CHashtable>(101, 0.75, true);
        removeBehaviour(key);
        handlers_->put(new CStringHashCode(key), new CMC_Handler(name, std::move(params)));
    }
}

CXString CMC_Object::typeToString(int type) { return CXString(scriptTypeText(type)); }

void CMC_Object::flush(CMC_Variable* value, bool) {
    if (value) CMC_VariableFactory::free(value);
}

void CMC_Object::release(CMC_Variable* value) {
    if (value == nullptr) return;
    if (value->isPooled())
        CMC_VariableFactory::free(value);
    else if (value->isClone() && value->getScene() == nullptr)
        delete value;
}
