// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <map>
#include <string>

#include "storage/file.h"
#include "support/pictures.h"
#include "text/simple_font.h"

// Font files, built from their byte table.
namespace fonts {

using pictures::put;

struct Face {
    std::string letters = "abcl";
    int cell = 10;
    int height = 20;
    std::map<char, int> left{}, right{};   // empty columns
    std::map<std::string, int> kerning{};  // letter before and letter
    std::uint16_t pixel = 0xFFFF;
};

// Cells that are opaque everywhere.
inline std::string file(const Face& face) {
    const auto count = static_cast<int>(face.letters.size());
    std::string bytes("FNT\0", 4);
    for (const int value : {count * face.cell, face.height, 16, count})
        put(bytes, value, 4);
    bytes += face.letters;
    const auto valueOf = [](const auto& table, const auto& key) {
        const auto found = table.find(key);
        return found == table.end() ? 0 : found->second;
    };
    for (const char before : face.letters)
        for (const char letter : face.letters)
            put(bytes, valueOf(face.kerning, std::string{before, letter}), 1);
    for (const auto* offsets : {&face.left, &face.right})
        for (const char letter : face.letters)
            put(bytes, valueOf(*offsets, letter), 1);
    const auto area = static_cast<std::size_t>(count * face.cell * face.height);
    return bytes + pictures::plane(std::vector<std::uint16_t>(area, face.pixel)) + std::string(area, '\xFF');
}

// A font of that file, by way of the disk of the platform at work.
class Font : public CSimpleFont6 {
public:
    explicit Font(const Face& face, const char* style = "STANDARD", int size = 12) : CSimpleFont6(nullptr) {
        loadBytes(file(face));
        setFamily("ARIAL");
        setStyle(style);
        setSize(size);
    }
    int loadBytes(const std::string& bytes) {
        CFile out(nullptr, "font.fnt", CFile::kCreateBinary);
        out.Write(bytes.data(), static_cast<int>(bytes.size()));
        out.Close();
        return Load("font.fnt");
    }
};

}  // namespace fonts
