// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdio>
#include <memory>
#include <span>

#include "platform/display.h"
#include "platform/host/input_file.h"
#include "platform/host/options.h"

namespace host {

// The files that a run writes beside those of the application: pictures, hashes, recorded events.
class Outputs {
public:
    // `options` must outlive this.
    explicit Outputs(const Options& options) : options_(options) {}

    // Makes sure that each file can be written, before anything is run. "" or what is wrong.
    std::string open();

    void record(const Event& event);
    // After each frame, 0 for what comes before the first.
    void frame(std::uint32_t number, const platform::Display& display);
    // What was heard, left and right in turn, since the last call.
    void hear(std::span<const std::int16_t> samples);
    // After the last frame. "" or what couldn't be written; shots of frames that never came are told on standard error.
    std::string finish(const platform::Display& display);

private:
    struct Close {
        void operator()(std::FILE* stream) const { std::fclose(stream); }
    };
    using Stream = std::unique_ptr<std::FILE, Close>;

    void writeShot(const Shot& shot, const platform::Display& display);
    void writeRecordHead();
    void writeAudioHead();
    void closeChecked(Stream& stream, const std::string& file);
    void fail(const std::string& file);

    const Options& options_;
    Stream record_;
    Stream hashes_;
    Stream audio_;
    std::uint32_t audioBytes_ = 0;
    std::uint32_t lastFrame_ = 0;
    std::string error_;  // the first one
};

}  // namespace host
