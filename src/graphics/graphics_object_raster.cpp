// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// What a graphics object does to its own pixels.
#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "graphics/color.h"
#include "graphics/graphics_object.h"
#include "graphics/pixel_conversion.h"
#include "graphics/pixel_format.h"
#include "graphics/refresh_screen.h"

namespace {

std::size_t area(const CXSize& size) {
    return static_cast<std::size_t>(std::max(size.width, 0)) * static_cast<std::size_t>(std::max(size.height, 0));
}

std::size_t indexOf(int x, int y, const CXSize& size) {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(size.width) + static_cast<std::size_t>(x);
}

bool holds(const CXSize& size, int x, int y) { return x >= 0 && y >= 0 && x < size.width && y < size.height; }

using ThreeBytes = std::array<std::uint8_t, 3>;

std::span<ThreeBytes> threeBytePixels(const Plane& plane) {
    return {reinterpret_cast<ThreeBytes*>(plane.bytes().data()), plane.size() / sizeof(ThreeBytes)};
}

template <class Unit>
void swapRows(std::span<Unit> plane, const CXSize& size) {
    if (plane.size() < area(size)) return;
    const auto width = static_cast<std::ptrdiff_t>(size.width);
    for (int y = 0; y < size.height / 2; ++y) {
        const auto row = plane.begin() + width * y;
        std::swap_ranges(row, row + width, plane.begin() + width * (size.height - 1 - y));
    }
}

template <class Unit>
void mirrorRows(std::span<Unit> plane, const CXSize& size) {
    if (plane.size() < area(size)) return;
    const auto width = static_cast<std::ptrdiff_t>(size.width);
    for (int y = 0; y < size.height; ++y)
        std::reverse(plane.begin() + width * y, plane.begin() + width * (y + 1));
}

// Nearest neighbour: where a pixel of the scaled picture comes from, in each direction.
template <class Unit>
std::vector<Unit> scaled(std::span<const Unit> plane, const CXSize& from, const CXSize& to, double sx, double sy) {
    std::vector<Unit> result(area(to));
    if (plane.size() < area(from)) return result;
    std::size_t next = 0;
    for (int y = 0; y < to.height; ++y) {
        const int sourceY = std::min(static_cast<int>(y / sy), from.height - 1);
        for (int x = 0; x < to.width; ++x)
            result[next++] = plane[indexOf(std::min(static_cast<int>(x / sx), from.width - 1), sourceY, from)];
    }
    return result;
}

Plane planeOfPixels(std::span<const std::uint16_t> pixels) {
    Plane plane(pixels.size() * sizeof(std::uint16_t));
    std::copy(pixels.begin(), pixels.end(), plane.pixels().begin());
    return plane;
}

template <class Unit>
std::span<const Unit> constant(std::span<Unit> plane) {
    return plane;
}

}  // namespace

template <class Turn>
void CGraphicsObject::withRawPlanes(Turn turn) {
    bringBackCompressed();  // else what is changed would go with the decoded planes
    const bool coded = compression_ != kCompressionRaw && compression_ != kCompressionFrame;
    if (coded) {
        DeCompress();
        DeCompressRLE2();
        heldData_.reset();
        heldAlpha_.reset();
    }
    turn();
    if (coded) Compress(kCompressionRle);
}

void CGraphicsObject::FlipH() {
    withRawPlanes([this] {
        const CXSize size(Width(), Height());
        if (size == size_) {
            if (GetPixelSize() == 2) swapRows(data_.pixels(), size);
            if (GetPixelSize() == 3) swapRows(threeBytePixels(data_), size);
            swapRows(alpha_.bytes(), size);
        }
        flippedH_ = !flippedH_;
    });
}

void CGraphicsObject::FlipV() {
    withRawPlanes([this] {
        const CXSize size(Width(), Height());
        if (size == size_) {
            if (GetPixelSize() == 2) mirrorRows(data_.pixels(), size);
            if (GetPixelSize() == 3) mirrorRows(threeBytePixels(data_), size);
            mirrorRows(alpha_.bytes(), size);
        }
        flippedV_ = !flippedV_;
    });
}

void CGraphicsObject::resetFlips() {
    if (flippedV_) FlipV();
    if (flippedH_) FlipH();
}

void CGraphicsObject::Fill(const CColor* color) {
    const int pixel = color->GetInBPP(bpp_);
    if (bpp_ == 15 || bpp_ == 16) {
        std::fill(data_.pixels().begin(), data_.pixels().end(), static_cast<std::uint16_t>(pixel));
    } else if (bpp_ == 32) {
        const std::span<std::uint8_t> bytes = data_.bytes();
        for (std::size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = static_cast<std::uint8_t>(static_cast<unsigned>(pixel) >> (i % 4 * 8));
    }
}

void CGraphicsObject::Fill(const CXRect& rect, const CColor* color) {
    if (bpp_ != 15 && bpp_ != 16) return;
    const CXRect part = rect.Common({0, 0, size_.width, size_.height});
    const std::span<std::uint16_t> pixels = data_.pixels();
    if (part.IsEmpty() || pixels.size() < area(size_)) return;
    const auto pixel = static_cast<std::uint16_t>(color->GetInBPP(bpp_));
    for (int y = part.top; y < part.bottom; ++y) {
        const auto row = pixels.begin() + static_cast<std::ptrdiff_t>(indexOf(part.left, y, size_));
        std::fill_n(row, part.Width(), pixel);
    }
}

Plane* CGraphicsObject::planeOf(_channel channel) {
    switch (channel) {
        case kChannelRed:
            return &rare().red;
        case kChannelGreen:
            return &rare().green;
        case kChannelBlue:
            return &rare().blue;
        case kChannelAlpha:
            break;
    }
    return &alpha_;
}

std::uint8_t CGraphicsObject::GetPixel(_channel channel, const CXPoint& point) {
    const std::int64_t index = static_cast<std::int64_t>(point.y) * Width() + point.x;
    if (channel != kChannelAlpha || compression_ != kCompressionRle) return planeOf(channel)->at(index);
    DeCompressRLE2();
    const std::uint8_t value = alpha_.at(index);
    bringBackCompressed();
    return value;
}

CColor CGraphicsObject::GetPixel(int x, int y) const {
    if (!holds(size_, x, y) || compression_ != kCompressionRaw) return {};
    const std::size_t index = indexOf(x, y, size_);
    if (bpp_ == 24) {
        const std::span<const std::uint8_t> bytes = data_.bytes();
        if (index * 3 + 3 > bytes.size()) return {};
        return {bytes[index * 3 + 2], bytes[index * 3 + 1], bytes[index * 3]};
    }
    if (GetPixelSize() != 2 || index >= data_.pixels().size()) return {};
    return {static_cast<short>(data_.pixels()[index]), bpp_ == 15 ? kModel15 : kModel16};
}

void CGraphicsObject::SetPixel(int x, int y, const CColor& color) {
    if (GetPixelSize() != 2 || !holds(size_, x, y)) return;
    const std::size_t index = indexOf(x, y, size_);
    if (index < data_.pixels().size()) data_.pixels()[index] = static_cast<std::uint16_t>(color.GetInBPP(bpp_));
}

void CGraphicsObject::putPixel(int x, int y, short pixel, int k) {
    if (bpp_ == 15) putPixel15(x, y, pixel, k);
    if (bpp_ == 16) putPixel16(x, y, pixel, k);
}

namespace {

// Each channel of the pixel times k over 256, kept within its field.
std::uint16_t dimmed(short pixel, int k, unsigned green, unsigned red) {
    const auto value = static_cast<std::uint16_t>(pixel);
    unsigned result = 0;
    for (const unsigned mask : {0x1FU, green, red})
        result |= ((value & mask) * static_cast<unsigned>(k) >> 8) & mask;
    return static_cast<std::uint16_t>(result);
}

}  // namespace

void CGraphicsObject::putPixel15(int x, int y, short pixel, int k) {
    const CXSize rows(pitch_, size_.height);
    if (!holds(rows, x, y) || indexOf(x, y, rows) >= data_.pixels().size()) return;
    data_.pixels()[indexOf(x, y, rows)] = dimmed(pixel, k, 0x3E0, 0x7C00);
}

void CGraphicsObject::putPixel16(int x, int y, short pixel, int k) {
    const CXSize rows(pitch_, size_.height);
    if (!holds(rows, x, y) || indexOf(x, y, rows) >= data_.pixels().size()) return;
    data_.pixels()[indexOf(x, y, rows)] = dimmed(pixel, k, 0x7E0, 0xF800);
}

void CGraphicsObject::restoreAlpha(CGraphicsObject* mask) {
    if (!mask->rare_ || mask->rare_->mergeSave.empty()) return;
    const CXRect& rect = mask->rare_->mergeRect;
    withRawPlanes([&] {
        const std::span<std::uint8_t> own = alpha_.bytes();
        const CXSize saved(rect.Width(), rect.Height());
        for (int y = 0; y < saved.height; ++y) {
            for (int x = 0; x < saved.width; ++x) {
                // The stamp may be another object's, of another size.
                if (!holds(size_, rect.left + x, rect.top + y)) continue;
                const std::size_t index = indexOf(rect.left + x, rect.top + y, size_);
                if (index < own.size()) own[index] = mask->rare_->mergeSave[indexOf(x, y, saved)];
            }
        }
    });
    if (canvas_) canvas_->Invalidate(&rect);
}

void CGraphicsObject::mergeAlpha(const CXPoint& at, CGraphicsObject* mask) {
    restoreAlpha(mask);
    const CXSize maskSize = mask->Size();
    const CXPoint end = at + CXPoint(maskSize);
    const CXRect rect(std::max(at.x, 0), std::max(at.y, 0), std::min(end.x, size_.width),
                      std::min(end.y, size_.height));
    Rare& save = mask->rare();
    save.mergeRect = rect;
    save.mergeSave.clear();
    if (rect.Width() <= 0 || rect.Height() <= 0 || !alpha_) return;

    const CXSize stamp(rect.Width(), rect.Height());
    std::vector<std::uint8_t> bytes(area(stamp));
    mask->withRawPlanes([&] {
        for (std::size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = mask->alpha_.at(static_cast<std::int64_t>(i));
    });
    withRawPlanes([&] {
        const std::span<std::uint8_t> own = alpha_.bytes();
        if (own.size() < area(size_)) return;
        save.mergeSave.resize(bytes.size());
        for (int y = 0; y < stamp.height; ++y) {
            const auto row = own.begin() + static_cast<std::ptrdiff_t>(indexOf(rect.left, rect.top + y, size_));
            const auto offset = static_cast<std::ptrdiff_t>(indexOf(0, y, stamp));
            std::copy_n(row, stamp.width, save.mergeSave.begin() + offset);
            std::copy_n(bytes.begin() + offset, stamp.width, row);
        }
    });
    if (canvas_) canvas_->Invalidate(&rect);
}

void CGraphicsObject::ToGrayScale() {
    if (bpp_ != 15 && bpp_ != 16) return;
    const unsigned green = bpp_ == 15 ? 5 : 6, red = bpp_ == 15 ? 10 : 11;
    for (std::uint16_t& pixel : data_.pixels()) {
        const unsigned gray = ((pixel & 31U) + (pixel >> green & 31U) + (pixel >> red & 31U)) / 3;
        pixel = static_cast<std::uint16_t>(gray | gray << green | gray << red);
    }
}

void CGraphicsObject::InvertColors() {
    if (bpp_ != 15) return;
    // 31 - c flips all bits of a channel.
    for (std::uint16_t& pixel : data_.pixels())
        pixel = static_cast<std::uint16_t>(pixel ^ 0x7FFFU);
}

void CGraphicsObject::outline(unsigned short pixel, int frames) {
    const std::span<std::uint16_t> pixels = data_.pixels();
    const std::span<std::uint8_t> alpha = alpha_.bytes();
    if (GetPixelSize() != 2 || pixels.size() < area(size_) || alpha.size() < area(size_)) return;
    const auto paint = [&](int x, int y) {
        pixels[indexOf(x, y, size_)] = pixel;
        alpha[indexOf(x, y, size_)] = 255;
    };
    const int rows = std::min(frames, size_.height), columns = std::min(frames, size_.width);
    for (int i = 0; i < rows; ++i) {
        for (int x = 0; x < size_.width; ++x) {
            paint(x, i);
            paint(x, size_.height - 1 - i);
        }
    }
    for (int i = 0; i < columns; ++i) {
        for (int y = 0; y < size_.height; ++y) {
            paint(i, y);
            paint(size_.width - 1 - i, y);
        }
    }
}

void CGraphicsObject::Scale(double sx, double sy) {
    constexpr double kLargestSide = 16384;
    const double width = size_.width * sx, height = size_.height * sy;
    const bool inRange = width >= 0 && width <= kLargestSide && height >= 0 && height <= kLargestSide;
    if (GetPixelSize() != 2 || !data_ || !inRange) return;
    const CXSize size(static_cast<int>(width), static_cast<int>(height));
    Plane data = planeOfPixels(scaled(constant(data_.pixels()), size_, size, sx, sy));
    Plane alpha;
    if (alpha_) alpha = Plane(scaled(constant(alpha_.bytes()), size_, size, sx, sy));
    setPlanes(size, bpp_, std::move(data), std::move(alpha));
}

void CGraphicsObject::Scale2x() {
    if (GetPixelSize() != 2 || !data_) return;
    const CXSize size(size_.width / 2, size_.height / 2);
    Plane data = planeOfPixels(scaled(constant(data_.pixels()), size_, size, 0.5, 0.5));
    setPlanes(size, bpp_, std::move(data), alpha_ ? Plane(area(size)) : Plane());
}

void CGraphicsObject::CreateHistogram() {
    std::vector<int>& histogram = rare().histogram;
    histogram.assign(std::numeric_limits<std::uint16_t>::max(), 0);
    for (const std::uint16_t pixel : data_.pixels()) {
        if (pixel < histogram.size()) ++histogram[pixel];
    }
}

void CGraphicsObject::ReleaseHistogram() {
    if (rare_) rare_->histogram.clear();
}

void CGraphicsObject::Split() {
    const std::span<const std::uint8_t> pixels = data_.bytes();
    const std::size_t count = area(size_);
    if (bpp_ != 24 || pixels.size() < count * 3) return;
    Rare& planes = rare();
    planes.blue = Plane(count);
    planes.green = Plane(count);
    planes.red = Plane(count);
    for (std::size_t i = 0; i < count; ++i) {
        planes.blue.bytes()[i] = pixels[i * 3];
        planes.green.bytes()[i] = pixels[i * 3 + 1];
        planes.red.bytes()[i] = pixels[i * 3 + 2];
    }
    std::fill(std::begin(channelSizes_), std::end(channelSizes_), static_cast<int>(count));
    data_.reset();
}

void CGraphicsObject::setChannel(_channel channel, Plane plane) {
    constexpr int kAlphaSize = 3;
    channelSizes_[channel == kChannelAlpha ? kAlphaSize : channel] = static_cast<int>(plane.size());
    *planeOf(channel) = std::move(plane);
}

void CGraphicsObject::JoinChannels() {
    const int format = bpp_;
    const std::size_t count = area(size_);
    const Rare& planes = rare();
    Plane joined(count * 3);
    const std::span<std::uint8_t> pixels = joined.bytes();
    for (std::size_t i = 0; i < count; ++i) {
        const auto index = static_cast<std::int64_t>(i);
        pixels[i * 3] = planes.blue.at(index);
        pixels[i * 3 + 1] = planes.green.at(index);
        pixels[i * 3 + 2] = planes.red.at(index);
    }
    setPlanes(size_, 24, std::move(joined), alpha_);
    Convert(format);
}

std::vector<std::uint8_t> CGraphicsObject::Join2Channels() const {
    const std::span<const std::uint8_t> pixels = data_.bytes();
    const std::size_t count = area(size_);
    if (bpp_ != 24 || pixels.size() < count * 3) return {};
    std::vector<std::uint8_t> joined(count * 4);
    for (std::size_t i = 0; i < count; ++i) {
        std::copy_n(pixels.begin() + static_cast<std::ptrdiff_t>(i * 3), 3,
                    joined.begin() + static_cast<std::ptrdiff_t>(i * 4));
        joined[i * 4 + 3] = alpha_.at(static_cast<std::int64_t>(i));
    }
    return joined;
}

void CGraphicsObject::SplitOn2(std::span<const std::uint8_t> pixels, int n) {
    Flush();
    const std::size_t count = std::min(static_cast<std::size_t>(std::max(n, 0)), pixels.size() / 4);
    data_ = Plane(count * 3);
    alpha_ = Plane(count);
    for (std::size_t i = 0; i < count; ++i) {
        std::copy_n(pixels.begin() + static_cast<std::ptrdiff_t>(i * 4), 3,
                    data_.bytes().begin() + static_cast<std::ptrdiff_t>(i * 3));
        alpha_.bytes()[i] = pixels[i * 4 + 3];
    }
}
