// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "prosc/animation_text.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>
#include <limits>
#include <set>
#include <vector>

#include "animation/frame.h"
#include "platform/headless/code_page.h"

namespace prosc {

namespace {

constexpr int kLargestWord = 0xFFFF;
constexpr int kLargestByte = 0xFF;
constexpr int kLargestShort = std::numeric_limits<std::int16_t>::max();
constexpr int kSmallestShort = std::numeric_limits<std::int16_t>::min();
constexpr std::int64_t kLargestInt = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t kSmallestInt = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kLargestFlags = std::numeric_limits<std::uint32_t>::max();
constexpr std::size_t kLongestName = 31;
constexpr std::string_view kBlanks = " \t";

struct FlagRow {
    std::string_view name;
    unsigned flag;
};

constexpr FlagRow kFlags[] = {
    {"hide-at-stop",    kHideAtStop    },
    {"ping-pong",       kPingPong      },
    {"no-restart",      kNoRestart     },
    {"sound-goes-on",   kSoundGoesOn   },
    {"loop-with-sound", kLoopWithSound },
    {"streamed-sounds", kStreamedSounds},
    {"next-event",      kNextEvent     },
};

std::optional<std::int64_t> numberIn(std::string_view word) {
    const bool negative = word.starts_with('-');
    std::string_view digits = word.substr(negative ? 1 : 0);
    const bool isHex = digits.starts_with("0x");
    if (isHex) digits.remove_prefix(2);
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, isHex ? 16 : 10);
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    return negative ? -static_cast<std::int64_t>(value) : value;
}

// The words of one line, from left to right. After the first fault everything is 0 or empty.
class LineReader {
public:
    explicit LineReader(std::string_view line) : rest_(line) { skipBlanks(); }

    bool ok() const { return error_.empty(); }
    const std::string& error() const { return error_; }
    bool done() const { return !ok() || rest_.empty(); }
    char next() const { return rest_.empty() ? '\0' : rest_.front(); }

    void fail(std::string what) {
        if (ok()) error_ = std::move(what);
    }

    std::string_view word() {
        if (done()) {
            fail("something is missing at its end");
            return {};
        }
        const std::size_t length = std::min(rest_.find_first_of(kBlanks), rest_.size());
        const std::string_view word = rest_.substr(0, length);
        rest_.remove_prefix(length);
        skipBlanks();
        return word;
    }

    std::int64_t number(std::int64_t least, std::int64_t most) {
        const std::string_view text = word();
        return ok() ? checked(text, least, most) : 0;
    }

    std::int64_t checked(std::string_view word, std::int64_t least, std::int64_t most) {
        const std::optional<std::int64_t> value = numberIn(word);
        if (!value) {
            fail(fmt::format("{} isn't a number", word));
        } else if (*value < least || *value > most) {
            fail(fmt::format("{} isn't between {} and {}", word, least, most));
        }
        return ok() ? *value : 0;
    }

    CXPoint point() {
        const auto x = static_cast<int>(number(kSmallestShort, kLargestShort));
        return {x, static_cast<int>(number(kSmallestShort, kLargestShort))};
    }

    // In Windows-1250.
    CXString text() {
        if (next() != '"') return CXString(encoded(word()));
        rest_.remove_prefix(1);
        std::string text;
        while (ok()) {
            const std::size_t length = rest_.find_first_of("\"\\");
            if (length == std::string_view::npos) {
                fail("a text without an end");
                break;
            }
            text += encoded(rest_.substr(0, length));
            const bool atEnd = rest_[length] == '"';
            rest_.remove_prefix(length + 1);
            if (atEnd) {
                if (!rest_.empty() && kBlanks.find(rest_.front()) == std::string_view::npos)
                    fail("something right behind a text");
                skipBlanks();
                break;
            }
            text += escaped();
        }
        return CXString(text);
    }

    unsigned flags() {
        unsigned flags = 0;
        std::string_view rest = word();
        while (ok()) {
            const std::size_t length = std::min(rest.find('|'), rest.size());
            const std::string_view name = rest.substr(0, length);
            const auto* row = std::find_if(std::begin(kFlags), std::end(kFlags),
                                           [&](const FlagRow& flag) { return flag.name == name; });
            if (row != std::end(kFlags)) {
                flags |= row->flag;
            } else if (numberIn(name)) {
                flags |= static_cast<unsigned>(checked(name, 0, kLargestFlags));
            } else {
                fail(fmt::format("there is no flag \"{}\"", name));
            }
            if (length == rest.size()) break;
            rest.remove_prefix(length + 1);
        }
        return flags;
    }

    _compression form() {
        const std::string_view name = word();
        if (name == "raw") return kCompressionRaw;
        if (name != "rle") fail(fmt::format("a form is raw or rle and not {}", name));
        return kCompressionRle;
    }

    // The next word, which may be said once in a line.
    std::string_view option() {
        const std::string_view name = word();
        if (ok() && !seen_.insert(name).second) fail(fmt::format("{} is said twice", name));
        return name;
    }

private:
    // A comment is like the end of the line.
    void skipBlanks() {
        rest_.remove_prefix(std::min(rest_.find_first_not_of(kBlanks), rest_.size()));
        if (rest_.starts_with('#')) rest_ = {};
    }

    std::string encoded(std::string_view text) {
        std::string result = headless::fromUtf8(text);
        if (headless::toUtf8(result) != text) fail("a character that isn't UTF-8, or that Windows-1250 lacks");
        return result;
    }

    std::string escaped() {
        constexpr std::string_view kLetters = "\"\\nrt", kMeanings = "\"\\\n\r\t";
        const char letter = next();
        rest_.remove_prefix(std::min<std::size_t>(1, rest_.size()));
        if (const std::size_t at = kLetters.find(letter); at != std::string_view::npos) return {kMeanings[at]};
        unsigned value = 0;
        const std::string_view digits = rest_.substr(0, 2);
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
        if (letter != 'x' || error != std::errc() || end != digits.data() + 2 || value == 0) {
            fail("a \\ with something unknown behind it");
            return {};
        }
        rest_.remove_prefix(2);
        return {static_cast<char>(value)};
    }

    std::string_view rest_;
    std::string error_;
    std::set<std::string_view> seen_;
};

class TextParser {
public:
    explicit TextParser(AnimationText& text) : text_(text) {}

    bool parse(std::string_view source, std::string& error) {
        constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
        if (source.starts_with(kByteOrderMark)) source.remove_prefix(kByteOrderMark.size());
        for (int number = 1; !source.empty(); ++number) {
            const std::size_t end = std::min(source.find('\n'), source.size());
            std::string_view content = source.substr(0, end);
            if (content.ends_with('\r')) content.remove_suffix(1);
            source.remove_prefix(std::min(end + 1, source.size()));
            LineReader line(content);
            if (!line.done()) parseLine(line);
            if (line.ok() && !line.done()) line.fail(fmt::format("{} is too much", line.word()));
            if (!line.ok()) {
                error = fmt::format("line {}: {}", number, line.error());
                return false;
            }
        }
        for (const std::size_t event : withoutRate_)
            data_.events[event].fps = data_.fps;
        return true;
    }

private:
    void parseLine(LineReader& line) {
        struct Row {
            std::string_view word;
            void (TextParser::*parse)(LineReader& line);
            bool isOnce;
        };
        static constexpr Row kRows[] = {
            {"bpp",         &TextParser::parseBpp,         true },
            {"form",        &TextParser::parseForm,        true },
            {"rate",        &TextParser::parseRate,        true },
            {"flags",       &TextParser::parseFlags,       true },
            {"opacity",     &TextParser::parseOpacity,     true },
            {"random",      &TextParser::parseRandom,      true },
            {"author",      &TextParser::parseAuthor,      true },
            {"description", &TextParser::parseDescription, true },
            {"frame",       &TextParser::parseFrame,       false},
            {"event",       &TextParser::parseEvent,       false},
            {"step",        &TextParser::parseStep,        false},
        };
        const std::string_view word = line.word();
        for (const Row& row : kRows) {
            if (row.word != word) continue;
            if (row.isOnce && !seen_.insert(row.word).second) line.fail(fmt::format("{} stands there already", word));
            (this->*row.parse)(line);
            return;
        }
        line.fail(fmt::format("nothing begins with {}", word));
    }

    void parseBpp(LineReader& line) {
        data_.bpp = static_cast<int>(line.number(0, kLargestByte));
        if (line.ok() && data_.bpp != 15 && data_.bpp != 16 && data_.bpp != 24) line.fail("bpp is 15, 16 or 24");
    }
    void parseForm(LineReader& line) { text_.form = line.form(); }
    void parseRate(LineReader& line) { data_.fps = static_cast<int>(line.number(kSmallestInt, kLargestInt)); }
    void parseFlags(LineReader& line) { data_.animationFlags = line.flags(); }
    void parseOpacity(LineReader& line) { data_.opacity = byte(line); }
    void parseRandom(LineReader& line) {
        data_.randomFramesNumber = static_cast<int>(line.number(kSmallestShort, kLargestShort));
    }
    void parseAuthor(LineReader& line) { data_.author = line.text(); }
    void parseDescription(LineReader& line) { data_.description = line.text(); }

    void parseFrame(LineReader& line) {
        const auto number = static_cast<int>(line.number(0, kLargestShort - 1));
        const auto [entry, isNew] = text_.frames.try_emplace(number);
        if (!isNew) line.fail(fmt::format("frame {} stands there already", number));
        FrameText& frame = entry->second;
        while (!line.done()) {
            const std::string_view option = line.option();
            if (option == "at") {
                frame.position = line.point();
            } else if (option == "alpha" || option == "opaque") {
                if (frame.alpha) line.fail("a frame is either alpha or opaque");
                frame.alpha = option == "alpha";
            } else if (option == "form") {
                frame.form = line.form();
            } else if (option == "channels") {
                frame.channels = static_cast<int>(line.number(0, 4));
            } else if (option == "empty") {
                const auto width = static_cast<int>(line.number(0, kLargestShort));
                frame.emptySize = CXSize(width, static_cast<int>(line.number(0, kLargestShort)));
            } else {
                line.fail(fmt::format("a frame has no {}", option));
            }
        }
    }

    void parseEvent(LineReader& line) {
        _annEventInfo3 event;
        event.name = line.text();
        if (event.name.view().size() > kLongestName)
            line.fail(fmt::format("a name longer than {} letters", kLongestName));
        if (data_.events.size() == kLargestShort) line.fail(fmt::format("more than {} events", kLargestShort));
        while (!line.done() && line.next() >= '0' && line.next() <= '9')
            parseRange(line, event);
        event.infos.resize(event.frames.size());
        bool hasRate = false;
        while (!line.done()) {
            const std::string_view option = line.option();
            if (option == "loop") {
                event.loopStart = word(line);
                event.loopEnd = word(line);
                if (line.next() >= '0' && line.next() <= '9') event.loopCount = word(line);
            } else if (option == "rate") {
                event.fps = static_cast<int>(line.number(kSmallestInt, kLargestInt));
                hasRate = true;
            } else if (option == "flags") {
                event.flags = line.flags();
            } else if (option == "opacity") {
                event.opacity = byte(line);
            } else if (option == "counter") {
                event.loopCounter = word(line);
            } else if (option == "reserved") {
                parseReserved(line, event);
            } else {
                line.fail(fmt::format("an event has no {}", option));
            }
        }
        if (!hasRate) withoutRate_.push_back(data_.events.size());
        data_.events.push_back(std::move(event));
        seenSteps_.clear();
    }

    static void parseRange(LineReader& line, _annEventInfo3& event) {
        const std::string_view range = line.word();
        const std::size_t dash = range.find('-');
        const auto first = static_cast<int>(line.checked(range.substr(0, dash), 0, kLargestWord));
        int last = first;
        if (dash != std::string_view::npos)
            last = static_cast<int>(line.checked(range.substr(dash + 1), 0, kLargestWord));
        if (!line.ok()) return;
        const std::size_t count = static_cast<std::size_t>(std::abs(last - first)) + 1;
        if (event.frames.size() + count > kLargestWord) {
            line.fail(fmt::format("more than {} frames in an event", kLargestWord));
            return;
        }
        for (std::size_t i = 0; i < count; ++i) {
            const int step = static_cast<int>(i);
            event.frames.push_back(static_cast<std::uint16_t>(last < first ? first - step : first + step));
        }
    }

    static void parseReserved(LineReader& line, _annEventInfo3& event) {
        const std::string_view digits = line.word();
        bool good = digits.size() == 2 * event.reserved.size();
        for (std::size_t i = 0; good && i < event.reserved.size(); ++i) {
            const char* first = digits.data() + 2 * i;
            const auto [end, error] = std::from_chars(first, first + 2, event.reserved[i], 16);
            good = error == std::errc() && end == first + 2;
        }
        if (!good) line.fail(fmt::format("reserved takes {} hexadecimal digits", 2 * event.reserved.size()));
    }

    void parseStep(LineReader& line) {
        if (data_.events.empty()) {
            line.fail("a step stands behind its event");
            return;
        }
        std::vector<_anmFrameInfo3>& infos = data_.events.back().infos;
        const auto number = line.number(0, kLargestWord);
        if (line.ok() && number >= std::ssize(infos))
            line.fail(fmt::format("step {} of an event that has {}, counted from 0", number, infos.size()));
        if (line.ok() && !seenSteps_.insert(number).second)
            line.fail(fmt::format("step {} stands there already", number));
        if (!line.ok()) return;
        _anmFrameInfo3& info = infos[static_cast<std::size_t>(number)];
        while (!line.done()) {
            const std::string_view option = line.option();
            if (option == "name") {
                info.name = line.text();
            } else if (option == "text") {
                info.text = line.text();
            } else if (option == "sound") {
                info.sound = line.text();
            } else if (option == "offset") {
                info.offset = line.point();
            } else if (option == "opacity") {
                info.opacity = byte(line);
            } else if (option == "reserved12") {
                info.reserved12 = static_cast<std::int32_t>(line.number(kSmallestInt, kLargestInt));
            } else if (option == "reserved20") {
                info.reserved20 = static_cast<std::int32_t>(line.number(kSmallestInt, kLargestInt));
            } else if (option == "reserved25") {
                info.reserved25 = byte(line);
            } else {
                line.fail(fmt::format("a step has no {}", option));
            }
        }
    }

    static std::uint8_t byte(LineReader& line) { return static_cast<std::uint8_t>(line.number(0, kLargestByte)); }
    static int word(LineReader& line) { return static_cast<int>(line.number(0, kLargestWord)); }

    AnimationText& text_;
    AnimationData& data_ = text_.data;
    std::set<std::string_view> seen_;
    std::set<std::int64_t> seenSteps_;  // of the last event
    std::vector<std::size_t> withoutRate_;
};

const char* formWord(_compression form) { return form == kCompressionRaw ? "raw" : "rle"; }

// Three or more numbers one after the other become a range.
std::string rangesOf(const std::vector<std::uint16_t>& frames) {
    std::string text;
    for (std::size_t i = 0; i < frames.size();) {
        std::size_t end = i + 1;
        const int step = end < frames.size() ? frames[end] - frames[i] : 0;
        while ((step == 1 || step == -1) && end < frames.size() && frames[end] - frames[end - 1] == step)
            ++end;
        if (end - i < 3) end = i + 1;
        text += fmt::format(" {}", frames[i]);
        if (end - i > 1) text += fmt::format("-{}", frames[end - 1]);
        i = end;
    }
    return text;
}

std::string eventLine(const _annEventInfo3& event, int rate) {
    std::string line = fmt::format("event {}{}", quotedText(event.name), rangesOf(event.frames));
    if (event.loopStart != 0 || event.loopEnd != 0 || event.loopCount != 0)
        line += fmt::format(" loop {} {} {}", event.loopStart, event.loopEnd, event.loopCount);
    if (event.fps != rate) line += fmt::format(" rate {}", event.fps);
    if (event.flags != 0) line += fmt::format(" flags {}", flagNames(event.flags));
    if (event.opacity != 255) line += fmt::format(" opacity {}", event.opacity);
    if (event.loopCounter != 0) line += fmt::format(" counter {}", event.loopCounter);
    if (event.reserved != std::array<std::uint8_t, 12>{}) {
        line += " reserved ";
        for (const std::uint8_t byte : event.reserved)
            line += fmt::format("{:02x}", byte);
    }
    return line + '\n';
}

// Empty for a step with nothing to say.
std::string stepLine(const _anmFrameInfo3& info, std::size_t number) {
    std::string line;
    if (info.name) line += fmt::format(" name {}", quotedText(*info.name));
    if (info.text) line += fmt::format(" text {}", quotedText(*info.text));
    if (info.sound) line += fmt::format(" sound {}", quotedText(*info.sound));
    if (info.offset.x != 0 || info.offset.y != 0) line += fmt::format(" offset {} {}", info.offset.x, info.offset.y);
    if (info.opacity != 255) line += fmt::format(" opacity {}", info.opacity);
    if (info.reserved12 != -1) line += fmt::format(" reserved12 {}", info.reserved12);
    if (info.reserved20 != 0) line += fmt::format(" reserved20 {}", info.reserved20);
    if (info.reserved25 != 0) line += fmt::format(" reserved25 {}", info.reserved25);
    return line.empty() ? line : fmt::format("  step {}{}\n", number, line);
}

std::string frameLine(int number, const FrameText& frame) {
    std::string line = fmt::format("frame {} at {} {}", number, frame.position.x, frame.position.y);
    if (frame.alpha) line += *frame.alpha ? " alpha" : " opaque";
    if (frame.form) line += fmt::format(" form {}", formWord(*frame.form));
    if (frame.channels) line += fmt::format(" channels {}", *frame.channels);
    if (frame.emptySize) line += fmt::format(" empty {} {}", frame.emptySize->width, frame.emptySize->height);
    return line + '\n';
}

}  // namespace

std::string quotedText(const CXString& text) {
    std::string result = "\"";
    for (const char c : text.view()) {
        constexpr std::string_view kMeanings = "\"\\\n\r\t", kLetters = "\"\\nrt";
        const std::string character = headless::toUtf8(std::string_view(&c, 1));
        const auto byte = static_cast<unsigned char>(c);
        if (const std::size_t at = kMeanings.find(c); at != std::string_view::npos) {
            result += {'\\', kLetters[at]};
        } else if (byte < 0x20 || byte == 0x7F || headless::fromUtf8(character)[0] != c) {
            result += fmt::format("\\x{:02x}", byte);
        } else {
            result += character;
        }
    }
    return result + '"';
}

std::string flagNames(unsigned flags) {
    std::string names;
    for (const FlagRow& row : kFlags) {
        if ((flags & row.flag) == 0) continue;
        names += fmt::format("{}{}", names.empty() ? "" : "|", row.name);
        flags &= ~row.flag;
    }
    if (flags != 0 || names.empty()) names += fmt::format("{}{:#x}", names.empty() ? "" : "|", flags);
    return names;
}

bool parseAnimationText(std::string_view source, AnimationText& text, std::string& error) {
    return TextParser(text).parse(source, error);
}

std::string printAnimationText(const AnimationText& text) {
    const AnimationData& data = text.data;
    std::string lines = "# An animation for `prosc ann`\n";
    lines += fmt::format("bpp {}\nform {}\nrate {}\n", data.bpp, formWord(text.form), data.fps);
    const unsigned flags = data.objectFlags | data.animationFlags;
    if (flags != 0) lines += fmt::format("flags {}\n", flagNames(flags));
    if (data.opacity != 255) lines += fmt::format("opacity {}\n", data.opacity);
    if (data.randomFramesNumber != 0) lines += fmt::format("random {}\n", data.randomFramesNumber);
    if (data.author.IsString()) lines += fmt::format("author {}\n", quotedText(data.author));
    if (data.description.IsString()) lines += fmt::format("description {}\n", quotedText(data.description));
    for (const auto& [number, frame] : text.frames)
        lines += frameLine(number, frame);
    for (const _annEventInfo3& event : data.events) {
        lines += eventLine(event, data.fps);
        for (std::size_t i = 0; i < event.infos.size(); ++i)
            lines += stepLine(event.infos[i], i);
    }
    return lines;
}

}  // namespace prosc
