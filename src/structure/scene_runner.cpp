// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "structure/scene_runner.h"

#include <memory>

#include "animation/animation_manager.h"
#include "frame/timer.h"
#include "frame/window.h"
#include "input/hot_spot.h"
#include "script/array.h"
#include "script/behaviour.h"
#include "script/behaviour_runner.h"
#include "script/code_line.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "sound/script_level.h"
#include "sound/sound_manager.h"
#include "structure/scene.h"

namespace {

CMC_Scene* scene(const MethodCall& c) { return static_cast<CMC_Scene*>(c.object); }
CMC_Object* named(const MethodCall& c, int i) { return c.scene ? c.scene->lookUp(c.text(i).view()) : nullptr; }

CMC_Variable* run(const MethodCall& c) {
    return runNamed(c, [](const CXString& method, const char* word) { return method == word; });
}

// The clones of an object, by the numbers in their names.
template <class Action>
void forClones(const CMC_Object* object, int from, int to, Action action) {
    const CXString name = object->getName() + "_";
    for (std::int64_t i = from; i <= to && ScriptBudget::spend(); ++i)
        action(name + CXString::toString(static_cast<int>(i)));
}

CMC_Variable* runClones(const MethodCall& c) {
    CMC_Object* object = named(c, 0);
    if (object == nullptr) return nullptr;
    const int from = c.integer(1) > 0 ? c.integer(1) : 1;
    const int to = c.integer(2) > 0 ? c.integer(2) : object->getClonesNo();
    const CXString code = c.text(3);
    std::unique_ptr<CMC_Behaviour> made;
    CMC_Object* found = c.scene->lookUp(code.view());
    if (found == nullptr) {
        made = std::make_unique<CMC_Behaviour>(c.scene, code, "temp");
        made->init();
        found = made.get();
    }
    if (found->getType() != CMC_Behaviour::kType) return nullptr;
    const ScriptScope scope;
    const Ref<CMC_Behaviour> block(static_cast<CMC_Behaviour*>(found));
    CodeParams params = getParams(c.runner, c.scene, c.params, 4);
    params.emplace(params.begin());
    forClones(object, from, to, [&](const CXString& clone) {
        params.front() = clone;
        if (block) block->run(nullptr, &params, false);
    });
    return nullptr;
}

CMC_Variable* remove(const MethodCall& c) {
    CMC_Scene::discard(named(c, 0));
    return nullptr;
}

CMC_Variable* removeClones(const MethodCall& c) {
    CMC_Object* object = named(c, 0);
    if (object == nullptr) return nullptr;
    const int from = c.integer(1) == -1 ? 1 : c.integer(1);
    const int to = c.integer(2) == -1 ? object->getClonesNo() : c.integer(2);
    const ScriptScope scope;
    forClones(object, from, to, [&c](const CXString& clone) { CMC_Scene::discard(c.scene->lookUp(clone.view())); });
    return nullptr;
}

CMC_Variable* createObject(const MethodCall& c) {
    scene(c)->createObject(c.text(0), c.text(1));
    return nullptr;
}

CMC_Variable* getPlayingSeq(const MethodCall& c) {
    CMC_Object* array = scene(c)->getObject(c.text(0).c_str());
    if (array && array->getType() == CMC_Array::kType) scene(c)->getPlayingSeq(static_cast<CMC_Array*>(array));
    return nullptr;
}

CMC_Variable* setMusicVolume(const MethodCall& c) {
    scene(c)->getWindow()->setMusicVolume(volumeLevel(c.integer(0)));
    return nullptr;
}

// Not the inverse of setting: stored applications count on the formula being applied again.
CMC_Variable* getMusicVolume(const MethodCall& c) {
    return toScript(volumeLevel(scene(c)->getWindow()->getMusicVolume()));
}

CMC_Variable* setMusicPan(const MethodCall& c) {
    scene(c)->getWindow()->setMusicPan(panLevel(c.integer(0)));
    return nullptr;
}

CMC_Variable* setMusicFreq(const MethodCall& c) {
    scene(c)->getWindow()->setMusicFreq(c.integer(0));
    return nullptr;
}

CMC_Variable* pause(const MethodCall& c) {
    scene(c)->getWindow()->getAnimationManagerInterface()->pause();
    CSoundManager::pause();
    CWindow::pause();
    CXTimer::enable(c.count() > 0 && c.truth(0));
    return nullptr;
}

CMC_Variable* resume(const MethodCall& c) {
    scene(c)->getWindow()->getAnimationManagerInterface()->resume();
    CSoundManager::resume();
    CWindow::resume();
    CXTimer::enable(c.count() == 0 || c.truth(0));
    return nullptr;
}

CMC_Variable* setMinPriority(const MethodCall& c) { return CHotSpot::setMinPriority(c.integer(0)), nullptr; }
CMC_Variable* setMaxPriority(const MethodCall& c) { return CHotSpot::setMaxPriority(c.integer(0)), nullptr; }

// Minutes and seconds, two digits each.
CMC_Variable* toTime(const MethodCall& c) {
    const int value = c.integer(0);
    const auto digits = [](int v) { return CXString::toString(v / 10) + CXString::toString(v % 10); };
    return toScript(digits(value / 60) + digits(value % 60));
}

constexpr MethodRow kMethods[] = {
    {1,  "STARTMUSIC",       bind<&CMC_Scene::startMusic>    },
    {2,  "STOPMUSIC",        bind<&CMC_Scene::stopMusic>     },
    {3,  "GETDRAGGEDNAME",   bind<&CMC_Scene::getDraggedName>},
    {4,  "GETPLAYINGSEQ",    {getPlayingSeq, "s"}            },
    {5,  "RUN",              {run, "ss*"}                    },
    {6,  "RUNCLONES",        {runClones, "siis*"}            },
    {7,  "CREATEOBJECT",     {createObject, "ss"}            },
    {8,  "REMOVE",           {remove, "s"}                   },
    {9,  "REMOVECLONES",     {removeClones, "sii"}           },
    {16, "SETMUSICVOLUME",   {setMusicVolume, "i"}           },
    {17, "GETMUSICVOLUME",   {getMusicVolume, ""}            },
    {18, "SETMUSICPAN",      {setMusicPan, "i"}              },
    {19, "SETMUSICFREQ",     {setMusicFreq, "i"}             },
    {20, "PAUSE",            {pause, "b"}                    },
    {21, "RESUME",           {resume, "b"}                   },
    {22, "SETMINHSPRIORITY", {setMinPriority, "i"}           },
    {23, "SETMAXHSPRIORITY", {setMaxPriority, "i"}           },
    {24, "GETELEMENTSNO",    bind<&CMC_Scene::getElementsNo> },
    {25, "TOTIME",           {toTime, "i"}                   },
};
static_assert(isMethodTable(kMethods));

}  // namespace

CMC_Variable* runNamed(const MethodCall& c, bool (*isWord)(const CXString& method, const char* word)) {
    CMC_Object* object = named(c, 0);
    CMC_Runner* runner = object ? runnerOf(object) : nullptr;
    if (runner == nullptr) return nullptr;
    const CXString method = c.text(1);
    if (object->getType() == CMC_Behaviour::kType && (isWord(method, "RUN") || isWord(method, "RUNC"))) {
        const CodeParams params = getParams(c.runner, c.scene, c.params, 2);
        static_cast<CMC_Behaviour*>(object)->run(nullptr, &params, isWord(method, "RUNC"));
        return nullptr;
    }
    CXVector values;
    for (int i = 2; i < c.count(); ++i)
        values.add(c.params->at(i));
    return runner->run(method, object, c.scene, &values);
}

void CMC_Scene_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
