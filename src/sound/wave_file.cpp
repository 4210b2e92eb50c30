// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/wave_file.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

#include "foundation/byte_reader.h"
#include "storage/file.h"

namespace {

constexpr std::size_t kChunkHead = 8;  // a tag and a length

struct Chunk {
    std::string_view tag;
    std::uint32_t length = 0;
};

// Walks the chunks of a file, which follow each other without padding.
class ChunkWalk {
public:
    ChunkWalk(CFile& file, int available) : file_(file), left_(available) {}

    bool read(std::span<std::byte> target) {
        const int count = static_cast<int>(target.size());
        if (count > left_ || file_.Read(target.data(), count) != count) return false;
        left_ -= count;
        return true;
    }
    bool skip(std::uint32_t count) {
        if (count > static_cast<std::uint32_t>(left_)) return false;
        left_ -= static_cast<int>(count);
        return file_.Seek(static_cast<int>(count), SEEK_CUR) == 0;
    }
    // The head of the first chunk of that tag from here on; its length.
    std::optional<std::uint32_t> find(std::string_view tag) {
        std::array<std::byte, kChunkHead> head;
        while (read(head)) {
            ByteReader reader(head);
            const std::string_view found = reader.text(4);
            const std::uint32_t length = reader.u32();
            if (found == tag) return length;
            if (!skip(length)) break;
        }
        return std::nullopt;
    }
    int left() const { return left_; }

private:
    CFile& file_;
    int left_;
};

}  // namespace

std::optional<WaveHead> readWaveHead(CFile& file, int available) {
    ChunkWalk walk(file, available);
    std::array<std::byte, 12> riff;
    if (!walk.read(riff)) return std::nullopt;
    ByteReader tags(riff);
    const std::string_view first = tags.text(4);
    tags.u32();
    if (first != "RIFF" || tags.text(4) != "WAVE") return std::nullopt;

    const auto formatLength = walk.find("fmt ");
    std::array<std::byte, 16> record{};
    if (!formatLength) return std::nullopt;
    const std::size_t known = std::min<std::size_t>(*formatLength, record.size());
    if (!walk.read(std::span(record).first(known)) || !walk.skip(*formatLength - static_cast<std::uint32_t>(known)))
        return std::nullopt;
    WaveHead head;
    ByteReader reader(record);
    head.formatTag = reader.u16();
    head.format.channels = reader.u16();
    head.format.frequency = static_cast<int>(std::min<std::uint32_t>(reader.u32(), INT32_MAX));
    reader.skip(6);  // bytes a second and of a sample, which follow from the others
    head.format.bitsPerSample = reader.u16();
    // What isn't PCM has the size of what it adds behind the record.
    if (head.formatTag != WaveHead::kPcm && !walk.skip(2)) return std::nullopt;

    const auto dataLength = walk.find("data");
    if (!dataLength) return std::nullopt;
    head.dataStart = file.Tell();
    head.dataLength = static_cast<int>(std::min(*dataLength, static_cast<std::uint32_t>(walk.left())));
    return head;
}
