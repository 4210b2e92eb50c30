// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <algorithm>
#include <cstdio>
#include <span>
#include <string>
#include <variant>

#include "foundation/xstring.h"

namespace {

constexpr std::size_t kLongest = 255;

using Argument = std::variant<int, std::string_view>;

struct Directive {
    std::string flags;
    int width = 0;
    int precision = -1;  // none
    char conversion = '\0';
    std::size_t length = 0;  // in the format, with the percent sign
};

// Digits from `at` on; wider than the whole result is never needed.
int digitsAt(std::string_view format, std::size_t& at) {
    int value = 0;
    for (; at < format.size() && format[at] >= '0' && format[at] <= '9'; ++at)
        value = std::min(value * 10 + (format[at] - '0'), static_cast<int>(kLongest));
    return value;
}

Directive directiveAt(std::string_view format, std::size_t start) {
    Directive directive;
    std::size_t at = start + 1;
    for (; at < format.size() && std::string_view("-+ #0").find(format[at]) != std::string_view::npos; ++at)
        if (directive.flags.find(format[at]) == std::string::npos) directive.flags += format[at];
    directive.width = digitsAt(format, at);
    if (at < format.size() && format[at] == '.') {
        ++at;
        directive.precision = digitsAt(format, at);
    }
    while (at < format.size() && (format[at] == 'l' || format[at] == 'h'))
        ++at;
    if (at < format.size()) directive.conversion = format[at++];
    directive.length = at - start;
    return directive;
}

void writeNumber(std::string& out, const Directive& directive, int value) {
    const bool hasPrecision = directive.precision >= 0 && directive.conversion != 'c';
    const std::string formatText = "%" + directive.flags + "*" + (hasPrecision ? ".*" : "") + directive.conversion;
    char text[kLongest + 1];
    const int length =
        hasPrecision ? std::snprintf(text, sizeof text, formatText.c_str(), directive.width, directive.precision, value)
                     : std::snprintf(text, sizeof text, formatText.c_str(), directive.width, value);
    if (length > 0) out.append(text, std::min(static_cast<std::size_t>(length), kLongest));
}

void writeText(std::string& out, const Directive& directive, std::string_view text) {
    if (directive.precision >= 0) text = text.substr(0, static_cast<std::size_t>(directive.precision));
    const auto width = static_cast<std::size_t>(directive.width);
    const std::string blanks(width > text.size() ? width - text.size() : 0, ' ');
    const bool toTheLeft = directive.flags.find('-') != std::string::npos;
    if (!toTheLeft) out += blanks;
    out += text;
    if (toTheLeft) out += blanks;
}

std::string formatted(std::string_view format, std::span<const Argument> arguments) {
    std::string out;
    for (std::size_t at = 0; at < format.size() && out.size() < kLongest;) {
        if (format[at] != '%') {
            out += format[at++];
            continue;
        }
        const Directive directive = directiveAt(format, at);
        const std::string_view source = format.substr(at, directive.length);
        at += directive.length;
        const bool isNumber = std::string_view("diuxXoc").find(directive.conversion) != std::string_view::npos;
        if (source == "%%") {
            out += '%';
        } else if (isNumber && !arguments.empty() && std::holds_alternative<int>(arguments[0])) {
            writeNumber(out, directive, std::get<int>(arguments[0]));
            arguments = arguments.subspan(1);
        } else if (directive.conversion == 's' && !arguments.empty() && !std::holds_alternative<int>(arguments[0])) {
            writeText(out, directive, std::get<std::string_view>(arguments[0]));
            arguments = arguments.subspan(1);
        } else {
            out += source;
        }
    }
    out.resize(std::min(out.size(), kLongest));
    return out;
}

std::string formatted(const char* format, std::initializer_list<Argument> arguments) {
    return formatted(format ? format : "", std::span(arguments.begin(), arguments.size()));
}

}  // namespace

void CXString::Format(const char* format, int a) { assign(formatted(format, {a})); }
void CXString::Format(const char* format, int a, int b) { assign(formatted(format, {a, b})); }
void CXString::Format(const char* format, const CXString& a) { assign(formatted(format, {a.view()})); }
void CXString::Format(const char* format, const CXString& a, int b) { assign(formatted(format, {a.view(), b})); }

void CXString::Format(const char* format, const CXString& a, int b, const CXString& c) {
    assign(formatted(format, {a.view(), b, c.view()}));
}

void CXString::Format(const char* format, const CXString& a, int b, int c) {
    assign(formatted(format, {a.view(), b, c}));
}
