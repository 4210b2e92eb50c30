// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/host/input_file.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>
#include <iterator>

namespace host {

namespace {

enum class Arguments { none, point, key, yesNo };

struct Word {
    std::string_view name;
    EventKind kind;
    Arguments arguments;
};

constexpr Word kWords[] = {
    {"move",     EventKind::move,       Arguments::point},
    {"ldown",    EventKind::leftDown,   Arguments::point},
    {"lup",      EventKind::leftUp,     Arguments::point},
    {"ldbl",     EventKind::leftDouble, Arguments::point},
    {"mdown",    EventKind::middleDown, Arguments::point},
    {"mup",      EventKind::middleUp,   Arguments::point},
    {"rdown",    EventKind::rightDown,  Arguments::point},
    {"rup",      EventKind::rightUp,    Arguments::point},
    {"keydown",  EventKind::keyDown,    Arguments::key  },
    {"keyup",    EventKind::keyUp,      Arguments::key  },
    {"capslock", EventKind::capsLock,   Arguments::yesNo},
    {"active",   EventKind::active,     Arguments::yesNo},
    {"close",    EventKind::close,      Arguments::none },
};

std::vector<std::string_view> piecesOf(std::string_view line) {
    constexpr std::string_view kBlanks = " \t\r\f\v";
    std::vector<std::string_view> pieces;
    line = line.substr(0, line.find('#'));
    while (true) {
        const std::size_t start = line.find_first_not_of(kBlanks);
        if (start == std::string_view::npos) return pieces;
        const std::size_t end = std::min(line.find_first_of(kBlanks, start), line.size());
        pieces.push_back(line.substr(start, end - start));
        line.remove_prefix(end);
    }
}

template <class Number>
bool readNumber(std::string_view text, Number& number, int base = 10) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    return error == std::errc() && end == text.data() + text.size();
}

bool readKey(std::string_view text, int& key) {
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    unsigned number = 0;
    if (!readNumber(isHex ? text.substr(2) : text, number, isHex ? 16 : 10) || number > 255) return false;
    key = static_cast<int>(number);
    return true;
}

// What is wrong with the line; "" when nothing is.
std::string readEvent(const std::vector<std::string_view>& pieces, std::uint32_t earliest, Event& event) {
    if (!readNumber(pieces[0], event.frame) || event.frame == 0)
        return fmt::format("'{}' is no number of a frame, which count from 1", pieces[0]);
    if (event.frame < earliest) return fmt::format("frame {} stands behind frame {}", event.frame, earliest);
    if (pieces.size() < 2) return "the event is missing";
    const auto* word = std::find_if(std::begin(kWords), std::end(kWords),
                                    [&](const Word& candidate) { return candidate.name == pieces[1]; });
    if (word == std::end(kWords)) return fmt::format("there is no event '{}'", pieces[1]);
    event.kind = word->kind;

    const std::size_t wanted = word->arguments == Arguments::none ? 0 : word->arguments == Arguments::point ? 2 : 1;
    if (pieces.size() - 2 != wanted)
        return fmt::format("'{}' takes {} arguments and has {}", word->name, wanted, pieces.size() - 2);
    switch (word->arguments) {
        case Arguments::none:
            return "";
        case Arguments::point:
            if (readNumber(pieces[2], event.first) && readNumber(pieces[3], event.second)) return "";
            return fmt::format("'{} {}' is no point", pieces[2], pieces[3]);
        case Arguments::key:
            if (readKey(pieces[2], event.first)) return "";
            return fmt::format("'{}' is no scan code from 0 to 255", pieces[2]);
        case Arguments::yesNo:
            if (readNumber(pieces[2], event.first) && (event.first == 0 || event.first == 1)) return "";
            return fmt::format("'{}' is neither 0 nor 1", pieces[2]);
    }
    return "";
}

}  // namespace

InputFile parseInput(std::string_view text) {
    InputFile result;
    for (int line = 1; !text.empty(); ++line) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const auto pieces = piecesOf(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (pieces.empty()) continue;
        Event event;
        result.error = readEvent(pieces, result.events.empty() ? 0 : result.events.back().frame, event);
        if (!result.error.empty()) {
            result.errorLine = line;
            return result;
        }
        result.events.push_back(event);
    }
    return result;
}

std::string inputLine(const Event& event) {
    const auto* word = std::find_if(std::begin(kWords), std::end(kWords),
                                    [&](const Word& candidate) { return candidate.kind == event.kind; });
    switch (word->arguments) {
        case Arguments::none:
            return fmt::format("{} {}\n", event.frame, word->name);
        case Arguments::point:
            return fmt::format("{} {} {} {}\n", event.frame, word->name, event.first, event.second);
        case Arguments::key:
        case Arguments::yesNo:
            return fmt::format("{} {} {}\n", event.frame, word->name, event.first);
    }
    return "";
}

}  // namespace host
