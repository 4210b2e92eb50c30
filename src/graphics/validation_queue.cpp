// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/validation_queue.h"

CValidationQuene::~CValidationQuene() {
    for (int i = 0; i < size(); ++i)
        delete elementAt(i);
}

CValidationElement* CValidationQuene::first() {
    marker_ = 0;
    return elementAt(marker_);
}

CValidationElement* CValidationQuene::next() { return elementAt(++marker_); }
CValidationElement* CValidationQuene::prev() { return elementAt(--marker_); }

CValidationElement* CValidationQuene::find(const CGraphicsObject* object) const {
    for (int i = 0; i < size(); ++i) {
        if (elementAt(i)->object == object) return elementAt(i);
    }
    return nullptr;
}

void CValidationQuene::add(CGraphicsObject* object, int priority, int flags) {
    auto* element = new CValidationElement(object, priority);  // owned
    element->flags = flags;
    add(element);
}

void CValidationQuene::remove(const CGraphicsObject* object) {
    for (int i = 0; i < size(); ++i) {
        CValidationElement* element = elementAt(i);
        if (element->object != object) continue;
        removeAt(i);
        delete element;
        if (i <= marker_) --marker_;
        return;
    }
}

void CValidationQuene::removeAll() {
    for (int i = 0; i < size(); ++i)
        delete elementAt(i);
    CSortedVector::removeAll();
    marker_ = -1;
}

void CValidationQuene::clearMarks() {
    for (int i = 0; i < size(); ++i)
        elementAt(i)->drawn = false;
}
