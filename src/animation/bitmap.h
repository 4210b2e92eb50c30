// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "graphics/graphics_object.h"

// The name of a bitmap file. Nothing is read and nothing written, so that it has pixels only when another object gives
// it some.
class CXBitmap : public CGraphicsObject {
public:
    explicit CXBitmap(CWindow* window) : CGraphicsObject(window) {}
    CXBitmap(CWindow* window, const CXString& name) : CXBitmap(window) { setFileName(name); }
    CXBitmap(CWindow* window, const CGraphicsObject* planes) : CGraphicsObject(window, *planes) {}  // shared
    CXBitmap(CXBitmap& other) : CXBitmap(other.getWindow(), &other) {}                              // over its planes

    int Save(const CXString&, _compression) override { return LastError(); }
    using CGraphicsObject::Save;
};
