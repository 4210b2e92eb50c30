// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "graphics/geometry.h"
#include "graphics/graphics_link.h"
#include "input/control.h"

class CButton;
class CMC_Scene;

// Graphics and buttons above everything else, over a background that is dragged by its top strip and takes them along.
// None of them is owned, and any may die.
class CXDialog : public CXObject, public CControlNotifier {
public:
    explicit CXDialog(CMC_Scene* scene);
    ~CXDialog() override;

    virtual void setBackground(CGraphicsObject* graphic);  // null: nothing happens
    virtual void add(CButton* button);                     // nothing for one that it has
    virtual void add(CGraphicsObject* graphic);
    virtual void show();  // all but the background
    virtual void hide();  // the background too
    virtual void move(int dx, int dy);

    void onStartDragging(CControl*, CXPoint point) override;
    void onDragging(CControl*, CXPoint point) override;
    void onEndDragging(CControl*, CXPoint) override;

    // It can't be dragged from here on. A drag that is going on ends.
    void retire();

private:
    struct ButtonEntry {
        CButton* button;
        std::weak_ptr<const CControl*> life;
    };

    void show(bool visible);
    std::vector<CGraphicsObject*> graphics() const;  // those that live
    std::vector<CButton*> buttons() const;
    void raise(CGraphicsObject* graphic);
    CXRect stripRect() const;

    CMC_Scene* scene_;
    std::unique_ptr<CButton> strip_;  // null without a background
    GraphicsLink background_;
    CXPoint position_;  // of the pointer, in a drag
    std::vector<std::unique_ptr<GraphicsLink>> graphics_;
    std::vector<ButtonEntry> buttons_;
};
