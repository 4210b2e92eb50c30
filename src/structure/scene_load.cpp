// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// How a scene comes to life and goes.
#include <algorithm>

#include "definition/cnv_loader.h"
#include "definition/element.h"
#include "definition/elements_loader.h"
#include "frame/extension_module.h"
#include "frame/unit.h"
#include "frame/unit_container.h"
#include "frame/window.h"
#include "script/behaviour.h"
#include "script/lifetime.h"
#include "script/object_factory.h"
#include "script/rand.h"
#include "script/system.h"
#include "storage/folder.h"
#include "storage/path.h"
#include "structure/scene.h"

namespace {

constexpr int kPasses = 5;
constexpr int kPassWithConditions = 3;  // behind it, behaviours find the conditions that guard them

}  // namespace

std::unique_ptr<CMC_Object> CMC_Scene::resolve(CMElement* element) {
    const CXString type = element->getPropertyValue("TYPE");
    if (!type.IsString()) return nullptr;
    if (passOfKeyword(type.view())) return makeScriptObject(this, element);
    return std::unique_ptr<CMC_Object>(resolveEx(element));
}

CMElements* CMC_Scene::resolveObjects(CMElements* elements) {
    std::vector<CMElement*> left;
    for (CXObject* element : elements->elements())
        left.push_back(static_cast<CMElement*>(element));
    for (int pass = 1; pass <= kPasses; ++pass) {
        std::vector<CMElement*> kept;
        for (CMElement* element : left) {
            const CXString type = element->getPropertyValue("TYPE");
            const int own = passOfKeyword(type.view());
            const bool isForeign = own == 0 && type.IsString() && pass == kPasses;
            if (own != pass && !isForeign) {
                kept.push_back(element);
                continue;
            }
            std::unique_ptr<CMC_Object> object = resolve(element);
            if (object)
                addObject(object.release());
            else if (isForeign)
                kept.push_back(element);
        }
        left = std::move(kept);
        if (pass == kPassWithConditions)
            for (CXObject* object : table_->getAllValues()->elements())
                if (static_cast<CMC_Object*>(object)->getType() == CMC_Behaviour::kType)
                    static_cast<CMC_Behaviour*>(object)->resolveCondition();
    }
    auto* rest = new CMElements(false);
    for (CMElement* element : left)
        rest->add(element);
    return rest;
}

bool CMC_Scene::loadCnv() {
    table_ = std::make_unique<CHashtable>(10001, 1.0, true);
    objects_ = std::make_unique<CXVector>(1001, 0.75F);
    // What a binary scene holds stands in its .bin file, which nothing writes yet.
    if (binary_) return true;
    const CXString name = getName() + ".cnv";
    if (!CPath::FileExists(window_, name)) return true;
    const std::unique_ptr<CMElements> elements(CMElementsLoader::load(window_, name));
    if (!elements) return true;
    CMElements* left = elements.get();
    if (unit_) left = unit_->resolveObjects(this, left);
    const std::unique_ptr<CMElements> rest(resolveObjects(left));
    initializeBehaviours(this, elements->get(getName()));
    return true;
}

void CMC_Scene::loadOwnObjects() {
    window_->ChDir(window_->getCDPath() + CFolder::DATA_FOLDER);
    window_->ChDir(path_);
    loadCnv();
}

// Each level stands in the table once, behind what was there before.
void CMC_Scene::addLevel(CMC_Scene* level) {
    if (level == nullptr) return;
    removeObject(level);
    addObject(level);
}

bool CMC_Scene::initialize(CMC_Scene* previous) {
    window_->BeginWaitCursor();
    CUnitContainer6* units = window_->GetUnitContainer();
    CUnit6* unit = units ? units->find(getName()) : nullptr;
    if (unit == nullptr && units) unit = units->find("Default");
    window_->ChDir(window_->getCDPath());
    if (dlls_.IsString()) resolveDLLs(dlls_);
    window_->ChDir(CFolder::DATA_FOLDER);
    window_->ChDir(path_);
    if (unit) {
        unit_ = unit;
        units->setCurrentUnit(unit);
        savedUnitName_ = unit->getUnitName();
        unit->setUnitName(getName());
        loadCnv();
        if (background_.IsString()) unit->setBackgroundFileName(background_);

        auto* random = new CMC_Object("RANDOM", kRandomType);
        addObject(random);
        addObject(new CMC_System);
        addObject(new CMC_CNVLoader(window_, this));
        addLevel(this);
        addLevel(parent_);
        CMC_Scene* grandparent = parent_ ? parent_->getParent() : nullptr;
        addLevel(grandparent);

        unit->initialize(nullptr, this, nullptr);
        if (parent_) parent_->setScene(this);
        if (grandparent) grandparent->setScene(this);
        onInit();

        const ScriptScope scope;
        CMC_Object* start = getObject("__INIT__");
        if (start && start->getType() == CMC_Behaviour::kType)
            static_cast<CMC_Behaviour*>(start)->run(this, nullptr, true);
        // Once with all objects, and once more when everything stands.
        if (getBehaviour("ONINIT")) onSignal("ONINIT");
        startMusic_ = previous == nullptr || !(previous->getMusicFilename() == getMusicFilename());
    }
    window_->EndActiveCursor();
    return true;
}

void CMC_Scene::onInit() {
    if (!table_ || table_->getCount() == 0) return;
    const ScriptScope scope;
    std::vector<Ref<CMC_Object>> objects;
    for (CXObject* object : objects_->elements())
        objects.emplace_back(static_cast<CMC_Object*>(object));
    for (const Ref<CMC_Object>& object : objects)
        if (object) object->init();
}

void CMC_Scene::unload(CMC_Scene* next) {
    if (table_) unloadObjects();
    flushBehList();
    doneDLLs();
    if (unit_) {
        unit_->done(nullptr, this, next ? next->getUnit() : nullptr);
        unit_->setUnitName(savedUnitName_);
    }
    if (next == nullptr || !(next->getMusicFilename() == getMusicFilename())) stopMusic();
    unit_ = nullptr;
}

void CMC_Scene::unloadObjects() {
    // The scene's own signals are over before its objects go.
    flushBehList();
    const ScriptScope scope;
    removeObject(this);
    if (parent_) {
        removeObject(parent_);
        if (parent_->getParent()) removeObject(parent_->getParent());
    }
    // In order of entry, but blocks behind all others: a block that has ended has no statements left, and the handlers
    // of ONDONE are blocks.
    std::vector<Ref<CMC_Object>> values;
    for (CXObject* object : table_->getAllValues()->elements())
        values.emplace_back(static_cast<CMC_Object*>(object));
    std::stable_partition(values.begin(), values.end(),
                          [](const Ref<CMC_Object>& value) { return value->getType() != CMC_Behaviour::kType; });
    for (const Ref<CMC_Object>& value : values)
        if (value) value->done(true);
    // What ONDONE handlers make meanwhile goes, too.
    std::vector<std::unique_ptr<CMC_Object>> dying;
    while (objects_ && !objects_->isEmpty()) {
        auto* object = static_cast<CMC_Object*>(objects_->at(objects_->size() - 1));
        objects_->removeAt(objects_->size() - 1);
        object->retire();
        const bool isHeld = object->getType() == CMC_Behaviour::kType && static_cast<CMC_Behaviour*>(object)->isHeld();
        if (!isHeld) dying.emplace_back(object);
    }
    table_.reset();
    objects_.reset();
    for (auto& object : dying)
        destroyLate(std::move(object));
}
