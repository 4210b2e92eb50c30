// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "input/mouse.h"

#include <algorithm>
#include <array>

#include "frame/window.h"
#include "platform/platform.h"
#include "script/method_table.h"
#include "structure/scene.h"

namespace {

constexpr int kPriority = 100'002;  // above the unit

constexpr std::array<std::string_view, 7> kSignals = {"ONINIT",  "ONDONE",    "ONSIGNAL",  "ONMOVE",
                                                      "ONCLICK", "ONRELEASE", "ONDBLCLICK"};
enum Signal { kOnMove = 3, kOnClick, kOnRelease, kOnDblClick };

// ORDER: as the buttons are numbered.
constexpr std::array<std::string_view, 3> kButtons = {"LEFT", "MIDDLE", "RIGHT"};
// ORDER: as Cursor.
constexpr std::array<std::string_view, 3> kCursors = {"ARROW", "WAIT", "ACTIVE"};

constexpr MethodRow kMethods[] = {
    {1,  "SHOW",             bind<&CMC_Mouse::show>            },
    {2,  "HIDE",             bind<&CMC_Mouse::hide>            },
    {3,  "ENABLE",           bind<&CMC_Mouse::enable>          },
    {4,  "DISABLE",          bind<&CMC_Mouse::disable>         },
    {5,  "GETPOSX",          bind<&CMC_Mouse::getPosX>         },
    {6,  "GETPOSY",          bind<&CMC_Mouse::getPosY>         },
    {7,  "GETLASTCLICKPOSX", bind<&CMC_Mouse::getLastClickPosX>},
    {8,  "GETLASTCLICKPOSY", bind<&CMC_Mouse::getLastClickPosY>},
    {9,  "SET",              bind<&CMC_Mouse::set>             },
    {10, "SETPOSITION",      bind<&CMC_Mouse::setPosition>     },
    {11, "MOVE",             bind<&CMC_Mouse::move>            },
    {12, "CLICK",            bind<&CMC_Mouse::click>           },
};
static_assert(isMethodTable(kMethods));

}  // namespace

CMC_Mouse::CMC_Mouse(CMC_Scene* scene, CMElement* element)
    : CMC_Object(scene, element, kType), window_(scene->getWindow()) {
    window_->registerMouseListener(this, kPriority);
    initializeBehaviours(scene, element);
}

CMC_Mouse::~CMC_Mouse() { letGo(); }

CXString CMC_Mouse::getButton(int button) {
    return button >= 0 && button < 3 ? CXString(kButtons[static_cast<std::size_t>(button)]) : CXString();
}

bool CMC_Mouse::done(bool keep) {
    const bool result = CMC_Object::done(keep);
    letGo();
    return result;
}

void CMC_Mouse::retire() {
    CMC_Object::retire();
    letGo();
}

void CMC_Mouse::letGo() {
    if (listens_) window_->removeMouseListener(this);
    listens_ = false;
}

std::span<const std::string_view> CMC_Mouse::getBehavioursList() const { return kSignals; }

bool CMC_Mouse::onMouseMove(CXPoint point) {
    if (!enabled_) return false;
    position_ = point;
    if (isSignalUsed(kOnMove)) onSignal("ONMOVE");
    return false;
}

bool CMC_Mouse::onClick(int button, CXPoint point) {
    if (!enabled_) return false;
    if (button == 0) lastClick_ = point;
    fire(kOnClick, getButton(button));
    return false;
}

bool CMC_Mouse::onRelease(int button, CXPoint) {
    if (enabled_) fire(kOnRelease, getButton(button));
    return false;
}

bool CMC_Mouse::onDblClick(CXPoint) {
    if (enabled_ && isSignalUsed(kOnDblClick)) onSignal("ONDBLCLICK");
    return false;
}

void CMC_Mouse::show() { window_->ShowCursor(); }
void CMC_Mouse::hide() { window_->HideCursor(); }

void CMC_Mouse::enable() {
    enabled_ = true;
    window_->enableMouse(true);
}

void CMC_Mouse::disable() {
    enabled_ = false;
    window_->enableMouse(false);
}

void CMC_Mouse::set(const CXString& cursor) {
    const auto* word = std::ranges::find(kCursors, cursor.view());
    if (word == kCursors.end()) return;
    const auto wanted = static_cast<Cursor>(word - kCursors.begin() + 1);
    if (wanted == cursor_) return;
    cursor_ = wanted;
    switch (wanted) {
        case Cursor::arrow:
            window_->EndActiveCursor();
            break;
        case Cursor::wait:
            window_->BeginWaitCursor();
            break;
        case Cursor::active:
            window_->BeginActiveCursor();
            break;
    }
}

void CMC_Mouse::setPosition(int x, int y) {
    const platform::Platform& platform = platform::current();
    const platform::ClientArea client = platform.shell.clientArea();
    position_ = CXPoint(x, y) + CXPoint(client.left, client.top);
    platform.input.setCursorPosition(position_.x, position_.y);
}

void CMC_Mouse::move(int dx, int dy) {
    const CXPoint moved = position_ + CXPoint(dx, dy);
    setPosition(moved.x, moved.y);
}

void CMC_Mouse::click(int x, int y, const CXString& button) {
    const std::string_view word = button.IsString() ? button.view() : kButtons[0];
    const CXPoint point(x, y);
    if (word == kButtons[0]) window_->OnLButtonDown(point, 0);
    if (word == kButtons[1]) window_->OnMButtonDown(point, 0);
    if (word == kButtons[2]) window_->OnRButtonDown(point, 0);
}

void CMC_Mouse_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
