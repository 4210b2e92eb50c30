// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/filter_object.h"

#include <array>

#include "definition/element.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "storage/archive.h"
#include "structure/scene.h"

namespace {

constexpr std::array<std::string_view, 6> kSignals = {"ONINIT",    "ONDONE",     "ONSIGNAL",
                                                      "ONSTARTED", "ONFINISHED", "ONTICK"};
enum Signal { kOnStarted = 3, kOnFinished, kOnTick };
constexpr std::span<const std::string_view> kPlainSignals = std::span(kSignals).first(3);

constexpr MethodRow kMethods[] = {
    {1, "SETPROPERTY", bind<&CMC_FilterObject::setProperty>},
    {2, "LINK",        bind<&CMC_Filter::link>             },
    {3, "UNLINK",      bind<&CMC_FilterObject::unlink>     },
    {4, "START",       bind<&CMC_Filter::start>            },
    {5, "STOP",        bind<&CMC_Filter::stop>             },
    {6, "ISRUNNING",   bind<&CMC_Filter::isRunning>        },
};
static_assert(isMethodTable(kMethods));

constexpr MethodRow kStaticMethods[] = {
    {1, "SETPROPERTY", bind<&CMC_FilterObject::setProperty>},
    {2, "LINK",        bind<&CMC_StaticFilter::link>       },
    {3, "UNLINK",      bind<&CMC_FilterObject::unlink>     },
};
static_assert(isMethodTable(kStaticMethods));

}  // namespace

CMC_FilterObject::CMC_FilterObject(CMC_Scene* scene, int type) : CMC_Object("temp", type) { setScene(scene); }

CMC_FilterObject::CMC_FilterObject(CMC_Scene* scene, CMElement* element, int type)
    : CMC_Object(scene, element, type), action_(element->getPropertyValue("ACTION")) {}

CWindow* CMC_FilterObject::getWindow() const { return getScene() ? getScene()->getWindow() : nullptr; }

CGraphicsObject* CMC_FilterObject::graphicOf(const CXString& name) const {
    return getScene() ? getScene()->getGraphicsObject(name) : nullptr;
}

void CMC_FilterObject::setProperty(const CXString& key, const CXString& value) {
    if (CFilterBase* effect = getEffect()) effect->setProperty(key, value);
}

void CMC_FilterObject::linkNamed(const CXString& name) {
    CGraphicsObject* graphic = graphicOf(name);
    if (graphic && getEffect()) getEffect()->link(graphic, getScene()->lookUp(name.view()));
}

void CMC_FilterObject::unlink(const CXString& name) {
    CGraphicsObject* graphic = graphicOf(name);
    if (graphic && getEffect()) getEffect()->unlink(graphic);
}

void CMC_FilterObject::retire() {
    CMC_Object::retire();
    if (CFilterBase* effect = getEffect()) effect->release();
}

void CMC_FilterObject::serialize(CXArchive* archive) {
    CMC_Object::serialize(archive);
    if (archive->isStoring()) {
        *archive << action_;
        return;
    }
    *archive >> action_;
    makeEffect(action_);
}

CMC_Filter::CMC_Filter(CMC_Scene* scene) : CMC_FilterObject(scene, kType) {}

CMC_Filter::CMC_Filter(CMC_Scene* scene, CMElement* element) : CMC_FilterObject(scene, element, kType) {
    CMC_Filter::makeEffect(getAction());
    initializeBehaviours(scene, element);
}

void CMC_Filter::makeEffect(const CXString& action) {
    effect_ = makeAnimatedFilter(action, getWindow(), getScene());
    if (effect_) effect_->addListener(this);
}

std::span<const std::string_view> CMC_Filter::getBehavioursList() const { return kSignals; }

void CMC_Filter::fireFor(int signal, const CFilterEntry& entry) {
    if (!isRetired()) fire(signal, entry.getScriptName());
}

void CMC_Filter::onStarted(CFilterEntry* entry, CAnimatedFilter*) { fireFor(kOnStarted, *entry); }
void CMC_Filter::onFinished(CFilterEntry* entry, CAnimatedFilter*) { fireFor(kOnFinished, *entry); }
void CMC_Filter::onTick(CFilterEntry* entry, CAnimatedFilter*) { fireFor(kOnTick, *entry); }

void CMC_Filter::start(const CXString& name) {
    CGraphicsObject* graphic = graphicOf(name);
    if (graphic && effect_) effect_->start(graphic);
}

void CMC_Filter::stop(const CXString& name) {
    CGraphicsObject* graphic = graphicOf(name);
    if (graphic && effect_) effect_->stop(graphic);
}

bool CMC_Filter::isRunning(const CXString& name) const {
    CGraphicsObject* graphic = graphicOf(name);
    return graphic && effect_ && effect_->isActive(graphic);
}

CMC_StaticFilter::CMC_StaticFilter(CMC_Scene* scene) : CMC_FilterObject(scene, kType) {}

CMC_StaticFilter::CMC_StaticFilter(CMC_Scene* scene, CMElement* element) : CMC_FilterObject(scene, element, kType) {
    CMC_StaticFilter::makeEffect(getAction());
    initializeBehaviours(scene, element);
}

void CMC_StaticFilter::makeEffect(const CXString& action) { effect_ = makeStaticFilter(action, getWindow()); }

std::span<const std::string_view> CMC_StaticFilter::getBehavioursList() const { return kPlainSignals; }

void CMC_StaticFilter::link(const CXString& name) {
    CGraphicsObject* graphic = graphicOf(name);
    if (!graphic || !effect_) return;
    // An effect that moves the object may have a script remove it.
    const ScriptScope scope;
    graphic->Invalidate();
    linkNamed(name);
    graphic->Invalidate();
}

void CMC_Filter_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}

void CMC_StaticFilter_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kStaticMethods);
}
