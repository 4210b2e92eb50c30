// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string_view>

#include "animation/filter.h"

// What scripts choose of an operation on pictures; each operation looks at its own.
class StaticProperties : public CFilterProperties {
public:
    using CFilterProperties::CFilterProperties;
    void setProperty(const CXString& key, const CXString& value) override;

    bool canUndo = false;
    bool currentFrame = true;  // of an animation only frames that are shown
    CXString channels = "RGB";
    double angle = 0;  // degrees, clockwise on the screen
    int size = 3;      // of the square that a pixel is mixed with
    double factorX = 1;
    double factorY = 1;
};

// An operation on a picture that `prepareForFilter` has readied. It writes into planes of its own: those that were
// there may be shown by others, or be kept to be put back.
struct StaticEffect {
    std::string_view action;
    int classId;
    bool reshapes;  // changes size and position, too
    void (*apply)(CGraphicsObject& picture, const StaticProperties& chosen);
};

const StaticEffect* findStaticEffect(const CXString& action);  // null for an unknown one
