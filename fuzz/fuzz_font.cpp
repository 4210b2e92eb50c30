// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Font files: whatever is read writes itself back, and every letter is measured and drawn, clipped and not.
#include <cstdint>
#include <cstdlib>

#include "platform/headless/headless.h"
#include "storage/file.h"
#include "text/simple_font.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string reason;
    const std::optional<FontTables> read = readFont(std::as_bytes(std::span(data, size)), reason);
    if (!read) {
        if (reason.empty()) std::abort();
        return 0;
    }
    const std::vector<std::uint8_t> written = writeFont(*read);
    const std::optional<FontTables> again = readFont(std::as_bytes(std::span(written)), reason);
    if (!again || again->size != read->size || again->letters != read->letters || again->kerning != read->kerning)
        std::abort();

    static const headless::HeadlessPlatform platform;
    CFile file(nullptr, "fuzz.fnt", CFile::kCreateBinary);
    file.Write(written.data(), static_cast<int>(written.size()));
    file.Close();
    CSimpleFont6 font(nullptr);
    font.Load("fuzz.fnt");
    CGraphicsObject page(nullptr, {40, 30}, size % 2 ? 15 : 16);
    font.SetDestiny(&page);
    char previous = 0;
    for (int letter = 0; letter < 256; ++letter) {
        const auto current = static_cast<char>(letter);
        font.setColor(letter * 257);
        font.drawLetter(letter % 50 - 10, letter % 7 - 3, previous, current);
        font.SetClippingRect(current, {letter % 9 - 2, -1, letter % 11, 9});
        font.drawLetter(INT32_MAX - letter, letter % 30, previous, current);
        font.SetClippingRect(CXRect());
        previous = current;
    }
    return 0;
}
