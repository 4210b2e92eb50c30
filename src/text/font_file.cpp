// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "text/font_file.h"

#include <algorithm>
#include <limits>

#include "foundation/byte_reader.h"

namespace {

constexpr std::uint32_t kMagic = 0x544E46;
constexpr std::int64_t kMostPixels = 1 << 26;  // of a strip
constexpr int kLongestSide = 1 << 24;

// A column of this alpha or less doesn't hold the next letter off.
constexpr int kFaint = 20;

bool fail(std::string& reason, const ByteReader& reader, const char* what) {
    reason = "byte " + std::to_string(reader.position()) + ": " + what;
    return false;
}

template <class T>
std::vector<T> table(ByteReader& reader, std::int64_t count) {
    const std::span<const std::byte> bytes = reader.bytes(count);
    const auto* first = reinterpret_cast<const T*>(bytes.data());
    return bytes.empty() ? std::vector<T>() : std::vector<T>(first, first + bytes.size());
}

Plane planeOf(ByteReader& reader, std::int64_t count) {
    return count > 0 ? Plane(table<std::uint8_t>(reader, count)) : Plane();
}

bool read(ByteReader& reader, FontTables& font, std::string& reason) {
    reader.skip(4);
    font.size.width = reader.i32();
    font.size.height = reader.i32();
    font.bpp = reader.i32() == 15 ? 15 : 16;
    const std::int64_t count = reader.i32();
    if (!reader.ok()) return fail(reason, reader, "the header is cut off");
    if (font.size.width < 0 || font.size.height < 0) return fail(reason, reader, "a negative size");
    const std::int64_t pixels = static_cast<std::int64_t>(font.size.width) * font.size.height;
    if (pixels > kMostPixels || std::max(font.size.width, font.size.height) > kLongestSide)
        return fail(reason, reader, "a strip that is too large");
    const auto left = static_cast<std::int64_t>(reader.left());
    // Two comparisons, for the product of two large counts has no room in any number.
    if (count < 0 || count > left || count * (count + 3) + pixels * 3 > left)
        return fail(reason, reader, "more letters or pixels than the file has room for");
    font.letters = table<char>(reader, count);
    font.kerning = table<std::int8_t>(reader, count * count);
    font.left = table<std::int8_t>(reader, count);
    font.right = table<std::int8_t>(reader, count);
    font.pixels = planeOf(reader, pixels * 2);
    font.alpha = planeOf(reader, pixels);
    return true;
}

void putInt(std::vector<std::uint8_t>& bytes, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8)
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
}

template <class T>
void putTable(std::vector<std::uint8_t>& bytes, const T& values) {
    for (const auto value : values)
        bytes.push_back(static_cast<std::uint8_t>(value));
}

std::int8_t toByte(int value) {
    using Limits = std::numeric_limits<std::int8_t>;
    return static_cast<std::int8_t>(std::clamp<int>(value, Limits::min(), Limits::max()));
}

// A cell as the compiler sees it, its border cleared.
class Glyph {
public:
    Glyph(const FontCell& cell, const CXSize& size) : cell_(cell), size_(size) {
        left_ = count([this](int i) { return highest(i) == 0; });
        right_ = count([this](int i) { return highest(size_.width - 1 - i) == 0; });
    }

    int left() const { return left_; }
    int right() const { return right_; }

    int kerning() const {
        int faint = 0;
        for (int x = size_.width - right_ - 1; x >= left_ && highest(x) <= kFaint; --x)
            ++faint;
        return 1 - faint;
    }

    bool isBorder(int x, int y) const { return x == 0 || y == 0 || x == size_.width - 1 || y == size_.height - 1; }

private:
    template <class Test>
    int count(Test test) const {
        int i = 0;
        while (i < size_.width && test(i))
            ++i;
        return i;
    }

    int highest(int x) const {
        int found = 0;
        for (int y = 0; y < size_.height; ++y) {
            if (!isBorder(x, y)) found = std::max<int>(found, cell_.alpha[indexOf(x, y, size_.width)]);
        }
        return found;
    }

    const FontCell& cell_;
    CXSize size_;
    int left_;
    int right_;
};

}  // namespace

std::optional<FontTables> readFont(std::span<const std::byte> bytes, std::string& reason) {
    ByteReader reader(bytes);
    FontTables font;
    if (!read(reader, font, reason)) return std::nullopt;
    return font;
}

std::vector<std::uint8_t> writeFont(const FontTables& font) {
    std::vector<std::uint8_t> bytes;
    for (const std::uint32_t value :
         {kMagic, static_cast<std::uint32_t>(font.size.width), static_cast<std::uint32_t>(font.size.height),
          static_cast<std::uint32_t>(font.bpp), static_cast<std::uint32_t>(font.count())})
        putInt(bytes, value);
    putTable(bytes, font.letters);
    putTable(bytes, font.kerning);
    putTable(bytes, font.left);
    putTable(bytes, font.right);
    putTable(bytes, font.pixels.bytes());
    putTable(bytes, font.alpha.bytes());
    return bytes;
}

FontTables compileFont(const std::vector<FontCell>& cells, const CXSize& cell, int bpp) {
    FontTables font;
    const auto count = static_cast<int>(cells.size());
    if (cell.width <= 0 || cell.height <= 0 ||
        static_cast<std::int64_t>(cell.width) * cell.height * count > kMostPixels)
        return font;
    font.bpp = bpp;
    font.size = {cell.width * count, cell.height};
    const auto pixels = static_cast<std::size_t>(font.size.width) * static_cast<std::size_t>(cell.height);
    if (pixels > 0) {
        font.pixels = Plane(pixels * 2);
        font.alpha = Plane(pixels);
    }
    for (int i = 0; i < count; ++i) {
        const FontCell& from = cells[static_cast<std::size_t>(i)];
        const Glyph glyph(from, cell);
        font.letters.push_back(from.letter);
        font.left.push_back(toByte(glyph.left()));
        font.right.push_back(toByte(glyph.right()));
        // The column of the next letter plays no part in it.
        font.kerning.insert(font.kerning.end(), cells.size(), toByte(glyph.kerning()));
        for (int y = 0; y < cell.height; ++y) {
            for (int x = 0; x < cell.width; ++x) {
                if (glyph.isBorder(x, y)) continue;
                const auto source = indexOf(x, y, cell.width);
                const auto target = indexOf(i * cell.width + x, y, font.size.width);
                font.pixels.pixels()[target] = from.pixels[source];
                font.alpha.bytes()[target] = from.alpha[source];
            }
        }
    }
    return font;
}
