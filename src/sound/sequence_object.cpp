// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/sequence_object.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "frame/window.h"
#include "script/array.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "sound/script_level.h"
#include "sound/sequence_file.h"
#include "structure/scene.h"

namespace {

constexpr std::array<std::string_view, 5> kSignals = {"ONINIT", "ONDONE", "ONSIGNAL", "ONSTARTED", "ONFINISHED"};
enum Signal { kOnStarted = 3, kOnFinished };

CMC_Sequence& sequence(const MethodCall& call) { return *static_cast<CMC_Sequence*>(call.object); }

CMC_Variable* play(const MethodCall& call) {
    const CXString event = call.text(0);
    if (call.count() > 1) {
        sequence(call).play(event, call.text(1));
    } else {
        sequence(call).play(event);
    }
    return nullptr;
}

CMC_Variable* stop(const MethodCall& call) {
    sequence(call).stop(call.count() == 0 || call.truth(0));
    return nullptr;
}

constexpr MethodRow kMethods[] = {
    {1,  "PLAY",         {play, "ss"}                       },
    {2,  "STOP",         {stop, "b"}                        },
    {3,  "PAUSE",        bind<&CMC_Sequence::pause>         },
    {4,  "RESUME",       bind<&CMC_Sequence::resume>        },
    {5,  "SHOW",         bind<&CMC_Sequence::show>          },
    {6,  "HIDE",         bind<&CMC_Sequence::hide>          },
    {7,  "ISPLAYING",    bind<&CMC_Sequence::isPlaying>     },
    {8,  "SETVOLUME",    bind<&CMC_Sequence::setVolume>     },
    {9,  "SETPAN",       bind<&CMC_Sequence::setPan>        },
    {10, "SETFREQ",      bind<&CMC_Sequence::setFrequency>  },
    {11, "GETEVENTNAME", bind<&CMC_Sequence::getEventName>  },
    {12, "GETPLAYING",   bind<&CMC_Sequence::getPlayingName>},
};
static_assert(isMethodTable(kMethods));

CXString qualified(const char* signal, const CPlayable& playable) {
    CXString name = playable.getName();
    return CXString(signal) + "^" + name.Upper();
}

}  // namespace

const PropertyRow<CMC_Sequence::Properties> CMC_Sequence::kProperties[] = {
    {"FILENAME", &Properties::fileName, 1},
};

CMC_Sequence::CMC_Sequence(CMC_Scene* scene) : CMC_Object("temp", kType) { setScene(scene); }

CMC_Sequence::CMC_Sequence(CMC_Scene* scene, CMElement* element) : CMC_Object(scene, element, kType) {
    readProperties<Properties>(element, kProperties, properties_);
    initializeBehaviours(scene, element);
}

CMC_Sequence::~CMC_Sequence() { letGo(); }

CPlayable* CMC_Sequence::getSequence() {
    if (isRetired()) return nullptr;
    CPlayable* root = tree_ ? tree_->getRoot() : nullptr;
    if (root || !properties_.fileName.IsString()) return root;
    letGo();
    CMC_Scene* scene = getScene();
    tree_ = CMultimediaSequenceCreator::load(scene->getWindow(), properties_.fileName, scene->getResources(), this);
    return tree_ ? tree_->getRoot() : nullptr;
}

void CMC_Sequence::init() {
    getSequence();
    CMC_Object::init();
}

void CMC_Sequence::retire() {
    CMC_Object::retire();
    letGo();
}

void CMC_Sequence::letGo() {
    std::unique_ptr<SequenceTree> tree = std::move(tree_);
    if (!tree) return;
    tree->leave();
    destroyLate(std::move(tree));
}

std::span<const std::string_view> CMC_Sequence::getBehavioursList() const { return kSignals; }

void CMC_Sequence::serialize(CXArchive* archive) {
    CMC_Object::serialize(archive);
    serializeRecord<Properties>(archive, kProperties, properties_);
}

bool CMC_Sequence::onPlayableStarted(CPlayable* playable) {
    if (!isRetired() && isSignalUsed(kOnStarted))
        onSignal(playable->isParent() ? CXString("ONSTARTED") : qualified("ONSTARTED", *playable));
    return false;
}

bool CMC_Sequence::onPlayableFinished(CPlayable* playable) {
    if (!isRetired() && isSignalUsed(kOnFinished))
        onSignal(tree_ && playable == tree_->getRoot() ? CXString("ONFINISHED") : qualified("ONFINISHED", *playable));
    return false;
}

void CMC_Sequence::play(const CXString& event) {
    const ScriptScope scope;
    if (CPlayable* root = getSequence()) root->play(event);
}

void CMC_Sequence::play(const CXString& event, const CXString& value) {
    CPlayable* root = getSequence();
    if (!root) return;
    CMC_Object* object = getScene()->lookUp(value.view());
    const bool isArray = object && object->getType() == CMC_Array::kType;
    root->setParameter(event, isArray ? fillIn(root->getParameter(event), object) : value);
    play(event);
}

CXString CMC_Sequence::fillIn(CXString pattern, CMC_Object* array) const {
    auto* values = static_cast<CMC_Array*>(array);
    std::string filled(pattern.view());
    const int count = std::min(values->getSize(), pattern.GetLength());
    for (int i = 0; i < count; ++i) {
        char& place = filled[static_cast<std::size_t>(i)];
        if (place == 'x' || place == 'X') place = CMultimediaSequenceCreator::getParameter(values->get(i)->asInteger());
    }
    return CXString(std::string_view(filled));
}

void CMC_Sequence::stop(bool tell) {
    const ScriptScope scope;
    CPlayable* root = getSequence();
    if (root && root->isPlaying()) root->stop(tell);
}

void CMC_Sequence::pause() {
    if (CPlayable* root = getSequence()) root->pause();
}

void CMC_Sequence::resume() {
    const ScriptScope scope;
    if (CPlayable* root = getSequence()) root->resume();
}

void CMC_Sequence::show() {
    if (CPlayable* root = getSequence()) root->show();
}

void CMC_Sequence::hide() {
    if (CPlayable* root = getSequence()) root->hide();
}

bool CMC_Sequence::isPlaying() {
    const CPlayable* root = getSequence();
    return root && root->isPlaying();
}

void CMC_Sequence::setVolume(int volume) {
    if (CPlayable* root = getSequence()) root->setVolume(volumeLevel(volume));
}

void CMC_Sequence::setPan(int pan) {
    if (CPlayable* root = getSequence()) root->setPanning(panLevel(pan));
}

void CMC_Sequence::setFrequency(int frequency) {
    if (CPlayable* root = getSequence()) root->setFrequency(frequency);
}

CXString CMC_Sequence::getEventName() {
    const CPlayable* root = getSequence();
    return root ? root->getLastPlayedEvent() : CXString();
}

CXString CMC_Sequence::getPlayingName() {
    CPlayable* root = getSequence();
    const CPlayable* playing = root ? root->getPlaying() : nullptr;
    return playing ? playing->getName() : CXString();
}

void CMC_Sequence_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
