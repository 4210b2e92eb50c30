// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Stored pictures: whatever is read is turned, converted and drawn.
#include <cstdint>
#include <memory>

#include "animation/image.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string reason;
    const std::optional<CImage::Stored> stored = CImage::parse(std::as_bytes(std::span(data, size)), reason);
    if (!stored) {
        if (reason.empty()) std::abort();
        return 0;
    }
    // Raw planes are as large as the picture: what isn't in the file takes no memory.
    constexpr int kLargest = 1 << 20;
    if (stored->size.width > kLargest / stored->size.height) return 0;
    for (const int bpp : {15, 16}) {
        CGraphicsObject target(nullptr, {40, 30}, bpp), picture(nullptr);
        picture.setPlanes(stored->size, stored->bpp, stored->data.copy(), stored->alpha.copy(), stored->compression);
        picture.SetPosition(stored->position);
        picture.SetDestiny(&target);
        picture.Redraw();
        picture.FlipH();
        picture.FlipV();
        picture.SetPosition(-3, -2);
        picture.SetOpacity(static_cast<int>(size % 256));
        picture.Redraw();
        picture.ToGrayScale();
        picture.Compress(kCompressionRle);
        CGraphicsObject copy(nullptr);
        copy.Copy(&picture);
        copy.mergeAlpha({1, 1}, &picture);
        picture.resetFlips();
        (void)picture.GetPixel(kChannelAlpha, {2, 2});
    }
    return 0;
}
