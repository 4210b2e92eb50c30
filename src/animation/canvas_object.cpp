// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/canvas_object.h"

#include <algorithm>
#include <array>
#include <utility>

#include "animation/graphic_methods.h"
#include "animation/image_object.h"
#include "frame/window.h"
#include "graphics/refresh_screen.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "structure/scene.h"
#include "text/text_object.h"

namespace {

constexpr std::array<std::string_view, 7> kSignals = {"ONINIT",     "ONDONE",  "ONSIGNAL", "ONFOCUSON",
                                                      "ONFOCUSOFF", "ONCLICK", "ONRELEASE"};
constexpr int kOnFocusOn = 3;

CMC_Canvas& canvas(const MethodCall& call) { return static_cast<CMC_Canvas&>(*call.object); }

CMC_Variable* capture(const MethodCall& call) {
    canvas(call).capture(call.count() == 0 || call.truth(0));
    return nullptr;
}

CMC_Variable* setAsButton(const MethodCall& call) {
    const bool asButton = call.truth(0);
    canvas(call).setAsButton(asButton, call.count() < 2 || call.truth(1));
    return nullptr;
}

CMC_Variable* save(const MethodCall& call) {
    if (CCanvas* picture = canvas(call).getCanvas()) graphic::save(call, picture);
    return nullptr;
}

constexpr MethodRow kMethods[] = {
    {1,  "ADD",         bind<&CMC_Canvas::add>        },
    {2,  "REMOVE",      bind<&CMC_Canvas::remove>     },
    {3,  "SHOW",        bind<&CMC_Canvas::show>       },
    {4,  "HIDE",        bind<&CMC_Canvas::hide>       },
    {5,  "SETPRIORITY", bind<&CMC_Canvas::setPriority>},
    {6,  "SETPOSITION", bind<&CMC_Canvas::setPosition>},
    {7,  "MOVE",        bind<&CMC_Canvas::move>       },
    {8,  "CLEAR",       bind<&CMC_Canvas::clear>      },
    {9,  "CAPTURE",     {capture, "b"}                },
    {10, "SETOPACITY",  bind<&CMC_Canvas::setOpacity> },
    {11, "SETASBUTTON", {setAsButton, "bb"}           },
    {12, "ERASE",       bind<&CMC_Canvas::erase>      },
    {13, "DRAW",        bind<&CMC_Canvas::draw>       },
    {14, "SAVE",        {save, "*"}                   },
};
static_assert(isMethodTable(kMethods));

}  // namespace

// ORDER: as the keys are read.
const PropertyRow<CMC_Canvas::Properties> CMC_Canvas::kProperties[] = {
    {"PRIORITY",   &Properties::priority,  3},
    {"WIDTH",      &Properties::width,     1},
    {"HEIGHT",     &Properties::height,    2},
    {"ALPHA",      &Properties::alpha,     4},
    {"BACKGROUND", &Properties::backPlane, 5},
};

CMC_Canvas::CMC_Canvas(CMC_Scene* scene, CMElement* element) : CMC_MouseTarget(scene, element, kType, kOnFocusOn) {
    readProperties<Properties>(element, kProperties, properties_);
    build();
    initializeBehaviours(scene, element);
}

CMC_Canvas::CMC_Canvas(CMC_Scene* scene, std::unique_ptr<CCanvas> canvas)
    : CMC_MouseTarget(scene, "clone", kType, kOnFocusOn), canvas_(std::move(canvas)) {}

CMC_Canvas::~CMC_Canvas() { letGo(); }

void CMC_Canvas::build() {
    letGo();
    canvas_ = std::make_unique<CCanvas>(window_, CXSize(properties_.width, properties_.height), window_->GetBpp(),
                                        properties_.alpha, properties_.backPlane);
    canvas_->clear(false);
    if (CRefreshScreen* screen = window_->GetRefreshScreenInterface()) screen->put(canvas_.get(), properties_.priority);
}

// Where the canvas stood the screen is painted anew. Whoever gave it up may be called by it at this moment.
void CMC_Canvas::letGo() {
    stopListening();
    if (!canvas_) return;
    canvas_->Visible(false);
    if (CRefreshScreen* screen = canvas_->GetCanvas()) *screen >> canvas_.get();
    destroyLate(std::move(canvas_));
}

bool CMC_Canvas::done(bool keep) {
    const bool result = CMC_Object::done(keep);
    letGo();
    return result;
}

void CMC_Canvas::retire() {
    CMC_Object::retire();
    letGo();
}

CXObject* CMC_Canvas::clone() {
    if (!canvas_) return nullptr;
    auto* copy = new CMC_Canvas(getScene(), std::unique_ptr<CCanvas>(static_cast<CCanvas*>(canvas_->clone())));
    copy->properties_ = properties_;
    copy->captured_ = captured_;
    return copy;
}

void CMC_Canvas::serialize(CXArchive* archive) {
    CMC_Object::serialize(archive);
    if (archive->isStoring()) {
        if (const CRefreshScreen* screen = canvas_ ? canvas_->GetCanvas() : nullptr)
            properties_.priority = screen->GetPriority(canvas_.get());
        serializeRecord<Properties>(archive, kProperties, properties_);
        return;
    }
    serializeRecord<Properties>(archive, kProperties, properties_);
    build();
}

std::span<const std::string_view> CMC_Canvas::getBehavioursList() const { return kSignals; }

CGraphicsObject* CMC_Canvas::graphicNamed(const CXString& name) const {
    return canvas_ && getScene() ? getScene()->getGraphicsObject(name) : nullptr;
}

void CMC_Canvas::add(const CXString& name, int priority) {
    CGraphicsObject* graphic = graphicNamed(name);
    if (!graphic) return;
    CMC_Object* object = getScene()->lookUp(name.view());
    const int type = object ? object->getType() : 0;
    if (type == CMC_Text::kType || type == CMC_Image::kType) captured_.emplace_back(object);
    canvas_->add(graphic, priority);
}

void CMC_Canvas::capture(bool takeObjectsOut) {
    if (!canvas_) return;
    // What goes may have handlers that take out this object, too.
    const ScriptScope scope;
    canvas_->capture();
    const std::vector<Ref<CMC_Object>> captured = std::exchange(captured_, {});
    if (!takeObjectsOut) return;
    for (const Ref<CMC_Object>& object : captured)
        CMC_Scene::discard(object.get());
}

void CMC_Canvas::remove(const CXString& name) {
    if (CGraphicsObject* graphic = graphicNamed(name)) canvas_->remove(graphic);
}

void CMC_Canvas::show() {
    if (canvas_) canvas_->Visible(true);
}

void CMC_Canvas::hide() {
    if (canvas_) canvas_->Visible(false);
}

void CMC_Canvas::setPriority(int priority) {
    if (!canvas_) return;
    if (CRefreshScreen* screen = canvas_->GetCanvas()) screen->SetPriority(canvas_.get(), priority);
    canvas_->Invalidate();
}

void CMC_Canvas::setPosition(int x, int y) {
    if (!canvas_) return;
    canvas_->Invalidate();
    canvas_->setPosition(x, y);
    canvas_->Invalidate();
}

void CMC_Canvas::move(int dx, int dy) {
    if (canvas_) canvas_->Move(dx, dy);
}

void CMC_Canvas::clear() {
    if (!canvas_) return;
    canvas_->removeAll();
    canvas_->clear(true);
    canvas_->Invalidate();
}

void CMC_Canvas::setOpacity(int opacity) {
    if (canvas_) canvas_->SetOpacity(opacity);
}

void CMC_Canvas::erase(const CXString& name, int x, int y) {
    if (CGraphicsObject* graphic = graphicNamed(name)) canvas_->erase(graphic, x, y);
}

void CMC_Canvas::draw(const CXString& name, int x, int y) {
    if (CGraphicsObject* graphic = graphicNamed(name)) canvas_->draw(graphic, x, y);
}

void CMC_Canvas::setAsButton(bool asButton, bool changeCursor) {
    asButton_ = asButton;
    changeCursor_ = changeCursor;
}

void CMC_Canvas_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
