// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/scroll_object.h"

#include <array>

#include "definition/element.h"
#include "frame/window.h"
#include "graphics/refresh_screen.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "storage/archive.h"
#include "structure/scene.h"

namespace {

// Nothing fires the last four.
constexpr std::array<std::string_view, 7> kSignals = {"ONINIT",   "ONDONE", "ONSIGNAL", "ONTOP",
                                                      "ONBOTTOM", "ONLEFT", "ONRIGHT"};

constexpr MethodRow kMethods[] = {
    {1, "ADD",          bind<&CMC_Scroll::add>         },
    {2, "REMOVE",       bind<&CMC_Scroll::remove>      },
    {3, "SCROLLUP",     bind<&CMC_Scroll::scrollUp>    },
    {4, "SCROLLDOWN",   bind<&CMC_Scroll::scrollDown>  },
    {5, "SCROLLLEFT",   bind<&CMC_Scroll::scrollLeft>  },
    {6, "SCROLLRIGHT",  bind<&CMC_Scroll::scrollRight> },
    {7, "SETVIEWPORT",  bind<&CMC_Scroll::setViewport> },
    {8, "MOVEVIEWPORT", bind<&CMC_Scroll::moveViewport>},
};
static_assert(isMethodTable(kMethods));

}  // namespace

CMC_Scroll::CMC_Scroll(CMC_Scene* scene, CMElement* element)
    : CMC_Object(scene, element, kType), viewport_(element->getPropertyRectValue("VIEWPORT")) {
    initializeBehaviours(scene, element);
}

CMC_Scroll::~CMC_Scroll() { letGo(); }

void CMC_Scroll::letGo() {
    members_.removeIf([](const Member&) { return true; },
                      [this](CGraphicsObject* object) { object->removeInvalidateObserver(this); });
}

bool CMC_Scroll::done(bool keep) {
    const bool result = CMC_Object::done(keep);
    letGo();
    return result;
}

void CMC_Scroll::retire() {
    CMC_Object::retire();
    letGo();
}

void CMC_Scroll::serialize(CXArchive* archive) {
    CMC_Object::serialize(archive);
    if (archive->isStoring()) {
        *archive << viewport_;
    } else {
        *archive >> viewport_;
    }
}

std::span<const std::string_view> CMC_Scroll::getBehavioursList() const { return kSignals; }

void CMC_Scroll::onDestroy(CGraphicsObject* object) {
    members_.removeIf([=](const Member& member) { return member.object == object; },
                      [this](CGraphicsObject* gone) { gone->removeInvalidateObserver(this); });
}

void CMC_Scroll::clip(CGraphicsObject* object) const {
    CXRect seen = object->GetBoundingBox().Common(viewport_);
    if (seen.IsEmpty()) {
        if (object->isVisible()) object->Visible(false);
        return;
    }
    object->SetClippingRect(seen -= object->GetPosition());
    if (!object->isVisible()) object->Visible(true);
}

void CMC_Scroll::add(const CXString& name) {
    CGraphicsObject* object = getScene() && !isRetired() ? getScene()->getGraphicsObject(name) : nullptr;
    if (!object) return;
    clip(object);
    if (members_.contains(object)) return;
    members_.add({object});
    object->addInvalidateObserver(this);
}

void CMC_Scroll::remove(const CXString& name) {
    CGraphicsObject* object = getScene() ? getScene()->getGraphicsObject(name) : nullptr;
    if (!object || !members_.contains(object)) return;
    onDestroy(object);
    object->SetClippingRect({});
}

void CMC_Scroll::scroll(const CXPoint& by) {
    // A member that moves may meet another, and what a handler does then may reach the members and this object.
    const ScriptScope scope;
    offset_ = offset_ + by;
    bool any = false;
    members_.walk([&](const Member& member) {
        any = true;
        member.object->SetClippingRect({});
        member.object->Move(by);
        if (member.object) clip(member.object);
    });
    CMC_Scene* scene = any ? getScene() : nullptr;
    CRefreshScreen* screen = scene ? scene->getWindow()->GetRefreshScreenInterface() : nullptr;
    if (screen) screen->Invalidate(static_cast<const CXRect*>(nullptr));
}

void CMC_Scroll::clipAgain() {
    members_.walk([this](const Member& member) {
        member.object->SetClippingRect({});
        clip(member.object);
    });
}

void CMC_Scroll::setViewport(int left, int top, int right, int bottom) {
    viewport_ = {left, top, right, bottom};
    clipAgain();
}

void CMC_Scroll::moveViewport(int dx, int dy) {
    viewport_ += {dx, dy};
    clipAgain();
}

void CMC_Scroll_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
