// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/animation_file.h"

#include <algorithm>
#include <numeric>

#include "animation/frame.h"
#include "foundation/byte_reader.h"
#include "graphics/pixel_conversion.h"
#include "graphics/pixel_format.h"
#include "sound/sound.h"

namespace {

constexpr std::int64_t kFrameRecordSize = 30;
constexpr std::int64_t kEventNameSize = 32;
constexpr std::int64_t kFrameHeaderSize = 52;
constexpr std::int64_t kShortFrameHeaderSize = 32;
constexpr std::int64_t kMostPlaneBytes = 1 << 28;
constexpr int kMostChannels = 4;
constexpr unsigned kObjectFlagsMask = 0xFF;
constexpr int kDefaultRate = 15;

// The bytes up to the first 0, or all of them.
CXString textIn(std::string_view field) { return CXString(field.substr(0, field.find('\0'))); }

// A name ends with a 0 in any case.
CXString eventNameIn(std::string_view field) { return textIn(field.substr(0, kEventNameSize - 1)); }

Plane planeOf(std::span<const std::byte> bytes) {
    const auto* first = reinterpret_cast<const std::uint8_t*>(bytes.data());
    return Plane(std::vector<std::uint8_t>(first, first + bytes.size()));
}

// One reading of a file; the first thing that is wrong ends it.
class AnimationReader {
public:
    AnimationReader(CWindow* window, std::span<const std::byte> bytes, std::string& reason)
        : reader_(bytes), window_(window), reason_(reason), animation_(std::make_unique<AnimationData>()) {}

    std::unique_ptr<AnimationData> read() {
        struct Generation {
            std::string_view magic;
            bool (AnimationReader::*load)();
        };
        static constexpr Generation kGenerations[] = {
            {"NVP", &AnimationReader::Load3  },
            {"NVI", &AnimationReader::Load3  },
            {"NV+", &AnimationReader::Load3  },
            {"PAK", &AnimationReader::LoadNew},
        };
        // The fourth byte may be anything.
        animation_->form = std::string(reader_.text(3));
        reader_.skip(1);
        bool (AnimationReader::*load)() = &AnimationReader::Load;
        for (const Generation& generation : kGenerations) {
            if (generation.magic == animation_->form) load = generation.load;
        }
        if (!(this->*load)()) return nullptr;
        return std::move(animation_);
    }

private:
    // How a frame's planes stand in the file, told ahead of them.
    struct FrameHeader {
        CXSize size;
        CXPoint position;
        int form = 0;
        int bpp = 0;
        int channelCount = 0;
        std::int32_t dataSize = 0;
        std::int32_t alphaSize = 0;
    };

    bool fail(const char* what) {
        reason_ = "byte " + std::to_string(reader_.position()) + ": " + what;
        return false;
    }

    // The newest generation, with texts, events and records of any length.
    bool Load3() {
        const int frameCount = reader_.i16();
        const int bpp = reader_.i16(), eventCount = reader_.i16();
        reader_.skip(13);
        animation_->bpp = bpp;
        animation_->fps = reader_.i32();
        const std::uint32_t flags = reader_.u32();
        animation_->objectFlags = flags & kObjectFlagsMask;
        animation_->animationFlags = flags & ~kObjectFlagsMask;
        animation_->opacity = reader_.u8();
        animation_->randomFramesNumber = reader_.i16();
        reader_.skip(10);
        if (!reader_.ok()) return fail("the header is cut off");
        animation_->author = readText();
        animation_->description = readText();
        if (!reader_.ok()) return fail("a text longer than the file");
        for (int i = 0; i < eventCount; ++i) {
            if (!readEvent()) return false;
        }
        const bool isShort = animation_->form == "NV+";
        const bool good = readFrames(
            frameCount, bpp, [&] { return isShort ? LoadHeaderNew() : LoadHeaderNew2(); },
            isShort ? kShortFrameHeaderSize : kFrameHeaderSize);
        if (!good) return false;
        if (animation_->form != "NVI") animation_->animationFlags |= kReadFromNewForm;
        for (const auto& frame : animation_->frames)
            frame->DeCompress();
        return true;
    }

    CXString readText() {
        const std::int32_t length = reader_.i32();
        return textIn(reader_.text(length));
    }

    bool readEvent() {
        _annEventInfo3 event;
        event.name = eventNameIn(reader_.text(kEventNameSize));
        const int count = reader_.u16();
        reader_.skip(4);  // the place of a pointer
        event.loopStart = reader_.u16();
        event.loopEnd = reader_.u16();
        event.loopCount = reader_.u16();
        event.loopCounter = reader_.u16();
        event.fps = reader_.i32();
        event.flags = reader_.u32();
        event.opacity = reader_.u8();
        const std::span<const std::byte> reserved = reader_.bytes(std::ssize(event.reserved));
        if (!reader_.ok() || !readFrameTable(event, count)) return fail("the table of events is cut off");
        for (std::size_t i = 0; i < event.reserved.size(); ++i)
            event.reserved[i] = std::to_integer<std::uint8_t>(reserved[i]);
        if (std::int64_t{count} * kFrameRecordSize > static_cast<std::int64_t>(reader_.left()))
            return fail("more frames in an event than the file has room for");
        event.infos.resize(static_cast<std::size_t>(count));
        for (_anmFrameInfo3& info : event.infos)
            readFrameRecord(info);
        if (!reader_.ok()) return fail("the table of events is cut off");
        animation_->events.push_back(std::move(event));
        return true;
    }

    bool readFrameTable(_annEventInfo3& event, int count) {
        if (std::int64_t{count} * 2 > static_cast<std::int64_t>(reader_.left())) return false;
        for (int i = 0; i < count; ++i)
            event.frames.push_back(reader_.u16());
        return true;
    }

    void readFrameRecord(_anmFrameInfo3& info) {
        const bool hasName = reader_.u32() != 0, hasText = reader_.u32() != 0;
        info.offset.x = reader_.i16();
        info.offset.y = reader_.i16();
        info.reserved12 = reader_.i32();
        const bool hasSound = reader_.u32() != 0;
        info.reserved20 = reader_.i32();
        info.opacity = reader_.u8();
        info.reserved25 = reader_.u8();
        reader_.skip(4);  // the place of a pointer
        if (hasName) info.name = readText();
        if (hasText) info.text = readText();
        if (hasSound) info.sound = readText();
    }

    // The generation before it: texts and records of fixed lengths.
    bool LoadNew() {
        const int frameCount = reader_.i16();
        animation_->author = textIn(reader_.text(128));
        animation_->description = textIn(reader_.text(256));
        const int bpp = reader_.i16(), eventCount = reader_.i16();
        reader_.skip(13);
        if (!reader_.ok()) return fail("the header is cut off");
        animation_->bpp = bpp == 0 ? 15 : bpp;
        for (int i = 0; i < eventCount; ++i) {
            if (!readPackedEvent()) return false;
        }
        if (!readFrames(
                frameCount, animation_->bpp, [&] { return LoadHeaderNew(); }, kShortFrameHeaderSize))
            return false;
        if (eventCount <= 0) animation_->makeDefaultEvents();
        return true;
    }

    bool readPackedEvent() {
        _annEventInfo3 event;
        event.name = eventNameIn(reader_.text(kEventNameSize));
        const int count = std::max<int>(reader_.i16(), 0);
        event.loopStart = event.loopEnd = reader_.u16();
        reader_.skip(2);
        event.loopCount = reader_.u16();
        if (!reader_.ok() || !readFrameTable(event, count)) return fail("the table of events is cut off");
        event.infos.resize(static_cast<std::size_t>(count));
        for (_anmFrameInfo3& info : event.infos) {
            info.offset.x = reader_.i16();
            info.offset.y = reader_.i16();
            reader_.skip(6);
        }
        if (!reader_.ok()) return fail("the table of events is cut off");
        animation_->events.push_back(std::move(event));
        return true;
    }

    // The oldest: frames alone. Its optional chunks tell of a sequence that nothing plays, and are passed over.
    bool Load() {
        const int frameCount = reader_.i16();
        const int bpp = GetRealBpp(reader_.i16());
        reader_.skip(4);
        if (!reader_.ok()) return fail("the header is cut off");
        animation_->bpp = bpp;
        if (!ReadChunk(kChunkExtra) || !ReadChunk(kChunkSequence) || !ReadChunk(kChunkPosition)) return false;
        constexpr std::string_view kMagics[] = {"MVL", "MV2", "MV3"};
        const auto* magic = std::find(std::begin(kMagics), std::end(kMagics), animation_->form);
        const int mode = static_cast<int>(magic - std::begin(kMagics)) + 1;
        if (magic == std::end(kMagics)) {
            // A file of an unknown kind has as many frames as it says, and nothing in them.
            for (int i = 0; i < frameCount; ++i)
                animation_->frames.push_back(std::make_unique<CFrame>(window_));
        } else if (!readFrames(
                       frameCount, bpp, [&] { return LoadHeader(mode); }, mode == 1 ? 20 : kShortFrameHeaderSize))
            return false;
        if (bpp == 0 && !animation_->frames.empty()) animation_->bpp = animation_->frames.front()->getBpp();
        animation_->makeDefaultEvents();
        return true;
    }

    bool ReadChunk(_chunk chunk) {
        constexpr std::string_view kTags[] = {"EXT", "SEQ", "POS"};
        constexpr std::int64_t kTagSize = 3;
        if (reader_.left() < kTagSize) return true;
        const std::size_t begin = reader_.position();
        if (reader_.text(kTagSize) != kTags[chunk]) {
            reader_.seek(begin);
            return true;
        }
        if (chunk == kChunkExtra) {
            reader_.skip(4);
            animation_->author = readText();
            animation_->description = readText();
        } else if (chunk == kChunkSequence) {
            sequenceLength_ = reader_.i32() & 0xFFFF;
            reader_.skip(4LL * sequenceLength_);
        } else {
            reader_.skip(33LL * sequenceLength_);
        }
        return reader_.ok() || fail("a chunk is cut off");
    }

    template <class ReadHeader>
    bool readFrames(int count, int bpp, ReadHeader readHeader, std::int64_t headerSize) {
        if (std::int64_t{count} * headerSize > static_cast<std::int64_t>(reader_.left()))
            return fail("more frames than the file has room for");
        std::vector<FrameHeader> headers;
        for (int i = 0; i < count; ++i) {
            headers.push_back(readHeader());
            if (headers.back().bpp == 0) headers.back().bpp = bpp;
        }
        for (const FrameHeader& header : headers) {
            const std::span<const std::byte> data = reader_.bytes(header.dataSize);
            const std::span<const std::byte> alpha = reader_.bytes(std::max(header.alphaSize, 0));
            if (!reader_.ok()) return fail("planes larger than the file");
            animation_->frames.push_back(makeFrame(header, data, alpha));
        }
        if (!headers.empty()) animation_->compression = static_cast<_compression>(headers.front().form);
        return true;
    }

    // A frame whose planes can't be what its header tells shows nothing; it keeps its place and its number.
    std::unique_ptr<CFrame> makeFrame(const FrameHeader& header, std::span<const std::byte> data,
                                      std::span<const std::byte> alpha) {
        auto frame = std::make_unique<CFrame>(window_);
        frame->SetPosition(header.position.x, header.position.y);
        frame->channelCount = header.channelCount;
        const bool isRaw = header.form == kCompressionRaw || header.form == kCompressionFrame;
        const bool isKnown = isRaw || (header.form >= kCompressionDictionary && header.form <= kCompressionRle);
        if (isKnown) frame->storedForm = static_cast<_compression>(header.form);
        const std::int64_t pixels = static_cast<std::int64_t>(header.size.width) * header.size.height;
        const std::int64_t rawSize = pixels * __get_pixel_size(header.bpp);
        const bool hasSize = header.size.width > 0 && header.size.height > 0;
        const bool hasPlanes =
            isKnown && hasSize && !data.empty() && rawSize > 0 && rawSize <= kMostPlaneBytes &&
            (!isRaw || (std::ssize(data) >= rawSize && (header.alphaSize <= 0 || std::ssize(alpha) >= pixels)));
        if (!hasPlanes) {
            frame->setPlanes(hasSize ? header.size : CXSize(), header.bpp, {}, {});
            return frame;
        }
        if (isRaw) {
            data = data.first(static_cast<std::size_t>(rawSize));
            if (!alpha.empty()) alpha = alpha.first(static_cast<std::size_t>(pixels));
        }
        frame->setPlanes(header.size, header.bpp, planeOf(data), alpha.empty() ? Plane() : planeOf(alpha),
                         isRaw ? kCompressionRaw : frame->storedForm);
        return frame;
    }

    FrameHeader LoadHeader(int mode) {
        FrameHeader header;
        std::int32_t sizes[kMostChannels] = {};
        if (mode == 1) {
            sizes[0] = reader_.i32();
            sizes[3] = reader_.i32();
        }
        header.size.width = reader_.i16();
        header.position.x = reader_.i16();
        header.size.height = reader_.i16();
        header.position.y = reader_.i16();
        reader_.skip(2);
        header.bpp = GetRealBpp(reader_.i16());
        if (mode != 1) {
            header.channelCount = std::clamp<std::int32_t>(reader_.i32(), 0, kMostChannels);
            for (std::int32_t& size : sizes)
                size = reader_.i32();
        }
        header.form = mode - 1;
        header.dataSize = sizes[0];
        header.alphaSize = sizes[3];
        return header;
    }

    FrameHeader LoadHeaderNew() {
        FrameHeader header;
        header.size.width = reader_.i16();
        header.size.height = reader_.i16();
        header.position.x = reader_.i16();
        header.position.y = reader_.i16();
        header.form = reader_.i16();
        header.dataSize = reader_.i32();
        header.channelCount = std::clamp<int>(reader_.i16(), 0, kMostChannels);
        std::int32_t sizes[kMostChannels] = {};
        for (std::int32_t& size : sizes)
            size = reader_.i32();
        header.alphaSize = header.channelCount == kMostChannels ? sizes[3] : 0;
        return header;
    }

    FrameHeader LoadHeaderNew2() {
        const FrameHeader header = LoadHeaderNew();
        reader_.skip(kFrameHeaderSize - kShortFrameHeaderSize);
        return header;
    }

    ByteReader reader_;
    CWindow* window_;
    std::string& reason_;
    std::unique_ptr<AnimationData> animation_;
    std::int64_t sequenceLength_ = 0;
};

// The other side of Load3.
class AnimationWriter {
public:
    std::vector<std::uint8_t> Save3(AnimationData& animation, _compression form) {
        put32(0x0050564E);  // "NVP" and a 0
        put16(static_cast<int>(animation.frames.size()));
        put16(animation.bpp);
        put16(static_cast<int>(animation.events.size()));
        fill(13);
        put32(static_cast<std::uint32_t>(animation.fps));
        put32(animation.objectFlags | animation.animationFlags);
        put8(animation.opacity);
        put16(animation.randomFramesNumber);
        fill(10);
        putText(animation.author, 0);
        putText(animation.description, 0);
        for (const _annEventInfo3& event : animation.events)
            putEvent(event);
        for (const auto& frame : animation.frames) {
            prepare(*frame, animation.bpp, form);
            SaveHeaderNew(*frame);
        }
        for (const auto& frame : animation.frames) {
            put(frame->getData().bytes());
            put(frame->getAlpha().bytes());
        }
        return std::move(bytes_);
    }

private:
    // The header tells one format for all frames, but those that were drawn or fitted to the screen may have another.
    static void prepare(CFrame& frame, int bpp, _compression form) {
        frame.bringBackCompressed();
        if (form == kCompressionRle) frame.DeCompress();  // runs of a dictionary coder's stream could not be read
        if (frame.getBpp() != bpp) {
            const _compression old = frame.getCompression();
            frame.decode();
            Plane data = frame.getData(), alpha = frame.getAlpha();
            // Planes that can't be had in that format would be taken for damage.
            if (!data || !__convert_bpp(data, alpha, frame.Size(), frame.getBpp(), bpp)) data = alpha = Plane();
            frame.setPlanes(frame.Size(), bpp, std::move(data), std::move(alpha));
            if (old == kCompressionRle) form = old;
        }
        // A format that nothing converts leaves a frame, once drawn, with less than it tells.
        const CXSize size = frame.Size();
        const auto whole = static_cast<std::size_t>(__get_data_size(size.width, size.height, bpp));
        if (frame.getCompression() == kCompressionRaw && frame.getData().size() < whole)
            frame.setPlanes(size, bpp, {}, {});
        frame.Compress(form);
    }

    void putEvent(const _annEventInfo3& event) {
        std::string name(event.name.view());
        name.resize(kEventNameSize - 1);
        putChars(name);
        put8(0);
        put16(static_cast<int>(event.frames.size()));
        put32(0);
        put16(event.loopStart);
        put16(event.loopEnd);
        put16(event.loopCount);
        put16(event.loopCounter);
        put32(static_cast<std::uint32_t>(event.fps));
        put32(event.flags);
        put8(event.opacity);
        for (std::size_t i = 0; i < event.reserved.size(); ++i) {
            const bool ofPointer = i >= 4 && i < 8;
            put8(ofPointer ? 0 : event.reserved[i]);
        }
        for (const std::uint16_t frame : event.frames)
            put16(frame);
        static const _anmFrameInfo3 kPlain;
        for (std::size_t i = 0; i < event.frames.size(); ++i)
            putFrameRecord(i < event.infos.size() ? event.infos[i] : kPlain);
    }

    void putFrameRecord(const _anmFrameInfo3& info) {
        put32(info.name ? 1 : 0);
        put32(info.text ? 1 : 0);
        put16(info.offset.x);
        put16(info.offset.y);
        put32(static_cast<std::uint32_t>(info.reserved12));
        put32(info.sound ? 1 : 0);
        put32(static_cast<std::uint32_t>(info.reserved20));
        put8(info.opacity);
        put8(info.reserved25);
        put32(0);
        for (const std::optional<CXString>* text : {&info.name, &info.text, &info.sound}) {
            if (*text) putText(**text, 1);
        }
    }

    void SaveHeaderNew(const CFrame& frame) {
        const CXSize size = frame.Size();
        const CXPoint position = frame.GetFramePosition();
        const bool hasAlpha = static_cast<bool>(frame.getAlpha());
        put16(size.width);
        put16(size.height);
        put16(position.x);
        put16(position.y);
        put16(frame.getCompression());
        put32(static_cast<std::uint32_t>(frame.getData().size()));
        put16(hasAlpha ? kMostChannels : frame.channelCount);
        fill(12);
        put32(static_cast<std::uint32_t>(frame.getAlpha().size()));
        fill(kFrameHeaderSize - kShortFrameHeaderSize);
    }

    void putText(const CXString& text, std::uint32_t terminators) {
        put32(static_cast<std::uint32_t>(text.view().size()) + terminators);
        putChars(text.view());
        fill(terminators);
    }

    void put8(unsigned value) { bytes_.push_back(static_cast<std::uint8_t>(value)); }
    void put16(int value) {
        put8(static_cast<unsigned>(value) & 0xFF);
        put8(static_cast<unsigned>(value) >> 8 & 0xFF);
    }
    void put32(std::uint32_t value) {
        for (int shift = 0; shift < 32; shift += 8)
            put8(value >> shift & 0xFF);
    }
    void putChars(std::string_view chars) { bytes_.insert(bytes_.end(), chars.begin(), chars.end()); }
    void put(std::span<const std::uint8_t> plane) { bytes_.insert(bytes_.end(), plane.begin(), plane.end()); }
    void fill(std::int64_t count) { bytes_.resize(bytes_.size() + static_cast<std::size_t>(count)); }

    std::vector<std::uint8_t> bytes_;
};

}  // namespace

AnimationData::AnimationData() : sounds(std::make_shared<Sounds>()) {}
AnimationData::~AnimationData() = default;

std::shared_ptr<AnimationData> AnimationData::copy() const {
    auto result = std::make_shared<AnimationData>();
    result->form = form;
    result->bpp = bpp;
    result->fps = fps;
    result->objectFlags = objectFlags;
    result->animationFlags = animationFlags;
    result->opacity = opacity;
    result->randomFramesNumber = randomFramesNumber;
    result->author = author;
    result->description = description;
    result->compression = compression;
    result->events = events;
    for (const auto& frame : frames)
        result->frames.push_back(std::make_unique<CFrame>(*frame));
    result->sounds = sounds;
    return result;
}

void AnimationData::makeDefaultEvents() {
    constexpr int kCount = 3;
    events.clear();
    for (int i = 0; i < kCount; ++i) {
        _annEventInfo3 event;
        event.name = "standard";
        event.fps = kDefaultRate;
        event.frames.resize(frames.size());
        std::iota(event.frames.begin(), event.frames.end(), std::uint16_t{0});
        if (i == kCount - 1) std::reverse(event.frames.begin(), event.frames.end());
        events.push_back(std::move(event));
    }
}

std::unique_ptr<AnimationData> readAnimation(CWindow* window, std::span<const std::byte> bytes, std::string& reason) {
    return AnimationReader(window, bytes, reason).read();
}

std::vector<std::uint8_t> writeAnimation(AnimationData& animation, _compression form) {
    return AnimationWriter().Save3(animation, form);
}
