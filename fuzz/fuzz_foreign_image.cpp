// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Pictures of other programs: whatever is read is turned and drawn.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "animation/photoshop.h"
#include "animation/targa.h"

namespace {

void draw(CGraphicsObject& picture, int bpp) {
    CGraphicsObject target(nullptr, {40, 30}, bpp);
    picture.SetDestiny(&target);
    picture.FlipV();
    picture.Redraw();
    picture.SetPosition(-3, 2);
    picture.resetFlips();
    picture.Redraw();
    (void)picture.GetPixel(kChannelAlpha, {2, 2});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span<const std::byte> bytes = std::as_bytes(std::span(data, size));
    for (const int bpp : {15, 16}) {
        std::string reason;
        if (std::optional<CTarga::Stored> stored = CTarga::parse(bytes, reason)) {
            CGraphicsObject picture(nullptr, stored->size, 24, std::move(stored->data));
            picture.FlipH();
            draw(picture, bpp);
        } else if (reason.empty()) {
            std::abort();
        }
        reason.clear();
        std::optional<std::vector<CPSD::Layer>> layers = CPSD::parse(nullptr, bytes, reason);
        if (!layers) {
            if (reason.empty()) std::abort();
            continue;
        }
        for (const CPSD::Layer& layer : *layers)
            draw(*layer.picture, bpp);
    }
    return 0;
}
