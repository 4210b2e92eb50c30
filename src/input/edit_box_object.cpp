// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "input/edit_box_object.h"

#include <array>

#include "definition/element.h"
#include "frame/unit.h"
#include "script/method_table.h"
#include "storage/archive.h"
#include "structure/scene.h"
#include "text/font_collection.h"
#include "text/font_object.h"

namespace {

constexpr std::array<std::string_view, 8> kSignals = {"ONINIT",     "ONDONE",    "ONSIGNAL", "ONFOCUSON",
                                                      "ONFOCUSOFF", "ONCHANGED", "ONENTER",  "ONESC"};
enum Signal { kOnFocusOn = 3, kOnFocusOff, kOnChanged, kOnEnter, kOnEsc };

constexpr MethodRow kMethods[] = {
    {1, "SETTEXT",  bind<&CMC_EditBox::setText>   },
    {2, "GETTEXT",  bind<&CMC_EditBox::getText>   },
    {3, "ACTIVE",   bind<&CMC_EditBox::activate>  },
    {4, "DEACTIVE", bind<&CMC_EditBox::deactivate>},
    {5, "ENABLE",   bind<&CMC_EditBox::enable>    },
    {6, "DISABLE",  bind<&CMC_EditBox::disable>   },
    {7, "ADDTEXT",  bind<&CMC_EditBox::addText>   },
};
static_assert(isMethodTable(kMethods));

}  // namespace

CMC_EditBox::CMC_EditBox(CMC_Scene* scene, CMElement* element)
    : CMC_Object(scene, element, kType),
      rect_(element->getPropertyRectValue("RECT")),
      text_(element->getPropertyValue("TEXT")),
      fontName_(element->getPropertyValue("FONT")),
      cursorName_(element->getPropertyValue("CURSOR")) {
    build();
    initializeBehaviours(scene, element);
}

CMC_EditBox::~CMC_EditBox() { letGo(); }

// A FONT that isn't there leaves a box that shows nothing and takes any number of letters.
void CMC_EditBox::build() {
    CEditBox6::discard(box_.get());
    box_ = nullptr;
    CUnit6* unit = getScene()->getUnit();
    if (!unit) return;
    CMC_Object* object = getScene()->lookUp(fontName_.view());
    const bool isFont = object && object->getType() == CMC_Font::kType;
    CSimpleFont6* font = isFont ? static_cast<CMC_Font*>(object)->getCollection() : nullptr;
    box_ = unit->addEditBox(font, rect_, text_);
    if (!box_) return;
    box_->addNotifier(this);
    if (CGraphicsObject* cursor = getScene()->getGraphicsObject(cursorName_)) box_->setCursor(cursor);
}

void CMC_EditBox::letGo() {
    if (box_) box_->removeNotifier(this);
}

bool CMC_EditBox::done(bool keep) {
    const bool result = CMC_Object::done(keep);
    letGo();
    return result;
}

void CMC_EditBox::retire() {
    CMC_Object::retire();
    letGo();
}

void CMC_EditBox::serialize(CXArchive* archive) {
    CMC_Object::serialize(archive);
    if (archive->isStoring()) {
        *archive << fontName_ << rect_ << (box_ ? box_->getText() : text_) << cursorName_;
    } else {
        *archive >> fontName_ >> rect_ >> text_ >> cursorName_;
        build();
    }
}

std::span<const std::string_view> CMC_EditBox::getBehavioursList() const { return kSignals; }

void CMC_EditBox::tell(int signal) {
    if (isSignalUsed(signal)) onSignal(CXString(kSignals[static_cast<std::size_t>(signal)]));
}

void CMC_EditBox::onFocusOn(CEditBox6*) { tell(kOnFocusOn); }
void CMC_EditBox::onFocusOff(CEditBox6*) { tell(kOnFocusOff); }
void CMC_EditBox::onChanged(CEditBox6*) { tell(kOnChanged); }
void CMC_EditBox::onEnter(CEditBox6*) { tell(kOnEnter); }
void CMC_EditBox::onEsc(CEditBox6*) { tell(kOnEsc); }

void CMC_EditBox::setText(const CXString& text) {
    if (box_) box_->setText(text);
}

CXString CMC_EditBox::getText() const { return box_ ? box_->getText() : CXString(); }

void CMC_EditBox::activate() {
    if (box_) box_->activate(true);
}

void CMC_EditBox::deactivate() {
    if (box_) box_->activate(false);
}

void CMC_EditBox::enable() {
    if (box_) box_->enable(true);
}

void CMC_EditBox::disable() {
    if (box_) box_->enable(false);
}

void CMC_EditBox::addText(const CXString& text) { setText(getText() + text); }

void CMC_EditBox_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
