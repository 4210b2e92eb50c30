// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

class CGraphicsObject;
class CXArray;
struct CXSize;

// The values of all drawing: pixels, x to the right, y down. Sums and products wrap at 32 bits.

struct CXPoint {
    CXPoint() = default;
    explicit CXPoint(int v) : x(v), y(v) {}
    CXPoint(int px, int py) : x(px), y(py) {}
    CXPoint(const CXSize& size);  // NOLINT(google-explicit-constructor): sizes and points stand for each other

    CXPoint operator+(int v) const;
    CXPoint operator+(const CXPoint& other) const;
    CXPoint operator-(const CXPoint& other) const;
    bool operator==(const CXPoint&) const = default;

    int x = 0;
    int y = 0;
};

struct CXSize {
    CXSize() = default;
    CXSize(int w, int h) : width(w), height(h) {}
    CXSize(const CXPoint& point) : width(point.x), height(point.y) {}  // NOLINT(google-explicit-constructor)

    int mul() const;
    int Sum() const;
    int AbsSum() const;
    bool operator==(const CXSize&) const = default;

    int width = 0;
    int height = 0;
};

// A rectangle. Right and bottom don't belong to its area, yet `IsInRect` counts the points on all four edges.
class CXRect {
public:
    CXRect() = default;
    explicit CXRect(int v) : left(v), top(v), right(v), bottom(v) {}
    CXRect(int l, int t, int r, int b) : left(l), top(t), right(r), bottom(b) {}
    explicit CXRect(const CXRect* other) : CXRect(*other) {}
    CXRect(const CXRect&) = default;
    CXRect& operator=(const CXRect&) = default;
    virtual ~CXRect() = default;

    int Width() const;
    int Height() const;
    // No width or no height. A rectangle turned inside out isn't empty by this test.
    bool IsEmpty() const { return right == left || bottom == top; }
    void Empty() { left = top = right = bottom = 0; }
    bool IsInRect(const CXPoint& p) const { return IsInRect(p.x, p.y); }
    bool IsInRect(int x, int y) const { return left <= x && x <= right && top <= y && y <= bottom; }

    CXRect& operator+=(const CXPoint& by);
    CXRect& operator-=(const CXPoint& by);
    CXRect operator+(const CXPoint& by) const;
    bool operator==(const CXRect& o) const {
        return left == o.left && top == o.top && right == o.right && bottom == o.bottom;
    }

    void Explode(int d) { Explode(d, d); }
    void Explode(int dx, int dy);
    void Explode(const CXPoint& by) { Explode(by.x, by.y); }
    // Becomes the smallest rectangle that holds both; an empty one counts with its edges.
    void Sum(const CXRect& r);
    // The intersection; (0, 0, 0, 0) for disjoint rectangles, without width or height for those that only touch.
    CXRect Common(const CXRect& r) const;
    void Common(const CXRect& r, CXRect* out) const { *out = Common(r); }
    bool IsPartOf(const CXRect& r) const;  // wholly in r, edges included
    bool isInside(const CXRect& r) const { return IsPartOf(r); }

    CXPoint CenterPoint() const;
    CXPoint GetCenteredPosition(const CGraphicsObject* object) const;  // where its top left corner goes
    CXPoint LeftTop() const { return {left, top}; }
    CXPoint RightTop() const { return {right, top}; }
    CXPoint LeftBottom() const { return {left, bottom}; }
    CXPoint BottomRight() const { return {right, bottom}; }

    // Rectangles without overlap that cover this one without the part in r; empty when they have no common area.
    // A new array of new CXRect, all the caller's.
    CXArray* sub(const CXRect& r) const;

    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};
