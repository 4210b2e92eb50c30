// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "animation/mouse_target.h"
#include "graphics/canvas.h"
#include "script/property_table.h"
#include "script/runner.h"

// CANVAS, the script object of a picture made of other pictures. It is a button from the start.
class CMC_Canvas : public CMC_MouseTarget {
public:
    static constexpr int kType = 2020;

    CMC_Canvas(CMC_Scene* scene, CMElement* element);
    CMC_Canvas(CMC_Scene* scene, std::unique_ptr<CCanvas> canvas);  // "clone"
    ~CMC_Canvas() override;

    CCanvas* getCanvas() const { return canvas_.get(); }  // null once the object is out of service
    CGraphicsObject* getGraphic() const override { return canvas_.get(); }
    // A TEXT or an IMAGE is remembered, too: `capture` may take it out of the scene.
    void add(const CXString& name, int priority);
    void capture(bool takeObjectsOut);

    using CMC_Object::clone;
    CXObject* clone() override;
    bool done(bool keep) override;
    void retire() override;
    void serialize(CXArchive* archive) override;
    std::span<const std::string_view> getBehavioursList() const override;

    // The script's methods.
    void remove(const CXString& name);
    void show();
    void hide();
    void setPriority(int priority);
    void setPosition(int x, int y);
    void move(int dx, int dy);
    void clear();
    void setOpacity(int opacity);
    void erase(const CXString& name, int x, int y);
    void draw(const CXString& name, int x, int y);
    void setAsButton(bool asButton, bool changeCursor);

private:
    struct Properties {
        int priority = 0;
        int width = 0;
        int height = 0;
        bool alpha = false;
        bool backPlane = false;
    };
    static const PropertyRow<Properties> kProperties[];

    void build();
    void letGo();
    CGraphicsObject* graphicNamed(const CXString& name) const;  // null: none, or this object is out of service
    bool isButton() const override { return asButton_; }
    int listenerPriority() const override { return properties_.priority; }

    Properties properties_;
    bool asButton_ = true;
    std::unique_ptr<CCanvas> canvas_;
    std::vector<Ref<CMC_Object>> captured_;
};

class CMC_Canvas_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
