// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/static_filter.h"

#include <utility>

#include "animation/animo.h"
#include "frame/window.h"
#include "script/lifetime.h"

namespace {

using Slot = CFilterUndoState::Slot;

std::vector<Slot>& slotsOf(CFilterEntry& entry) { return static_cast<CFilterUndoState&>(*entry.state).slots; }

}  // namespace

CStaticFilter::CStaticFilter(CWindow* window, const StaticEffect& effect)
    : CFilterBase(window, std::make_unique<StaticProperties>(effect.classId)), effect_(effect) {}

CStaticFilter::~CStaticFilter() { CStaticFilter::release(); }

void CStaticFilter::release() {
    forEachEntry([this](CFilterEntry& entry) {
        if (CAnimo* animation = entry.getAnimation()) animation->removeNotifier(this);
    });
    CFilterBase::release();
}

std::unique_ptr<CFilterEntry> CStaticFilter::createEntry(CGraphicsObject* object, CMC_Object* scriptObject) {
    auto entry = CFilterBase::createEntry(object, scriptObject);
    entry->state = std::make_unique<CFilterUndoState>();
    return entry;
}

void CStaticFilter::add(std::unique_ptr<CFilterEntry> made) {
    const ScriptScope scope;
    // Into the list first: an effect that moves the object may have scripts run.
    CFilterEntry& entry = *made;
    CGraphicsObject* object = entry.getObject();
    CAnimo* animation = entry.getAnimation();
    CFilterBase::add(std::move(made));
    if (!animation) {
        slotsOf(entry).resize(1);
        treat(*object, slotsOf(entry).front());
        return;
    }
    if (chosen().currentFrame) {
        treatFrame(entry, animation->Current());
    } else {
        for (int frame = 0; frame < animation->GetNOF(); ++frame)
            treatFrame(entry, frame);
    }
    animation->addNotifier(this);
    animation->Set(animation->Current(), false);
}

bool CStaticFilter::onPlayableTick(CPlayable* playable) {
    if (!chosen().currentFrame) return false;
    forEachEntry([&](CFilterEntry& entry) {
        CAnimo* animation = entry.getAnimation();
        if (animation && static_cast<CPlayable*>(animation) == playable) treatFrame(entry, animation->Current());
    });
    return false;
}

void CStaticFilter::treatFrame(CFilterEntry& entry, int number) {
    CAnimo& animation = *entry.getAnimation();
    if (number < 0 || !animation.GetFrame(number)) return;
    std::vector<Slot>& slots = slotsOf(entry);
    const auto at = static_cast<std::size_t>(number);
    if (at >= slots.size()) slots.resize(static_cast<std::size_t>(animation.GetNOF()));
    if (slots[at].treated) return;
    animation.ownFrames();
    CFrame& frame = *animation.GetFrame(number);
    frame.bringBackCompressed();
    const CXRect clip = frame.GetClippingRect();
    frame.SetClippingRect(animation.GetClippingRect());
    treat(frame, slots[at]);
    frame.SetClippingRect(clip);
}

void CStaticFilter::treat(CGraphicsObject& picture, Slot& slot) {
    slot.treated = true;
    if (chosen().canUndo) prepareUndo(picture, slot);
    if (window_ && prepareForFilter(picture, window_->GetBpp())) effect_.apply(picture, chosen());
}

void CStaticFilter::prepareUndo(const CGraphicsObject& picture, Slot& slot) {
    slot.saved = true;
    slot.size = picture.Size();
    slot.position = picture.GetPosition();
    slot.bpp = picture.getBpp();
    slot.compression = picture.getCompression();
    slot.data = picture.getData();
    slot.alpha = picture.getAlpha();
}

void CStaticFilter::undo(CGraphicsObject& picture, const Slot& slot) const {
    picture.setPlanes(slot.size, slot.bpp, slot.data, slot.alpha, slot.compression);
    if (effect_.reshapes) picture.SetPosition(slot.position + picture.getAnchor());
}

void CStaticFilter::remove(CFilterEntry* entry) {
    if (!entry) return;
    const ScriptScope scope;
    CGraphicsObject* object = entry->getObject();
    CAnimo* animation = entry->getAnimation();
    const std::vector<Slot> slots = std::move(slotsOf(*entry));
    drop(entry);
    if (animation) animation->removeNotifier(this);
    if (!chosen().canUndo) return;
    if (!animation) {
        object->Invalidate();
        if (!slots.empty() && slots.front().saved) undo(*object, slots.front());
        object->Invalidate();
        return;
    }
    animation->Invalidate();
    animation->ownFrames();
    for (std::size_t i = 0; i < slots.size(); ++i) {
        CFrame* frame = slots[i].saved ? animation->GetFrame(static_cast<int>(i)) : nullptr;
        if (frame) undo(*frame, slots[i]);
    }
    animation->Set(animation->Current(), false);
}

std::unique_ptr<CStaticFilter> makeStaticFilter(const CXString& action, CWindow* window) {
    const StaticEffect* effect = findStaticEffect(action);
    return effect ? std::make_unique<CStaticFilter>(window, *effect) : nullptr;
}
