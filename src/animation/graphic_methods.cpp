// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/graphic_methods.h"

#include <optional>

#include "graphics/graphics_object.h"
#include "structure/scene.h"

namespace {

CXRect edges(const MethodCall& call, int first = 0) {
    const int left = call.integer(first), top = call.integer(first + 1), right = call.integer(first + 2);
    return {left, top, right, call.integer(first + 3)};
}

// Where in its planes a point of the screen lies; none outside of the picture.
std::optional<std::int64_t> indexAt(const CGraphicsObject* object, int x, int y) {
    const CXPoint position = object->GetPosition();
    const CXSize size = object->Size();
    const std::int64_t column = static_cast<std::int64_t>(x) - position.x,
                       row = static_cast<std::int64_t>(y) - position.y;
    if (column < 0 || row < 0 || column >= size.width || row >= size.height) return std::nullopt;
    return row * size.width + column;
}

struct AnchorPlace {
    std::string_view word;
    int x, y;  // in halves of the size
};

constexpr AnchorPlace kAnchorPlaces[] = {
    {"CENTER",     1, 1},
    {"LEFTUPPER",  0, 0},
    {"RIGHTUPPER", 2, 0},
    {"LEFTLOWER",  0, 2},
    {"RIGHTLOWER", 2, 2},
};

}  // namespace

namespace graphic {

void clip(const MethodCall& call, CGraphicsObject* object) {
    if (call.count() > 1) {
        object->SetClippingRect(edges(call));
        return;
    }
    const CGraphicsObject* named = call.scene ? call.scene->getGraphicsObject(call.text(0)) : nullptr;
    object->SetClippingRect(named ? named->GetBoundingBox() : CXRect());
}

bool isNear(const MethodCall& call, CGraphicsObject* object) {
    if (call.count() > 2) {
        const CXRect rect = edges(call);
        return object->isNear(rect, call.integer(4));
    }
    const CGraphicsObject* named = call.scene ? call.scene->getGraphicsObject(call.text(0)) : nullptr;
    return named && object->isNear(named, call.integer(1));
}

void setAnchor(const MethodCall& call, CGraphicsObject* object) {
    if (call.count() > 1) {
        const int x = call.integer(0);
        object->setAnchor(x, call.integer(1));
        return;
    }
    const CXString word = call.text(0);
    const CXPoint position = object->GetPosition();
    const CXSize size = object->Size();
    for (const AnchorPlace& place : kAnchorPlaces) {
        if (word.view() == place.word)
            object->setAnchor(position + CXPoint(size.width * place.x / 2, size.height * place.y / 2));
    }
}

void mergeAlpha(const MethodCall& call, CGraphicsObject* object) {
    const int x = call.integer(0), y = call.integer(1);
    CGraphicsObject* mask = call.scene ? call.scene->getGraphicsObject(call.text(2)) : nullptr;
    if (!mask) return;
    CGraphicsObject* drawn = object->getDrawn();
    drawn->mergeAlpha({x, y}, mask->getDrawn());
    if (drawn != object) object->Invalidate();
}

void save(const MethodCall& call, CGraphicsObject* picture) {
    constexpr double kMostPixels = 1 << 24;
    const CXString name = call.text(0);
    const double scaleX = call.count() > 1 ? call.real(1) : 1.0, scaleY = call.count() > 2 ? call.real(2) : 1.0;
    const CXRect part = call.count() > 3 ? edges(call, 3) : CXRect();
    const bool isCut = part.Width() > 0 && part.Height() > 0, isScaled = scaleX != 1.0 || scaleY != 1.0;
    if (!isCut && !isScaled) {
        picture->Save(name, kCompressionRaw);
        return;
    }
    CGraphicsObject copy(nullptr);
    copy.Copy(picture);
    if (isCut) copy.crop(part);
    const bool isSane = copy.Size().width * scaleX * copy.Size().height * scaleY <= kMostPixels;
    if (isScaled && isSane) copy.Scale(scaleX, scaleY);
    copy.Save(name, kCompressionRaw);
}

int alphaAt(CGraphicsObject* object, int x, int y) {
    const std::optional<std::int64_t> index = indexAt(object, x, y);
    if (!index || !object->GetDataPtr()) return 0;
    return static_cast<std::int8_t>(object->getDrawn()->getAlpha().at(*index));
}

int pixelAt(CGraphicsObject* object, int x, int y) {
    const std::optional<std::int64_t> index = indexAt(object, x, y);
    if (!index || !object->GetDataPtr()) return 0;
    const Plane& data = object->getDrawn()->getData();
    return data.at(*index * 2) | data.at(*index * 2 + 1) << 8;
}

}  // namespace graphic
