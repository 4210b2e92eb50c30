// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "graphics/blit.h"

#include <cstring>
#include <functional>

#include "graphics/blit_rules.h"
#include "graphics/blit_walk.h"
#include "graphics/graphics_object.h"

namespace blit {

namespace {

bool overlap(std::span<const std::uint8_t> a, std::span<const std::uint8_t> b) {
    const std::less<const std::uint8_t*> before;
    return !a.empty() && !b.empty() && before(a.data(), b.data() + b.size()) && before(b.data(), a.data() + a.size());
}

void separate(CopyArea& area) {
    if (overlap(area.source, area.target) || overlap(area.source, area.targetAlpha)) {
        area.ownSource.assign(area.source.begin(), area.source.end());
        area.source = area.ownSource;
    }
    if (overlap(area.alpha, area.target) || overlap(area.alpha, area.targetAlpha)) {
        area.ownAlpha.assign(area.alpha.begin(), area.alpha.end());
        area.alpha = area.ownAlpha;
    }
}

// One direction of what is shown: [from, from + length) of the source comes to `to` in the target.
struct Extent {
    std::int64_t from = 0;
    std::int64_t to = 0;
    std::int64_t length = 0;

    void limit(std::int64_t sourceLength, std::int64_t targetLength) {
        const std::int64_t skipped = std::max({std::int64_t{0}, -from, -to});
        from += skipped;
        to += skipped;
        length = std::min({length - skipped, sourceLength - from, targetLength - to});
    }
};

// A clip or viewport has area when both of its pairs of edges differ; `counts` says so.
Extent extent(bool clipCounts, int clipFrom, int clipTo, bool viewCounts, int viewFrom, int viewTo, int position,
              int length, bool clipMovesTarget) {
    Extent shown{0, position, length};
    if (clipMovesTarget) shown.to += clipFrom;
    if (clipCounts) {
        shown.from = clipFrom;
        shown.length = std::int64_t{clipTo} - clipFrom;
    }
    if (viewCounts) {
        const std::int64_t viewLength = std::int64_t{viewTo} - viewFrom;
        shown.length = clipCounts ? std::min(viewLength, shown.length - viewFrom) : viewLength;
        shown.from += viewFrom;
    }
    return shown;
}

}  // namespace

std::optional<CopyArea> copyArea(const _canvas* source, const _canvas* target, const CopyNeeds& needs) {
    if (!source || !target) return std::nullopt;
    const CXRect& clip = source->clip;
    const CXRect& view = target->clip;
    Extent across = extent(!clip.IsEmpty(), clip.left, clip.right, !view.IsEmpty(), view.left, view.right, source->x,
                           source->width, needs.clipMovesTarget);
    Extent down = extent(!clip.IsEmpty(), clip.top, clip.bottom, !view.IsEmpty(), view.top, view.bottom, source->y,
                         source->height, needs.clipMovesTarget);
    if (across.length < 0 || down.length < 0) return std::nullopt;
    across.limit(source->width, target->width);
    down.limit(source->height, target->height);

    CopyArea area;
    if (across.length <= 0 || down.length <= 0) return area;
    area.source = source->data;
    area.alpha = source->alpha;
    area.target = target->data;
    area.targetAlpha = target->alpha;
    separate(area);
    area.sourceStride = source->width;
    area.targetStride = target->width;
    area.sourceAt = down.from * area.sourceStride + across.from;
    area.targetAt = down.to * area.targetStride + across.to;
    area.width = across.length;
    area.height = down.length;
    area.sourcePixels = static_cast<std::int64_t>(area.source.size()) / needs.pixelSize;
    area.targetPixels = static_cast<std::int64_t>(area.target.size()) / needs.pixelSize;
    if (needs.alpha) area.sourcePixels = std::min(area.sourcePixels, static_cast<std::int64_t>(area.alpha.size()));
    if (area.width == area.sourceStride && area.width == area.targetStride) {  // the rows are one
        area.width *= area.height;
        area.height = 1;
    }
    return area;
}

namespace {

const Pixel* sourceAt(const CopyArea& area, std::int64_t at) {
    return reinterpret_cast<const Pixel*>(area.source.data()) + at;
}

Pixel* targetAt(const CopyArea& area, std::int64_t at) { return reinterpret_cast<Pixel*>(area.target.data()) + at; }

// How many of the pixels from there on have an alpha byte in the target.
std::int64_t targetAlphas(const CopyArea& area, std::int64_t at, std::int64_t pixels) {
    return std::clamp(static_cast<std::int64_t>(area.targetAlpha.size()) - at, std::int64_t{0}, pixels);
}

template <class Rule>
struct BlendRows {
    Rule rule;
    [[gnu::always_inline]] void operator()(const CopyArea& area, std::int64_t from, std::int64_t to,
                                           std::int64_t pixels) const {
        blendRow(rule, sourceAt(area, from), area.alpha.data() + from, targetAt(area, to), pixels);
    }
};

// As above, and the target's alpha grows.
template <class Rule>
struct BlendRowsAndAlpha {
    Rule rule;
    [[gnu::always_inline]] void operator()(const CopyArea& area, std::int64_t from, std::int64_t to,
                                           std::int64_t pixels) const {
        blendRow(rule, sourceAt(area, from), area.alpha.data() + from, targetAt(area, to), pixels);
        if (const std::int64_t alphas = targetAlphas(area, to, pixels))
            addAlphaRow(area.alpha.data() + from, area.targetAlpha.data() + to, alphas);
    }
};

template <class Fields>
struct BlendRowsEvenly {
    Pixel opacity;
    [[gnu::always_inline]] void operator()(const CopyArea& area, std::int64_t from, std::int64_t to,
                                           std::int64_t pixels) const {
        blendRowEvenly<Fields>(sourceAt(area, from), targetAt(area, to), opacity, pixels);
    }
};

template <std::int64_t PixelSize>
struct CopyRows {
    void operator()(const CopyArea& area, std::int64_t from, std::int64_t to, std::int64_t pixels) const {
        std::memcpy(area.target.data() + to * PixelSize, area.source.data() + from * PixelSize,
                    static_cast<std::size_t>(pixels * PixelSize));
    }
};

struct CopyRowsAndFillAlpha {
    void operator()(const CopyArea& area, std::int64_t from, std::int64_t to, std::int64_t pixels) const {
        CopyRows<sizeof(Pixel)>()(area, from, to, pixels);
        if (const std::int64_t alphas = targetAlphas(area, to, pixels))
            std::memset(area.targetAlpha.data() + to, 255, static_cast<std::size_t>(alphas));
    }
};

constexpr CopyNeeds kPixels;
constexpr CopyNeeds kPixelsAndAlpha{.alpha = true};
constexpr CopyNeeds kBytes24{.pixelSize = 3, .clipMovesTarget = false};

template <class Rows>
bool copyWith(const _canvas* source, const _canvas* target, const CopyNeeds& needs, const Rows& rows) {
    const std::optional<CopyArea> area = copyArea(source, target, needs);
    if (!area) return false;
    walk(*area, rows);
    return true;
}

// Opacities count by their low byte.
template <class Fields>
bool copyWithOpacity(const _canvas* source, const _canvas* target, int opacity) {
    const auto weight = static_cast<std::uint8_t>(opacity);
    if (weight == 0) return copyArea(source, target, kPixels).has_value();
    return copyWith(source, target, kPixels, BlendRowsEvenly<Fields>{weight});
}

template <class Fields>
bool copyAlphaWithOpacity(const _canvas* source, const _canvas* target, int opacity) {
    return copyWith(source, target, kPixelsAndAlpha,
                    BlendRows<AlphaOpacityRule<Fields>>{{static_cast<std::uint8_t>(opacity)}});
}

}  // namespace

}  // namespace blit

using namespace blit;

bool CGraphicsObject::__copy_blend(const _canvas* source, const _canvas* target, int opacity) {
    if (!source || !target) return false;
    const bool alpha = !source->alpha.empty();
    if (source->bpp == 15)
        return alpha ? __copy_alpha_blend15(source, target, opacity) : __copy_blend15(source, target, opacity);
    if (source->bpp == 16)
        return alpha ? __copy_alpha_blend16(source, target, opacity) : __copy_blend16(source, target, opacity);
    return true;
}

bool CGraphicsObject::__copy_alpha_blend15(const _canvas* source, const _canvas* target, int opacity) {
    return copyAlphaWithOpacity<Fields15>(source, target, opacity);
}

bool CGraphicsObject::__copy_alpha_blend16(const _canvas* source, const _canvas* target, int opacity) {
    return copyAlphaWithOpacity<Fields16>(source, target, opacity);
}

bool CGraphicsObject::__copy_blend15(const _canvas* source, const _canvas* target, int opacity) {
    return copyWithOpacity<Fields15>(source, target, opacity);
}

bool CGraphicsObject::__copy_blend16(const _canvas* source, const _canvas* target, int opacity) {
    return copyWithOpacity<Fields16>(source, target, opacity);
}

bool CGraphicsObject::copyToCanvas(const _canvas* source, const _canvas* target) {
    if (!source || !target) return false;
    if (source->bpp != 15 && source->bpp != 16) return true;
    if (source->alpha.empty()) return copyWith(source, target, kPixels, CopyRowsAndFillAlpha());
    if (source->bpp == 15) return copyWith(source, target, kPixelsAndAlpha, BlendRowsAndAlpha<AlphaRule<Fields15>>());
    return copyWith(source, target, kPixelsAndAlpha, BlendRowsAndAlpha<AlphaRule<Fields16OddBitless>>());
}

bool CGraphicsObject::__copy_alpha_as_mask(const _canvas* source, const _canvas* target) {
    return copyWith(source, target, kPixelsAndAlpha, BlendRows<MaskRule>());
}

bool CGraphicsObject::__copy_alpha(const _canvas* source, const _canvas* target) {
    if (!source || !target) return false;
    if (source->bpp == 15) return __copy_alpha15(source, target);
    return source->bpp != 16 || __copy_alpha16(source, target);
}

bool CGraphicsObject::__copy_alpha15(const _canvas* source, const _canvas* target) {
    return copyWith(source, target, kPixelsAndAlpha, BlendRows<AlphaRule<Fields15>>());
}

bool CGraphicsObject::__copy_alpha16(const _canvas* source, const _canvas* target) {
    return copyWith(source, target, kPixelsAndAlpha, BlendRows<AlphaRule<Fields16OddBitless>>());
}

bool CGraphicsObject::__copy(const _canvas* source, const _canvas* target) {
    if (!source || !target) return false;
    if (source->bpp == 15 || source->bpp == 16) return __copy_bpp15_16(source, target);
    return source->bpp != 24 || __copy_bpp24(source, target);
}

bool CGraphicsObject::__copy_bpp15_16(const _canvas* source, const _canvas* target) {
    return copyWith(source, target, kPixels, CopyRows<sizeof(Pixel)>());
}

bool CGraphicsObject::__copy_bpp24(const _canvas* source, const _canvas* target) {
    return copyWith(source, target, kBytes24, CopyRows<3>());
}
