// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "text/font_object.h"

#include <array>

#include "definition/element.h"
#include "foundation/string_tokenizer.h"
#include "script/method_table.h"
#include "storage/archive.h"
#include "structure/scene.h"
#include "text/font_collection.h"

namespace {

constexpr std::array<std::string_view, 3> kSignals = {"ONINIT", "ONDONE", "ONSIGNAL"};
constexpr std::string_view kDefinition = "DEF_";

constexpr MethodRow kMethods[] = {
    {1, "SETCOLOR",  bind<&CMC_Font::setColor> },
    {2, "SETSTYLE",  bind<&CMC_Font::setStyle> },
    {3, "SETFAMILY", bind<&CMC_Font::setFamily>},
    {4, "SETSIZE",   bind<&CMC_Font::setSize>  },
};
static_assert(isMethodTable(kMethods));

}  // namespace

CMC_Font::CMC_Font(CMC_Scene* scene, CMElement* element)
    : CMC_Object(scene, element, kType),
      window_(scene->getWindow()),
      collection_(std::make_unique<CFontCollection>(window_)) {
    const CMProperties* properties = element->getProperties();
    for (int i = 0; i < properties->size(); ++i) {
        const CMProperty* property = properties->getAt(i);
        if (!property->getName().view().starts_with(kDefinition)) continue;
        CStringTokenizer words(property->getName(), "_");
        words.nextToken();
        const CXString family = words.nextToken(), style = words.nextToken(), size = words.nextToken();
        add(std::make_unique<CSimpleFont6>(window_, property->getValue()), family, style, CXString::toNumber(size));
    }
    initializeBehaviours(scene, element);
}

CMC_Font::~CMC_Font() = default;

void CMC_Font::add(std::unique_ptr<CSimpleFont6> font, const CXString& family, const CXString& style, int size) {
    font->setFamily(family);
    font->setStyle(style);
    font->setSize(size);
    collection_->addFont(font.get());
    fonts_.push_back(std::move(font));
}

void CMC_Font::serialize(CXArchive* archive) {
    CMC_Object::serialize(archive);
    if (archive->isStoring()) {
        *archive << static_cast<int>(fonts_.size());
        for (const auto& font : fonts_)
            *archive << font->getFamily() << font->getStyle() << font->getSize();
        return;
    }
    collection_ = std::make_unique<CFontCollection>(window_);
    fonts_.clear();
    int count = 0;
    *archive >> count;
    for (int i = 0; i < count; ++i) {
        CXString family, style;
        int size = 0;
        *archive >> family >> style >> size;
        if (!archive->ok()) break;
        add(std::make_unique<CSimpleFont6>(window_), family, style, size);
    }
}

std::span<const std::string_view> CMC_Font::getBehavioursList() const { return kSignals; }

void CMC_Font::setColor(int colour) { collection_->setColor(colour); }
void CMC_Font::setStyle(const CXString& style) { collection_->setStyle(style); }
void CMC_Font::setFamily(const CXString& family) { collection_->setFamily(family); }
void CMC_Font::setSize(int size) { collection_->setSize(size); }

void CMC_Font_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
