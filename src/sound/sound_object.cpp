// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/sound_object.h"

#include <array>
#include <utility>

#include "frame/resources_manager.h"
#include "frame/window.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "sound/script_level.h"
#include "sound/sound.h"
#include "structure/scene.h"

namespace {

constexpr std::array<std::string_view, 5> kSignals = {"ONINIT", "ONDONE", "ONSIGNAL", "ONSTARTED", "ONFINISHED"};
enum Signal { kOnStarted = 3, kOnFinished };

CMC_Variable* stop(const MethodCall& call) {
    if (CSound4* sound = static_cast<CMC_Sound*>(call.object)->getSound())
        sound->stop(call.count() == 0 || call.truth(0));
    return nullptr;
}

constexpr MethodRow kMethods[] = {
    {1,  "PLAY",      bind<&CMC_Sound::play>        },
    {2,  "STOP",      {stop, "b"}                   },
    {3,  "PAUSE",     bind<&CMC_Sound::pause>       },
    {4,  "RESUME",    bind<&CMC_Sound::resume>      },
    {7,  "LOAD",      bind<&CMC_Sound::load>        },
    {8,  "SETVOLUME", bind<&CMC_Sound::setVolume>   },
    {9,  "SETPAN",    bind<&CMC_Sound::setPan>      },
    {10, "SETFREQ",   bind<&CMC_Sound::setFrequency>},
    {11, "ISPLAYING", bind<&CMC_Sound::isPlaying>   },
};
static_assert(isMethodTable(kMethods));

}  // namespace

// ORDER: as they are stored.
const PropertyRow<CMC_Sound::Properties> CMC_Sound::kProperties[] = {
    {"FILENAME",         &Properties::fileName,         1},
    {"PRELOAD",          &Properties::preload,          2},
    {"FLUSHAFTERPLAYED", &Properties::flushAfterPlayed, 3},
};

CMC_Sound::CMC_Sound(CMC_Scene* scene) : CMC_Object("temp", kType) { setScene(scene); }

CMC_Sound::CMC_Sound(CMC_Scene* scene, CMElement* element) : CMC_Object(scene, element, kType) {
    readProperties<Properties>(element, kProperties, properties_);
    initSound(properties_.fileName);
    initializeBehaviours(scene, element);
}

CMC_Sound::~CMC_Sound() { letGo(); }

void CMC_Sound::initSound(const CXString& name) {
    CWindow* window = getScene()->getWindow();
    const CXString fullName = window->GetSoundFXFullPath(name);
    CResourcesManager* cache = getScene()->getResources();
    if (CFileResolver* cached = cache ? cache->get(fullName) : nullptr) {
        sound_ = dynamic_cast<CSound4*>(cached);
        if (sound_ == nullptr) cache->remove(cached);  // the name stands for something else
    }
    if (sound_ == nullptr) {
        own_ = std::make_unique<CSound4>(window, fullName, properties_.preload, properties_.flushAfterPlayed);
        sound_ = own_.get();
        if (cache) cache->add(own_.release());
    }
    sound_->addNotifier(this);
}

bool CMC_Sound::done(bool keep) {
    const bool result = CMC_Object::done(keep);
    letGo();
    return result;
}

void CMC_Sound::retire() {
    CMC_Object::retire();
    letGo();
}

void CMC_Sound::letGo() {
    CSound4* sound = std::exchange(sound_, nullptr);
    if (sound == nullptr) return;
    sound->removeNotifier(this);
    if (own_) {
        own_.reset();
    } else if (CResourcesManager* cache = getScene()->getResources()) {
        cache->remove(sound);
    }
}

std::span<const std::string_view> CMC_Sound::getBehavioursList() const { return kSignals; }

void CMC_Sound::serialize(CXArchive* archive) {
    CMC_Object::serialize(archive);
    serializeRecord<Properties>(archive, kProperties, properties_);
    if (!archive->isStoring()) initSound(properties_.fileName);
}

bool CMC_Sound::onPlayableStarted(CPlayable*) {
    if (isSignalUsed(kOnStarted)) onSignal("ONSTARTED");
    return false;
}

bool CMC_Sound::onPlayableFinished(CPlayable*) {
    if (isSignalUsed(kOnFinished)) onSignal("ONFINISHED");
    return false;
}

void CMC_Sound::play() {
    const ScriptScope scope;
    if (sound_) sound_->play();
}

void CMC_Sound::pause() {
    if (sound_) sound_->pause();
}

void CMC_Sound::resume() {
    const ScriptScope scope;
    if (sound_) sound_->resume();
}

void CMC_Sound::load(const CXString& name) {
    if (sound_) sound_->Load(name);
}

void CMC_Sound::setVolume(int volume) {
    if (sound_) sound_->setVolume(volumeLevel(volume));
}

void CMC_Sound::setPan(int pan) {
    if (sound_) sound_->setPanning(panLevel(pan));
}

void CMC_Sound::setFrequency(int frequency) {
    if (sound_) sound_->setFrequency(frequency);
}

bool CMC_Sound::isPlaying() const { return sound_ && sound_->isPlaying(); }

void CMC_Sound_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
