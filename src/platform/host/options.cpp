// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/host/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <chrono>
#include <fmt/format.h>
#include <string_view>

namespace host {

namespace {

constexpr const char* kFooter =
    "FOLDER holds the application: \"Dane\" with \"application.def\" or \"application.bin\". Every argument behind it\n"
    "also goes to the engine, whose own switches begin with one minus sign or a slash: -window, -res 640 480, "
    "-nosound,\n"
    "-nomusic, -code, -decode, -2bin, -forceCNV and others. Names of files are relative to the folder of the call.\n"
    "\n"
    "Exit status: 0 after a run, 1 when there is no display, 2 when something named on the command line is wrong.";

// Options that the host will have and that nothing stands behind yet.
constexpr const char* kNotBuilt[] = {"--net"};
constexpr const char* kFlagsNotBuilt[] = {"--net-no-code"};

constexpr int kMostScale = 16;

template <class Number>
bool readNumber(std::string_view text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

// An option whose value `read` takes; `form` tells what it must be when `read` says no.
template <class Read>
CLI::Option* addValue(CLI::App& app, const std::string& name, const char* type, const char* form,
                      const std::string& help, Read read) {
    const auto readAll = [name, form, read](const CLI::results_t& texts) {
        for (const std::string& text : texts)
            if (!read(text)) throw CLI::ValidationError(name, fmt::format("'{}' is not {}", text, form));
        return true;
    };
    return app.add_option(name, readAll, help)->type_name(type);
}

void addNumber(CLI::App& app, const std::string& name, const char* type, std::uint32_t& number,
               const std::string& help) {
    addValue(app, name, type, "a number from 0 to 4294967295", help,
             [&number](const std::string& text) { return readNumber(text, number); });
}

template <class Target>
void addText(CLI::App& app, const std::string& name, const char* type, Target& target, const std::string& help) {
    addValue(app, name, type, "", help, [&target](const std::string& text) {
        target = text;
        return true;
    });
}

bool isLanguage(const std::string& text) {
    return text.size() == 4 && std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isxdigit(c); });
}

bool readShot(const std::string& text, std::vector<Shot>& shots) {
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos || colon + 1 == text.size()) return false;
    Shot shot{std::nullopt, text.substr(colon + 1)};
    const std::string frame = text.substr(0, colon);
    if (frame != "last" && !readNumber(frame, shot.frame.emplace())) return false;
    shots.push_back(std::move(shot));
    return true;
}

void addOptions(CLI::App& app, Options& options) {
    const auto group = [&app](const char* name) { app.option_defaults()->group(name); };
    group("Playing");
    addText(app, "--config", "NAME", options.config, "Configuration file, in FOLDER (application.ini)");
    addNumber(app, "--frames", "N", options.frames, "Leave after N frames; 0: no limit (3000 when headless)");
    const auto readLanguage = [&options](const std::string& text) {
        options.language = text;
        return isLanguage(text);
    };
    addValue(app, "--language", "CODE", "a code of four hexadecimal digits",
             "Locale code that the platform reports, as 0415 (the user's; headless: 0409)", readLanguage);
    const auto readNow = [&options](const std::string& text) {
        const auto seconds = parseTime(text);
        options.now = text;
        options.utcSeconds = seconds.value_or(0);
        return seconds.has_value();
    };
    addValue(app, "--now", "TIME", "a time from 1970 on, as 2003-05-17T09:05:00",
             "Date and time in UTC before frame 1 (the real one; headless: 2000-01-01T00:00:00)", readNow);
    addNumber(app, "--ticks", "N", options.ticks, "Tick count before frame 1 (1000)");
    const auto readDepth = [&options](const std::string& text) {
        return readNumber(text, options.depth) && (options.depth == 15 || options.depth == 16);
    };
    addValue(app, "--depth", "15|16", "15 or 16", "Pixel format of the display (16)", readDepth);
    addText(app, "--resource", "FILE", options.resource,
            "Big file in which pictures, animations and sounds are looked for that FOLDER lacks");
    group("Without a window");
    app.add_flag("--headless", options.headless, "No window: display in memory, virtual clock, scripted input");
    addNumber(app, "--step", "MS", options.step, "How far virtual time moves before each frame (10)");
    app.add_flag("--realtime", options.realtime, "Keep to the real clock, a frame every --step milliseconds");
    group("Window");
    app.add_flag("--fullscreen", options.fullScreen, "Fill the screen; Alt+Enter changes that at any time");
    const auto readScale = [&options](const std::string& text) {
        return readNumber(text, options.scale) && options.scale >= 1 && options.scale <= kMostScale;
    };
    addValue(app, "--scale", "N", "a whole number from 1 to 16", "Open a window N times the screen's size", readScale);
    group("Recording");
    addText(app, "--input", "FILE", options.input, "Replay these events");
    addText(app, "--record", "FILE", options.record, "Write every event that goes in, as a file for --input");
    addText(app, "--hashes", "FILE", options.hashes, "Write the number of each frame and a hash of its screen");
    addText(app, "--audio", "FILE", options.audio,
            "Headless: write what is heard as WAV, 44100 samples a second, 16 bits, stereo");
    addValue(app, "--shot", "N:FILE", "the number of a frame, or last, then a colon and a file",
             "Write the screen after frame N as PNG, last:FILE after the last one; may be given several times",
             [&options](const std::string& text) { return readShot(text, options.shots); })
        ->take_all();
    for (const char* name : kNotBuilt)
        app.add_option(name)->group("Not built yet")->type_name("VALUE");
    for (const char* name : kFlagsNotBuilt)
        app.add_flag(name)->group("Not built yet");
}

// Parts the host's own options, which begin with two minus signs, from FOLDER and the engine's switches. An error text,
// or "" and `ours` as CLI11 wants it: last argument first.
std::string sortOut(CLI::App& app, std::span<const char* const> arguments, Options& options,
                    std::vector<std::string>& ours) {
    bool haveFolder = false;
    options.engineArguments.emplace_back(arguments.empty() ? "proscenium" : arguments[0]);
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::string argument = arguments[i];
        if (haveFolder) options.engineArguments.push_back(argument);
        if (!argument.starts_with("--")) {
            if (!haveFolder && argument.starts_with('-')) return fmt::format("FOLDER must stand before {}", argument);
            if (!haveFolder) options.folder = argument;
            haveFolder = true;
            continue;
        }
        const std::size_t equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        const CLI::Option* option = name.size() > 2 ? app.get_option_no_throw(name) : nullptr;
        if (!option) return fmt::format("there is no option {}; --help lists them", name);
        ours.push_back(name);
        if (option->get_items_expected_min() == 0) {
            if (equals != std::string::npos) return fmt::format("{} takes no value", name);
        } else if (equals != std::string::npos) {
            ours.push_back(argument.substr(equals + 1));
        } else if (i + 1 < arguments.size() && !std::string_view(arguments[i + 1]).starts_with("--")) {
            ours.emplace_back(arguments[++i]);
            if (haveFolder) options.engineArguments.push_back(ours.back());
        } else {
            return fmt::format("{} needs a value", name);
        }
    }
    std::reverse(ours.begin(), ours.end());
    return "";
}

std::string notBuilt(const CLI::App& app) {
    for (const char* name : kNotBuilt)
        if (app.count(name) > 0) return fmt::format("{} is not built yet", name);
    for (const char* name : kFlagsNotBuilt)
        if (app.count(name) > 0) return fmt::format("{} is not built yet", name);
    return "";
}

}  // namespace

std::optional<std::int64_t> parseTime(const std::string& text) {
    constexpr std::string_view kForm = "0000-00-00T00:00:00";
    if (text.size() != kForm.size()) return std::nullopt;
    for (std::size_t i = 0; i < kForm.size(); ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        if (kForm[i] == '0' ? !isDigit : text[i] != kForm[i]) return std::nullopt;
    }
    const auto number = [&text](std::size_t at, std::size_t length) {
        int value = 0;
        readNumber(std::string_view(text).substr(at, length), value);
        return value;
    };
    const std::chrono::year_month_day day{std::chrono::year(number(0, 4)),
                                          std::chrono::month(static_cast<unsigned>(number(5, 2))),
                                          std::chrono::day(static_cast<unsigned>(number(8, 2)))};
    const int hour = number(11, 2);
    const int minute = number(14, 2);
    const int second = number(17, 2);
    if (!day.ok() || day.year() < std::chrono::year(1970) || hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    const std::int64_t days = std::chrono::sys_days(day).time_since_epoch().count();
    return ((days * 24 + hour) * 60 + minute) * 60 + second;
}

std::string formatTime(std::int64_t utcSeconds) {
    const std::chrono::sys_seconds time{std::chrono::seconds(utcSeconds)};
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}", static_cast<int>(date.year()),
                       static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), clock.hours().count(),
                       clock.minutes().count(), clock.seconds().count());
}

ParsedCommandLine parseCommandLine(std::span<const char* const> arguments) {
    ParsedCommandLine result;
    const auto refuse = [&result](const std::string& why) {
        result.exitStatus = kUsageError;
        result.error = "proscenium: " + why;
        std::replace(result.error.begin(), result.error.end(), '\n', ' ');
        return result;
    };

    CLI::App app("Plays scripted interactive multimedia applications.", "proscenium");
    app.set_help_flag("--help", "Print this help");
    app.set_version_flag("--version", "proscenium " PROSCENIUM_VERSION, "Print the version");
    app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    app.add_option("FOLDER", "The application's folder");
    app.footer(kFooter);
    addOptions(app, result.options);

    std::vector<std::string> ours;
    const std::string unsorted = sortOut(app, arguments, result.options, ours);
    if (!unsorted.empty()) return refuse(unsorted);
    try {
        app.parse(std::move(ours));
    } catch (const CLI::CallForHelp&) {
        result.exitStatus = 0;
        result.output = app.help();
        return result;
    } catch (const CLI::CallForVersion& version) {
        result.exitStatus = 0;
        result.output = std::string(version.what()) + "\n";
        return result;
    } catch (const CLI::ParseError& error) {
        return refuse(error.what());
    }
    const std::string missing = notBuilt(app);
    if (!missing.empty()) return refuse(missing);
    if (result.options.folder.empty()) return refuse("FOLDER is missing: the folder of the application to play");
    if (!result.options.headless) {
        if (result.options.audio) return refuse("--audio writes what a run with --headless plays");
        if (app.count("--frames") == 0) result.options.frames = 0;
        if (app.count("--language") == 0) result.options.language = "";
        if (app.count("--now") == 0) {
            result.options.utcSeconds =
                std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch())
                    .count();
            result.options.now = formatTime(result.options.utcSeconds);
        }
    }
    return result;
}

}  // namespace host
