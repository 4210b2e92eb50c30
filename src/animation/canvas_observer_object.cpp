// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/canvas_observer_object.h"

#include <array>

#include "animation/graphic_methods.h"
#include "definition/element.h"
#include "frame/window.h"
#include "graphics/refresh_screen.h"
#include "graphics/surface.h"
#include "script/method_table.h"
#include "structure/scene.h"

namespace {

constexpr std::array<std::string_view, 8> kSignals = {"ONINIT",   "ONDONE",    "ONSIGNAL",        "ONINITIALUPDATE",
                                                      "ONUPDATE", "ONUPDATED", "ONWINDOWFOCUSON", "ONWINDOWFOCUSOFF"};
enum Signal { kOnInitialUpdate = 3, kOnUpdate, kOnUpdated, kOnWindowFocusOn, kOnWindowFocusOff };

constexpr const CXRect* kWhole = nullptr;

CMC_CanvasObserver& observer(const MethodCall& call) { return static_cast<CMC_CanvasObserver&>(*call.object); }

// (x, y, [visible only], [lowest priority, highest priority], [ignore alpha])
CMC_Variable* getGraphicsAt(const MethodCall& call) {
    const int count = call.count(), x = call.integer(0), y = call.integer(1);
    const bool visibleOnly = count > 2 && call.truth(2);
    const int lowest = count > 3 ? call.integer(3) : -1, highest = count > 4 ? call.integer(4) : -1;
    const bool ignoreAlpha = count > 5 && call.truth(5);
    CRefreshScreen* screen = observer(call).getScreen();
    CGraphicsObject* found = screen ? screen->getGraphicsAt(x, y, visibleOnly, lowest, highest, ignoreAlpha) : nullptr;
    CMC_Scene* scene = observer(call).getScene();
    const CXString name = found && scene ? scene->getGraphicsObjectName(found) : CXString();
    return toScript(name.IsString() ? name : CXString("NULL"));
}

CMC_Variable* save(const MethodCall& call) {
    CMC_Scene* scene = observer(call).getScene();
    if (CDirectDrawSurface* picture = scene ? scene->getWindow()->GetBackBuffer() : nullptr)
        graphic::save(call, picture);
    return nullptr;
}

constexpr MethodRow kMethods[] = {
    {1, "REFRESH",       bind<&CMC_CanvasObserver::refresh>              },
    {2, "ADD",           bind<&CMC_CanvasObserver::add>                  },
    {3, "REMOVE",        bind<&CMC_CanvasObserver::remove>               },
    {4, "SETBACKGROUND", bind<&CMC_CanvasObserver::setBackground>        },
    {5, "GETGRAPHICSAT", {getGraphicsAt, "*"}                            },
    {6, "MOVEBKG",       bind<&CMC_CanvasObserver::moveBackground>       },
    {7, "SETBKGPOS",     bind<&CMC_CanvasObserver::setBackgroundPosition>},
    {8, "SAVE",          {save, "*"}                                     },
    {9, "ENABLENOTIFY",  bind<&CMC_CanvasObserver::enableNotify>         },
};
static_assert(isMethodTable(kMethods));

}  // namespace

CMC_CanvasObserver::CMC_CanvasObserver(CMC_Scene* scene, CMElement* element)
    : CMC_Object(scene, element, kType), window_(scene->getWindow()) {
    listen();
    initializeBehaviours(scene, element);
}

CMC_CanvasObserver::CMC_CanvasObserver(CMC_Scene* scene)
    : CMC_Object("tempCANVAS", kType), window_(scene->getWindow()) {
    setScene(scene);
    listen();
}

CMC_CanvasObserver::~CMC_CanvasObserver() { letGo(); }

CRefreshScreen* CMC_CanvasObserver::getScreen() const { return window_->GetRefreshScreenInterface(); }

void CMC_CanvasObserver::listen() {
    if (CRefreshScreen* screen = getScreen()) screen->addNotifier(this);
}

void CMC_CanvasObserver::letGo() {
    if (CRefreshScreen* screen = getScreen()) screen->removeNotifier(this);
}

bool CMC_CanvasObserver::done(bool keep) {
    const bool result = CMC_Object::done(keep);
    letGo();
    return result;
}

void CMC_CanvasObserver::retire() {
    CMC_Object::retire();
    letGo();
}

std::span<const std::string_view> CMC_CanvasObserver::getBehavioursList() const { return kSignals; }

void CMC_CanvasObserver::tell(int signal) {
    if (isSignalUsed(signal)) onSignal(CXString(kSignals[static_cast<std::size_t>(signal)]));
}

void CMC_CanvasObserver::onInitialUpdate() { tell(kOnInitialUpdate); }
void CMC_CanvasObserver::onUpdate() { tell(kOnUpdate); }
void CMC_CanvasObserver::onUpdated() { tell(kOnUpdated); }
void CMC_CanvasObserver::onWindowFocusOn() { tell(kOnWindowFocusOn); }
void CMC_CanvasObserver::onWindowFocusOff() { tell(kOnWindowFocusOff); }

void CMC_CanvasObserver::refresh() {
    if (CRefreshScreen* screen = getScreen()) screen->Invalidate(kWhole);
}

void CMC_CanvasObserver::add(const CXString& name, int priority) {
    CGraphicsObject* graphic = getScene() ? getScene()->getGraphicsObject(name) : nullptr;
    CRefreshScreen* screen = getScreen();
    if (graphic && screen) screen->put(graphic, priority);
}

void CMC_CanvasObserver::remove(const CXString& name) {
    CGraphicsObject* graphic = getScene() ? getScene()->getGraphicsObject(name) : nullptr;
    CRefreshScreen* screen = getScreen();
    if (graphic && screen) *screen >> graphic;
}

void CMC_CanvasObserver::setBackground(const CXString& name) {
    CRefreshScreen* screen = getScreen();
    if (!screen) return;
    if (CGraphicsObject* graphic = getScene() ? getScene()->getGraphicsObject(name) : nullptr) {
        screen->SetBackground(graphic);
    } else {
        screen->SetBackground(name);
    }
}

void CMC_CanvasObserver::moveBackground(int dx, int dy) {
    CRefreshScreen* screen = getScreen();
    CDirectDrawSurface* background = screen ? screen->getBackgroundIfc() : nullptr;
    if (!background) return;
    background->Move(dx, dy);
    screen->Invalidate(kWhole);
}

void CMC_CanvasObserver::setBackgroundPosition(int x, int y) {
    CRefreshScreen* screen = getScreen();
    CDirectDrawSurface* background = screen ? screen->getBackgroundIfc() : nullptr;
    if (!background) return;
    background->setPosition(x, y);
    screen->Invalidate(kWhole);
}

void CMC_CanvasObserver::enableNotify(bool on) {
    if (CRefreshScreen* screen = getScreen()) screen->enableNotifyFlag(on);
}

void CMC_CanvasObserver_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
