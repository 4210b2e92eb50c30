// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <gtest/gtest.h>
#include <span>
#include <string>

#include "support/stage.h"

// A scene with a text LOG, statements that run in it, and what they leave in LOG.
struct LogRow {
    const char* what;
    std::string scene;
    std::string run;
    std::string log;
    int frames = 0;  // that go by before LOG is read
};

inline void expectLogs(std::span<const LogRow> rows, const std::string& common = "") {
    for (const LogRow& row : rows) {
        SCOPED_TRACE(row.what);
        Stage stage(lines("LOG", "STRING") + common + row.scene);
        stage.run(row.run);
        stage.frames(row.frames);
        EXPECT_EQ(stage.value("LOG"), row.log);
    }
}

// What a value is, as text, and the statements that come before it. All rows share one scene.
struct ValueRow {
    const char* what;
    const char* before;
    const char* value;
    const char* text;
};

inline void expectValues(std::span<const ValueRow> rows, const std::string& scene) {
    Stage stage(lines("LOG", "STRING") + scene);
    for (const ValueRow& row : rows) {
        SCOPED_TRACE(std::string(row.what) + ": " + row.before + " " + row.value);
        stage.run(std::string("LOG^SET(\"untouched\");") + row.before + "LOG^SET(" + row.value + ");");
        EXPECT_EQ(stage.value("LOG"), row.text);
    }
}
