// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "graphics/geometry.h"
#include "script/method_table.h"

class CGraphicsObject;

// What the script methods of the same names do to the graphics object of an ANIMO, an IMAGE or a canvas. An object's
// name stands for what CMC_Scene::getGraphicsObject finds under it.
namespace graphic {

void clip(const MethodCall& call, CGraphicsObject* object);        // (name), or (left, top, right, bottom)
bool isNear(const MethodCall& call, CGraphicsObject* object);      // (name, percent), or (four edges, percent)
void setAnchor(const MethodCall& call, CGraphicsObject* object);   // (place), or (x, y)
void mergeAlpha(const MethodCall& call, CGraphicsObject* object);  // (x, y, name of the mask)
// (file, [x scale], [y scale], [four edges]): writes the picture, or the part of it, in those scales. The picture
// itself stays as it is. Scales that would make it larger than 35 screens count for nothing.
void save(const MethodCall& call, CGraphicsObject* picture);
int alphaAt(CGraphicsObject* object, int x, int y);  // on the screen; -128 to 127, 0 outside
int pixelAt(CGraphicsObject* object, int x, int y);  // on the screen; 0 to 65535, 0 outside

}  // namespace graphic
