// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xobject.h"

class CMouseListener;

// A mouse listener in the window's list, which stands by ascending priority. The serial number tells it from a later
// entry of the same listener.
struct MouseListenerEntry : public CXObject {
    int compare(CXObject* other) override {
        const int theirs = static_cast<MouseListenerEntry*>(other)->priority;
        return priority < theirs ? -1 : priority > theirs ? 1 : 0;
    }

    CMouseListener* listener = nullptr;  // not owned
    int priority = 0;
    unsigned serial = 0;
};
