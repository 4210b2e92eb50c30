// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "input/dialog_object.h"

#include <array>

#include "animation/animo_object.h"
#include "animation/image_object.h"
#include "input/button_object.h"
#include "input/dialog.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "structure/scene.h"
#include "text/multiline_text.h"
#include "text/text_object.h"

namespace {

constexpr std::array<std::string_view, 3> kSignals = {"ONINIT", "ONDONE", "ONSIGNAL"};

constexpr MethodRow kMethods[] = {
    {1, "SHOW",          bind<&CMC_Dialog::show>         },
    {2, "HIDE",          bind<&CMC_Dialog::hide>         },
    {3, "SETBACKGROUND", bind<&CMC_Dialog::setBackground>},
    {4, "ADD",           bind<&CMC_Dialog::add>          },
};
static_assert(isMethodTable(kMethods));

// Null: not an IMAGE or ANIMO.
CGraphicsObject* pictureOf(const CMC_Object* object) {
    const int type = object ? object->getType() : 0;
    const bool isPicture = type == CMC_Animo::kType || type == CMC_Image::kType;
    return isPicture ? static_cast<const CMC_Picture*>(object)->getGraphic() : nullptr;
}

}  // namespace

CMC_Dialog::CMC_Dialog(CMC_Scene* scene, CMElement* element)
    : CMC_Object(scene, element, kType), dialog_(std::make_unique<CXDialog>(scene)) {
    initializeBehaviours(scene, element);
}

CMC_Dialog::~CMC_Dialog() { destroyLate(std::move(dialog_)); }

void CMC_Dialog::retire() {
    CMC_Object::retire();
    dialog_->retire();
}

std::span<const std::string_view> CMC_Dialog::getBehavioursList() const { return kSignals; }

void CMC_Dialog::show() { dialog_->show(); }
void CMC_Dialog::hide() { dialog_->hide(); }

void CMC_Dialog::setBackground(const CXString& name) {
    dialog_->setBackground(pictureOf(getScene()->lookUp(name.view())));
}

void CMC_Dialog::add(const CXString& name) {
    const CMC_Object* object = getScene()->lookUp(name.view());
    const int type = object ? object->getType() : 0;
    if (type == CMC_Button::kType) {
        dialog_->add(static_cast<const CMC_Button*>(object)->getButton());
    } else if (type == CMC_Text::kType) {
        dialog_->add(static_cast<const CMC_Text*>(object)->getText());
    } else {
        dialog_->add(pictureOf(object));
    }
}

void CMC_Dialog_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
