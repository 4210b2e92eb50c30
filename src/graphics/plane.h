// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>
#include <vector>

// Where the pixel at (x, y) stands in a plane of that width, in pixels.
inline std::size_t indexOf(int x, int y, int width) {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
}

// The bytes of a pixel or an alpha plane, or of their coded form.
//
// A copy of a Plane is the same plane: clones and linked images show what any of them changes in place, and the last
// of them frees it. That nobody else can tell when this is, is why the bytes are counted here and nowhere else.
class Plane {
public:
    Plane() = default;
    explicit Plane(std::size_t size) : bytes_(std::make_shared<std::vector<std::uint8_t>>(size)) {}  // all 0
    explicit Plane(std::vector<std::uint8_t> bytes)
        : bytes_(std::make_shared<std::vector<std::uint8_t>>(std::move(bytes))) {}

    explicit operator bool() const { return bytes_ != nullptr; }
    std::size_t size() const { return bytes_ ? bytes_->size() : 0; }
    std::span<std::uint8_t> bytes() const {
        return bytes_ ? std::span<std::uint8_t>(*bytes_) : std::span<std::uint8_t>();
    }
    // The bytes as 16-bit pixels; an odd last byte is left out.
    std::span<std::uint16_t> pixels() const {
        return {reinterpret_cast<std::uint16_t*>(bytes().data()), size() / sizeof(std::uint16_t)};
    }
    // 0 beyond the plane.
    std::uint8_t at(std::int64_t index) const {
        return index >= 0 && static_cast<std::uint64_t>(index) < size() ? (*bytes_)[static_cast<std::size_t>(index)]
                                                                        : std::uint8_t{0};
    }
    // Bytes of its own.
    Plane copy() const { return bytes_ ? Plane(*bytes_) : Plane(); }
    void reset() { bytes_.reset(); }
    bool operator==(const Plane& other) const { return bytes_ == other.bytes_; }  // the same plane

private:
    std::shared_ptr<std::vector<std::uint8_t>> bytes_;
};
