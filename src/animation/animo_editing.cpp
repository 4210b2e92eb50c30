// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Animations that are built in memory.
#include <algorithm>

#include "animation/animo.h"
#include "frame/window.h"
#include "sound/sound.h"

void CAnimo::AddFrame(CGraphicsObject* picture) {
    if (!data_) data_ = std::make_shared<AnimationData>();
    auto frame = std::make_unique<CFrame>(window_);
    const CXPoint position = picture->GetPosition();
    frame->Copy(picture);
    frame->SetPosition(position.x, position.y);
    frame->setAutoClip(true);
    data_->bpp = frame->getBpp();
    data_->frames.push_back(std::move(frame));
}

void CAnimo::ownFrames() {
    if (!data_ || data_.use_count() == 1) return;
    // One of the others may have a frame decoded; the next time it is drawn that is done again.
    for (const auto& frame : data_->frames)
        frame->bringBackCompressed();
    lastRefreshed_ = -1;
    data_ = data_->copy();
}

void CAnimo::RemoveFrame(int frame) {
    if (frame < 0 || !GetFrame(frame)) return;
    Invalidate();
    bringBackRefreshed();
    data_->frames.erase(data_->frames.begin() + frame);
    for (_annEventInfo3& event : data_->events) {
        for (std::size_t i = event.frames.size(); i-- > 0;) {
            const auto at = static_cast<std::ptrdiff_t>(i);
            if (event.frames[i] > frame) {
                --event.frames[i];
            } else if (event.frames[i] == frame) {
                event.frames.erase(event.frames.begin() + at);
                if (i < event.infos.size()) event.infos.erase(event.infos.begin() + at);
            }
        }
        const int last = std::max(static_cast<int>(event.frames.size()) - 1, 0);
        event.loopStart = std::min(event.loopStart, last);
        event.loopEnd = std::min(event.loopEnd, last);
    }
    UpdateSoundFX();
    frameInSequence_ = std::clamp(frameInSequence_, 0, std::max(GetNOFInEvent(currentEvent_) - 1, 0));
    currentFrame_ = currentFrame_ > frame ? currentFrame_ - 1 : std::min(currentFrame_, GetNOF() - 1);
    updateWithCurrentFrame();
    Invalidate();
}

void CAnimo::ExchangeFrames(int a, int b) {
    if (a < 0 || b < 0 || !GetFrame(a) || !GetFrame(b)) return;
    std::swap(data_->frames[static_cast<std::size_t>(a)], data_->frames[static_cast<std::size_t>(b)]);
    updateWithCurrentFrame();
    Invalidate();
}

void CAnimo::AddEvent(_annEventInfo3 event) {
    if (!data_) data_ = std::make_shared<AnimationData>();
    event.infos.resize(event.frames.size());
    data_->events.push_back(std::move(event));
    UpdateSoundFX();
}

void CAnimo::RemoveEvent(int event) {
    if (!eventAt(event)) return;
    if (event == currentEvent_) Stop();
    data_->events.erase(data_->events.begin() + event);
    if (currentEvent_ > event || currentEvent_ >= GetNOE()) currentEvent_ = std::max(currentEvent_ - 1, 0);
    frameInSequence_ = std::clamp(frameInSequence_, 0, std::max(GetNOFInEvent(currentEvent_) - 1, 0));
    UpdateSoundFX();
}

void CAnimo::RemoveAllEvents() {
    Stop();
    if (data_) data_->events.clear();
    currentEvent_ = frameInSequence_ = 0;
    UpdateSoundFX();
}

void CAnimo::RemoveAllFrames() {
    Stop();
    Invalidate();
    bringBackRefreshed();
    currentFrame_ = -1;
    if (!data_) return;
    data_->frames.clear();
    for (_annEventInfo3& event : data_->events) {
        event.frames.clear();
        event.infos.clear();
        event.loopStart = event.loopEnd = 0;
    }
    UpdateSoundFX();
}
