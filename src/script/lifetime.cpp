// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/lifetime.h"

#include <utility>
#include <vector>

#include "foundation/xobject.h"
#include "platform/platform.h"

namespace {

// Behaviours within behaviours. Far above what scripts need, and well within the stack of a debugging build.
constexpr int kDeepest = 1000;

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
        for (auto& object : objects) object.reset();
    }
    sweeping = false;
}

}  // namespace

bool ScriptScope::mayEnter() {
    if (depth_ < kDeepest) return true;
    if (!told) platform::current().shell.debugOutput("script: nested too deeply, the call is dropped");
    told = true;
    return false;
}

void ScriptScope::end() {
    told = false;
    sweep();
}

void destroyLate(std::unique_ptr<CXObject> object) {
    condemned().push_back(std::move(object));
    if (ScriptScope::depth() == 0) sweep();
}
