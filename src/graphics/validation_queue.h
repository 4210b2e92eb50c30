// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xvector.h"

class CGraphicsObject;

// An object that stands on the screen.
class CValidationElement : public CXObject {
public:
    CValidationElement(CGraphicsObject* shown, int atPriority) : object(shown), priority(atPriority) {}

    int compare(CXObject* other) override {
        return priority > static_cast<CValidationElement*>(other)->priority ? 1 : 0;
    }

    CGraphicsObject* object;  // not owned
    int priority;
    int flags = 0;
    bool drawn = false;  // in the running refresh, so that no further rectangle draws it
};

// The objects on the screen by ascending priority; of equal ones the newest stands last, on top. The name is part of
// the interface. It owns its elements and walks with one marker.
class CValidationQuene : public CSortedVector {
public:
    CValidationQuene() : CSortedVector(101) {}
    ~CValidationQuene() override;

    CValidationElement* first();
    CValidationElement* next();  // null: none
    CValidationElement* prev();
    CValidationElement* elementAt(int i) const { return static_cast<CValidationElement*>(at(i)); }
    using CSortedVector::find;
    CValidationElement* find(const CGraphicsObject* object) const;  // null: not listed
    using CSortedVector::add;
    void add(CGraphicsObject* object, int priority, int flags);
    using CSortedVector::remove;
    void remove(const CGraphicsObject* object);
    void removeAll() override;
    void clearMarks();

private:
    int marker_ = -1;
};
