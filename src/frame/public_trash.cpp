// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "frame/public_trash.h"

namespace {
constexpr unsigned kPeriod = 10000;  // milliseconds
}

CPublicTrash::CPublicTrash(CXTimer* timers) : timers_(timers) { timers_->add(objectId(), kPeriod, this); }

CPublicTrash::~CPublicTrash() {
    timers_->remove(objectId());
    for (CXObject* element : elements()) {
        if (element->isToDelete()) delete element;
    }
}

void CPublicTrash::onTimer(int) {
    for (int i = 0; i < size(); ++i) {
        CXObject* element = at(i);
        if (!element->isToDelete()) continue;
        removeAt(i);
        delete element;
    }
}
