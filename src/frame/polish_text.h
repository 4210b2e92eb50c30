// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

// A literal with Polish letters, written in UTF-8, as the Windows-1250 text that the library works with.
template <std::size_t N>
struct PolishText {
    // NOLINTNEXTLINE(google-explicit-constructor): so that a literal serves as one
    consteval PolishText(const char (&utf8)[N]) {
        for (std::size_t i = 0; i + 1 < N; ++i) {
            const auto byte = static_cast<unsigned char>(utf8[i]);
            bytes[size++] = byte < 0x80 ? utf8[i] : letter(byte, static_cast<unsigned char>(utf8[i + 1]));
            if (byte >= 0x80) ++i;
        }
    }

    constexpr std::string_view view() const { return {bytes.data(), size}; }

    std::array<char, N> bytes{};
    std::size_t size = 0;

private:
    struct Letter {
        unsigned char first, second, code;
    };
    static constexpr Letter kLetters[] = {
        {0xC3, 0x93, 0xD3},
        {0xC3, 0xB3, 0xF3},
        {0xC4, 0x84, 0xA5},
        {0xC4, 0x85, 0xB9},
        {0xC4, 0x86, 0xC6},
        {0xC4, 0x87, 0xE6},
        {0xC4, 0x98, 0xCA},
        {0xC4, 0x99, 0xEA},
        {0xC5, 0x81, 0xA3},
        {0xC5, 0x82, 0xB3},
        {0xC5, 0x83, 0xD1},
        {0xC5, 0x84, 0xF1},
        {0xC5, 0x9A, 0x8C},
        {0xC5, 0x9B, 0x9C},
        {0xC5, 0xB9, 0x8F},
        {0xC5, 0xBA, 0x9F},
        {0xC5, 0xBB, 0xAF},
        {0xC5, 0xBC, 0xBF},
    };

    static constexpr char letter(unsigned char first, unsigned char second) {
        for (const Letter& entry : kLetters) {
            if (entry.first == first && entry.second == second) return static_cast<char>(entry.code);
        }
        notAPolishLetter();
        return 0;
    }
    static void notAPolishLetter() {}  // not constexpr, so such a literal doesn't compile
};
