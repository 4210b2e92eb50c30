// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Definition text, plain and coded: the bytes as they are, behind the header of a coded file, and coded by the library.
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "definition/element.h"
#include "definition/elements_loader.h"
#include "definition/text_coder.h"
#include "platform/headless/headless.h"

namespace {

void readAll(std::string_view text) {
    const std::unique_ptr<CMElements> elements = CMElementsLoader::parse(text);
    for (int i = 0; i < elements->size(); ++i) {
        const CMElement& element = *elements->getAt(i);
        for (CXObject* object : element.getProperties()->elements()) {
            const auto& property = *static_cast<CMProperty*>(object);
            deleteStrings(property.getListValue());
            property.getRectValue();
            property.getPointValue();
            property.getDoubleValue();
            if (!element.isPropertyAvailable(property.getName())) std::abort();
        }
        const CMElement* first = elements->get(element.getName());
        if (!first || first->getName() != element.getName()) std::abort();
    }
}

std::size_t occurrences(std::string_view text, std::string_view what) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string_view::npos; at += what.size())
        ++count;
    return count;
}

// Reads the library's own coded form of a text. Lines that the form can carry must come back as they went in.
void codeAndDecode(std::string_view text, int cycle) {
    CTextCoder source(CTextCoder::Bytes{text});
    if (source.isCoded()) return;
    source.setCycle(cycle);
    std::string coded = "{<C:" + std::to_string(cycle) + ">}\n";
    std::size_t codedLines = 1;
    for (; !source._eof(); ++codedLines)
        coded += source.codeLine().view();
    readAll(coded);

    std::string plain;
    CTextCoder again(CTextCoder::Bytes{text});
    std::size_t lines = 0;
    for (; !again._eof(); ++lines) {
        CXString line = again.nextLine();
        line.AllTrim(' ');
        plain += line.replace("\t", "").view();
        plain += '\n';
    }
    if (occurrences(coded, "<E>") != lines || occurrences(coded, "\n") != codedLines) return;
    // A carriage return in front of a line end is lost when the file is read.
    if (coded.find("\r\n") != std::string::npos) return;
    CTextCoder decoder(CTextCoder::Bytes{coded});
    std::string decoded;
    for (std::size_t i = 0; i < lines; ++i)
        decoded += decoder.getLine().view();
    if (decoded != plain) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const headless::HeadlessPlatform host;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const int cycle = size > 0 ? data[0] % 9 + 1 : 1;
    readAll(text);
    readAll("{<C:" + std::to_string(cycle) + ">}\n" + std::string(text));
    codeAndDecode(text, cycle);
    return 0;
}
