// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "input/keyboard_object.h"

#include <array>

#include "frame/window.h"
#include "input/keyboard.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "structure/scene.h"

namespace {

constexpr std::array<std::string_view, 6> kSignals = {"ONINIT", "ONDONE", "ONSIGNAL", "ONCHAR", "ONKEYDOWN", "ONKEYUP"};
enum Signal { kOnChar = 3, kOnKeyDown, kOnKeyUp };

struct KeyWord {
    std::string_view word;
    int key;
};

constexpr KeyWord kKeyWords[] = {
    {"ESC",      0x01},
    {"ENTER",    0x1C},
    {"LCTRL",    0x1D},
    {"LSHIFT",   0x2A},
    {"RSHIFT",   0x36},
    {"LALT",     0x38},
    {"CAPSLOCK", 0x3A},
    {"F1",       0x3B},
    {"F2",       0x3C},
    {"F3",       0x3D},
    {"F4",       0x3E},
    {"F5",       0x3F},
    {"F6",       0x40},
    {"F7",       0x41},
    {"F8",       0x42},
    {"F9",       0x43},
    {"F10",      0x44},
    {"F11",      0x57},
    {"F12",      0x58},
    {"RCTRL",    0x9D},
    {"RALT",     0xB8},
    {"HOME",     0xC7},
    {"UP",       0xC8},
    {"PGUP",     0xC9},
    {"LEFT",     0xCB},
    {"RIGHT",    0xCD},
    {"END",      0xCF},
    {"DOWN",     0xD0},
    {"PGDN",     0xD1},
    {"INSERT",   0xD2},
    {"DELETE",   0xD3},
};

CMC_Variable* isKeyDown(const MethodCall& call) {
    const auto* keyboard = static_cast<CMC_Keyboard*>(call.object);
    return toScript(call.count() == 0 ? keyboard->isAnyKeyDown() : keyboard->isKeyDown(call.text(0)));
}

constexpr MethodRow kMethods[] = {
    {1, "ENABLE",        bind<&CMC_Keyboard::enable>       },
    {2, "DISABLE",       bind<&CMC_Keyboard::disable>      },
    {3, "SETAUTOREPEAT", bind<&CMC_Keyboard::setAutoRepeat>},
    {4, "ISKEYDOWN",     {isKeyDown, "*"}                  },
    {6, "GETLATESTKEY",  bind<&CMC_Keyboard::getLatestKey> },
};
static_assert(isMethodTable(kMethods));

}  // namespace

CMC_Keyboard::CMC_Keyboard(CMC_Scene* scene, CMElement* element)
    : CMC_Object(scene, element, kType), window_(scene->getWindow()) {
    window_->registerKeyListener(this);
    initializeBehaviours(scene, element);
}

CMC_Keyboard::~CMC_Keyboard() { letGo(); }

CXString CMC_Keyboard::getKeySignal(int key) {
    for (const KeyWord& row : kKeyWords) {
        if (row.key == key) return CXString(row.word);
    }
    return {};
}

bool CMC_Keyboard::done(bool keep) {
    const bool result = CMC_Object::done(keep);
    letGo();
    return result;
}

void CMC_Keyboard::retire() {
    CMC_Object::retire();
    letGo();
}

void CMC_Keyboard::letGo() {
    if (listens_) window_->removeKeyListener(this);
    listens_ = false;
}

std::span<const std::string_view> CMC_Keyboard::getBehavioursList() const { return kSignals; }

void CMC_Keyboard::fireKey(int signal, int key) {
    if (!enabled_ || !isSignalUsed(signal)) return;
    const ScriptScope scope;
    const CXString word = getKeySignal(key);
    if (word.IsString()) {
        fire(signal, word);
    } else {
        onSignal(CXString(kSignals[static_cast<std::size_t>(signal)]));
    }
}

void CMC_Keyboard::onKeyDown(int key) { fireKey(kOnKeyDown, key); }
void CMC_Keyboard::onKeyUp(int key) { fireKey(kOnKeyUp, key); }

void CMC_Keyboard::onChar(unsigned char character) {
    if (!enabled_ || !isSignalUsed(kOnChar)) return;
    const auto c = static_cast<char>(character);
    latestKey_ = CXString(std::string_view(&c, 1));
    fire(kOnChar, latestKey_);
}

void CMC_Keyboard::setAutoRepeat(bool on) { window_->getKeyboardInterface()->setAutoRepeat(on); }
bool CMC_Keyboard::isAnyKeyDown() const { return window_->getKeyboardInterface()->isAnyKeyPressed(); }

bool CMC_Keyboard::isKeyDown(const CXString& name) const {
    return enabled_ && window_->getKeyboardInterface()->isKeyPressed(name);
}

void CMC_Keyboard_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
