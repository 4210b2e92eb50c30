// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/image_object.h"

#include <array>

#include "animation/graphic_methods.h"
#include "animation/image.h"
#include "definition/element.h"
#include "frame/resources_manager.h"
#include "frame/unit.h"
#include "frame/window.h"
#include "graphics/refresh_screen.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "structure/scene.h"

namespace {

constexpr std::array<std::string_view, 9> kSignals = {
    "ONINIT",    "ONDONE",     "ONSIGNAL", "ONCOLLISION", "ONCOLLISIONFINISHED",
    "ONFOCUSON", "ONFOCUSOFF", "ONCLICK",  "ONRELEASE"};
enum Signal { kOnCollision = 3, kOnCollisionFinished, kOnFocusOn, kOnFocusOff, kOnClick, kOnRelease };

CImage* imageOf(const MethodCall& call) { return static_cast<CMC_Image*>(call.object)->getImage(); }

template <void (*Do)(const MethodCall&, CGraphicsObject*)>
CMC_Variable* onImage(const MethodCall& call) {
    if (CImage* image = imageOf(call)) Do(call, image);
    return nullptr;
}

CMC_Variable* isNear(const MethodCall& call) {
    CImage* image = imageOf(call);
    return toScript(image && graphic::isNear(call, image));
}

constexpr MethodRow kMethods[] = {
    {1,  "SHOW",                   bind<&CMC_Image::show>                  },
    {2,  "HIDE",                   bind<&CMC_Image::hide>                  },
    {5,  "SETPOSITION",            bind<&CMC_Image::setPosition>           },
    {6,  "MOVE",                   bind<&CMC_Image::move>                  },
    {7,  "LOAD",                   bind<&CMC_Image::loadFile>              },
    {8,  "CLEARCLIPPING",          bind<&CMC_Image::clearClipping>         },
    {9,  "SETCLIPPING",            {onImage<graphic::clip>, "*"}           },
    {15, "GETPOSITIONX",           bind<&CMC_Image::getPositionX>          },
    {16, "GETPOSITIONY",           bind<&CMC_Image::getPositionY>          },
    {17, "GETWIDTH",               bind<&CMC_Image::getWidth>              },
    {18, "GETHEIGHT",              bind<&CMC_Image::getHeight>             },
    {23, "ISNEAR",                 {isNear, "*"}                           },
    {24, "ISINSIDE",               bind<&CMC_Image::isInside>              },
    {26, "MONITORCOLLISION",       bind<&CMC_Image::monitorCollision>      },
    {27, "REMOVEMONITORCOLLISION", bind<&CMC_Image::removeMonitorCollision>},
    {28, "SETSCALEFACTOR",         bind<&CMC_Image::setScaleFactor>        },
    {32, "SETPRIORITY",            bind<&CMC_Image::setPriority>           },
    {33, "GETALPHA",               bind<&CMC_Image::getAlpha>              },
    {34, "GETPIXEL",               bind<&CMC_Image::getPixel>              },
    {36, "MERGEALPHA",             {onImage<graphic::mergeAlpha>, "iis"}   },
    {37, "INVALIDATE",             bind<&CMC_Image::invalidate>            },
    {40, "GETCENTERX",             bind<&CMC_Image::getCenterX>            },
    {41, "GETCENTERY",             bind<&CMC_Image::getCenterY>            },
    {48, "ISVISIBLE",              bind<&CMC_Image::isVisible>             },
    {49, "LINK",                   bind<&CMC_Image::link>                  },
    {50, "SETASBUTTON",            bind<&CMC_Image::setAsButton>           },
    {51, "SETOPACITY",             bind<&CMC_Image::setOpacity>            },
    {52, "SAVE",                   bind<&CMC_Image::save>                  },
    {53, "SETANCHOR",              {onImage<graphic::setAnchor>, "*"}      },
    {54, "FLIPH",                  bind<&CMC_Image::flipH>                 },
    {55, "FLIPV",                  bind<&CMC_Image::flipV>                 },
    {56, "RESETFLIPS",             bind<&CMC_Image::resetFlips>            },
};
static_assert(isMethodTable(kMethods));

CResourcesManager* cacheOf(const CMC_Scene* scene) {
    CUnit6* unit = scene ? scene->getUnit() : nullptr;
    return unit ? unit->getResourcesManager() : nullptr;
}

}  // namespace

// ORDER: as the keys are read.
const PropertyRow<CMC_Image::Properties> CMC_Image::kProperties[] = {
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

CMC_Image::CMC_Image(CMC_Scene* scene, CMElement* element)
    : CMC_Object(scene, element, kType), window_(scene->getWindow()) {
    readProperties<Properties>(element, kProperties, properties_);
    const bool isAbsent = !element->getPropertyValue("PRELOAD").IsString();
    load(properties_.fileName, isAbsent || properties_.preload);
    place();
    initializeBehaviours(scene, element);
}

CMC_Image::CMC_Image(CMC_Scene* scene, std::unique_ptr<CImage> image)
    : CMC_Object("clone", kType), window_(scene->getWindow()), image_(image.get()), own_(std::move(image)) {
    setScene(scene);
}

CMC_Image::~CMC_Image() { letGo(); }

void CMC_Image::place() {
    image_->toRelease(properties_.toRelease);
    image_->Visible(properties_.visible);
    if (watchesCollisions()) getScene()->monitorCollisions(image_, properties_.monitorCollisionAlpha, this);
    CRefreshScreen* screen = window_->GetRefreshScreenInterface();
    if (screen && properties_.toCanvas) screen->put(image_, properties_.priority);
}

void CMC_Image::load(const CXString& name, bool preload) {
    if (image_ && image_->CFileResolver::getFileName().equalsIgnoreCase(name)) return;
    CRefreshScreen* screen = window_->GetRefreshScreenInterface();
    const int priority = screen ? screen->GetPriority(image_) : -1;
    if (image_) {
        removeCollisionsMonitoring();
        if (own_) {
            own_->Visible(false);
            own_.reset();
        } else if (CResourcesManager* cache = cacheOf(getScene())) {
            cache->remove(image_);
        }
        image_ = nullptr;
    }

    CResourcesManager* cache = name.IsString() ? cacheOf(getScene()) : nullptr;
    if (cache) {
        CFileResolver* cached = cache->get(name);
        image_ = dynamic_cast<CImage*>(cached);
        // The name stands for something that is no picture.
        if (cached && !image_) cache->remove(cached);
    }
    if (!image_) {
        auto made = std::make_unique<CImage>(window_);
        made->setFilename(name);
        if (preload && name.IsString()) made->Load(name, true);
        // A load brings up messages, and nothing else that could lead back here.
        image_ = made.get();
        if (cache) {
            cache->add(made.release());
        } else {
            own_ = std::move(made);
        }
    }
    if (priority == -1) return;
    screen->put(image_, priority);
    if (watchesCollisions()) {
        getScene()->monitorCollisions(image_, properties_.monitorCollisionAlpha, this);
        image_->setMonitorCollisions(true);
    }
}

void CMC_Image::setAsButton(bool asButton, bool changeCursor) {
    properties_.asButton = asButton;
    changeCursor_ = changeCursor;
}

void CMC_Image::removeCollisionsMonitoring() {
    if (image_ && getScene()) getScene()->removeMonitorCollisions(image_, this);
}

CXObject* CMC_Image::clone() {
    if (!image_) return nullptr;
    std::unique_ptr<CImage> copy(static_cast<CImage*>(image_->clone()));
    // The original stays in the cache for as long as the unit is there.
    if (CResourcesManager* cache = cacheOf(getScene())) cache->get(image_->CFileResolver::getFileName());
    CRefreshScreen* screen = window_->GetRefreshScreenInterface();
    const int priority = screen ? screen->GetPriority(image_) : -1;
    if (priority >= 0) screen->put(copy.get(), priority);
    return new CMC_Image(getScene(), std::move(copy));
}

// What ONDONE says of the picture still holds while it runs.
bool CMC_Image::done(bool keep) {
    const bool result = CMC_Object::done(keep);
    letGo();
    return result;
}

void CMC_Image::retire() {
    CMC_Object::retire();
    letGo();
}

void CMC_Image::letGo() {
    if (mouseAware_) window_->removeMouseListener(this);
    mouseAware_ = false;
    if (!image_) return;
    removeCollisionsMonitoring();
    if (CCollisionInspector* inspector = window_->getCollisionInspectorInterface()) inspector->removeNotifier(this);
    CResourcesManager* cache = own_ ? nullptr : cacheOf(getScene());
    if (cache) cache->remove(image_);
    own_.reset();
    image_ = nullptr;
}

std::span<const std::string_view> CMC_Image::getBehavioursList() const { return kSignals; }

bool CMC_Image::verifyBehaviour(const CXString& key) {
    const std::string_view name = key.view();
    const bool ofMouse =
        name.starts_with("ONCLICK") || name.starts_with("ONRELEASE") || name == "ONFOCUSON" || name == "ONFOCUSOFF";
    if (ofMouse && !mouseAware_ && !isRetired()) {
        focus_ = false;
        mouseAware_ = true;
        window_->registerMouseListener(this, properties_.priority);
    }
    return CMC_Object::verifyBehaviour(key);
}

void CMC_Image::serialize(CXArchive* archive) {
    CMC_Object::serialize(archive);
    if (archive->isStoring()) {
        CRefreshScreen* screen = window_->GetRefreshScreenInterface();
        properties_.unlisted = !screen || screen->GetPriority(image_) == -1;
        properties_.visible = isVisible();
        if (image_) properties_.fileName = image_->CFileResolver::getFileName();
        serializeRecord<Properties>(archive, kProperties, properties_);
        return;
    }
    serializeRecord<Properties>(archive, kProperties, properties_);
    properties_.toCanvas = !properties_.unlisted;
    load(properties_.fileName, properties_.preload);
    place();
}

void CMC_Image::fireCollision(int signal, CGraphicsObject* moved, CGraphicsObject* met) {
    if (moved != image_ || !image_ || !isSignalUsed(signal)) return;
    const ScriptScope scope;
    const CXString name(kSignals[static_cast<std::size_t>(signal)]);
    const CXString own = getScene()->getGraphicsObjectName(moved), partner = getScene()->getGraphicsObjectName(met);
    if (onSignal(name + "^" + partner)) return;
    const CodeParams names = {own, partner};
    onSignal(name, &names);
}

void CMC_Image::onCollision(CGraphicsObject* moved, CGraphicsObject* met) { fireCollision(kOnCollision, moved, met); }

void CMC_Image::onCollisionFinished(CGraphicsObject* moved, CGraphicsObject* met) {
    fireCollision(kOnCollisionFinished, moved, met);
}

bool CMC_Image::onMouseMove(CXPoint point) {
    const bool signals = isSignalUsed(kOnFocusOn) || isSignalUsed(kOnFocusOff);
    if (!properties_.asButton || !isVisible() || !signals || !mouseAware_) return false;
    const bool inside = image_->GetBoundingBox().IsInRect(point);
    if (inside == focus_) return false;
    // A handler may take the object out: nothing of it is touched behind the scope.
    const ScriptScope scope;
    const bool changeCursor = changeCursor_;
    CWindow* window = window_;
    focus_ = inside;
    onSignal(inside ? "ONFOCUSON" : "ONFOCUSOFF");
    if (!changeCursor) return false;
    if (inside) {
        window->BeginActiveCursor();
    } else {
        window->EndActiveCursor();
    }
    return false;
}

bool CMC_Image::hears(int signal, CXPoint point) const {
    return properties_.asButton && isVisible() && isSignalUsed(signal) && mouseAware_ &&
           image_->GetBoundingBox().IsInRect(point);
}

bool CMC_Image::onClick(int button, CXPoint point) {
    if (!hears(kOnClick, point)) return false;
    const ScriptScope scope;
    const bool changeCursor = changeCursor_;
    CWindow* window = window_;
    fire(kOnClick, graphic::buttonName(button));
    if (changeCursor) window->EndActiveCursor();
    return false;
}

bool CMC_Image::onRelease(int button, CXPoint point) {
    if (hears(kOnRelease, point)) fire(kOnRelease, graphic::buttonName(button));
    return false;
}

void CMC_Image::show() {
    if (image_) image_->show();
}

void CMC_Image::hide() {
    if (image_) image_->Visible(false);
}

void CMC_Image::setPosition(int x, int y) {
    if (!image_) return;
    image_->Invalidate();
    image_->SetPosition(x, y);
    // A handler of a collision may have taken the picture away.
    if (image_) image_->Invalidate();
}

void CMC_Image::move(int dx, int dy) {
    if (image_) image_->Move(dx, dy);
}

void CMC_Image::clearClipping() {
    if (image_) image_->SetClippingRect({});
}

int CMC_Image::getPositionX() const { return image_ ? image_->GetPosition().x : 0; }
int CMC_Image::getPositionY() const { return image_ ? image_->GetPosition().y : 0; }
int CMC_Image::getWidth() const { return image_ ? image_->Width() : 0; }
int CMC_Image::getHeight() const { return image_ ? image_->Height() : 0; }

bool CMC_Image::isInside(int x, int y, bool useAlpha) const { return image_ && image_->isInside(x, y, useAlpha); }

void CMC_Image::monitorCollision(bool useAlpha) {
    if (!image_) return;
    getScene()->monitorCollisions(image_, useAlpha, this);
    image_->setMonitorCollisions(true);
}

void CMC_Image::removeMonitorCollision() {
    if (!image_) return;
    removeCollisionsMonitoring();
    image_->setMonitorCollisions(false);
}

void CMC_Image::setPriority(int priority) {
    if (CRefreshScreen* screen = window_->GetRefreshScreenInterface()) screen->SetPriority(image_, priority);
}

int CMC_Image::getAlpha(int x, int y) const { return image_ ? graphic::alphaAt(image_, x, y) : 0; }
int CMC_Image::getPixel(int x, int y) const { return image_ ? graphic::pixelAt(image_, x, y) : 0; }

void CMC_Image::invalidate() {
    if (image_) image_->Invalidate();
}

int CMC_Image::getCenterX() const { return image_ ? image_->GetPosition().x + image_->Width() / 2 : 0; }
int CMC_Image::getCenterY() const { return image_ ? image_->GetPosition().y + image_->Height() / 2 : 0; }
bool CMC_Image::isVisible() const { return image_ && image_->CGraphicsObject::isVisible(); }

void CMC_Image::link(const CXString& name) {
    CMC_Object* other = getScene() ? getScene()->lookUp(name.view()) : nullptr;
    if (!image_ || !other || other->getType() != kType) return;
    CImage* source = static_cast<CMC_Image*>(other)->getImage();
    if (!source) return;
    image_->link(source);
    image_->Invalidate();
}

void CMC_Image::setOpacity(int opacity) {
    if (image_) image_->SetOpacity(opacity);
}

void CMC_Image::save(const CXString& name) {
    if (image_) image_->Save(name, kCompressionRaw);
}

void CMC_Image::flipH() {
    if (!image_) return;
    image_->FlipH();
    image_->Invalidate();
}

void CMC_Image::flipV() {
    if (!image_) return;
    image_->FlipV();
    image_->Invalidate();
}

void CMC_Image::resetFlips() {
    if (!image_) return;
    image_->resetFlips();
    image_->Invalidate();
}

void CMC_Image_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
