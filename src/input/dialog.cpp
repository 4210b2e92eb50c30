// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "input/dialog.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "frame/window.h"
#include "graphics/refresh_screen.h"
#include "input/button.h"
#include "script/lifetime.h"
#include "structure/scene.h"

namespace {
constexpr int kStripId = 214'290;
constexpr int kStripHeight = 30;
constexpr int kBackgroundPriority = 100'000;
constexpr int kRaisedBy = 100'001;
}  // namespace

CXDialog::CXDialog(CMC_Scene* scene) : scene_(scene) {}

CXDialog::~CXDialog() { retire(); }

void CXDialog::retire() {
    if (!strip_) return;
    strip_->removeNotifier(this);
    strip_->retire();
    destroyLate(std::move(strip_));
}

CXRect CXDialog::stripRect() const {
    CXRect rect = background_->GetBoundingBox();
    rect.bottom = (rect.LeftTop() + CXPoint(0, kStripHeight)).y;
    return rect;
}

// A former background stays where it is on the screen.
void CXDialog::setBackground(CGraphicsObject* graphic) {
    if (!graphic) return;
    retire();
    background_ = graphic;
    position_ = graphic->GetBoundingBox().LeftTop();
    strip_ = std::make_unique<CButton>(scene_->getWindow(), stripRect(), kStripId, nullptr, 0);
    strip_->addNotifier(this);
    strip_->setUnit(scene_->getUnit());
    strip_->SetDeleteFlags(false, false);
    strip_->Set(graphic, nullptr, true);
    strip_->EnableDragging(true);
    strip_->EnableCursor(false);
    if (CRefreshScreen* screen = scene_->getWindow()->GetRefreshScreenInterface()) {
        *screen >> graphic;
        screen->put(graphic, kBackgroundPriority);
    }
}

// What isn't on the screen yet is put above the background, as if its priority were 0.
void CXDialog::raise(CGraphicsObject* graphic) {
    CRefreshScreen* screen = scene_->getWindow()->GetRefreshScreenInterface();
    if (!screen || !graphic) return;
    const std::int64_t raised = std::int64_t{std::max(screen->GetPriority(graphic), 0)} + kRaisedBy;
    *screen >> graphic;
    screen->put(graphic, static_cast<int>(std::min<std::int64_t>(raised, std::numeric_limits<int>::max())));
}

void CXDialog::add(CGraphicsObject* graphic) {
    const auto has = [graphic](const auto& link) { return link->get() == graphic; };
    if (!graphic || std::any_of(graphics_.begin(), graphics_.end(), has)) return;
    raise(graphic);
    graphics_.push_back(std::make_unique<GraphicsLink>());
    *graphics_.back() = graphic;
}

// One graphic may stand for several states of the button: it is raised once.
void CXDialog::add(CButton* button) {
    const std::vector<CButton*> listed = buttons();
    if (!button || std::find(listed.begin(), listed.end(), button) != listed.end()) return;
    CGraphicsObject* standard = button->GetStandard();
    CGraphicsObject* onMove = button->GetOnMove();
    CGraphicsObject* onClick = button->GetOnClick();
    raise(standard);
    if (onMove != standard) raise(onMove);
    if (onClick != standard && onClick != onMove) raise(onClick);
    buttons_.push_back({button, button->life()});
}

std::vector<CGraphicsObject*> CXDialog::graphics() const {
    std::vector<CGraphicsObject*> living;
    for (const auto& link : graphics_)
        if (*link) living.push_back(link->get());
    return living;
}

std::vector<CButton*> CXDialog::buttons() const {
    std::vector<CButton*> living;
    for (const ButtonEntry& entry : buttons_)
        if (!entry.life.expired()) living.push_back(entry.button);
    return living;
}

void CXDialog::show() { show(true); }

void CXDialog::hide() {
    show(false);
    if (background_) background_->Visible(false);
}

void CXDialog::show(bool visible) {
    for (CGraphicsObject* graphic : graphics())
        graphic->Visible(visible);
    for (CButton* button : buttons())
        button->Enable(visible);
}

// Handlers of collisions may take any of them away: the scope keeps those until all have moved.
void CXDialog::move(int dx, int dy) {
    const ScriptScope scope;
    for (CGraphicsObject* graphic : graphics())
        graphic->Move(dx, dy);
    for (CButton* button : buttons())
        button->Move(dx, dy);
}

void CXDialog::onStartDragging(CControl*, CXPoint point) { position_ = point; }

void CXDialog::onDragging(CControl*, CXPoint point) {
    const CXPoint by = point - position_;
    position_ = point;
    move(by.x, by.y);
}

void CXDialog::onEndDragging(CControl*, CXPoint) {
    if (background_ && strip_) strip_->SetActiveRect(stripRect());
}
