// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/sequence_media.h"

#include "animation/animo.h"
#include "animation/animo_object.h"
#include "frame/resources_manager.h"
#include "frame/window.h"
#include "graphics/refresh_screen.h"
#include "sound/sound.h"
#include "sound/sound_object.h"
#include "structure/scene.h"

namespace {

constexpr int kPriority = 1000;

CMC_Object* objectNamed(CWindow* window, const CXString& name, int type) {
    const CMC_Scene* scene = window ? window->getCurrentScene() : nullptr;
    CMC_Object* object = scene ? scene->lookUp(name.view()) : nullptr;
    return object && object->getType() == type ? object : nullptr;
}

// Null, with nothing counted, also when the name stands for something else.
template <class T>
T* cached(CResourcesManager* cache, const CXString& name) {
    CFileResolver* found = cache->get(name);
    T* fitting = dynamic_cast<T*>(found);
    if (found && !fitting) cache->remove(found);
    return fitting;
}

}  // namespace

CMC_Animo* media::sceneAnimo(CWindow* window, const CXString& name) {
    auto* object = static_cast<CMC_Animo*>(objectNamed(window, name, CMC_Animo::kType));
    return object && object->getAnimo() ? object : nullptr;
}

CSound4* media::sceneSound(CWindow* window, const CXString& name) {
    auto* object = static_cast<CMC_Sound*>(objectNamed(window, name, CMC_Sound::kType));
    return object ? object->getSound() : nullptr;
}

CAnimo* media::cachedAnimo(CWindow* window, CResourcesManager* cache, const CXString& fileName, bool& isNew) {
    CAnimo* animation = cached<CAnimo>(cache, fileName);
    isNew = animation == nullptr;
    if (!isNew) return animation;
    animation = new CAnimo(window, fileName);
    animation->setFilename(fileName);  // also when the file can't be read: the cache goes by it
    cache->add(animation);
    return animation;
}

CSound4* media::cachedSound(CWindow* window, CResourcesManager* cache, const CXString& fullName) {
    if (CSound4* sound = cached<CSound4>(cache, fullName)) return sound;
    auto* sound = new CSound4(window, fullName, true, false);
    cache->add(sound);
    return sound;
}

void media::putOnScreen(CWindow* window, CAnimo* animation) {
    if (CRefreshScreen* screen = window ? window->GetRefreshScreenInterface() : nullptr)
        screen->put(animation, kPriority);
}
