// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "text/text_object.h"

#include <array>

#include "animation/graphic_methods.h"
#include "frame/window.h"
#include "graphics/refresh_screen.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "structure/scene.h"
#include "text/font_collection.h"
#include "text/font_object.h"
#include "text/multiline_text.h"

namespace {

constexpr std::array<std::string_view, 5> kSignals = {"ONINIT", "ONDONE", "ONSIGNAL", "ONCOLLISION",
                                                      "ONCOLLISIONFINISHED"};

struct JustifyWord {
    std::string_view word;
    _justify where;
};

constexpr JustifyWord kJustifyWords[] = {
    {"LEFT",   kJustifyLeft  },
    {"RIGHT",  kJustifyRight },
    {"CENTER", kJustifyCenter},
    {"TOP",    kJustifyTop   },
    {"BOTTOM", kJustifyBottom},
};

CMC_Text& text(const MethodCall& call) { return static_cast<CMC_Text&>(*call.object); }

// (four edges, horizontal, vertical), or (object, horizontal, vertical).
CMC_Variable* setJustify(const MethodCall& call) {
    constexpr int kWithEdges = 6;
    const bool hasEdges = call.count() >= kWithEdges;
    CXRect rect;
    if (hasEdges) {
        rect.left = call.integer(0);
        rect.top = call.integer(1);
        rect.right = call.integer(2);
        rect.bottom = call.integer(3);
    } else if (const CGraphicsObject* named = call.scene ? call.scene->getGraphicsObject(call.text(0)) : nullptr) {
        rect = named->GetBoundingBox();
    }
    const CXString horizontal = call.text(hasEdges ? 4 : 1);
    text(call).setJustify(rect, horizontal, call.text(hasEdges ? 5 : 2));
    return nullptr;
}

CMC_Variable* setClipping(const MethodCall& call) {
    if (CMultilineText6* shown = text(call).getText()) graphic::clip(call, shown);
    return nullptr;
}

CMC_Variable* isNear(const MethodCall& call) {
    CMultilineText6* shown = text(call).getText();
    return toScript(shown && graphic::isNear(call, shown));
}

constexpr MethodRow kMethods[] = {
    {1,  "SETTEXT",       bind<&CMC_Text::setText>      },
    {2,  "SETJUSTIFY",    {setJustify, "*"}             },
    {3,  "SHOW",          bind<&CMC_Text::show>         },
    {4,  "HIDE",          bind<&CMC_Text::hide>         },
    {5,  "SETPOSITION",   bind<&CMC_Text::setPosition>  },
    {6,  "MOVE",          bind<&CMC_Text::move>         },
    {7,  "LOAD",          bind<&CMC_Text::load>         },
    {8,  "CLEARCLIPPING", bind<&CMC_Text::clearClipping>},
    {9,  "SETCLIPPING",   {setClipping, "*"}            },
    {10, "GETPOSITIONX",  bind<&CMC_Text::getPositionX> },
    {11, "GETPOSITIONY",  bind<&CMC_Text::getPositionY> },
    {12, "GETWIDTH",      bind<&CMC_Text::getWidth>     },
    {13, "GETHEIGHT",     bind<&CMC_Text::getHeight>    },
    {14, "ISNEAR",        {isNear, "*"}                 },
    {15, "SETPRIORITY",   bind<&CMC_Text::setPriority>  },
    {16, "SETCOLOR",      bind<&CMC_Text::setColor>     },
};
static_assert(isMethodTable(kMethods));

}  // namespace

// ORDER: as the keys are read.
const PropertyRow<CMC_Text::Properties> CMC_Text::kProperties[] = {
    {"TOCANVAS", &Properties::toCanvas,   6},
    {"VISIBLE",  &Properties::visible,    7},
    {"TEXT",     &Properties::text,       8},
    {"VJUSTIFY", &Properties::vertical,   1},
    {"HJUSTIFY", &Properties::horizontal, 2},
    {"RECT",     &Properties::rect,       3},
    {"PRIORITY", &Properties::priority,   4},
    {"FONT",     &Properties::font,       5},
};

CMC_Text::CMC_Text(CMC_Scene* scene, CMElement* element)
    : CMC_Object(scene, element, kType), window_(scene->getWindow()) {
    readProperties<Properties>(element, kProperties, properties_);
    build();
    initializeBehaviours(scene, element);
}

CMC_Text::~CMC_Text() { letGo(); }

_justify CMC_Text::resolveJustify(const CXString& word) {
    for (const JustifyWord& row : kJustifyWords) {
        if (word.view() == row.word) return row.where;
    }
    return kJustifyCenter;
}

// A FONT that isn't there leaves a text that measures and shows nothing.
void CMC_Text::build() {
    letGo();
    CMC_Object* font = getScene()->lookUp(properties_.font.view());
    const CGraphicsObject* named = getScene()->getGraphicsObject(properties_.rect);
    const CXRect rect = named ? named->GetBoundingBox() : CMProperty("RECT", properties_.rect).getRectValue();
    text_ = std::make_unique<CMultilineText6>(window_, nullptr);
    text_->setJustify(rect, resolveJustify(properties_.horizontal), resolveJustify(properties_.vertical));
    if (font && font->getType() == CMC_Font::kType) text_->setFont(static_cast<CMC_Font*>(font)->getCollection());
    text_->setText(properties_.text);
    CRefreshScreen* screen = window_->GetRefreshScreenInterface();
    if (screen && properties_.toCanvas) screen->put(text_.get(), properties_.priority);
    text_->Visible(properties_.visible);
}

// Where the text stood the screen is painted anew. Whoever gave it up may be called by it at this moment.
void CMC_Text::letGo() {
    if (!text_) return;
    text_->Visible(false);
    if (CRefreshScreen* screen = text_->GetCanvas()) *screen >> text_.get();
    destroyLate(std::move(text_));
}

bool CMC_Text::done(bool keep) {
    const bool result = CMC_Object::done(keep);
    letGo();
    return result;
}

void CMC_Text::retire() {
    CMC_Object::retire();
    letGo();
}

void CMC_Text::serialize(CXArchive* archive) {
    CMC_Object::serialize(archive);
    if (!archive->isStoring()) {
        serializeRecord<Properties>(archive, kProperties, properties_);
        build();
        return;
    }
    if (text_) {
        const CRefreshScreen* screen = text_->GetCanvas();
        const int priority = screen ? screen->GetPriority(text_.get()) : -1;
        properties_.toCanvas = priority != -1;
        if (priority != -1) properties_.priority = priority;
        properties_.visible = text_->isVisible();
        properties_.text = text_->getText();
    }
    serializeRecord<Properties>(archive, kProperties, properties_);
}

std::span<const std::string_view> CMC_Text::getBehavioursList() const { return kSignals; }

void CMC_Text::setText(const CXString& text) {
    if (text_) text_->setText(text);
}

void CMC_Text::setJustify(const CXRect& rect, const CXString& horizontal, const CXString& vertical) {
    if (!text_) return;
    text_->Invalidate();
    text_->setJustify(rect, resolveJustify(horizontal), resolveJustify(vertical));
    text_->Invalidate();
}

void CMC_Text::show() {
    if (text_) text_->Visible(true);
}

void CMC_Text::hide() {
    if (text_) text_->Visible(false);
}

void CMC_Text::setPosition(int x, int y) {
    if (!text_) return;
    text_->Invalidate();
    text_->setPosition(x, y);
    text_->Invalidate();
}

void CMC_Text::move(int dx, int dy) {
    if (text_) text_->Move(dx, dy);
}

void CMC_Text::load(const CXString& file) {
    if (text_) text_->Load(file);
}

void CMC_Text::clearClipping() {
    if (text_) text_->SetClippingRect({});
}

int CMC_Text::getPositionX() const { return text_ ? text_->GetPosition().x : 0; }
int CMC_Text::getPositionY() const { return text_ ? text_->GetPosition().y : 0; }
int CMC_Text::getWidth() const { return text_ ? text_->Width() : 0; }
int CMC_Text::getHeight() const { return text_ ? text_->Height() : 0; }

void CMC_Text::setPriority(int priority) {
    if (!text_) return;
    if (CRefreshScreen* screen = window_->GetRefreshScreenInterface()) screen->SetPriority(text_.get(), priority);
}

void CMC_Text::setColor(int colour) {
    if (text_) text_->setColor(colour);
}

void CMC_Text_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
