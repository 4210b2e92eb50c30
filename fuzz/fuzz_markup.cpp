// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Texts with markup: they are broken, justified and drawn, in fonts of two styles and in a single one. The first byte
// is the room that they have.
#include <cstdint>
#include <string_view>

#include "platform/headless/headless.h"
#include "support/fonts.h"
#include "text/font_collection.h"
#include "text/multiline_text.h"

namespace {

struct Fonts {
    Fonts()
        : plain({
              .letters = "abcl<>_", .kerning = {{"ab", 3}, {"ba", -2}}
    }),
          bold({.cell = 13}, "BOLD"),
          all(nullptr) {
        all.addFont(&plain);
        all.addFont(&bold);
    }

    headless::HeadlessPlatform platform;
    fonts::Font plain, bold;
    CFontCollection all;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Fonts fonts;
    constexpr std::size_t kLongest = 4096;
    if (size < 1 || size > kLongest) return 0;
    const CXString content(std::string_view(reinterpret_cast<const char*>(data + 1), size - 1));
    CGraphicsObject page(nullptr, {60, 40}, 16);
    for (CSimpleFont6* font : {static_cast<CSimpleFont6*>(&fonts.all), static_cast<CSimpleFont6*>(&fonts.plain)}) {
        CMultilineText6 text(nullptr, nullptr);
        text.setJustify({-5, -5, data[0] - 5, 40}, kJustifyCenter, kJustifyBottom);
        text.setFont(font);
        text.setText(content);
        text.SetDestiny(&page);
        text.Redraw();
        text.SetClippingRect({3, 1, 30, 17});
        text.Redraw();
        text.setColor(31);
        text.setText(text.getText());
        text.Redraw();
        CText6 line(nullptr, nullptr);
        line.setFont(font);
        line.setText(content);
        line.SetDestiny(&page);
        line.Redraw();
    }
    return 0;
}
