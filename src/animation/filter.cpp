// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/filter.h"

#include <utility>

#include "animation/animo.h"

CFilterEntry::CFilterEntry(CGraphicsObject* object, CMC_Object* scriptObject)
    : object_(object),
      animation_(dynamic_cast<CAnimo*>(object)),
      scriptObject_(scriptObject),
      hasScriptObject_(scriptObject != nullptr) {}

CXString CFilterEntry::getScriptName() const { return scriptObject_ ? scriptObject_->getName() : CXString(); }

void CFilterEntry::forget() {
    object_ = nullptr;
    animation_ = nullptr;
    active = false;
}

CFilterBase::CFilterBase(CWindow* window, std::unique_ptr<CFilterProperties> properties)
    : window_(window), properties_(std::move(properties)) {}

CFilterBase::~CFilterBase() { CFilterBase::release(); }

void CFilterBase::release() {
    isReleased_ = true;
    forEachEntry([this](CFilterEntry& entry) { drop(&entry); });
}

void CFilterBase::link(CGraphicsObject* object, CMC_Object* scriptObject) {
    if (!isReleased_ && object && !find(object)) add(createEntry(object, scriptObject));
}

void CFilterBase::add(std::unique_ptr<CFilterEntry> entry) {
    entry->getObject()->addInvalidateObserver(this);
    entries_.push_back(std::move(entry));
}

void CFilterBase::unlink(CGraphicsObject* object) { remove(find(object)); }

void CFilterBase::remove(CFilterEntry* entry) {
    if (entry) drop(entry);
}

CFilterEntry* CFilterBase::find(const CGraphicsObject* object) const {
    if (!object) return nullptr;
    for (const auto& entry : entries_) {
        if (entry->getObject() == object) return entry.get();
    }
    return nullptr;
}

std::unique_ptr<CFilterEntry> CFilterBase::createEntry(CGraphicsObject* object, CMC_Object* scriptObject) {
    return std::make_unique<CFilterEntry>(object, scriptObject);
}

void CFilterBase::onDestroy(CGraphicsObject* object) {
    if (CFilterEntry* entry = find(object)) {
        entry->forget();
        sweep();
    }
}

void CFilterBase::drop(CFilterEntry* entry) {
    if (CGraphicsObject* object = entry->getObject()) object->removeInvalidateObserver(this);
    entry->forget();
    sweep();
}

void CFilterBase::sweep() {
    if (walks_ == 0) std::erase_if(entries_, [](const auto& entry) { return entry->getObject() == nullptr; });
}

bool prepareForFilter(CGraphicsObject& picture, int bpp) {
    picture.DeCompress();
    picture.DeCompressRLE2();
    if (picture.getCompression() != kCompressionRaw) return false;
    // Without the coded planes, which would come back in place of what the filter makes.
    picture.setPlanes(picture.Size(), picture.getBpp(), picture.getData(), picture.getAlpha());
    picture.Convert(bpp);
    const CXSize size = picture.Size();
    if (picture.GetPixelSize() != 2 || size.width <= 0 || size.height <= 0) return false;
    const std::size_t area = static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
    const Plane& alpha = picture.getAlpha();
    return picture.getData().pixels().size() >= area && (!alpha || alpha.size() >= area);
}
