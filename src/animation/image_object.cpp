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
#include "script/method_table.h"
#include "structure/scene.h"

namespace {

constexpr std::array<std::string_view, 9> kSignals = {
    "ONINIT",    "ONDONE",     "ONSIGNAL", "ONCOLLISION", "ONCOLLISIONFINISHED",
    "ONFOCUSON", "ONFOCUSOFF", "ONCLICK",  "ONRELEASE"};
enum Signal { kOnCollision = 3, kOnCollisionFinished, kOnFocusOn };

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
    {1,  "SHOW",                   bind<&CMC_Image::show>                    },
    {2,  "HIDE",                   bind<&CMC_Image::hide>                    },
    {5,  "SETPOSITION",            bind<&CMC_Picture::setPosition>           },
    {6,  "MOVE",                   bind<&CMC_Picture::move>                  },
    {7,  "LOAD",                   bind<&CMC_Picture::loadFile>              },
    {8,  "CLEARCLIPPING",          bind<&CMC_Picture::clearClipping>         },
    {9,  "SETCLIPPING",            {onImage<graphic::clip>, "*"}             },
    {15, "GETPOSITIONX",           bind<&CMC_Image::getPositionX>            },
    {16, "GETPOSITIONY",           bind<&CMC_Image::getPositionY>            },
    {17, "GETWIDTH",               bind<&CMC_Picture::getWidth>              },
    {18, "GETHEIGHT",              bind<&CMC_Picture::getHeight>             },
    {23, "ISNEAR",                 {isNear, "*"}                             },
    {24, "ISINSIDE",               bind<&CMC_Picture::isInside>              },
    {26, "MONITORCOLLISION",       bind<&CMC_Picture::monitorCollision>      },
    {27, "REMOVEMONITORCOLLISION", bind<&CMC_Picture::removeMonitorCollision>},
    {28, "SETSCALEFACTOR",         bind<&CMC_Image::setScaleFactor>          },
    {32, "SETPRIORITY",            bind<&CMC_Picture::setPriority>           },
    {33, "GETALPHA",               bind<&CMC_Picture::getAlpha>              },
    {34, "GETPIXEL",               bind<&CMC_Picture::getPixel>              },
    {36, "MERGEALPHA",             {onImage<graphic::mergeAlpha>, "iis"}     },
    {37, "INVALIDATE",             bind<&CMC_Picture::invalidate>            },
    {40, "GETCENTERX",             bind<&CMC_Picture::getCenterX>            },
    {41, "GETCENTERY",             bind<&CMC_Picture::getCenterY>            },
    {48, "ISVISIBLE",              bind<&CMC_Picture::isVisible>             },
    {49, "LINK",                   bind<&CMC_Image::link>                    },
    {50, "SETASBUTTON",            bind<&CMC_Image::setAsButton>             },
    {51, "SETOPACITY",             bind<&CMC_Picture::setOpacity>            },
    {52, "SAVE",                   bind<&CMC_Image::save>                    },
    {53, "SETANCHOR",              {onImage<graphic::setAnchor>, "*"}        },
    {54, "FLIPH",                  bind<&CMC_Picture::flipH>                 },
    {55, "FLIPV",                  bind<&CMC_Picture::flipV>                 },
    {56, "RESETFLIPS",             bind<&CMC_Picture::resetFlips>            },
};
static_assert(isMethodTable(kMethods));

}  // namespace

CMC_Image::CMC_Image(CMC_Scene* scene, CMElement* element)
    : CMC_Picture(scene, element, kType, {kOnCollision, kOnCollisionFinished, kOnFocusOn}) {
    readDefinition(element);
    CMC_Image::place();
    initializeBehaviours(scene, element);
}

CMC_Image::CMC_Image(CMC_Scene* scene, std::unique_ptr<CImage> image)
    : CMC_Picture(scene, mediaOf(std::move(image)), kType, {kOnCollision, kOnCollisionFinished, kOnFocusOn}) {}

CImage* CMC_Image::getImage() const { return static_cast<CImage*>(getGraphic()); }

CMC_Picture::Media CMC_Image::makeMedia(const CXString& name, bool preload) {
    auto image = std::make_unique<CImage>(window_);
    image->setFilename(name);
    if (preload && name.IsString()) image->Load(name, true);
    return mediaOf(std::move(image));
}

bool CMC_Image::fits(CFileResolver* cached) const { return dynamic_cast<CImage*>(cached) != nullptr; }

void CMC_Image::place() {
    getImage()->toRelease(properties_.toRelease);
    getImage()->Visible(properties_.visible);
    monitorAsDefined();
    putOnScreen();
}

void CMC_Image::setAsButton(bool asButton, bool changeCursor) {
    properties_.asButton = asButton;
    changeCursor_ = changeCursor;
}

CXObject* CMC_Image::clone() {
    if (!getImage()) return nullptr;
    std::unique_ptr<CImage> copy(static_cast<CImage*>(getImage()->clone()));
    // The original stays in the cache for as long as the unit is there.
    if (CUnit6* unit = getScene()->getUnit())
        unit->getResourcesManager()->get(getImage()->CFileResolver::getFileName());
    if (const int priority = getPriority(); priority >= 0) getScreen()->put(copy.get(), priority);
    return new CMC_Image(getScene(), std::move(copy));
}

std::span<const std::string_view> CMC_Image::getBehavioursList() const { return kSignals; }

void CMC_Image::show() {
    if (CImage* image = getImage()) image->show();
}

void CMC_Image::hide() {
    if (CImage* image = getImage()) image->Visible(false);
}

int CMC_Image::getPositionX() const { return getImage() ? getImage()->GetPosition().x : 0; }
int CMC_Image::getPositionY() const { return getImage() ? getImage()->GetPosition().y : 0; }
void CMC_Image::link(const CXString& name) {
    CMC_Object* other = getScene() ? getScene()->lookUp(name.view()) : nullptr;
    if (!getImage() || !other || other->getType() != kType) return;
    CImage* source = static_cast<CMC_Image*>(other)->getImage();
    if (!source) return;
    getImage()->link(source);
    getImage()->Invalidate();
}

void CMC_Image::save(const CXString& name) {
    if (CImage* image = getImage()) image->Save(name, kCompressionRaw);
}

void CMC_Image_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
