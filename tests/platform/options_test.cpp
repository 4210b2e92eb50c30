// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/host/options.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

// Words between single blanks; '' is an empty one.
host::ParsedCommandLine parse(const std::string& line) {
    std::vector<std::string> words{"proscenium"};
    std::istringstream stream(line);
    for (std::string word; stream >> word;)
        words.push_back(word == "''" ? "" : word);
    std::vector<const char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(word.c_str());
    return host::parseCommandLine(arguments);
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words)
        text += "[" + word + "]";
    return text;
}

}  // namespace

TEST(HostOptions, WrongOnesAreRefusedInOneLineThatNamesThem) {
    const struct {
        const char* line;
        const char* named;
    } rows[] = {
        {"", "FOLDER"},
        {"--headless", "FOLDER"},
        {"--headless ''", "FOLDER"},
        {"-window app --headless", "-window"},
        {"app --headless --bogus", "--bogus"},
        {"app --headless --bogus=1", "--bogus"},
        {"app --headless --", "--"},
        {"app --headless --frame 5", "--frame"},
        {"app --headless --frames", "--frames"},
        {"app --frames --headless", "--frames"},
        {"app --headless --frames -1", "'-1'"},
        {"app --headless --frames 5x", "'5x'"},
        {"app --headless --frames ''", "''"},
        {"app --headless --frames 4294967296", "4294967296"},
        {"app --headless --step 1.5", "'1.5'"},
        {"app --headless --depth 24", "'24'"},
        {"app --headless --language 415", "'415'"},
        {"app --headless --language 04g5", "'04g5'"},
        {"app --headless --now 2001-02-29T00:00:00", "2001-02-29"},
        {"app --headless --now 1969-12-31T23:59:59", "1969"},
        {"app --headless --now 2001-01-01T24:00:00", "T24"},
        {"app --headless --now 2001-01-01", "'2001-01-01'"},
        {"app --headless --shot 5", "'5'"},
        {"app --headless --shot 5:", "'5:'"},
        {"app --headless --shot :a.png", "':a.png'"},
        {"app --headless --shot -1:a.png", "'-1:a.png'"},
        {"app --headless --shot 1:a.png --shot x:b", "'x:b'"},
        {"app --headless=yes", "--headless"},
        {"app --audio a.wav", "--headless"},
        {"app --headless --resource", "--resource needs"},
        {"app --headless --net 127.0.0.1", "--net is not"},
        {"app --headless --net-no-code", "--net-no-code is"},
        {"app --scale 0", "'0'"},
        {"app --scale 17", "'17'"},
        {"app --fullscreen=1", "--fullscreen takes no value"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        const host::ParsedCommandLine parsed = parse(row.line);
        EXPECT_EQ(parsed.exitStatus, 2);
        EXPECT_EQ(parsed.output, "");
        EXPECT_NE(parsed.error.find(row.named), std::string::npos) << parsed.error;
        EXPECT_TRUE(parsed.error.starts_with("proscenium: ")) << parsed.error;
        EXPECT_EQ(parsed.error.find('\n'), std::string::npos);
    }
}

TEST(HostOptions, HelpAndVersionNeedNothingElse) {
    for (const char* line : {"--help", "--version", "app --help --bogus-value=1 --frames"}) {
        const host::ParsedCommandLine parsed = parse(line);
        if (std::string_view(line).starts_with("app")) {
            EXPECT_EQ(parsed.exitStatus, 2) << "what is wrong beside it is still told";
            continue;
        }
        EXPECT_EQ(parsed.exitStatus, 0);
        EXPECT_FALSE(parsed.output.empty());
        EXPECT_EQ(parsed.error, "");
    }
}

TEST(HostOptions, ValuesReachTheirPlaces) {
    const host::ParsedCommandLine parsed = parse(
        "app --headless --config a.ini --frames 0 --step 33 --ticks 4294967295 --now 2003-05-17T09:05:00 "
        "--depth 15 --language 0415 --input i --record r --hashes h --shot 0:a:b --shot=last:c --realtime");
    ASSERT_EQ(parsed.exitStatus, std::nullopt) << parsed.error;
    const host::Options& options = parsed.options;
    EXPECT_EQ(options.folder, "app");
    EXPECT_EQ(options.config, "a.ini");
    EXPECT_EQ(options.frames, 0U);
    EXPECT_EQ(options.step, 33U);
    EXPECT_EQ(options.ticks, 4294967295U);
    EXPECT_EQ(options.utcSeconds, 1053162300);
    EXPECT_EQ(options.depth, 15);
    EXPECT_EQ(options.language, "0415");
    EXPECT_EQ(options.input, "i");
    EXPECT_EQ(options.record, "r");
    EXPECT_EQ(options.hashes, "h");
    EXPECT_TRUE(options.realtime);
    ASSERT_EQ(options.shots.size(), 2U);
    EXPECT_EQ(options.shots[0].frame, 0U);
    EXPECT_EQ(options.shots[0].file, "a:b");
    EXPECT_EQ(options.shots[1].frame, std::nullopt);

    EXPECT_EQ(parse("app --headless --frames 5 --frames=010").options.frames, 10U) << "the last one counts, in decimal";
    EXPECT_EQ(parse("app --headless --config ''").options.config, "");
}

TEST(HostOptions, EverythingBehindTheFolderAlsoGoesToTheEngine) {
    const struct {
        const char* line;
        const char* engine;
    } rows[] = {
        {"app --headless -res 640 480", "[proscenium][--headless][-res][640][480]"},
        {"app -window /nomusic bare --headless", "[proscenium][-window][/nomusic][bare][--headless]"},
        {"--headless app -pf", "[proscenium][-pf]"},
        {"--frames 5 app --headless --step 1", "[proscenium][--headless][--step][1]"},
        {"app --config -window --headless", "[proscenium][--config][-window][--headless]"},
        {"app --headless other", "[proscenium][--headless][other]"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        const host::ParsedCommandLine parsed = parse(row.line);
        ASSERT_EQ(parsed.exitStatus, std::nullopt) << parsed.error;
        EXPECT_EQ(parsed.options.folder, "app");
        EXPECT_EQ(joined(parsed.options.engineArguments), row.engine);
    }
}

TEST(HostOptions, TimesCountFromTheEpoch) {
    EXPECT_EQ(host::parseTime("1970-01-01T00:00:00"), 0);
    EXPECT_EQ(host::parseTime("2000-02-29T23:59:59"), 951868799);
    EXPECT_EQ(host::parseTime("2038-01-19T03:14:08"), 2147483648);
    EXPECT_EQ(host::parseTime("2000-01-01 00:00:00"), std::nullopt);
    EXPECT_EQ(host::parseTime("2000-01-01T00:00:0\xB2"), std::nullopt);
    EXPECT_EQ(host::parseTime("2000-00-01T00:00:00"), std::nullopt);
}

TEST(HostOptions, AWindowKeepsRealTimeUnlessToldOtherwise) {
    const host::Options window = parse("app -window --scale 2").options;
    EXPECT_EQ(window.frames, 0U);
    EXPECT_EQ(window.scale, 2);
    EXPECT_EQ(window.language, "");
    EXPECT_GT(window.utcSeconds, 1'700'000'000);
    EXPECT_EQ(host::parseTime(window.now), window.utcSeconds);
    const host::Options told = parse("app --frames 9 --language 0415 --now 2003-05-17T09:05:07 --fullscreen").options;
    EXPECT_EQ(told.frames, 9U);
    EXPECT_EQ(told.language, "0415");
    EXPECT_EQ(host::formatTime(told.utcSeconds), "2003-05-17T09:05:07");
    EXPECT_TRUE(told.fullScreen && !told.headless);
    EXPECT_EQ(parse("app --headless").options.frames, 3000U);
}
