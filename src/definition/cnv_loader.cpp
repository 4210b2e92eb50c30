// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "definition/cnv_loader.h"

#include <memory>

#include "definition/element.h"
#include "definition/elements_loader.h"
#include "script/group.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "structure/scene.h"

namespace {

constexpr MethodRow kMethods[] = {
    {1, "LOAD",    bind<&CMC_CNVLoader::load>   },
    {2, "RELEASE", bind<&CMC_CNVLoader::release>},
};
static_assert(isMethodTable(kMethods));

void removeAndEnd(CMC_Scene* scene, CMC_Object* object) {
    if (object == nullptr || object->isRetired() || !scene->removeObject(object)) return;
    object->done(false);
    CMC_Scene::discard(object);
}

}  // namespace

CMC_CNVLoader::CMC_CNVLoader(CWindow* window, CMC_Scene* scene) : CMC_Object("CNVLOADER", kType), window_(window) {
    setScene(scene);
}

void CMC_CNVLoader::load(CXString fileName) {
    CMC_Scene* scene = getScene();
    const std::unique_ptr<CMElements> elements(CMElementsLoader::load(window_, fileName));
    if (!elements || elements->isEmpty() || scene->lookUp(fileName.view())) return;
    const ScriptScope scope;
    auto group = std::make_unique<CMC_Groupped>(fileName, scene);
    for (CXObject* element : elements->elements()) {
        std::unique_ptr<CMC_Object> object = scene->resolve(static_cast<CMElement*>(element));
        if (!object) continue;
        // It is initialised before it is known by name.
        object->setScene(scene);
        object->init();
        group->add(object.get());
        scene->addObject(object.release());
    }
    scene->addObject(group.release());
}

void CMC_CNVLoader::release(CXString fileName) {
    CMC_Scene* scene = getScene();
    CMC_Object* found = scene->lookUp(fileName.view());
    if (found == nullptr || found->getType() != CMC_Groupped::kType) return;
    const ScriptScope scope;
    for (const Ref<CMC_Object>& member : static_cast<CMC_Groupped*>(found)->getList()) {
        for (int i = 1; member && i <= member->getClonesNo(); ++i) {
            const CXString clone = member->getName() + "_" + CXString::toString(i);
            removeAndEnd(scene, scene->lookUp(clone.view()));
        }
        removeAndEnd(scene, member.get());
    }
    CMC_Scene::discard(found);
}

void CMC_CNVLoader_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
