// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/background_manager.h"

#include "frame/window.h"
#include "graphics/color.h"
#include "graphics/refresh_region.h"
#include "graphics/surface.h"

namespace {

// From 0 up to the divisor.
int modulo(int value, int divisor) {
    const int rest = value % divisor;
    return rest < 0 ? rest + divisor : rest;
}

}  // namespace

CBackgroundManager::CBackgroundManager(CWindow* window, const CXSize& screen) : window_(window), screen_(screen) {}

CBackgroundManager::~CBackgroundManager() = default;

void CBackgroundManager::SetBackground(const CColor* color) {
    background_.reset();
    if (!color) return;
    background_ = std::make_unique<CDirectDrawSurface>(window_, screen_, window_->GetBpp(), true);
    background_->Fill(color);
    scrollMode_ = ScrollMode::plain;
}

void CBackgroundManager::SetBackground(CGraphicsObject* object) {
    background_.reset();
    if (!object || !object->GetDataPtr() || object->Size().mul() <= 0) return;
    background_ = std::make_unique<CDirectDrawSurface>(window_, object->Size(), window_->GetBpp(), true);
    // The object may stay on the screen, so it gets back what it was drawn into.
    CGraphicsObject* formerDestiny = object->GetDestiny();
    object->SetDestiny(background_.get());
    object->Redraw();
    object->SetDestiny(formerDestiny);
    checkScrollMode();
}

void CBackgroundManager::setBackground(std::unique_ptr<CDirectDrawSurface> surface) {
    background_ = std::move(surface);
    checkScrollMode();
}

void CBackgroundManager::checkScrollMode() {
    if (!background_) return;
    const CXSize size = background_->Size();
    const bool sameWidth = size.width == screen_.width, sameHeight = size.height == screen_.height;
    if (sameWidth == sameHeight) {
        scrollMode_ = ScrollMode::offset;
    } else {
        scrollMode_ = sameHeight ? ScrollMode::horizontal : ScrollMode::vertical;
    }
}

void CBackgroundManager::Redraw(CDirectDrawSurface* target, const CRefreshRegion& region) {
    if (!background_ || region.isEmpty()) return;
    const CXSize size = background_->Size();
    if (size.width <= 0 || size.height <= 0) return;
    const CXPoint position = background_->GetPosition();
    background_->SetPosition(modulo(position.x, size.width), modulo(position.y, size.height));
    for (int i = 0; i < region.size(); ++i) {
        const CXRect* entry = region.rectAt(i);
        paint(target, entry ? *entry : CXRect(0, 0, screen_.width, screen_.height));
    }
}

void CBackgroundManager::paint(CDirectDrawSurface* target, const CXRect& part) {
    const CXSize size = background_->Size();
    const auto [x, y] = background_->GetPosition();
    const auto [width, height] = screen_;
    const CXRect moved = part + CXPoint(x, y);
    const auto copy = [&](const CXRect& from, int toX, int toY) {
        if (!from.IsEmpty()) target->Blt(background_.get(), toX, toY, &from);
    };
    const int overlapX = x - size.width + width;  // columns of the screen behind the background's right edge
    const int overlapY = y - size.height + height;
    switch (scrollMode_) {
        case ScrollMode::plain:
            copy(moved.Common({0, 0, width, height}), part.left, part.top);
            break;
        case ScrollMode::horizontal:
            if (overlapX <= 0) {
                copy(moved.Common({x, 0, x + width, height}), part.left, part.top);
            } else {
                copy({x, 0, size.width, height}, 0, 0);
                copy(part.Common({0, 0, overlapX, height}), part.left - x + size.width, part.top);
            }
            break;
        case ScrollMode::vertical:
            if (y <= size.height - target->Size().height) {
                copy(moved.Common({0, y, width, y + height}), part.left, part.top);
            } else {
                copy({0, y, width, size.height}, 0, 0);
                copy(part.Common({0, 0, width, overlapY}), part.left, part.top - y + size.height);
            }
            break;
        case ScrollMode::offset:
            copy(moved.Common({x, y, x + width, y + height}), part.left, part.top);
            break;
    }
}
