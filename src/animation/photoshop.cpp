// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/photoshop.h"

#include <algorithm>
#include <cstdlib>

#include "animation/foreign_picture.h"
#include "foundation/byte_reader.h"
#include "storage/file.h"
#include "storage/rle_compression.h"

namespace {

constexpr int kMostStored = 1 << 29;          // of a file
constexpr std::int64_t kMostBytes = 1 << 28;  // of all layers of a file, with four planes each
constexpr int kFileHeader = 26;
constexpr int kMaskData = 20;
constexpr std::string_view kFurtherBlock = "8BIM";

enum Coding { kRaw = 0, kRuns = 1 };

// One reading of a file; the first thing that is wrong ends it.
class LayerReader {
public:
    LayerReader(CWindow* window, std::span<const std::byte> bytes, std::string& reason)
        : window_(window), bytes_(bytes), reader_(bytes), reason_(reason) {}

    std::optional<std::vector<CPSD::Layer>> read() {
        reader_.skip(kFileHeader);
        const std::int32_t colourModeBytes = long32();
        if (reader_.ok() && colourModeBytes != 0) return fail("colour mode data isn't read"), std::nullopt;
        reader_.skip(long32());  // resources
        const std::int32_t sectionBytes = long32();
        if (!reader_.ok()) return fail("the file is cut off"), std::nullopt;
        if (sectionBytes != 0 && !readLayers()) return std::nullopt;
        return std::move(layers_);
    }

private:
    bool fail(const char* what) {
        reason_ = "byte " + std::to_string(reader_.position()) + ": " + what;
        return false;
    }

    std::int16_t short16() { return CXObject::swap_word(reader_.i16()); }
    std::int32_t long32() { return CXObject::swap_dword(reader_.i32()); }

    bool readLayers() {
        const std::int32_t infoBytes = long32();
        if (infoBytes == 0) return reader_.ok() || fail("the file is cut off");
        const int count = std::abs(static_cast<int>(short16()));
        // Each takes bytes of the file, so a count that lies ends with those.
        for (int i = 0; i < count; ++i) {
            if (!readRecord()) return false;
        }
        if (!reader_.ok()) return fail("the layers are cut off");
        return std::all_of(layers_.begin(), layers_.end(), [this](CPSD::Layer& layer) { return readPicture(layer); });
    }

    bool readRecord() {
        CPSD::Layer layer;
        layer.top = long32();
        layer.left = long32();
        layer.bottom = long32();
        layer.right = long32();
        const int channels = short16();
        if (!reader_.ok()) return fail("the layers are cut off");
        if (!checkPlace(layer)) return false;
        if (channels < 0) return fail("a negative number of channels");
        if (!layers_.empty() && static_cast<std::size_t>(channels) != layers_.front().channels.size())
            return fail("layers with different numbers of channels aren't read");
        for (int i = 0; i < channels && reader_.ok(); ++i) {
            CPSD::Channel& channel = layer.channels.emplace_back();
            channel.id = short16();
            channel.length = long32();
        }
        constexpr int kBlending = 12;  // signature, key, opacity, clipping, flags, filler
        reader_.skip(kBlending);
        const std::int64_t extraBytes = long32();
        const std::int64_t extraEnd = static_cast<std::int64_t>(reader_.position()) + extraBytes;
        if (long32() > 0) reader_.skip(kMaskData);
        reader_.skip(long32());  // blending ranges
        readName(layer, extraEnd);
        skipFurtherBlocks();
        if (!reader_.ok()) return fail("a layer is cut off");
        layers_.push_back(std::move(layer));
        return true;
    }

    // Only sizes that can be held: a few bytes may speak of a layer of any size.
    bool checkPlace(const CPSD::Layer& layer) {
        constexpr std::int64_t kPlanes = 4;
        const std::int64_t width = static_cast<std::int64_t>(layer.right) - layer.left;
        const std::int64_t height = static_cast<std::int64_t>(layer.bottom) - layer.top;
        if (width < 0 || height < 0) return fail("a layer turned inside out");
        if (width > kMostBytes || height > kMostBytes) return fail("a layer that is too large");
        bytesOfLayers_ += width * height * kPlanes;
        return bytesOfLayers_ <= kMostBytes || fail("layers that are too large");
    }

    // The name and its length byte fill a multiple of four bytes. Some writers end a missing name at its length byte.
    void readName(CPSD::Layer& layer, std::int64_t extraEnd) {
        constexpr int kUnit = 4, kPadding = 3;
        const int length = reader_.u8();
        if (length == 0) {
            const std::size_t behind = reader_.position() + kPadding;
            if (static_cast<std::int64_t>(behind) == extraEnd || isFurtherBlockAt(behind)) reader_.skip(kPadding);
            return;
        }
        const std::string_view name = reader_.text(length);
        layer.name = name.substr(0, name.find('\0'));
        reader_.skip((kUnit - (1 + length) % kUnit) % kUnit);
    }

    bool isFurtherBlockAt(std::size_t position) const {
        if (position > bytes_.size()) return false;
        const std::span<const std::byte> rest = bytes_.subspan(position);
        return std::string_view(reinterpret_cast<const char*>(rest.data()), rest.size()).starts_with(kFurtherBlock);
    }

    void skipFurtherBlocks() {
        while (reader_.ok() && isFurtherBlockAt(reader_.position())) {
            constexpr int kSignatureAndKey = 8;
            reader_.skip(kSignatureAndKey);
            reader_.skip(long32());
        }
    }

    bool readPicture(CPSD::Layer& layer) {
        const CXSize size(layer.right - layer.left, layer.bottom - layer.top);
        const bool isEmpty = size.width == 0 || size.height == 0;
        layer.picture = std::make_unique<CGraphicsObject>(window_, size, 24, Plane());
        layer.picture->setFileName(layer.name);
        layer.picture->SetPosition(layer.left, layer.top);
        for (const CPSD::Channel& channel : layer.channels) {
            if (!readChannel(channel, size, isEmpty, *layer.picture)) return false;
        }
        if (!isEmpty) layer.picture->JoinChannels();
        return true;
    }

    bool readChannel(const CPSD::Channel& channel, const CXSize& size, bool isEmpty, CGraphicsObject& picture) {
        constexpr int kCodingBytes = 2;
        const int coding = short16();
        const bool isKept = channel.id >= kChannelAlpha && channel.id <= kChannelBlue;
        if (isEmpty || !isKept || (coding != kRaw && coding != kRuns)) {
            // A mask is of another size than its layer: only the length in the file leads behind it.
            if (channel.length > kCodingBytes) reader_.skip(channel.length - kCodingBytes);
            return reader_.ok() || fail("a channel is cut off");
        }
        std::optional<Bytes> plane = coding == kRaw ? readRaw(size) : readRuns(size);
        if (!reader_.ok()) return fail("a channel is cut off");
        if (!plane) return fail("a channel doesn't decode");
        picture.setChannel(static_cast<_channel>(channel.id), Plane(std::move(*plane)));
        return true;
    }

    std::optional<Bytes> readRaw(const CXSize& size) {
        const std::span<const std::byte> data = reader_.bytes(static_cast<std::int64_t>(size.width) * size.height);
        const auto* first = reinterpret_cast<const std::uint8_t*>(data.data());
        return Bytes(first, first + data.size());
    }

    std::optional<Bytes> readRuns(const CXSize& size) {
        ByteReader table(reader_.bytes(static_cast<std::int64_t>(size.height) * 2));
        if (!reader_.ok()) return std::nullopt;
        std::vector<std::int16_t> rowLengths(static_cast<std::size_t>(size.height));
        std::int64_t total = 0;
        for (std::int16_t& length : rowLengths) {
            length = CXObject::swap_word(table.i16());
            total += length;
        }
        const std::span<const std::byte> data = reader_.bytes(total);
        return CRLECompression2(size.width, size.height, std::move(rowLengths),
                                {reinterpret_cast<const std::uint8_t*>(data.data()), data.size()})
            .Decompress();
    }

    CWindow* window_;
    std::span<const std::byte> bytes_;
    ByteReader reader_;
    std::string& reason_;
    std::vector<CPSD::Layer> layers_;
    std::int64_t bytesOfLayers_ = 0;
};

}  // namespace

std::optional<std::vector<CPSD::Layer>> CPSD::parse(CWindow* window, std::span<const std::byte> bytes,
                                                    std::string& reason) {
    return LayerReader(window, bytes, reason).read();
}

CPSD::CPSD(CWindow* window) : CGraphicsObject(window) {}
CPSD::CPSD(CWindow* window, const CXString& name) : CPSD(window) { CPSD::Load(name); }
CPSD::CPSD(CWindow* window, const CGraphicsObject* planes) : CGraphicsObject(window, *planes) {}

CPSD::CPSD(CPSD& other) : CPSD(other.getWindow(), static_cast<const CGraphicsObject*>(&other)) {
    for (const Layer& layer : other.layers_) {
        Layer& copy = layers_.emplace_back();
        const CXRect& place = layer;
        static_cast<CXRect&>(copy) = place;
        copy.channels = layer.channels;
        copy.name = layer.name;
        copy.picture = std::make_unique<CGraphicsObject>(window_, *layer.picture);
    }
    selected_ = other.selected_;
}

CPSD::~CPSD() = default;

int CPSD::Load(const CXString& name) { return loadForeign(*this, name); }

int CPSD::Load(CFile* file) {
    Flush();
    std::string reason;
    std::optional<std::vector<Layer>> layers = parse(window_, file->readRest(kMostStored), reason);
    if (!layers) {
        tellForeign(*file, reason);
        return 0;
    }
    layers_ = std::move(*layers);
    SelectLayer(0);
    return 0;
}

void CPSD::Flush() {
    CGraphicsObject::Flush();
    selected_ = -1;
    layers_.clear();
}

const CPSD::Layer* CPSD::layerAt(int layer) const {
    return layer >= 0 && layer < GetLayerNo() ? &layers_[static_cast<std::size_t>(layer)] : nullptr;
}

CGraphicsObject* CPSD::GetCurrentLayer() const {
    const Layer* layer = layerAt(selected_);
    return layer ? layer->picture.get() : nullptr;
}

void CPSD::SelectLayer(int layer) {
    if (layerAt(layer)) selected_ = layer;
}

void CPSD::SelectLayer(const CXString& name) {
    const auto found = std::find_if(layers_.begin(), layers_.end(),
                                    [&](const Layer& layer) { return layer.name.view() == name.view(); });
    if (found != layers_.end()) selected_ = static_cast<int>(found - layers_.begin());
}

CXString CPSD::GetLayerName(int layer) const {
    const Layer* found = layerAt(layer == -1 ? selected_ : layer);
    return found ? found->name : CXString();
}

CXRect CPSD::GetLayerRect(int) const {
    const Layer* layer = layerAt(selected_);
    return layer ? static_cast<const CXRect&>(*layer) : CXRect();
}

void CPSD::SetPosition(const CXPoint& p) {
    CGraphicsObject::SetPosition(p);
    if (!layerAt(selected_)) return;
    Layer& layer = layers_[static_cast<std::size_t>(selected_)];
    layer.picture->SetPosition(p);
    CXPoint by = p - layer.LeftTop();
    if (p.x < 0) by.x = 0;
    if (p.y < 0) by.y = 0;
    layer += by;
}
