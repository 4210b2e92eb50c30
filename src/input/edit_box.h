// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xobject.h"
#include "graphics/geometry.h"

class CGraphicsObject;
class CSimpleFont6;
class CUnit6;
class CWindow;

// A line of text to be edited on the screen. It keeps its text and its focus; it draws nothing and takes neither keys
// nor clicks yet.
class CEditBox6 : public CXObject {
public:
    CEditBox6(CWindow*, CUnit6*, CSimpleFont6*, const CXRect& rect) : rect_(rect) {}
    CEditBox6(CWindow*, CUnit6*, CSimpleFont6*, const CXRect& rect, const CXString& text) : rect_(rect), text_(text) {}

    void setText(const CXString& text) { text_ = text; }
    CXString getText() const { return text_; }
    void setCursor(CGraphicsObject* cursor) { cursor_ = cursor; }  // not owned
    CGraphicsObject* getCursor() const { return cursor_; }
    void activate(bool active) { active_ = active; }
    bool isActive() const { return active_; }
    CXRect getBoundingRect() const { return rect_; }

private:
    CXRect rect_;
    CXString text_;
    CGraphicsObject* cursor_ = nullptr;
    bool active_ = false;
};
