// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/headless/code_page.h"

#include <array>
#include <cstdint>
#include <iconv.h>
#include <optional>
#include <vector>

namespace headless {

namespace {

constexpr std::size_t kFirstForeign = 0x80;  // below it both are ASCII
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

// What iconv makes of each byte from 0x80 on; empty for a byte that is no character.
std::array<std::string, 128> readCodePage() {
    std::array<std::string, 128> page;
    iconv_t converter = iconv_open("UTF-8", "CP1250");
    if (converter == reinterpret_cast<iconv_t>(-1)) return page;
    for (std::size_t i = 0; i < page.size(); ++i) {
        char in = static_cast<char>(kFirstForeign + i);
        char out[8];
        char* from = &in;
        char* to = out;
        std::size_t inLeft = 1;
        std::size_t outLeft = sizeof out;
        if (iconv(converter, &from, &inLeft, &to, &outLeft) == 0) page[i].assign(out, to);
    }
    iconv_close(converter);
    return page;
}

const std::array<std::string, 128>& codePage() {
    static const std::array<std::string, 128> page = readCodePage();
    return page;
}

// The length of the UTF-8 character at the start of `text`; 0 when there is none.
std::size_t characterLength(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80) return 1;
    const std::size_t length = lead >= 0xC2 && lead <= 0xDF   ? 2
                               : (lead & 0xF0) == 0xE0        ? 3
                               : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                              : 0;
    if (length == 0 || text.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((byte(i) & 0xC0) != 0x80) return 0;
    // Overlong forms, surrogates and what lies behind the last code point.
    if (lead == 0xE0 && byte(1) < 0xA0) return 0;
    if (lead == 0xED && byte(1) > 0x9F) return 0;
    if (lead == 0xF0 && byte(1) < 0x90) return 0;
    if (lead == 0xF4 && byte(1) > 0x8F) return 0;
    return length;
}

char fromCharacter(std::string_view character) {
    if (character.size() == 1) return character[0];
    const auto& page = codePage();
    for (std::size_t i = 0; i < page.size(); ++i)
        if (page[i] == character) return static_cast<char>(kFirstForeign + i);
    return '_';
}

constexpr unsigned char fold(unsigned char c) {
    if (c >= 'A' && c <= 'Z') return static_cast<unsigned char>(c + 0x20);
    if (c == 0x8A || (c >= 0x8C && c <= 0x8F)) return static_cast<unsigned char>(c + 0x10);
    if (c == 0xA3 || c == 0xAA || c == 0xAF) return static_cast<unsigned char>(c + 0x10);
    if (c == 0xA5) return 0xB9;
    if (c == 0xBC) return 0xBE;
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return static_cast<unsigned char>(c + 0x20);
    return c;
}

}  // namespace

std::string toUtf8(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < kFirstForeign) {
            result += c;
        } else {
            const std::string& character = codePage()[byte - kFirstForeign];
            result += character.empty() ? kReplacement : std::string_view(character);
        }
    }
    return result;
}

std::string fromUtf8(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = characterLength(text.substr(at));
        if (length == 0) return std::string(text);
        result += fromCharacter(text.substr(at, length));
        at += length;
    }
    return result;
}

char foldCase(char c) { return static_cast<char>(fold(static_cast<unsigned char>(c))); }

std::string foldCase(std::string_view text) {
    std::string result(text);
    for (char& c : result)
        c = foldCase(c);
    return result;
}

}  // namespace headless
