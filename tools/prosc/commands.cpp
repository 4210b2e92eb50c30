// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "prosc/commands.h"

#include <algorithm>
#include <fmt/format.h>
#include <map>
#include <memory>
#include <vector>

#include "definition/element.h"
#include "definition/elements_loader.h"
#include "definition/text_coder.h"
#include "platform/headless/code_page.h"
#include "prosc/animation.h"
#include "prosc/font.h"
#include "prosc/image.h"

namespace prosc {

namespace {

constexpr std::string_view kRecordEnd = "<E>";

Outcome wrong(std::string text) { return {std::nullopt, std::move(text)}; }

// The lines with their numbers from 1, without line ends; nothing behind the last line feed.
std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        lines.push_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::string withoutIndent(std::string_view line) {
    const std::size_t start = std::min(line.find_first_not_of(' '), line.size());
    std::string text(line.substr(start, line.find_last_not_of(' ') + 1 - start));
    std::erase(text, '\t');
    return text;
}

// A coded file's faults, which the reader passes over in silence by ending early.
std::string damage(const std::vector<std::string_view>& lines) {
    const std::string_view header = lines[0];
    const std::size_t close = header.find(">}");
    const int cycle = leadingInt(header.substr(4));
    if (close == std::string_view::npos || cycle < 1) return "line 1: the header is damaged";
    for (std::size_t i = 1; i < lines.size(); ++i) {
        std::string_view rest = lines[i];
        int records = 0;
        for (std::size_t end = rest.find(kRecordEnd); end != std::string_view::npos; end = rest.find(kRecordEnd)) {
            rest.remove_prefix(end + kRecordEnd.size());
            ++records;
        }
        if (!rest.empty()) return fmt::format("line {}: a record has no end", i + 1);
        const bool isLast = i + 1 == lines.size();
        if (isLast ? records > cycle || records == 0 : records != cycle)
            return fmt::format("line {}: holds {} records where the header tells {}", i + 1, records, cycle);
    }
    return "";
}

bool isCoded(std::string_view bytes) { return bytes.starts_with("{<C:") || bytes.starts_with("{<D:"); }

std::string utf8(const CXString& text) { return headless::toUtf8(text.view()); }

// Properties that hold names, such as SCENES.
std::vector<std::string> namesIn(const CMElement& element, const char* property) {
    std::vector<std::string> names;
    CXArray* list = element.getPropertyListValue(property);
    if (!list) return names;
    for (int i = 0; i < list->size(); ++i)
        names.emplace_back(list->stringAt(i)->view());
    deleteStrings(list);
    return names;
}

std::string typeOf(const CMElement& element) { return utf8(element.getPropertyValue("TYPE")); }

// The tree below an application or an episode: what it lists, where each stands on the disk and what isn't defined.
void appendLevel(const CMElements& elements, const CMElement& parent, const char* listed, const std::string& type,
                 const char* below, const std::string& indent, std::string& text) {
    const CXString first = parent.getPropertyValue("STARTWITH");
    for (const std::string& name : namesIn(parent, listed)) {
        const CMElement* element = elements.lookUp(name);
        const bool isDefined = element && typeOf(*element) == type;
        text +=
            fmt::format("{}{}{}{}\n", indent, headless::toUtf8(name), name == first.view() ? " (starts)" : "",
                        isDefined ? fmt::format(" in {}", utf8(element->getPropertyValue("PATH"))) : ": not defined");
        if (isDefined && below) appendLevel(elements, *element, below, "SCENE", nullptr, indent + "  ", text);
    }
}

}  // namespace

Outcome code(std::string_view plain) {
    if (isCoded(plain)) return wrong("line 1: is coded already");
    CTextCoder coder(CTextCoder::Bytes{plain});
    coder.setCycle(CMElementsLoader::kCycle);
    std::string coded = fmt::format("{{<C:{}>}}\n", CMElementsLoader::kCycle);
    while (!coder._eof())
        coded += coder.codeLine().view();

    // A coded character may be a line feed or complete a record's end; only reading it back tells.
    const std::vector<std::string_view> source = linesOf(plain);
    CTextCoder back(CTextCoder::Bytes{coded});
    for (std::size_t i = 0; i < source.size(); ++i) {
        if (back.nextLine() != withoutIndent(source[i]))
            return wrong(fmt::format("line {}: the coded form can't hold this text", i + 1));
    }
    return {coded, ""};
}

Outcome decode(std::string_view coded) {
    if (!isCoded(coded)) return wrong("line 1: is not coded");
    const std::string fault = damage(linesOf(coded));
    if (!fault.empty()) return wrong(fault);
    CTextCoder coder(CTextCoder::Bytes{coded});
    std::string plain;
    while (true) {
        const std::string_view line = coder.nextLine();
        if (coder._eof()) return {plain, ""};
        plain += line;
        plain += '\n';
    }
}

Outcome info(std::string_view bytes, std::string_view name) {
    if (isAnimation(bytes, name)) return animationInfo(bytes);
    if (isImage(bytes)) return imageInfo(bytes);
    if (isFont(bytes)) return fontInfo(bytes);
    if (isPhotoshop(bytes)) return photoshopInfo(bytes);
    if (isTarga(name)) return targaInfo(bytes);
    if (isCoded(bytes)) {
        const std::string fault = damage(linesOf(bytes));
        if (!fault.empty()) return wrong(fault);
    }
    const bool isText = isCoded(bytes) || bytes.find('\0') == std::string_view::npos;
    const std::unique_ptr<CMElements> elements = isText ? CMElementsLoader::parse(bytes) : nullptr;
    if (!elements || elements->isEmpty()) return wrong("is no kind of file that prosc knows");

    std::map<std::string, int> types;
    std::string tree;
    for (int i = 0; i < elements->size(); ++i) {
        const CMElement& element = *elements->getAt(i);
        ++types[typeOf(element)];
        if (typeOf(element) != "APPLICATION") continue;
        tree += fmt::format("application {} in {}\n", utf8(element.getName()), utf8(element.getPropertyValue("PATH")));
        appendLevel(*elements, element, "EPISODES", "EPISODE", "SCENES", "  ", tree);
    }
    std::string text =
        fmt::format("definition file, {}, elements: {}\n", isCoded(bytes) ? "coded" : "plain", elements->size());
    for (const auto& [type, count] : types)
        text += fmt::format("  {} {}\n", type.empty() ? "(no type)" : type, count);
    return {text + tree, ""};
}

}  // namespace prosc
