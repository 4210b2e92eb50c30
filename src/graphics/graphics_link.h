// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "graphics/graphics_object.h"

// A link to a graphics object that may die: it reads as null from then on. Whatever holds somebody else's graphics
// object beyond one call, other than a script object's own, holds one of these.
class GraphicsLink : private CInvalidateObserver {
public:
    GraphicsLink() = default;
    ~GraphicsLink() override { *this = nullptr; }
    GraphicsLink(const GraphicsLink&) = delete;
    GraphicsLink& operator=(const GraphicsLink& other) { return *this = other.object_; }
    GraphicsLink& operator=(CGraphicsObject* object) {
        if (object == object_) return *this;
        if (object_) object_->removeInvalidateObserver(this);
        object_ = object;
        if (object_) object_->addInvalidateObserver(this);
        return *this;
    }
    CGraphicsObject* get() const { return object_; }
    CGraphicsObject* operator->() const { return object_; }
    operator CGraphicsObject*() const { return object_; }  // NOLINT(google-explicit-constructor): stands for a pointer

private:
    void onDestroy(CGraphicsObject*) override { object_ = nullptr; }

    CGraphicsObject* object_ = nullptr;
};
