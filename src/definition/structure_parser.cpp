// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "definition/structure_parser.h"

#include "definition/element.h"
#include "definition/elements_loader.h"
#include "frame/window.h"
#include "script/variable_factory.h"
#include "structure/application.h"
#include "structure/episode.h"
#include "structure/scene.h"

CMC_StructureParser::CMC_StructureParser(CWindow* window, CXString fileName) {
    CMC_VariableFactory::initialize();
    const std::unique_ptr<CMElements> elements(CMElementsLoader::load(window, fileName));
    if (!elements) return;
    const auto forEachOf = [&elements](const char* type, auto build) {
        for (CXObject* object : elements->elements())
            if (auto* element = static_cast<CMElement*>(object); element->getPropertyValue("TYPE") == type)
                build(element);
    };
    forEachOf("SCENE", [&](CMElement* e) { structures_.add(new CMC_Scene(window, nullptr, e, CMC_Scene::kType)); });
    forEachOf("EPISODE", [&](CMElement* e) { structures_.add(new CMC_Episode(window, this, e)); });
    forEachOf("APPLICATION", [&](CMElement* e) {
        application_ = new CMC_Application(window, this, e, window->getCommandLine());
        structures_.add(application_);
    });
    for (CXObject* object : structures_.elements()) {
        auto* scene = static_cast<CMC_Scene*>(object);
        if (scene->getParent() == nullptr && scene != application_) orphans_.emplace_back(scene);
    }
}

CMC_StructureParser::~CMC_StructureParser() {
    orphans_.clear();
    CMC_VariableFactory::done();
}

CMC_Object* CMC_StructureParser::get(const CXString& name) const {
    for (CXObject* object : structures_.elements())
        if (auto* structure = static_cast<CMC_Object*>(object); structure->getName() == name) return structure;
    return nullptr;
}
