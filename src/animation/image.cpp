// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/image.h"

#include <algorithm>
#include <vector>

#include "definition/element.h"
#include "foundation/byte_reader.h"
#include "frame/error.h"
#include "frame/window.h"
#include "graphics/pixel_format.h"
#include "platform/platform.h"
#include "storage/big_file.h"
#include "storage/file.h"
#include "storage/lzo_compression.h"
#include "storage/lzw_compression.h"

namespace {

constexpr std::size_t kMagicArea = 40;  // bytes that are looked at as a text ended by 0
constexpr int kMostBytes = 1 << 28;     // of a plane
constexpr int kMostStored = 1 << 29;    // of a file: no picture is larger than its two planes and a header

Plane planeOf(std::span<const std::byte> bytes) {
    const auto* first = reinterpret_cast<const std::uint8_t*>(bytes.data());
    return Plane(std::vector<std::uint8_t>(first, first + bytes.size()));
}

std::span<const std::uint8_t> octets(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
}

// One reading of a file; the first thing that is wrong ends it.
class ImageReader {
public:
    ImageReader(std::span<const std::byte> bytes, std::string& reason)
        : bytes_(bytes), reader_(bytes), reason_(reason) {}

    std::optional<CImage::Stored> read() {
        const std::string_view start(reinterpret_cast<const char*>(bytes_.data()), std::min(bytes_.size(), kMagicArea));
        bool good = false;
        if (start.starts_with(std::string_view("NVI\0", 4))) {
            good = readThird();
        } else if (start.starts_with(std::string_view("MVL\0", 4))) {
            good = readSecond();
        } else {
            good = readFirst();
        }
        if (!good) return std::nullopt;
        return std::move(image_);
    }

    std::optional<CImage::Stored> readThirdAlone() {
        const std::string_view start(reinterpret_cast<const char*>(bytes_.data()), std::min(bytes_.size(), kMagicArea));
        if (!start.starts_with(std::string_view("NVI\0", 4))) return fail("no picture of this form"), std::nullopt;
        if (!readThird()) return std::nullopt;
        return std::move(image_);
    }

private:
    bool fail(const char* what) {
        reason_ = "byte " + std::to_string(reader_.position()) + ": " + what;
        return false;
    }

    // Whether a picture of that size and format could be held; 0 by 0 can't, nor can one of an unknown format.
    bool checkSize() {
        if (!reader_.ok()) return fail("the header is cut off");
        rawSize_ = __get_data_size(image_.size.width, image_.size.height, image_.bpp);
        if (image_.size.width <= 0 || image_.size.height <= 0) return fail("a size that isn't positive");
        if (__get_pixel_size(image_.bpp) == 0) return fail("an unknown format of pixels");
        if (rawSize_ <= 0 || rawSize_ > kMostBytes) return fail("a size that is too large");
        rawAlphaSize_ = __get_data_size(image_.size.width, image_.size.height, 8);
        return true;
    }

    // A dictionary stream must give the whole plane, a raw plane must be there whole.
    bool takeRaw(std::span<const std::byte> data, std::span<const std::byte> alpha, bool hasAlpha) {
        if (data.size() < static_cast<std::size_t>(rawSize_)) return fail("the pixels are cut off");
        if (hasAlpha && alpha.size() < static_cast<std::size_t>(rawAlphaSize_))
            return fail("the alpha plane is cut off");
        image_.data = planeOf(data.first(static_cast<std::size_t>(rawSize_)));
        if (hasAlpha) image_.alpha = planeOf(alpha.first(static_cast<std::size_t>(rawAlphaSize_)));
        return true;
    }

    template <class Decoder>
    bool takeCoded(std::span<const std::byte> data, std::span<const std::byte> alpha, bool hasAlpha) {
        const auto decode = [](std::span<const std::byte> stream, int size, Plane& plane) {
            const auto bytes = static_cast<std::size_t>(size);
            std::optional<Bytes> decoded = Decoder(octets(stream)).decompress(bytes);
            if (!decoded || decoded->size() != bytes) return false;
            plane = Plane(std::move(*decoded));
            return true;
        };
        if (!decode(data, rawSize_, image_.data)) return fail("the pixels don't decode");
        if (hasAlpha && !decode(alpha, rawAlphaSize_, image_.alpha)) return fail("the alpha plane doesn't decode");
        return true;
    }

    // The form that is written: pixels fill what the header and the alpha plane leave of the stream.
    bool readSecond() {
        image_.form = "MVL";
        reader_.skip(4);
        image_.size.width = reader_.i32();
        image_.size.height = reader_.i32();
        image_.bpp = formatOf(reader_.i32());
        reader_.skip(12);  // what the stream's length tells better, and what nobody reads
        const std::int32_t alphaSize = reader_.i32();
        image_.position.x = reader_.i32();
        image_.position.y = reader_.i32();
        return checkSize() && readRest(alphaSize);
    }

    bool readRest(std::int32_t alphaSize) {
        const bool hasAlpha = alphaSize > 0;
        if (alphaSize < 0 || static_cast<std::size_t>(alphaSize) > reader_.left())
            return fail("an alpha plane larger than the file");
        const std::span<const std::byte> data = reader_.bytes(static_cast<std::int64_t>(reader_.left()) - alphaSize);
        const std::span<const std::byte> alpha = reader_.bytes(alphaSize);
        if (data.size() == static_cast<std::size_t>(rawSize_)) return takeRaw(data, alpha, hasAlpha);
        return takeCoded<CLZWCompression2>(data, alpha, hasAlpha);
    }

    // The oldest form. Its pixels fill what its own headers and the alpha plane leave: nobody writes it, and counting
    // the header of another form would take the last pixels for alpha.
    bool readFirst() {
        image_.form = "without a magic";
        reader_.skip(80);
        image_.size.width = reader_.i16();
        image_.size.height = reader_.i16();
        reader_.skip(6);
        const unsigned flags = reader_.u16();
        constexpr unsigned kFormat = 0x0F, kHasAlpha = 1U << 10;
        image_.bpp = formatOf(static_cast<int>(flags & kFormat));
        return checkSize() && readRest((flags & kHasAlpha) != 0 ? rawAlphaSize_ : 0);
    }

    // Packed, with all lengths in the header, so that it may stand among other things.
    bool readThird() {
        image_.form = "NVI";
        reader_.skip(4);
        image_.size.width = reader_.i16();
        image_.size.height = reader_.i16();
        image_.bpp = reader_.u8();
        const std::int32_t dataSize = reader_.i32(), alphaSize = reader_.i32();
        image_.position.x = reader_.i16();
        image_.position.y = reader_.i16();
        const std::int32_t compression = reader_.i32();
        reader_.skip(12);
        if (!checkSize()) return false;
        const std::span<const std::byte> data = reader_.bytes(dataSize);
        const std::span<const std::byte> alpha = reader_.bytes(std::max(alphaSize, 0));
        if (!reader_.ok()) return fail("planes larger than the file");
        const bool hasAlpha = alphaSize > 0;
        switch (compression) {
            case kCompressionRaw:
                return takeRaw(data, alpha, hasAlpha);
            case kCompressionDictionary:
                return takeCoded<CLZWCompression>(data, alpha, hasAlpha);
            case kCompressionDictionaryRle:
            case kCompressionRle:
                // They stay coded until they are drawn.
                image_.compression = static_cast<_compression>(compression);
                image_.data = planeOf(data);
                if (hasAlpha) image_.alpha = planeOf(alpha);
                return true;
            default:
                return fail("an unknown form of planes");
        }
    }

    // In the older forms a flag may stand for the format.
    static int formatOf(int stored) { return stored == 2 || stored == 4 || stored == 8 ? GetRealBpp(stored) : stored; }

    std::span<const std::byte> bytes_;
    ByteReader reader_;
    std::string& reason_;
    CImage::Stored image_;
    int rawSize_ = 0;
    int rawAlphaSize_ = 0;
};

}  // namespace

std::optional<CImage::Stored> CImage::parse(std::span<const std::byte> bytes, std::string& reason) {
    return ImageReader(bytes, reason).read();
}

CImage::CImage(CWindow* window) : CGraphicsObject(window), CPlayable(window) {}

CImage::CImage(CWindow* window, const CXString& name) : CImage(window) { CImage::Load(name, true); }

CImage::CImage(CWindow* window, const CGraphicsObject* planes) : CGraphicsObject(window, *planes), CPlayable(window) {}

CImage::CImage(CImage& other) : CImage(other.getWindow(), static_cast<const CGraphicsObject*>(&other)) {
    setFilename(other.CFileResolver::getFileName());
    setLoaded(other.isLoaded());
}

CImage::CImage(CWindow* window, const CMElement* element) : CImage(window) {
    toRelease(element->getPropertyBoolValue("RELEASEAFTERUSE"));
    const CXString name = element->getPropertyValue("FILENAME");
    if (!name.IsString()) return;
    setFilename(name);
    const bool isAbsent = !element->getPropertyValue("PRELOAD").IsString();
    if (isAbsent || element->getPropertyBoolValue("PRELOAD")) CImage::Load(name, true);
    if (element->getPropertyBoolValue("VISIBLE")) {
        CImage::show();
    } else {
        CImage::hide();
    }
}

int CImage::Load(const CXString& name, bool convert) {
    Invalidate();
    flush();
    CFile file;
    int error = file.Open(window_, name, CFile::kReadBinary);
    if (error == 0) {
        error = Load(&file);
        if (const int closing = file.Close(); error == 0) error = closing;
        if (error == 0) {
            Visible(true);
            setName(name);
            setLoaded(true);
        }
    } else if (CBigFile* archive = window_ ? window_->Resource() : nullptr) {
        if (archive->Seek(name) != -1 && archive->GetFile()) {
            error = Load(archive->GetFile());
            setLoaded(error == 0);
        }
    }
    setErrorCode(error);
    if (error == 0) {
        Invalidate();
        CGraphicsObject::setFileName(name);
        if (convert) CGraphicsObject::Load(name);
    } else if (window_) {
        CFileResolver::log("CImage -> ", true);
        window_->QuitOnError(this, name);
    }
    return error;
}

int CImage::Load(CFile* file) { return readFrom(file, false); }
int CImage::Load3(CFile* file) { return readFrom(file, true); }

int CImage::readFrom(CFile* file, bool onlyThirdForm) {
    const std::vector<std::byte> bytes = file->readRest(kMostStored);
    std::string reason;
    ImageReader reader(bytes, reason);
    std::optional<Stored> stored = onlyThirdForm ? reader.readThirdAlone() : reader.read();
    if (!stored) {
        setPlanes({}, 0, {}, {});
        const std::string name(file->getName().view());
        platform::current().shell.debugOutput("image " + name + ": " + reason);
        return 0;
    }
    setPlanes(stored->size, stored->bpp, std::move(stored->data), std::move(stored->alpha), stored->compression);
    position_ = stored->position;
    return 0;
}

void CImage::flush() {
    Flush();
    setLoaded(false);
}

CXObject* CImage::clone() { return new CImage(*this); }

void CImage::play() {
    show();
    status_ = 1;
    notify(1);
}

void CImage::stop(bool tell) {
    status_ = 0;
    if (tell) notify(3);
}

void CImage::show() {
    const CXString name = CFileResolver::getFileName();
    if (!isLoaded() && name.IsString()) Load(name, true);
    Visible(true);
}

void CImage::hide() {
    if (releaseAfterUse()) flush();
    Visible(false);
}
