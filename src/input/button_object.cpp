// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "input/button_object.h"

#include <array>

#include "frame/unit.h"
#include "graphics/graphics_object.h"
#include "input/button.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "sound/sound_object.h"
#include "structure/scene.h"

namespace {

constexpr std::array<std::string_view, 12> kSignals = {"ONINIT",     "ONDONE",          "ONSIGNAL",   "ONFOCUSON",
                                                       "ONFOCUSOFF", "ONPAUSED",        "ONCLICKED",  "ONRELEASED",
                                                       "ONACTION",   "ONSTARTDRAGGING", "ONDRAGGING", "ONENDDRAGGING"};
enum Signal {
    kOnFocusOn = 3,
    kOnFocusOff,
    kOnPaused,  // nothing raises it
    kOnClicked,
    kOnReleased,
    kOnAction,
    kOnStartDragging,
    kOnDragging,
    kOnEndDragging
};

CMC_Variable* setRect(const MethodCall& call) {
    auto* button = static_cast<CMC_Button*>(call.object);
    if (call.count() == 1) {
        button->setRectLike(call.text(0));
    } else {
        button->setRect(CXRect{call.integer(0), call.integer(1), call.integer(2), call.integer(3)});
    }
    return nullptr;
}

constexpr MethodRow kMethods[] = {
    {1,  "SETRECT",           {setRect, "*"}                      },
    {2,  "ENABLE",            bind<&CMC_Button::enable>           },
    {3,  "DISABLE",           bind<&CMC_Button::disable>          },
    {4,  "ENABLEDRAGGING",    bind<&CMC_Button::enableDragging>   },
    {5,  "DISABLEDRAGGING",   bind<&CMC_Button::disableDragging>  },
    {6,  "DISABLEBUTVISIBLE", bind<&CMC_Button::disableButVisible>},
    {7,  "ACCENT",            bind<&CMC_Button::accent>           },
    {8,  "SETSTD",            bind<&CMC_Button::setStd>           },
    {9,  "SETONMOVE",         bind<&CMC_Button::setOnMove>        },
    {10, "SETONCLICK",        bind<&CMC_Button::setOnClick>       },
    {11, "SETPRIORITY",       bind<&CMC_Button::setPriority>      },
    {12, "GETPRIORITY",       bind<&CMC_Button::getPriority>      },
    {13, "GETSTD",            bind<&CMC_Button::getStd>           },
    {14, "GETONMOVE",         bind<&CMC_Button::getOnMove>        },
    {15, "GETONCLICK",        bind<&CMC_Button::getOnClick>       },
};
static_assert(isMethodTable(kMethods));

}  // namespace

// ORDER: as they are stored.
const PropertyRow<CMC_Button::Properties> CMC_Button::kProperties[] = {
    {"ACCENT",      &Properties::accent,        1 },
    {"GFXSTANDARD", &Properties::standard,      2 },
    {"GFXONMOVE",   &Properties::onMove,        3 },
    {"GFXONCLICK",  &Properties::onClick,       4 },
    {"SNDSTANDARD", &Properties::standardSound, 5 },
    {"SNDONMOVE",   &Properties::onMoveSound,   6 },
    {"SNDONCLICK",  &Properties::onClickSound,  7 },
    {"DRAG",        &Properties::drag,          8 },
    {"RECT",        &Properties::rect,          9 },
    {"ENABLE",      &Properties::enable,        10},
    {"DRAGGABLE",   &Properties::draggable,     11},
    {"PRIORITY",    &Properties::priority,      12},
};

CMC_Button::CMC_Button(CMC_Scene* scene, CMElement* element) : CMC_Object(scene, element, kType) {
    readProperties<Properties>(element, kProperties, properties_);
    createButton();
    initializeBehaviours(scene, element);
}

CMC_Button::CMC_Button(CMC_Scene* scene, std::unique_ptr<CButton> button, const CXString& name)
    : CMC_Object(name, kType), button_(std::move(button)) {
    setScene(scene);
    button_->addNotifier(this);
}

CMC_Button::~CMC_Button() { letGo(); }

// ORDER: the standard graphic takes shape and dragging over, and the accent does so last of all.
void CMC_Button::createButton() {
    if (button_) {
        letGo();
        destroyLate(std::move(button_));
    }
    const Properties& given = properties_;
    CUnit6* unit = getScene()->getUnit();
    const CXRect rect = given.rect.IsString() ? rectLike(given.rect) : CXRect();
    button_ = std::make_unique<CButton>(getScene()->getWindow(), rect, -1, nullptr, 0);
    button_->addNotifier(this);
    if (unit) button_->addNotifier(unit);
    button_->EnableDragging(given.draggable);
    button_->setUnit(unit);
    button_->setPriority(given.priority);
    if (given.draggable) button_->SetDragging(graphic(given.drag));
    if (given.standard.IsString()) button_->Set(graphic(given.standard), nullptr, true);
    CSound4* moveSound = sound(given.onMoveSound);
    if (moveSound || given.onMove.IsString()) button_->SetOnMove(graphic(given.onMove), moveSound);
    button_->SetOnClick(graphic(given.onClick), sound(given.onClickSound));
    button_->SetDeleteFlags(false, false);
    button_->Enable(given.enable);
    if (given.accent.IsString()) accent(given.accent);
}

CXObject* CMC_Button::clone() {
    std::unique_ptr<CButton> copy(static_cast<CButton*>(button_->clone()));
    auto* object = new CMC_Button(getScene(), std::move(copy), "clone");
    if (CUnit6* unit = getScene()->getUnit()) object->button_->addNotifier(unit);
    object->properties_ = properties_;
    return object;
}

bool CMC_Button::done(bool keep) {
    const bool result = CMC_Object::done(keep);
    letGo();
    return result;
}

void CMC_Button::retire() {
    CMC_Object::retire();
    letGo();
}

void CMC_Button::letGo() {
    button_->removeNotifier(this);
    if (button_->retire()) getScene()->setDraggedName("");
}

std::span<const std::string_view> CMC_Button::getBehavioursList() const { return kSignals; }

void CMC_Button::serialize(CXArchive* archive) {
    CMC_Object::serialize(archive);
    serializeRecord<Properties>(archive, kProperties, properties_);
    if (!archive->isStoring()) createButton();
}

CGraphicsObject* CMC_Button::graphic(const CXString& name) const { return getScene()->getGraphicsObject(name); }

CSound4* CMC_Button::sound(const CXString& name) const {
    CMC_Object* object = name.IsString() ? getScene()->lookUp(name.view()) : nullptr;
    return object && object->getType() == CMC_Sound::kType ? static_cast<CMC_Sound*>(object)->getSound() : nullptr;
}

CXString CMC_Button::nameOf(CGraphicsObject* graphic) const { return getScene()->getGraphicsObjectName(graphic); }

CXRect CMC_Button::rectLike(const CXString& text) const {
    const CGraphicsObject* like = graphic(text);
    return like ? like->GetBoundingBox() : text.toRect();
}

void CMC_Button::tell(int signal) {
    if (isSignalUsed(signal)) onSignal(CXString(kSignals[static_cast<std::size_t>(signal)]));
}

void CMC_Button::onControlFocusOn(CControl*, CXPoint) { tell(kOnFocusOn); }
void CMC_Button::onControlFocusOff(CControl*, CXPoint) { tell(kOnFocusOff); }
void CMC_Button::onControlClicked(CControl*, CXPoint) { tell(kOnClicked); }
void CMC_Button::onControlReleased(CControl*, CXPoint) { tell(kOnReleased); }
void CMC_Button::onControlAction(CControl*, CXPoint) { tell(kOnAction); }

void CMC_Button::onStartDragging(CControl*, CXPoint) {
    CGraphicsObject* dragged = button_->GetDragging() ? button_->GetDragging() : button_->GetStandard();
    getScene()->setDraggedName(nameOf(dragged));
    tell(kOnStartDragging);
}

void CMC_Button::onDragging(CControl*, CXPoint) { tell(kOnDragging); }

void CMC_Button::onEndDragging(CControl*, CXPoint) {
    const ScriptScope scope;
    tell(kOnEndDragging);
    getScene()->setDraggedName("");
}

void CMC_Button::setRect(const CXRect& rect) { button_->SetActiveRect(rect); }

void CMC_Button::setRectLike(const CXString& text) {
    const CXRect rect = rectLike(text);
    if (!rect.IsEmpty()) setRect(rect);
}

void CMC_Button::enable() { button_->Enable(true); }
void CMC_Button::disable() { button_->Enable(false); }
void CMC_Button::enableDragging() { button_->EnableDragging(true); }
void CMC_Button::disableDragging() { button_->EnableDragging(false); }
void CMC_Button::disableButVisible() { button_->DisableButVisible(); }

void CMC_Button::accent(const CXString& name) {
    if (CGraphicsObject* shape = graphic(name)) button_->Accent(shape);
}

void CMC_Button::setStd(const CXString& name, bool remove) { button_->Set(graphic(name), nullptr, remove); }
void CMC_Button::setOnMove(const CXString& name) { button_->SetOnMove(graphic(name), button_->GetSOOnMove()); }
void CMC_Button::setOnClick(const CXString& name) { button_->SetOnClick(graphic(name), button_->GetSOOnClick()); }
void CMC_Button::setPriority(int priority) { button_->setPriority(priority); }
int CMC_Button::getPriority() const { return button_->getPriority(); }
CXString CMC_Button::getStd() const { return nameOf(button_->GetStandard()); }
CXString CMC_Button::getOnMove() const { return nameOf(button_->GetOnMove()); }
CXString CMC_Button::getOnClick() const { return nameOf(button_->GetOnClick()); }

void CMC_Button_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
