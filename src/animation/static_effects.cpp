// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/static_effects.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "script/variable.h"

namespace {

// An effect that would make a larger picture leaves the old one: scripts choose the sizes.
constexpr std::int64_t kMostPixels = 1 << 24;

constexpr FilterKey<StaticProperties> kKeys[] = {
    {"CANUNDO",      &StaticProperties::canUndo     },
    {"CURRENTFRAME", &StaticProperties::currentFrame},
    {"CHANNELS",     &StaticProperties::channels    },
    {"ANGLE",        &StaticProperties::angle       },
    {"SIZE",         &StaticProperties::size        },
    {"FACTORX",      &StaticProperties::factorX     },
    {"FACTORY",      &StaticProperties::factorY     }
};

// The fields of a 16-bit pixel.
struct Field {
    unsigned shift, largest;
    constexpr unsigned of(std::uint16_t pixel) const { return pixel >> shift & largest; }
};
struct Format {
    std::array<Field, 3> fields;  // blue, green, red
    unsigned greenKept;           // what is left of the green field by effects that drop its lowest bit
    constexpr unsigned mask(std::size_t field) const { return fields[field].largest << fields[field].shift; }
};
constexpr Format k15 = {{{{0, 31}, {5, 31}, {10, 31}}}, 0x3C0};
constexpr Format k16 = {{{{0, 31}, {5, 63}, {11, 31}}}, 0x7C0};

const Format& formatOf(const CGraphicsObject& picture) { return picture.getBpp() == 15 ? k15 : k16; }

void setPixels(CGraphicsObject& picture, Plane pixels) {
    picture.setPlanes(picture.Size(), picture.getBpp(), std::move(pixels), picture.getAlpha());
}

void keepChannels(CGraphicsObject& picture, const StaticProperties& chosen) {
    const Format& format = formatOf(picture);
    const CXString& channels = chosen.channels;
    unsigned mask = 0;
    if (channels.Find('R') >= 0) mask |= format.mask(2);
    if (channels.Find('G') >= 0) mask |= format.greenKept;
    if (channels.Find('B') >= 0) mask |= format.mask(0);
    Plane result = picture.getData().copy();
    for (std::uint16_t& pixel : result.pixels())
        pixel = static_cast<std::uint16_t>(pixel & mask);
    setPixels(picture, std::move(result));
}

void turnGray(CGraphicsObject& picture, const StaticProperties&) {
    setPixels(picture, picture.getData().copy());
    picture.ToGrayScale();
}

// Of a picture without an alpha plane every pixel counts as opaque.
void negate(CGraphicsObject& picture, const StaticProperties&) {
    const CXSize size = picture.Size();
    const CXRect whole(0, 0, size.width, size.height);
    const CXRect& clip = picture.GetClippingRect();
    const CXRect part = clip.IsEmpty() ? whole : clip.Common(whole);
    // A field's largest value less what it holds is every bit of it turned round.
    const auto bits = static_cast<std::uint16_t>(picture.getBpp() == 15 ? 0x7FFF : 0xFFFF);
    Plane result = picture.getData().copy();
    const std::span<std::uint16_t> pixels = result.pixels();
    const std::span<const std::uint8_t> alpha = picture.getAlpha().bytes();
    for (int y = part.top; y < part.bottom; ++y) {
        for (int x = part.left; x < part.right; ++x) {
            const std::size_t at = indexOf(x, y, size.width);
            if (alpha.empty() || alpha[at] != 0) pixels[at] = static_cast<std::uint16_t>(pixels[at] ^ bits);
        }
    }
    setPixels(picture, std::move(result));
}

// The sums of one field over a square that moves along a row. They are kept in 16 bits and wrap.
class SquareSums {
public:
    SquareSums(std::span<const std::uint16_t> pixels, const CXSize& size, const Field& field, int half)
        : pixels_(pixels), size_(size), field_(field), half_(half), columns_(static_cast<std::size_t>(size.width)) {
        for (int y = 0; y < 2 * half; ++y)
            addRow(y, 1);
    }

    // To the first square around row y, which is `half` or the one behind the last call's.
    void beginRow(int y) {
        addRow(y + half_, 1);
        if (y > half_) addRow(y - half_ - 1, -1);
        sum_ = 0;
        for (int x = 0; x <= 2 * half_; ++x)
            sum_ += columns_[static_cast<std::size_t>(x)];
    }
    std::uint16_t sum() const { return static_cast<std::uint16_t>(sum_); }
    // From the square around x to the next.
    void advance(int x) {
        const int coming = x + half_ + 1;
        if (coming < size_.width)
            sum_ += columns_[static_cast<std::size_t>(coming)] - columns_[static_cast<std::size_t>(x - half_)];
    }

private:
    void addRow(int y, unsigned sign) {
        const std::size_t row = indexOf(0, y, size_.width);
        for (std::size_t x = 0; x < columns_.size(); ++x)
            columns_[x] += sign * field_.of(pixels_[row + x]);
    }

    std::span<const std::uint16_t> pixels_;
    CXSize size_;
    Field field_;
    int half_;
    std::vector<std::uint32_t> columns_;  // the sum over the square's rows in each column
    std::uint32_t sum_ = 0;
};

// Pixels that no square reaches keep what they had, and so does the whole picture for a square of no neighbours.
void blur(CGraphicsObject& picture, const StaticProperties& chosen) {
    const CXSize size = picture.Size();
    if (chosen.size < 2 || chosen.size / 2 > std::min(size.width - 1, size.height - 1) / 2) return;
    const int half = chosen.size / 2;
    const std::int64_t divisor = static_cast<std::int64_t>(chosen.size) * chosen.size - 1;
    // sum / divisor for any 16-bit sum, as a product.
    const std::uint64_t reciprocal =
        divisor > 65535 ? 0 : (std::uint64_t{1} << 32) / static_cast<std::uint64_t>(divisor) + 1;
    const Format& format = formatOf(picture);
    const std::span<const std::uint16_t> pixels = picture.getData().pixels();
    std::array<SquareSums, 3> sums = {SquareSums(pixels, size, format.fields[0], half),
                                      SquareSums(pixels, size, format.fields[1], half),
                                      SquareSums(pixels, size, format.fields[2], half)};
    Plane result = picture.getData().copy();
    const std::span<std::uint16_t> out = result.pixels();
    const auto width = static_cast<std::size_t>(size.width);
    // At 16 bits the green field loses its lowest bit.
    const unsigned kept = format.fields[1].largest == 63 ? ~0x20U : ~0U;
    for (int y = half; y < size.height - half; ++y) {
        for (SquareSums& sum : sums)
            sum.beginRow(y);
        for (int x = half; x < size.width - half; ++x) {
            const std::size_t at = indexOf(x, y, size.width);
            unsigned mixed = 0;
            for (std::size_t i = 0; i < sums.size(); ++i) {
                const Field& field = format.fields[i];
                const unsigned own = field.of(pixels[at]);
                const auto around = static_cast<std::uint16_t>(sums[i].sum() - own);
                const auto mean = static_cast<unsigned>(around * reciprocal >> 32);
                // The divisor of an even size is too small for its square: the brightest stay within their field.
                mixed |= std::min((own + mean) / 2, field.largest) << field.shift;
                sums[i].advance(x);
            }
            const auto pixel = static_cast<std::uint16_t>(mixed & kept);
            for (const std::size_t place : {at, at - width - 1, at - width + 1, at + width - 1, at + width + 1})
                out[place] = pixel;
        }
    }
    setPixels(picture, std::move(result));
}

int largerExtent(double a, double b) { return std::max(std::abs(truncated(a)), std::abs(truncated(b))); }

// What a picture without an alpha plane leaves open of its new rectangle is transparent.
void rotate(CGraphicsObject& picture, const StaticProperties& chosen) {
    // Not quite pi / 180: pictures of stored applications are made for it.
    constexpr double kFactor = -0.017453233333333335;
    if (!std::isfinite(chosen.angle)) return;
    const double c = std::cos(chosen.angle * kFactor), s = std::sin(chosen.angle * kFactor);
    const CXSize old = picture.Size();
    const double w = old.width, h = old.height;
    const CXSize size(largerExtent(w * c - h * s, w * c + h * s), largerExtent(w * s + h * c, w * s - h * c));
    const std::int64_t count = static_cast<std::int64_t>(size.width) * size.height;
    if (count > kMostPixels) return;
    Plane data(static_cast<std::size_t>(count) * sizeof(std::uint16_t)), alpha(static_cast<std::size_t>(count));
    const std::span<const std::uint16_t> from = picture.getData().pixels();
    const std::span<const std::uint8_t> fromAlpha = picture.getAlpha().bytes();
    const std::span<std::uint16_t> to = data.pixels();
    const std::span<std::uint8_t> toAlpha = alpha.bytes();
    const int halfWidth = old.width / 2, halfHeight = old.height / 2;
    const int middleX = size.width / 2, middleY = size.height / 2;
    std::size_t at = 0;
    for (int y = 0; y < size.height; ++y) {
        const double v = y - middleY;
        for (int x = 0; x < size.width; ++x, ++at) {
            const double u = x - middleX;
            const auto sourceX = static_cast<int>(u * c - v * s + halfWidth);
            const auto sourceY = static_cast<int>(v * c + u * s + halfHeight);
            if (sourceX < 0 || sourceX >= old.width || sourceY < 0 || sourceY >= old.height) continue;
            const std::size_t source = indexOf(sourceX, sourceY, old.width);
            const std::uint8_t opacity = fromAlpha.empty() ? std::uint8_t{255} : fromAlpha[source];
            if (opacity == 0) continue;
            to[at] = from[source];
            toAlpha[at] = opacity;
        }
    }
    picture.setPlanes(size, picture.getBpp(), std::move(data), std::move(alpha));
    picture.Move(halfWidth - middleX, halfHeight - middleY);
}

void scale(CGraphicsObject& picture, const StaticProperties& chosen) {
    const CXSize size = picture.Size();
    const double count = size.width * chosen.factorX * (size.height * chosen.factorY);
    if (std::abs(count) <= static_cast<double>(kMostPixels)) picture.Scale(chosen.factorX, chosen.factorY);
}

constexpr StaticEffect kEffects[] = {
    {"COLORCHANNEL", 100, false, keepChannels},
    {"GRAYSCALE",    101, false, turnGray    },
    {"ROTATE",       102, true,  rotate      },
    {"BLUR",         103, false, blur        },
    {"SCALE",        104, true,  scale       },
    {"NEGATIVE",     105, false, negate      },
};

}  // namespace

void StaticProperties::setProperty(const CXString& key, const CXString& value) {
    setByKey<StaticProperties>(*this, kKeys, key, value);
}

const StaticEffect* findStaticEffect(const CXString& action) {
    const auto* row = std::ranges::find(kEffects, action.view(), &StaticEffect::action);
    return row == std::end(kEffects) ? nullptr : row;
}
