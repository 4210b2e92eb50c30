// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "prosc/font.h"

#include <algorithm>
#include <fmt/format.h>
#include <ft2build.h>
#include <memory>
#include <vector>
#include FT_FREETYPE_H

#include "graphics/pixel_format.h"
#include "platform/headless/code_page.h"
#include "text/font_file.h"

namespace prosc {

namespace {

constexpr int kLargest = 500;  // pixels of a letter
constexpr int kBits = 16;

Outcome wrong(std::string text) { return {std::nullopt, std::move(text)}; }

// The character of a letter; 0 for a byte that the code page leaves free.
char32_t characterOf(char letter) {
    const std::string utf8 = headless::toUtf8(std::string_view(&letter, 1));
    if (headless::fromUtf8(utf8) != std::string_view(&letter, 1) || utf8.empty()) return 0;
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(utf8[i]); };
    if (utf8.size() == 1) return byte(0);
    if (utf8.size() == 2) return static_cast<char32_t>((byte(0) & 0x1F) << 6 | (byte(1) & 0x3F));
    return static_cast<char32_t>((byte(0) & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F));
}

// Blanks and the thin blank have no picture.
bool isDrawn(char letter) {
    const auto code = static_cast<unsigned char>(letter);
    return code > ' ' && code != '~' && code != 0x7F && code != 0xA0;
}

class Face {
public:
    ~Face() {
        if (face_) FT_Done_Face(face_);
        if (library_) FT_Done_FreeType(library_);
    }
    Face() = default;
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;

    bool open(std::string_view font, int size) {
        return FT_Init_FreeType(&library_) == 0 &&
               FT_New_Memory_Face(library_, reinterpret_cast<const FT_Byte*>(font.data()),
                                  static_cast<FT_Long>(font.size()), 0, &face_) == 0 &&
               FT_Set_Pixel_Sizes(face_, 0, static_cast<FT_UInt>(size)) == 0;
    }

    unsigned glyphOf(char letter) const {
        const char32_t character = characterOf(letter);
        return character ? FT_Get_Char_Index(face_, character) : 0;
    }

    // The picture of a glyph, until the next one; null when it can't be drawn.
    const FT_GlyphSlotRec_* draw(unsigned glyph) const {
        if (FT_Load_Glyph(face_, glyph, FT_LOAD_RENDER) != 0) return nullptr;
        return face_->glyph->bitmap.pixel_mode == FT_PIXEL_MODE_GRAY ? face_->glyph : nullptr;
    }

    int kerning(unsigned before, unsigned glyph) const {
        FT_Vector by{};
        constexpr int kUnits = 64;
        return FT_Get_Kerning(face_, before, glyph, FT_KERNING_DEFAULT, &by) == 0 ? static_cast<int>(by.x / kUnits) : 0;
    }

private:
    FT_Library library_ = nullptr;
    FT_Face face_ = nullptr;
};

struct Drawn {
    char letter;
    unsigned glyph;
    int width, height, top;  // `top`: rows above the baseline
    std::vector<std::uint8_t> gray;
};

bool drawAll(const Face& face, const std::string& letters, bool mustHaveAll, std::vector<Drawn>& all,
             std::string& error) {
    for (const char letter : letters) {
        const unsigned glyph = face.glyphOf(letter);
        const FT_GlyphSlotRec_* slot = glyph ? face.draw(glyph) : nullptr;
        if (!slot) {
            if (!mustHaveAll) continue;
            error = fmt::format("has no letter {}", headless::toUtf8(std::string_view(&letter, 1)));
            return false;
        }
        const FT_Bitmap& bitmap = slot->bitmap;
        Drawn drawn{letter, glyph, static_cast<int>(bitmap.width), static_cast<int>(bitmap.rows), slot->bitmap_top, {}};
        for (int y = 0; y < drawn.height; ++y) {
            const std::uint8_t* row = bitmap.buffer + static_cast<std::ptrdiff_t>(y) * bitmap.pitch;
            drawn.gray.insert(drawn.gray.end(), row, row + drawn.width);
        }
        all.push_back(std::move(drawn));
    }
    return true;
}

std::uint16_t pixelOf(int colour) {
    return static_cast<std::uint16_t>((colour >> 8 & 0xF800) | (colour >> 5 & 0x07E0) | (colour >> 3 & 0x001F));
}

}  // namespace

Outcome fontFromOutlines(std::string_view font, const FontOptions& options) {
    if (options.size < 1 || options.size > kLargest) return wrong(fmt::format("sizes go from 1 to {}", kLargest));
    Face face;
    if (!face.open(font, options.size)) return wrong("is no font that FreeType reads, or none of that size");

    std::string letters;
    if (options.letters.empty()) {
        for (int code = 0; code < 256; ++code) {
            if (isDrawn(static_cast<char>(code))) letters += static_cast<char>(code);
        }
    } else {
        const std::string wanted = headless::fromUtf8(options.letters);
        if (headless::toUtf8(wanted) != options.letters) return wrong("letters that aren't in Windows-1250");
        for (const char letter : wanted) {
            if (isDrawn(letter) && letters.find(letter) == std::string::npos) letters += letter;
        }
    }

    std::vector<Drawn> all;
    std::string error;
    if (!drawAll(face, letters, !options.letters.empty(), all, error)) return wrong(error);
    if (all.empty()) return wrong("has none of the letters");

    int width = 0, above = 0, below = 0;
    for (const Drawn& drawn : all) {
        width = std::max(width, drawn.width);
        above = std::max(above, drawn.top);
        below = std::max(below, drawn.height - drawn.top);
    }
    // The border of a cell stays empty.
    const CXSize cell(width + 2, above + below + 2);
    std::vector<FontCell> cells;
    for (const Drawn& drawn : all) {
        const auto area = static_cast<std::size_t>(cell.mul());
        FontCell made{drawn.letter, std::vector<std::uint16_t>(area, pixelOf(options.colour)),
                      std::vector<std::uint8_t>(area)};
        for (int y = 0; y < drawn.height; ++y) {
            const auto target = std::ptrdiff_t{1 + above - drawn.top + y} * cell.width + 1;
            std::copy_n(drawn.gray.begin() + static_cast<std::ptrdiff_t>(y) * drawn.width, drawn.width,
                        made.alpha.begin() + target);
        }
        cells.push_back(std::move(made));
    }
    FontTables tables = compileFont(cells, cell, kBits);
    if (tables.letters.empty()) return wrong("the letters don't fit into a font file");
    std::size_t entry = 0;
    for (const Drawn& before : all) {
        for (const Drawn& drawn : all) {
            const int nearer = tables.kerning[entry] - face.kerning(before.glyph, drawn.glyph);
            tables.kerning[entry++] = static_cast<std::int8_t>(std::clamp(nearer, -128, 127));
        }
    }
    const std::vector<std::uint8_t> bytes = writeFont(tables);
    return {std::string(bytes.begin(), bytes.end()), ""};
}

bool isFont(std::string_view bytes) { return bytes.starts_with(std::string_view("FNT\0", 4)); }

Outcome fontInfo(std::string_view bytes) {
    std::string reason;
    const std::optional<FontTables> font = readFont(std::as_bytes(std::span(bytes.data(), bytes.size())), reason);
    if (!font) return wrong(reason);
    const std::string letters(font->letters.begin(), font->letters.end());
    return {fmt::format("font, {} letters in cells of {} by {}, {} bits\n  {}\n", font->count(), font->cellWidth(),
                        font->size.height, font->bpp, headless::toUtf8(letters)),
            ""};
}

}  // namespace prosc
