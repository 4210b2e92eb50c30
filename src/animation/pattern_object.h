// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "animation/mouse_target.h"
#include "graphics/pattern.h"
#include "script/property_table.h"
#include "script/runner.h"

// PATTERN, the script object of pictures on a grid. It is a button.
class CMC_Pattern : public CMC_MouseTarget {
public:
    static constexpr int kType = 2021;

    CMC_Pattern(CMC_Scene* scene, CMElement* element);
    ~CMC_Pattern() override;

    CPattern* getPattern() const { return pattern_.get(); }  // null once the object is out of service
    CGraphicsObject* getGraphic() const override { return pattern_.get(); }

    bool done(bool keep) override;
    void retire() override;
    void serialize(CXArchive* archive) override;
    std::span<const std::string_view> getBehavioursList() const override;

    // The script's methods.
    void add(const CXString& cellName, int x, int y, const CXString& name, int priority);
    void setGrid(int x, int y);

private:
    struct Properties {
        bool toCanvas = false;
        bool visible = false;
        int priority = 0;
        int width = 0;
        int height = 0;
        int gridX = 0;
        int gridY = 0;
    };
    static const PropertyRow<Properties> kProperties[];

    void build();
    void putOnScreen();
    void letGo();
    bool isButton() const override { return true; }
    int listenerPriority() const override { return properties_.priority; }

    Properties properties_;
    std::unique_ptr<CPattern> pattern_;
};

class CMC_Pattern_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
