// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/host/outputs.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include "platform/headless/mixer.h"
#include "platform/host/picture.h"

namespace host {

namespace {

// True when the file can be written; leaves an existing one as it is, and none where there was none.
bool isWritable(const std::string& file) {
    const bool existed = access(file.c_str(), F_OK) == 0;
    const int descriptor = ::open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
    if (descriptor < 0) return false;
    close(descriptor);
    if (!existed) unlink(file.c_str());
    return true;
}

std::string cannotWrite(const std::string& file) {
    return fmt::format("proscenium: {}: can't be written: {}", file, std::strerror(errno));
}

// In a comment, where the end of a line would begin an event.
std::string inComment(std::string text) {
    for (char& c : text)
        if (c == '\n' || c == '\r') c = ' ';
    return text;
}

}  // namespace

std::string Outputs::open() {
    const auto openStream = [](Stream& stream, const std::optional<std::string>& file) {
        if (!file) return true;
        stream.reset(std::fopen(file->c_str(), "wb"));
        return stream != nullptr;
    };
    for (const Shot& shot : options_.shots)
        if (!isWritable(shot.file)) return cannotWrite(shot.file);
    if (!openStream(hashes_, options_.hashes)) return cannotWrite(*options_.hashes);
    if (!openStream(record_, options_.record)) return cannotWrite(*options_.record);
    if (!openStream(audio_, options_.audio)) return cannotWrite(*options_.audio);
    if (record_) writeRecordHead();
    if (audio_) writeAudioHead();
    return "";
}

void Outputs::writeRecordHead() {
    std::string head = "# proscenium " PROSCENIUM_VERSION ": events of a run, for --input\n";
    head += fmt::format("# --config {} --frames {} --step {} --ticks {} --now {} --depth {} --language {}\n",
                        inComment(options_.config), options_.frames, options_.step, options_.ticks, options_.now,
                        options_.depth, options_.language);
    head += "# arguments:";
    for (std::size_t i = 1; i < options_.engineArguments.size(); ++i)
        head += " " + inComment(options_.engineArguments[i]);
    head += "\n";
    std::fputs(head.c_str(), record_.get());
}

// Its lengths are those of what was heard so far.
void Outputs::writeAudioHead() {
    constexpr std::uint32_t kFrequency = headless::Mixer::kFrequency, kBlock = 4, kFormatLength = 16, kHeadLength = 36;
    const auto text = [this](const char* tag) { std::fputs(tag, audio_.get()); };
    const auto number = [this](std::uint32_t value, int bytes) {
        for (int i = 0; i < bytes; ++i)
            std::fputc(static_cast<int>(value >> (8 * i) & 0xFF), audio_.get());
    };
    text("RIFF");
    number(kHeadLength + audioBytes_, 4);
    text("WAVEfmt ");
    number(kFormatLength, 4);
    number(1, 2);  // PCM
    number(2, 2);  // channels
    number(kFrequency, 4);
    number(kFrequency * kBlock, 4);
    number(kBlock, 2);
    number(16, 2);  // bits
    text("data");
    number(audioBytes_, 4);
}

// A file of this form ends at 4 GB; what comes behind is left out.
void Outputs::hear(std::span<const std::int16_t> samples) {
    constexpr std::uint32_t kMost = 0xFFFFFF00;
    const std::size_t bytes = samples.size_bytes();
    if (!audio_ || bytes > kMost - audioBytes_) return;
    if (std::fwrite(samples.data(), 1, bytes, audio_.get()) == bytes) audioBytes_ += static_cast<std::uint32_t>(bytes);
}

void Outputs::record(const Event& event) {
    if (!record_) return;
    std::fputs(inputLine(event).c_str(), record_.get());
    std::fflush(record_.get());  // what led to a crash is what one wants to play again
}

void Outputs::frame(std::uint32_t number, const platform::Display& display) {
    lastFrame_ = number;
    for (const Shot& shot : options_.shots)
        if (shot.frame == number) writeShot(shot, display);
    if (hashes_ && number > 0) std::fputs(fmt::format("{} {:016x}\n", number, hashOf(display)).c_str(), hashes_.get());
}

std::string Outputs::finish(const platform::Display& display) {
    for (const Shot& shot : options_.shots) {
        if (!shot.frame) writeShot(shot, display);
        if (shot.frame && *shot.frame > lastFrame_)
            fmt::print(stderr, "proscenium: {}: not written: frame {} was not reached, the last one was {}\n",
                       shot.file, *shot.frame, lastFrame_);
    }
    if (hashes_) closeChecked(hashes_, *options_.hashes);
    if (audio_) {
        std::rewind(audio_.get());
        writeAudioHead();
        closeChecked(audio_, *options_.audio);
    }
    if (record_) closeChecked(record_, *options_.record);
    return error_;
}

void Outputs::writeShot(const Shot& shot, const platform::Display& display) {
    if (!writePng(shot.file, display)) fail(shot.file);
}

void Outputs::closeChecked(Stream& stream, const std::string& file) {
    const bool failed = std::ferror(stream.get()) != 0;
    if (std::fclose(stream.release()) != 0 || failed) fail(file);
}

void Outputs::fail(const std::string& file) {
    if (error_.empty()) error_ = cannotWrite(file);
}

}  // namespace host
