// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/pattern_object.h"

#include <array>
#include <utility>

#include "frame/window.h"
#include "graphics/refresh_screen.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "structure/scene.h"

namespace {

constexpr std::array<std::string_view, 7> kSignals = {"ONINIT",     "ONDONE",  "ONSIGNAL", "ONFOCUSON",
                                                      "ONFOCUSOFF", "ONCLICK", "ONRELEASE"};
constexpr int kOnFocusOn = 3;

constexpr MethodRow kMethods[] = {
    {1, "ADD",     bind<&CMC_Pattern::add>    },
    {2, "SETGRID", bind<&CMC_Pattern::setGrid>},
};
static_assert(isMethodTable(kMethods));

}  // namespace

// ORDER: as the keys are read.
const PropertyRow<CMC_Pattern::Properties> CMC_Pattern::kProperties[] = {
    {"TOCANVAS", &Properties::toCanvas, 0},
    {"VISIBLE",  &Properties::visible,  1},
    {"PRIORITY", &Properties::priority, 2},
    {"WIDTH",    &Properties::width,    3},
    {"HEIGHT",   &Properties::height,   4},
    {"GRIDX",    &Properties::gridX,    5},
    {"GRIDY",    &Properties::gridY,    6},
};

CMC_Pattern::CMC_Pattern(CMC_Scene* scene, CMElement* element) : CMC_MouseTarget(scene, element, kType, kOnFocusOn) {
    readProperties<Properties>(element, kProperties, properties_);
    build();
    if (properties_.toCanvas) putOnScreen();
    initializeBehaviours(scene, element);
}

CMC_Pattern::~CMC_Pattern() { letGo(); }

void CMC_Pattern::build() {
    letGo();
    pattern_ = std::make_unique<CPattern>(window_, CXSize(properties_.width, properties_.height),
                                          CXSize(properties_.gridX, properties_.gridY));
    pattern_->Visible(properties_.visible);
}

void CMC_Pattern::putOnScreen() {
    if (CRefreshScreen* screen = window_->GetRefreshScreenInterface())
        screen->put(pattern_.get(), properties_.priority);
}

// Where the pattern stood the screen is painted anew. Whoever gave it up may be called by it at this moment.
void CMC_Pattern::letGo() {
    stopListening();
    if (!pattern_) return;
    pattern_->Visible(false);
    if (CRefreshScreen* screen = pattern_->GetCanvas()) *screen >> pattern_.get();
    destroyLate(std::move(pattern_));
}

bool CMC_Pattern::done(bool keep) {
    const bool result = CMC_Object::done(keep);
    letGo();
    return result;
}

void CMC_Pattern::retire() {
    CMC_Object::retire();
    letGo();
}

// The sizes go as they were read; what a script made of the grid is not kept.
void CMC_Pattern::serialize(CXArchive* archive) {
    CMC_Object::serialize(archive);
    if (archive->isStoring()) {
        if (pattern_) {
            const CRefreshScreen* screen = pattern_->GetCanvas();
            properties_.visible = pattern_->isVisible();
            properties_.priority = screen ? screen->GetPriority(pattern_.get()) : -1;
        }
        serializeRecord<Properties>(archive, kProperties, properties_);
        return;
    }
    serializeRecord<Properties>(archive, kProperties, properties_);
    build();
    if (properties_.priority >= 0) putOnScreen();
}

std::span<const std::string_view> CMC_Pattern::getBehavioursList() const { return kSignals; }

void CMC_Pattern::add(const CXString& cellName, int x, int y, const CXString& name, int priority) {
    if (!pattern_ || !getScene()) return;
    if (CGraphicsObject* graphic = getScene()->getGraphicsObject(name))
        pattern_->add(cellName, x, y, graphic, priority);
}

void CMC_Pattern::setGrid(int x, int y) {
    if (pattern_) pattern_->setGrid({x, y});
}

void CMC_Pattern_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
