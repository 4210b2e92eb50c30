// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xobject.h"
#include "graphics/child_list.h"
#include "graphics/graphics_object.h"

// Shows objects at the places of a grid, one of them at any number of places. Each is drawn straight into the pattern's
// destiny; the pattern has no pixels. The objects keep positions of their own and may stand elsewhere, too; none is
// owned, and one that dies leaves the pattern.
class CPattern : public CGraphicsObject, public CInvalidateObserver {
public:
    // A negative width or height counts as 0.
    CPattern(CWindow* window, const CXSize& size, const CXSize& grid);
    ~CPattern() override;

    // At the cell whose corner is grid times cell; a cell beyond the range of an int isn't drawn. Several entries may
    // bear one name. Invalidates nothing.
    void add(const CXString& name, int cellX, int cellY, CGraphicsObject* object, int priority);
    void remove(const CXString& name);  // all entries of that name; neither of these invalidates anything
    void remove(const CGraphicsObject* object);
    void removeAll();
    const CXSize& getGrid() const { return grid_; }
    void setGrid(const CXSize& grid);

    void Redraw() override;
    void onInvalidate(CGraphicsObject* object, const CXRect* rect) override;
    void onDestroy(CGraphicsObject* object) override;

private:
    struct Cell {
        CGraphicsObject* object;
        int priority;
        int x, y;  // in cells
        CXString name;
    };

    bool placeInCell(const Cell& cell) const;  // false: it lies nowhere
    void drawCell(const Cell& cell);
    template <class Matches>
    void removeIf(Matches matches);

    CXSize grid_;
    ChildList<Cell> cells_;
    bool isDrawing_ = false;
};
