// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "frame/command_line.h"

#include <gtest/gtest.h>

TEST(CommandLine, WhichWordsCount) {
    const struct {
        const char* what;
        const char* text;
        const char* token;
        bool found;
        const char* next;
    } rows[] = {
        {"minus", "a -res 640", "res", true, "640"},
        {"slash", "/res 640", "res", true, "640"},
        {"a bare word is no switch", "res 640", "res", false, "640"},
        {"another case is another word", "-forcecnv", "forceCNV", false, ""},
        {"a longer word is another word", "-windowed 1", "window", false, ""},
        {"nothing follows", "-res", "res", true, ""},
        {"runs of blanks make no words", "  -res   1  ", "res", true, "1"},
        {"quotes mean nothing", "-res \"6 4\"", "res", true, "\"6"},
        {"the first of several", "res -res 1", "res", true, "-res"},
        {"two marks aren't one", "--res 1", "res", false, ""},
        {"nothing at all", "", "res", false, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const CCommandLine line(row.text);
        EXPECT_EQ(line.FindToken(row.token), row.found);
        EXPECT_EQ(line.GetNextToken(row.token), row.next);
    }
}

TEST(CommandLine, Resolution) {
    const struct {
        const char* text;
        int width, height;
    } rows[] = {
        {"-window", 800, 600},
        {"-res 640 480", 640, 480},
        {"/res 1024 768 -nomusic", 1024, 768},
        {"-res 640", 640, 0},
        {"-res", 0, 0},
        {"res 640 480", 800, 600},
        {"-res wide 480", 0, 480},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(CCommandLine6(row.text).getResolution(), CXSize(row.width, row.height));
    }
}

TEST(CommandLine, SwitchesThatClearAndSet) {
    const CCommandLine6 none("nomusic");
    EXPECT_TRUE(none.isMusicEnabled() && none.isSoundEnabled() && none.isGFXEnabled());
    const CCommandLine6 off("-nomusic /nosound -nogfx");
    EXPECT_FALSE(off.isMusicEnabled() || off.isSoundEnabled() || off.isGFXEnabled());

    const struct {
        const char* text;
        bool (CCommandLine6::*is)() const;
    } rows[] = {
        {"-window", &CCommandLine6::isWindowMode},
        {"-server", &CCommandLine6::isServer},
        {"-client", &CCommandLine6::isClient},
        {"-code", &CCommandLine6::isToCode},
        {"-decode", &CCommandLine6::isToDecode},
        {"-remove", &CCommandLine6::isToRemove},
        {"-pf", &CCommandLine6::isPageFlippingEnabled},
        {"-vmem", &CCommandLine6::isVMem},
        {"-cheat", &CCommandLine6::isCheatMode},
        {"-mirkobatul", &CCommandLine6::isCheatMode},
        {"-2bin", &CCommandLine6::is2Bin},
        {"-forceCNV", &CCommandLine6::isForceCNV},
        {"-debug", &CCommandLine6::isDebugMode},
    };
    for (const auto& row : rows) {
        for (const auto& other : rows) {
            SCOPED_TRACE(std::string(row.text) + " asked as " + other.text);
            EXPECT_EQ((CCommandLine6(row.text).*other.is)(), row.is == other.is);
        }
    }
}

TEST(CommandLine, ArgumentsAreKeptWhole) {
    std::string program = "proscenium", folder = "my folder", mark = "-res";
    char* arguments[] = {program.data(), folder.data(), mark.data()};
    const CCommandLine line(3, arguments);
    EXPECT_EQ(line.GetNoArgs(), 3);
    EXPECT_EQ(line.GetNextToken("proscenium"), "my folder");
}
