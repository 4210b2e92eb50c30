// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Bytes of wave files, whole ones and parts to build odd ones from.

inline std::string littleEndian(std::uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> (8 * i) & 0xFF);
    return text;
}

inline std::string chunk(std::string_view tag, std::string_view body) {
    return std::string(tag) + littleEndian(static_cast<std::uint32_t>(body.size()), 4) + std::string(body);
}

inline std::string formatBody(int channels, int rate, int bits, int tag = 1) {
    const int block = channels * bits / 8;
    return littleEndian(static_cast<std::uint32_t>(tag), 2) + littleEndian(static_cast<std::uint32_t>(channels), 2) +
           littleEndian(static_cast<std::uint32_t>(rate), 4) +
           littleEndian(static_cast<std::uint32_t>(rate) * static_cast<std::uint32_t>(block), 4) +
           littleEndian(static_cast<std::uint32_t>(block), 2) + littleEndian(static_cast<std::uint32_t>(bits), 2);
}

inline std::string riff(std::string_view chunks) { return chunk("RIFF", "WAVE" + std::string(chunks)); }

inline std::string wave(std::string_view samples, int channels = 1, int rate = 44100, int bits = 16) {
    return riff(chunk("fmt ", formatBody(channels, rate, bits)) + chunk("data", samples));
}

// One value for a while, in 16 bits and one channel.
inline std::string level(int value, int count) {
    std::string samples;
    for (int i = 0; i < count; ++i)
        samples += littleEndian(static_cast<std::uint32_t>(value), 2);
    return samples;
}
