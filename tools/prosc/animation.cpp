// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "prosc/animation.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>
#include <limits>
#include <span>

#include "animation/frame.h"
#include "foundation/byte_reader.h"
#include "graphics/pixel_conversion.h"
#include "platform/headless/code_page.h"
#include "prosc/animation_text.h"
#include "prosc/picture.h"

namespace prosc {

namespace {

constexpr int kMostFrames = std::numeric_limits<std::int16_t>::max();
constexpr int kMostPixels = 1 << 26;  // of a frame; the reader takes more for damage
constexpr int kAlphaChannels = 4;
constexpr std::uint8_t kOpaque = 255;
constexpr std::string_view kExtension = ".ann";

std::span<const std::byte> bytesOf(std::string_view text) { return std::as_bytes(std::span(text.data(), text.size())); }

bool hasMagic(std::string_view bytes, std::initializer_list<std::string_view> magics) {
    return std::any_of(magics.begin(), magics.end(), [&](std::string_view magic) { return bytes.starts_with(magic); });
}

// None for a file of no known generation, which the library would take for frames without anything in them.
std::unique_ptr<AnimationData> readFrom(std::string_view bytes, std::string& error) {
    if (!hasMagic(bytes, {"NVP", "NVI", "NV+", "PAK", "MVL", "MV2", "MV3"})) {
        error = "is no animation";
        return nullptr;
    }
    std::unique_ptr<AnimationData> data = readAnimation(nullptr, bytesOf(bytes), error);
    // The reader adds its own mark to the flags of the file.
    if (data && data->form.starts_with("NV")) {
        constexpr std::size_t kFlagsPlace = 27;
        ByteReader reader(bytesOf(bytes));
        reader.seek(kFlagsPlace);
        data->animationFlags &= ~(kReadFromNewForm & ~reader.u32());
    }
    return data;
}

// Raw planes in a frame; false when they aren't what the frame's form says.
bool decode(CFrame& frame) {
    const bool hasData = static_cast<bool>(frame.getData()), hasAlpha = static_cast<bool>(frame.getAlpha());
    frame.decode();
    return hasData == static_cast<bool>(frame.getData()) && hasAlpha == static_cast<bool>(frame.getAlpha());
}

bool isDrawable(int bpp) { return bpp == 15 || bpp == 16 || bpp == 24; }

// What the text file says of a frame, and its picture, unless it has none.
FilesOutcome takeFrame(CFrame& frame, int number, AnimationText& text) {
    FrameText& said = text.frames[number];
    said.position = frame.GetFramePosition();
    if (!frame.getAlpha() && frame.channelCount != 0) said.channels = std::clamp(frame.channelCount, 0, kAlphaChannels);
    if (!frame.getData()) {
        said.emptySize = frame.Size();
        return {Files(), ""};
    }
    const _compression form = frame.getCompression() == kCompressionRle || frame.storedForm == kCompressionDictionaryRle
                                  ? kCompressionRle
                                  : kCompressionRaw;
    if (form != text.form) said.form = form;
    if (!isDrawable(frame.getBpp()) || !decode(frame))
        return {std::nullopt, fmt::format("frame {}: its planes don't decode", number)};
    said.alpha = static_cast<bool>(frame.getAlpha());
    Outcome png = writePng(frame.Size(), frame.getBpp(), frame.getData(), frame.getAlpha());
    if (!png.result) return {std::nullopt, fmt::format("frame {}: {}", number, png.error)};
    return {Files{{frameName(number), std::move(*png.result)}}, ""};
}

// The planes of a frame in the animation's format; "" when all is well.
std::string fillFrame(CFrame& frame, std::string_view png, const FrameText& said, int bpp) {
    std::string error;
    std::optional<Picture> picture = readPng(png, error);
    if (!picture) return error;
    if (picture->size.mul() > kMostPixels) return fmt::format("more than {} pixels", kMostPixels);
    Plane noAlpha;
    if (!__convert_bpp(picture->data, noAlpha, picture->size, 24, bpp)) return "an unknown format";
    const bool hasAlpha = said.alpha.value_or(static_cast<bool>(picture->alpha));
    if (!hasAlpha) {
        picture->alpha.reset();
    } else if (!picture->alpha) {
        picture->alpha = Plane(std::vector<std::uint8_t>(static_cast<std::size_t>(picture->size.mul()), kOpaque));
    }
    frame.setPlanes(picture->size, bpp, picture->data, picture->alpha);
    return "";
}

const char* formName(_compression form) {
    constexpr const char* kNames[] = {"raw", "raw", "lzo", "lzo of rle", "rle"};
    return kNames[std::clamp<int>(form, kCompressionRaw, kCompressionRle)];
}

std::string describe(const CFrame& frame, int number) {
    const CXSize size = frame.Size();
    const CXPoint at = frame.GetFramePosition();
    return fmt::format("  frame {}: {} by {} at ({}, {}), {}{}\n", number, size.width, size.height, at.x, at.y,
                       frame.getData() ? formName(frame.storedForm) : "empty", frame.getAlpha() ? ", alpha" : "");
}

std::string describe(const _annEventInfo3& event) {
    std::string line =
        fmt::format("  event {}: frames: {}, rate {}", quotedText(event.name), event.frames.size(), event.fps);
    if (event.loopEnd != 0) {
        line += fmt::format(", loop from {} to {}", event.loopStart, event.loopEnd);
        if (event.loopCount != 0) line += fmt::format(" {} times", event.loopCount);
    }
    if (event.flags != 0) line += fmt::format(", {}", flagNames(event.flags));
    return line + '\n';
}

}  // namespace

FilesOutcome filesFromAnimation(std::string_view bytes) {
    std::string error;
    const std::unique_ptr<AnimationData> data = readFrom(bytes, error);
    if (!data) return {std::nullopt, error};
    if (!isDrawable(data->bpp)) return {std::nullopt, fmt::format("pixels of {} bits", data->bpp)};
    AnimationText text;
    if (!data->frames.empty() && data->frames[0]->storedForm <= kCompressionDictionary) text.form = kCompressionRaw;
    Files files;
    for (std::size_t i = 0; i < data->frames.size(); ++i) {
        FilesOutcome frame = takeFrame(*data->frames[i], static_cast<int>(i), text);
        if (!frame.result) return frame;
        files.merge(*frame.result);
    }
    text.data.bpp = data->bpp;
    text.data.fps = data->fps;
    text.data.objectFlags = data->objectFlags;
    text.data.animationFlags = data->animationFlags;
    text.data.opacity = data->opacity;
    text.data.randomFramesNumber = data->randomFramesNumber;
    text.data.author = data->author;
    text.data.description = data->description;
    text.data.events = std::move(data->events);
    files[kAnimationText] = printAnimationText(text);
    return {std::move(files), ""};
}

Outcome animationFromFiles(const Files& files, const AnimationOptions& options) {
    const auto wrong = [](std::string_view file, std::string_view what) {
        return Outcome{std::nullopt, fmt::format("{}: {}", file, what)};
    };
    const auto source = files.find(kAnimationText);
    if (source == files.end()) return wrong(kAnimationText, "is missing");
    AnimationText text;
    std::string error;
    if (!parseAnimationText(source->second, text, error)) return wrong(kAnimationText, error);
    if (options.bpp != 0) text.data.bpp = options.bpp;

    std::map<int, Files::const_iterator> pictures;
    for (auto file = files.begin(); file != files.end(); ++file) {
        const std::optional<int> number = frameNumber(file->first);
        if (!number) continue;
        if (!pictures.emplace(*number, file).second) return wrong(file->first, "another picture has the same number");
        const auto said = text.frames.find(*number);
        if (said != text.frames.end() && said->second.emptySize) return wrong(file->first, "is of an empty frame");
    }
    int count = pictures.empty() ? 0 : pictures.rbegin()->first + 1;
    if (!text.frames.empty()) count = std::max(count, text.frames.rbegin()->first + 1);
    if (count > kMostFrames) return wrong(frameName(count - 1), fmt::format("more than {} frames", kMostFrames));

    for (int i = 0; i < count; ++i) {
        const FrameText said = text.frames[i];
        auto frame = std::make_unique<CFrame>(nullptr);
        if (said.emptySize) {
            frame->setPlanes(*said.emptySize, text.data.bpp, {}, {});
        } else {
            const auto picture = pictures.find(i);
            if (picture == pictures.end()) return wrong(frameName(i), "is missing");
            error = fillFrame(*frame, picture->second->second, said, text.data.bpp);
            if (!error.empty()) return wrong(picture->second->first, error);
        }
        frame->SetPosition(said.position.x, said.position.y);
        frame->channelCount = said.channels.value_or(0);
        const bool isCoded =
            options.form.empty() ? said.form.value_or(text.form) == kCompressionRle : options.form == "rle";
        if (isCoded) frame->Compress(kCompressionRle);
        text.data.frames.push_back(std::move(frame));
    }
    // Each frame in the form that it has by now.
    const std::vector<std::uint8_t> bytes = writeAnimation(text.data, kCompressionRaw);
    return {std::string(bytes.begin(), bytes.end()), ""};
}

std::optional<int> frameNumber(std::string_view name) {
    constexpr std::string_view kBefore = "frame", kBehind = ".png";
    if (!name.starts_with(kBefore) || !name.ends_with(kBehind)) return std::nullopt;
    name = name.substr(kBefore.size(), name.size() - std::min(name.size(), kBefore.size() + kBehind.size()));
    unsigned short number = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    if (error != std::errc() || end != name.data() + name.size()) return std::nullopt;
    return number;
}

std::string frameName(int number) { return fmt::format("frame{:03}.png", number); }

bool isAnimation(std::string_view bytes, std::string_view name) {
    const bool isNamed = name.size() >= kExtension.size() &&
                         headless::foldCase(name.substr(name.size() - kExtension.size())) == kExtension;
    // A definition file may begin with the same letters.
    return isNamed || (hasMagic(bytes, {"NVP", "NV+", "PAK", "MV2", "MV3"}) && bytes.size() > 3 && bytes[3] == '\0');
}

Outcome animationInfo(std::string_view bytes) {
    std::string error;
    const std::unique_ptr<AnimationData> data = readFrom(bytes, error);
    if (!data) return {std::nullopt, error};
    std::string text = fmt::format("animation, form {}, {} bits, rate {}, frames: {}, events: {}\n", data->form,
                                   data->bpp, data->fps, data->frames.size(), data->events.size());
    if (data->author.IsString()) text += fmt::format("  author: {}\n", quotedText(data->author));
    if (data->description.IsString()) text += fmt::format("  description: {}\n", quotedText(data->description));
    for (std::size_t i = 0; i < data->frames.size(); ++i)
        text += describe(*data->frames[i], static_cast<int>(i));
    for (const _annEventInfo3& event : data->events)
        text += describe(event);
    return {std::move(text), ""};
}

}  // namespace prosc
