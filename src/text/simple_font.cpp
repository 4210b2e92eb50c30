// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "text/simple_font.h"

#include <algorithm>

#include "animation/animo.h"
#include "definition/element.h"
#include "foundation/byte_reader.h"
#include "platform/platform.h"
#include "storage/file.h"

namespace {

constexpr int kThinBlank = 1;
constexpr char kWidthOfBlank = 'l';  // a blank is as wide as this letter
constexpr int kMostStored = 1 << 29;
constexpr int kDamaged = -1;

}  // namespace

FontLink::FontLink(CSimpleFont6* font) {
    if (!font) return;
    if (!font->self_) font->self_ = std::make_shared<CSimpleFont6*>(font);
    slot_ = font->self_;
}

CSimpleFont6::CSimpleFont6(CWindow* window, const CXString& file) : CGraphicsObject(window) {
    CSimpleFont6::Load(file);
}

CSimpleFont6::CSimpleFont6(CWindow* window, CMElement* element) : CGraphicsObject(window) {
    const CXString file = element->getPropertyValue("FILENAME");
    if (file.IsString()) CSimpleFont6::Load(file);
    family_ = element->getPropertyValue("FAMILY");
    style_ = element->getPropertyValue("STYLE");
    fontSize_ = element->getPropertyIntValue("SIZE");
}

CSimpleFont6::~CSimpleFont6() {
    if (self_) *self_ = nullptr;
}

void CSimpleFont6::flush() {
    Flush();
    size_ = {};
    tables_ = {};
    places_ = {};
    painted_ = wanted_ = kNone;
}

int CSimpleFont6::Load(const CXString& name) {
    CSimpleFont6::flush();
    CFile file;
    if (file.Open(window_, name, CFile::kReadBinary) == 0) setErrorCode(CSimpleFont6::Load(&file));
    setFileName(name);
    return CGraphicsObject::Load(name);
}

int CSimpleFont6::Load(CFile* file) {
    std::string reason;
    std::optional<FontTables> read = readFont(file->readRest(kMostStored), reason);
    CSimpleFont6::flush();
    if (!read) {
        platform::current().shell.debugOutput("font " + std::string(file->getName().view()) + ": " + reason);
        return kDamaged;
    }
    setPlanes(read->size, read->bpp, std::exchange(read->pixels, {}), std::exchange(read->alpha, {}));
    tables_ = std::move(*read);
    // Of a letter that is there twice the first counts.
    for (int i = tables_.count(); i > 0; --i)
        places_[static_cast<unsigned char>(tables_.letters[static_cast<std::size_t>(i - 1)])] = i;
    return 0;
}

int CSimpleFont6::getKerning(int previous, int current) const {
    const int count = tables_.count();
    if (previous < 0 || current < 0 || previous >= count || current >= count) return 0;
    return tables_.kerning[static_cast<std::size_t>(previous) * static_cast<std::size_t>(count) +
                           static_cast<std::size_t>(current)];
}

int CSimpleFont6::kerningBefore(char previous, int current) const {
    return previous == 0 ? 0 : getKerning(findLetter(previous), current);
}

int CSimpleFont6::realWidth(int i) const {
    const auto at = static_cast<std::size_t>(i);
    return tables_.cellWidth() - tables_.left[at] - tables_.right[at];
}

int CSimpleFont6::getLetterWidth(char previous, char current) {
    if (current == '~') return kThinBlank;
    if (current == ' ') return getRealLetterWidth(kWidthOfBlank);
    const int i = current == 0 ? -1 : findLetter(current);
    return i < 0 ? 0 : realWidth(i) - kerningBefore(previous, i);
}

int CSimpleFont6::getRealLetterWidth(char letter) { return getLetterWidth(0, letter); }

int CSimpleFont6::drawLetter(int x, int y, char previous, char current) {
    const int i = current == 0 || current == ' ' || current == '~' ? -1 : findLetter(current);
    if (i < 0) return getLetterWidth(0, current) + kGap;
    const int width = realWidth(i), kern = kerningBefore(previous, i);
    const int start = i * tables_.cellWidth() + tables_.left[static_cast<std::size_t>(i)];
    const CXRect own = clip_;
    CXRect clip(start, 0, start + width, size_.height);
    if (!own.IsEmpty()) {
        const int right = (CXPoint(own.right, 0) + CXPoint(1, 0)).x;
        clip = {std::max(start, own.left), std::max(own.top, 0), std::min(start + width, right),
                std::min(size_.height, own.bottom)};
    }
    // An empty clip would be none at all.
    if (clip.left < clip.right && clip.top < clip.bottom && destiny_) {
        paint();
        placeAt(CXPoint(x, y) - CXPoint(start + kern, 0));
        clip_ = clip;
        const int bpp = bpp_;
        CGraphicsObject::Redraw();
        // What has been brought to the screen's format isn't of the colour's bits any more.
        if (bpp_ != bpp) painted_ = kNone;
        clip_ = own;
    }
    return width - kern + kGap;
}

void CSimpleFont6::SetClippingRect(char letter, CXRect rect) {
    const int i = findLetter(letter);
    if (rect.Width() == 0 || rect.Height() == 0 || i < 0) {
        CGraphicsObject::SetClippingRect(rect);
        return;
    }
    CGraphicsObject::SetClippingRect(rect +
                                     CXPoint(i * tables_.cellWidth() + tables_.left[static_cast<std::size_t>(i)], 0));
}

// The strip is filled when a letter is drawn next: a text ends by the colour 0, which often nothing is drawn in.
void CSimpleFont6::setColor(int colour) {
    const int pixel = colour & 0xFFFF;
    wanted_ = pixel == painted_ ? kNone : pixel;
}

void CSimpleFont6::paint() {
    if (wanted_ == kNone) return;
    std::ranges::fill(data_.pixels(), static_cast<std::uint16_t>(wanted_));
    painted_ = std::exchange(wanted_, kNone);
}

char* CSimpleFont6::GetDataPtr() {
    paint();
    return CGraphicsObject::GetDataPtr();
}

bool CSimpleFont6::create(const CXString& animationFile, const CXString& fontFile) {
    CAnimo animation(window_, animationFile);
    if (!animation.hasFrames()) return false;
    animation.DeCompressRLE();
    const CXSize cell = animation.Size();
    constexpr std::int64_t kMostPixels = 1 << 26;
    if (static_cast<std::int64_t>(cell.width) * cell.height * animation.GetNOE() > kMostPixels) return false;
    std::vector<FontCell> cells;
    for (int i = 0; i < animation.GetNOE(); ++i) {
        animation.SetEventFrame(i, 0);
        CFrame* frame = animation.GetNOFInEvent(i) > 0 ? animation.GetFrame(-1) : nullptr;
        const auto area = static_cast<std::size_t>(cell.width) * static_cast<std::size_t>(cell.height);
        FontCell made{animation.GetEventName(i).GetAt(0), std::vector<std::uint16_t>(area),
                      std::vector<std::uint8_t>(area)};
        if (frame) {
            frame->Convert(16);
            const CXSize size = frame->Size();
            const std::span<std::uint16_t> pixels = frame->getData().pixels();
            for (int y = 0; y < std::min(cell.height, size.height); ++y) {
                for (int x = 0; x < std::min(cell.width, size.width); ++x) {
                    const auto source = indexOf(x, y, size.width);
                    const auto target = indexOf(x, y, cell.width);
                    if (source < pixels.size()) made.pixels[target] = pixels[source];
                    made.alpha[target] =
                        frame->getAlpha() ? frame->getAlpha().at(static_cast<std::int64_t>(source)) : std::uint8_t{255};
                }
            }
        }
        cells.push_back(std::move(made));
    }
    const std::vector<std::uint8_t> bytes = writeFont(compileFont(cells, cell, 16));
    constexpr int kCreate = 0x12;
    CFile file;
    return file.Open(window_, fontFile, kCreate) == 0 && file.Write(bytes.data(), static_cast<int>(bytes.size())) != 0;
}
