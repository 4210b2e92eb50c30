// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/picture_object.h"

#include <utility>

#include "animation/graphic_methods.h"
#include "definition/element.h"
#include "frame/resources_manager.h"
#include "frame/window.h"
#include "graphics/graphics_object.h"
#include "graphics/refresh_screen.h"
#include "script/lifetime.h"
#include "sound/playable.h"
#include "structure/scene.h"

// ORDER: as the keys are read.
const PropertyRow<CMC_Picture::Properties> CMC_Picture::kProperties[] = {
    {"FILENAME",              &Properties::fileName,              4},
    {"TOCANVAS",              &Properties::toCanvas,              0},
    {"VISIBLE",               &Properties::visible,               6},
    {"FLUSHAFTERPLAYED",      &Properties::toRelease,             8},
    {"PRELOAD",               &Properties::preload,               9},
    {"MONITORCOLLISION",      &Properties::monitorCollision,      2},
    {"MONITORCOLLISIONALPHA", &Properties::monitorCollisionAlpha, 3},
    {"PRIORITY",              &Properties::priority,              7},
    {"ASBUTTON",              &Properties::asButton,              1},
    {"",                      &Properties::unlisted,              5},
};

CMC_Picture::CMC_Picture(CMC_Scene* scene, CMElement* element, int type, const SignalPlaces& signalPlaces)
    : CMC_MouseTarget(scene, element, type, signalPlaces.focusOn), signalPlaces_(signalPlaces) {}

CMC_Picture::CMC_Picture(CMC_Scene* scene, Media media, int type, const SignalPlaces& signalPlaces)
    : CMC_MouseTarget(scene, "clone", type, signalPlaces.focusOn),
      signalPlaces_(signalPlaces),
      graphic_(media.owned.get()),
      playable_(media.playable),
      own_(std::move(media.owned)) {}

CMC_Picture::~CMC_Picture() { letGo(); }

CRefreshScreen* CMC_Picture::getScreen() const { return window_->GetRefreshScreenInterface(); }

void CMC_Picture::readDefinition(CMElement* element) {
    readProperties<Properties>(element, kProperties, properties_);
    const bool isAbsent = !element->getPropertyValue("PRELOAD").IsString();
    load(properties_.fileName, isAbsent || properties_.preload);
}

void CMC_Picture::monitorAsDefined() {
    if (!graphic_ || !watchesCollisions()) return;
    getScene()->monitorCollisions(graphic_, properties_.monitorCollisionAlpha, this);
    graphic_->setMonitorCollisions(true);
}

void CMC_Picture::putOnScreen() {
    CRefreshScreen* screen = getScreen();
    if (screen && graphic_ && properties_.toCanvas) screen->put(graphic_, properties_.priority);
}

// Whoever gave the picture up may be called by it at this moment, so it goes when no script runs any more.
void CMC_Picture::dropMedia() {
    CPlayable* playable = std::exchange(playable_, nullptr);
    playable->removeNotifier(observer_);
    CGraphicsObject* graphic = std::exchange(graphic_, nullptr);
    if (own_) {
        if (CRefreshScreen* screen = getScreen()) *screen >> graphic;
        destroyLate(std::move(own_));
    } else if (CResourcesManager* cache = getScene()->getResources()) {
        cache->remove(playable);
    }
}

void CMC_Picture::adopt(CGraphicsObject* graphic, CPlayable* playable) {
    graphic_ = graphic;
    playable_ = playable;
    if (observer_) playable->addNotifier(observer_);
}

void CMC_Picture::load(const CXString& name, bool preload) {
    // What is out of service would hold a picture that the unit frees before it.
    if (isRetired() || (playable_ && playable_->getFileName().equalsIgnoreCase(name))) return;
    const ScriptScope scope;
    CRefreshScreen* screen = getScreen();
    const int priority = getPriority();
    if (graphic_) {
        removeCollisionsMonitoring();
        if (own_) own_->Visible(false);
        dropMedia();
    }

    CResourcesManager* cache = name.IsString() ? getScene()->getResources() : nullptr;
    if (CFileResolver* cached = cache ? cache->get(name) : nullptr) {
        if (fits(cached)) {
            adopt(dynamic_cast<CGraphicsObject*>(cached), dynamic_cast<CPlayable*>(cached));
        } else {
            // The name stands for something else.
            cache->remove(cached);
        }
    }
    if (!graphic_) {
        Media made = makeMedia(name, preload);
        adopt(made.owned.get(), made.playable);
        if (cache) {
            static_cast<void>(made.owned.release());
            cache->add(playable_);
        } else {
            own_ = std::move(made.owned);
        }
    }
    if (priority != -1) {
        screen->put(graphic_, priority);
        monitorAsDefined();
    }
    onExchanged();
}

void CMC_Picture::removeCollisionsMonitoring() {
    if (graphic_ && getScene()) getScene()->removeMonitorCollisions(graphic_, this);
}

// What ONDONE says of the picture still holds while it runs.
bool CMC_Picture::done(bool keep) {
    const bool result = CMC_Object::done(keep);
    letGo();
    return result;
}

void CMC_Picture::retire() {
    CMC_Object::retire();
    letGo();
}

void CMC_Picture::letGo() {
    stopListening();
    if (!graphic_) return;
    removeCollisionsMonitoring();
    if (CCollisionInspector* inspector = window_->getCollisionInspectorInterface()) inspector->removeNotifier(this);
    dropMedia();
}

void CMC_Picture::serialize(CXArchive* archive) {
    CMC_Object::serialize(archive);
    if (archive->isStoring()) {
        properties_.unlisted = getPriority() == -1;
        properties_.visible = isVisible();
        if (playable_) properties_.fileName = playable_->getFileName();
        serializeRecord<Properties>(archive, kProperties, properties_);
        return;
    }
    serializeRecord<Properties>(archive, kProperties, properties_);
    // A mark that says what it says: the object was on the screen, or it wasn't.
    properties_.toCanvas = !properties_.unlisted;
    load(properties_.fileName, properties_.preload);
    place();
}

void CMC_Picture::fireCollision(int signal, CGraphicsObject* moved, CGraphicsObject* met) {
    if (moved != graphic_ || !graphic_ || !isSignalUsed(signal)) return;
    const ScriptScope scope;
    const CXString name(getBehavioursList()[static_cast<std::size_t>(signal)]);
    const CXString own = getScene()->getGraphicsObjectName(moved), partner = getScene()->getGraphicsObjectName(met);
    const CXString qualifier = collisionQualifier();
    if (qualifier.IsString() && onSignal(name + "^" + qualifier + "^" + partner)) return;
    if (onSignal(name + "^" + partner)) return;
    const CodeParams names = {own, partner};
    onSignal(name, &names);
}

void CMC_Picture::onCollision(CGraphicsObject* moved, CGraphicsObject* met) {
    fireCollision(signalPlaces_.collision, moved, met);
}

void CMC_Picture::onCollisionFinished(CGraphicsObject* moved, CGraphicsObject* met) {
    fireCollision(signalPlaces_.collisionFinished, moved, met);
}

void CMC_Picture::setPosition(int x, int y) {
    if (!graphic_) return;
    graphic_->Invalidate();
    graphic_->setPosition(x, y);
    // A handler of a collision may have taken the picture away.
    if (graphic_) graphic_->Invalidate();
}

void CMC_Picture::move(int dx, int dy) {
    if (graphic_) graphic_->Move(dx, dy);
}

void CMC_Picture::clearClipping() {
    if (graphic_) graphic_->SetClippingRect({});
}

int CMC_Picture::getWidth() const { return graphic_ ? graphic_->Width() : 0; }
int CMC_Picture::getHeight() const { return graphic_ ? graphic_->Height() : 0; }

bool CMC_Picture::isInside(int x, int y, bool useAlpha) const { return graphic_ && graphic_->isInside(x, y, useAlpha); }

void CMC_Picture::monitorCollision(bool useAlpha) {
    if (!graphic_) return;
    getScene()->monitorCollisions(graphic_, useAlpha, this);
    graphic_->setMonitorCollisions(true);
}

void CMC_Picture::removeMonitorCollision() {
    if (!graphic_) return;
    removeCollisionsMonitoring();
    graphic_->setMonitorCollisions(false);
}

void CMC_Picture::setPriority(int priority) {
    if (CRefreshScreen* screen = getScreen()) screen->SetPriority(graphic_, priority);
}

int CMC_Picture::getPriority() const {
    CRefreshScreen* screen = getScreen();
    return screen && graphic_ ? screen->GetPriority(graphic_) : -1;
}

int CMC_Picture::getAlpha(int x, int y) const { return graphic_ ? graphic::alphaAt(graphic_, x, y) : 0; }
int CMC_Picture::getPixel(int x, int y) const { return graphic_ ? graphic::pixelAt(graphic_, x, y) : 0; }

void CMC_Picture::invalidate() {
    if (graphic_) graphic_->Invalidate();
}

int CMC_Picture::getCenterX() const { return graphic_ ? graphic_->GetPosition().x + graphic_->Width() / 2 : 0; }
int CMC_Picture::getCenterY() const { return graphic_ ? graphic_->GetPosition().y + graphic_->Height() / 2 : 0; }
bool CMC_Picture::isVisible() const { return graphic_ && graphic_->isVisible(); }

void CMC_Picture::setOpacity(int opacity) {
    if (graphic_) graphic_->SetOpacity(opacity);
}

void CMC_Picture::flip(void (CGraphicsObject::*turn)()) {
    if (!graphic_) return;
    (graphic_->*turn)();
    graphic_->Invalidate();
}

void CMC_Picture::flipH() { flip(&CGraphicsObject::FlipH); }
void CMC_Picture::flipV() { flip(&CGraphicsObject::FlipV); }
void CMC_Picture::resetFlips() { flip(&CGraphicsObject::resetFlips); }
