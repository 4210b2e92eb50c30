// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/geometry.h"

#include <algorithm>
#include <cstdint>

#include "foundation/xvector.h"
#include "graphics/graphics_object.h"

namespace {
int plus(int a, int b) { return static_cast<int>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b)); }
int minus(int a, int b) { return static_cast<int>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b)); }
int magnitude(int a) { return a < 0 ? minus(0, a) : a; }
}  // namespace

CXPoint::CXPoint(const CXSize& size) : x(size.width), y(size.height) {}

CXPoint CXPoint::operator+(int v) const { return {plus(x, v), plus(y, v)}; }
CXPoint CXPoint::operator+(const CXPoint& other) const { return {plus(x, other.x), plus(y, other.y)}; }
CXPoint CXPoint::operator-(const CXPoint& other) const { return {minus(x, other.x), minus(y, other.y)}; }

int CXSize::mul() const {
    return static_cast<int>(static_cast<std::uint32_t>(width) * static_cast<std::uint32_t>(height));
}
int CXSize::Sum() const { return plus(width, height); }
int CXSize::AbsSum() const { return plus(magnitude(width), magnitude(height)); }

int CXRect::Width() const { return minus(right, left); }
int CXRect::Height() const { return minus(bottom, top); }

CXRect& CXRect::operator+=(const CXPoint& by) { return *this = *this + by; }
CXRect& CXRect::operator-=(const CXPoint& by) {
    return *this = {minus(left, by.x), minus(top, by.y), minus(right, by.x), minus(bottom, by.y)};
}
CXRect CXRect::operator+(const CXPoint& by) const {
    return {plus(left, by.x), plus(top, by.y), plus(right, by.x), plus(bottom, by.y)};
}

void CXRect::Explode(int dx, int dy) { *this = {minus(left, dx), minus(top, dy), plus(right, dx), plus(bottom, dy)}; }

void CXRect::Sum(const CXRect& r) {
    *this = {std::min(left, r.left), std::min(top, r.top), std::max(right, r.right), std::max(bottom, r.bottom)};
}

CXRect CXRect::Common(const CXRect& r) const {
    const CXRect common(std::max(left, r.left), std::max(top, r.top), std::min(right, r.right),
                        std::min(bottom, r.bottom));
    return common.right < common.left || common.bottom < common.top ? CXRect() : common;
}

bool CXRect::IsPartOf(const CXRect& r) const {
    return left >= r.left && top >= r.top && right <= r.right && bottom <= r.bottom;
}

CXPoint CXRect::CenterPoint() const { return {plus(Width() / 2, left), plus(Height() / 2, top)}; }

CXPoint CXRect::GetCenteredPosition(const CGraphicsObject* object) const {
    return {plus(minus(Width(), object->Width()) / 2, left), plus(minus(Height(), object->Height()) / 2, top)};
}

CXArray* CXRect::sub(const CXRect& r) const {
    auto* pieces = new CXArray(5, 0.75F);
    const CXRect hole = Common(r);
    if (hole.IsEmpty()) return pieces;
    const auto add = [pieces](const CXRect& piece) {
        if (!piece.IsEmpty()) pieces->add(new CXRect(piece));
    };
    add({left, top, right, hole.top});
    add({left, hole.top, hole.left, hole.bottom});
    add({hole.right, hole.top, right, hole.bottom});
    add({left, hole.bottom, right, bottom});
    return pieces;
}
