// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/lifetime.h"

#include <utility>
#include <vector>

#include "foundation/xobject.h"
#include "platform/platform.h"

namespace {

constexpr int kNearlyAtStart = 8;

bool told = false;
bool sweeping = false;

std::vector<std::unique_ptr<CXObject>>& condemned() {
    static std::vector<std::unique_ptr<CXObject>> objects;
    return objects;
}

// A destructor may run script, and that script may condemn further objects.
void sweep() {
    if (sweeping) return;
    sweeping = true;
    while (!condemned().empty()) {
        auto objects = std::exchange(condemned(), {});
        for (auto& object : objects)
            object.reset();
    }
    sweeping = false;
}

}  // namespace

bool ScriptScope::mayEnterAgain() {
    if (overflowed_ && depth_ <= kNearlyAtStart) {
        overflowed_ = false;
        return true;
    }
    giveUp();
    return false;
}

void ScriptScope::giveUp() {
    overflowed_ = true;
    if (!told) platform::current().shell.debugOutput("script: nested too deeply, the call is dropped");
    told = true;
}

void ScriptScope::end() {
    told = false;
    overflowed_ = false;
    sweep();
}

void destroyLater(std::unique_ptr<CXObject> object) { condemned().push_back(std::move(object)); }

void destroyLate(std::unique_ptr<CXObject> object) {
    destroyLater(std::move(object));
    if (ScriptScope::depth() == 0) sweep();
}
