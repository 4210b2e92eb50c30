// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/host/input_file.h"

#include <gtest/gtest.h>

using host::Event;
using host::EventKind;

TEST(InputFile, EveryWordIsReadAndWrittenBack) {
    const std::string text =
        "1 move 10 -20\n1 ldown 3 4\n1 lup 3 4\n2 ldbl 0 0\n2 mdown 1 2\n2 mup 1 2\n3 rdown 5 6\n3 rup 5 6\n"
        "4 keydown 200\n5 keyup 200\n6 capslock 1\n7 active 0\n4294967295 close\n";
    const host::InputFile file = host::parseInput(text);
    ASSERT_EQ(file.errorLine, 0) << file.error;
    ASSERT_EQ(file.events.size(), 13U);
    EXPECT_EQ(file.events[0], (Event{1, EventKind::move, 10, -20}));
    EXPECT_EQ(file.events[8], (Event{4, EventKind::keyDown, 200, 0}));
    EXPECT_EQ(file.events[12], (Event{4294967295U, EventKind::close, 0, 0}));
    std::string written;
    for (const Event& event : file.events)
        written += host::inputLine(event);
    EXPECT_EQ(written, text);
}

TEST(InputFile, CommentsBlanksAndLineEndsDoNotMatter) {
    const host::InputFile file =
        host::parseInput("# all\r\n\r\n  1\tkeydown  0xC8# held\r\n 1 keydown 0X1e\n\n2 close");
    ASSERT_EQ(file.errorLine, 0) << file.error;
    ASSERT_EQ(file.events.size(), 3U);
    EXPECT_EQ(file.events[0], (Event{1, EventKind::keyDown, 0xC8, 0}));
    EXPECT_EQ(file.events[1], (Event{1, EventKind::keyDown, 0x1E, 0}));
    EXPECT_EQ(file.events[2].kind, EventKind::close);
    EXPECT_TRUE(host::parseInput("").events.empty());
}

TEST(InputFile, AWrongLineIsNamed) {
    const struct {
        const char* text;
        int line;
        const char* about;
    } rows[] = {
        {"1 close\n1 jump\n", 2, "jump"},
        {"# one\n\nclose\n", 3, "close"},
        {"5 close\n4 close\n", 2, "frame 4"},
        {"0 close\n", 1, "'0'"},
        {"-1 close\n", 1, "'-1'"},
        {"4294967296 close\n", 1, "4294967296"},
        {"1x close\n", 1, "'1x'"},
        {"1\n", 1, "missing"},
        {"1 MOVE 1 2\n", 1, "MOVE"},
        {"1 move 1\n", 1, "2 arguments"},
        {"1 move 1 2 3\n", 1, "2 arguments"},
        {"1 move 1 2.5\n", 1, "'1 2.5'"},
        {"1 move 1 2147483648\n", 1, "2147483648"},
        {"1 close 1\n", 1, "0 arguments"},
        {"1 keydown\n", 1, "1 arguments"},
        {"1 keydown 256\n", 1, "'256'"},
        {"1 keydown -1\n", 1, "'-1'"},
        {"1 keydown 0x\n", 1, "'0x'"},
        {"1 keydown 0x100\n", 1, "'0x100'"},
        {"1 keydown 1E\n", 1, "'1E'"},
        {"1 capslock 2\n", 1, "'2'"},
        {"1 active yes\n", 1, "'yes'"},
        {"1 close\n2 close\n\nrubbish\n5 x\n", 4, "rubbish"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const host::InputFile file = host::parseInput(row.text);
        EXPECT_EQ(file.errorLine, row.line);
        EXPECT_NE(file.error.find(row.about), std::string::npos) << file.error;
    }
}
