// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// How animations run. Observers may do anything from inside a step, also take the animation away: a scope of script in
// each operation that tells them keeps it in memory until the operation has ended.
#include "animation/animo.h"
#include "foundation/random.h"
#include "frame/window.h"
#include "graphics/refresh_screen.h"
#include "script/lifetime.h"
#include "sound/sound.h"
#include "sound/stream.h"

namespace {

constexpr int kDefaultRate = 15;
constexpr int kTellStarted = 1;
constexpr int kTellTick = 2;
constexpr int kTellFinished = 3;

}  // namespace

void CAnimo::setFPS(int fps) { fps_ = fps > 0 ? fps : kDefaultRate; }

void CAnimo::invalidateBox() {
    if (!isVisible() || isCanvasLocked() || !canvas_) return;
    const CXRect box = GetBoundingBox();
    canvas_->Invalidate(&box);
}

bool CAnimo::isSoundPlaying() const {
    const CSound4* sound = getCurrentSound();
    return (stream_ && stream_->IsPlaying()) || (sound && sound->isPlaying());
}

void CAnimo::PlaySoundFX(int event, int index) {
    if ((animoFlags_ & kStreamedSounds) != 0) {
        const _anmFrameInfo3* info = getFrameInfo(event, index);
        if (!info || !info->sound || !info->sound->IsString() || !window_) return;
        if (stream_) stream_->Pause();
        stream_ = std::make_unique<CSndStream>(window_, window_->GetSoundFXFullPath(*info->sound));
        stream_->Play(false);
        return;
    }
    CSound4* sound = soundAt(event, index);
    if (!sound) return;
    if (CSound4* current = getCurrentSound()) current->stop(true);
    currentSound_ = {event, index};
    sound->play();
}

CSound4* CAnimo::soundAt(int event, int index) const {
    if (!data_ || event < 0 || event >= std::ssize(*data_->sounds)) return nullptr;
    const auto& row = (*data_->sounds)[static_cast<std::size_t>(event)];
    return index >= 0 && index < std::ssize(row) ? row[static_cast<std::size_t>(index)].get() : nullptr;
}

CSound4* CAnimo::getCurrentSound() const { return soundAt(currentSound_.x, currentSound_.y); }

void CAnimo::ClearWAVEntry(int event, int index) {
    if (!getFrameInfo(event, index)) return;
    eventAt(event)->infos[static_cast<std::size_t>(index)].sound.reset();
    if (soundAt(event, index))
        (*data_->sounds)[static_cast<std::size_t>(event)][static_cast<std::size_t>(index)].reset();
}

template <class Do>
void CAnimo::forAllSounds(Do action) {
    if (!data_) return;
    for (const auto& row : *data_->sounds) {
        for (const auto& sound : row) {
            if (sound) action(*sound);
        }
    }
}

void CAnimo::setVolume(int volume) {
    CPlayable::setVolume(volume);
    forAllSounds([=](CSound4& sound) { sound.setVolume(volume); });
}

void CAnimo::setPanning(int panning) {
    CPlayable::setPanning(panning);
    forAllSounds([=](CSound4& sound) { sound.setPanning(panning); });
}

void CAnimo::setFrequency(int frequency) {
    CPlayable::setFrequency(frequency);
    forAllSounds([=](CSound4& sound) { sound.setFrequency(frequency); });
}

void CAnimo::Play(const CXString& event, int) {
    const ScriptScope scope;
    prepare();
    const int number = resolveEventName(event);
    if (number != -1) Play(number, 0);
}

void CAnimo::Play(_animoevent event, int) {
    const ScriptScope scope;
    prepare();
    if (!isCanvasLocked()) Invalidate();
    const _annEventInfo3* current = eventAt(currentEvent_);
    const unsigned flags = animoFlags_ | (current ? current->flags : 0U);
    if (GetNOFInEvent(event) == 0 || (IsPlaying() && (flags & kNoRestart) != 0)) return;
    if (current) eventAt(currentEvent_)->loopCounter = 0;
    lastEvent_ = currentEvent_ = event;
    if (!isVisible()) Visible(true);
    if (fps_ <= 0) fps_ = kDefaultRate;
    playState_ = kPlaying;
    status_ = 1;
    SetEventFrame(event, 0);
    notify(kTellStarted);
}

void CAnimo::play(const CXString& event) {
    setParameter(getParameter(event));
    Play(event, 0);
}

bool CAnimo::playRandomEvent() {
    const ScriptScope scope;
    prepare();
    const int count = GetNOE();
    if (count > 0) Play(CXRandom::draw() % count, 0);
    return count > 0;
}

void CAnimo::Continue() {
    const ScriptScope scope;
    const _annEventInfo3* event = eventAt(currentEvent_);
    if (!event || event->frames.empty()) return;
    setFPS(event->fps);
    playState_ = kPlaying;
    status_ = 1;
    Next();
}

void CAnimo::stop(bool tell) {
    const ScriptScope scope;
    Stop();
    if (tell) notify(kTellFinished);
}

void CAnimo::Stop() {
    if (IsPlaying()) StopNoNotify();
}

void CAnimo::StopNoNotify() {
    if (!IsPlaying()) return;
    const ScriptScope scope;
    if (stream_) stream_->Pause();
    const _annEventInfo3* event = eventAt(currentEvent_);
    const unsigned flags = event ? event->flags : 0U;
    if ((flags & kHideAtStop) != 0) Visible(false);
    playState_ = kStopped;
    status_ = 0;
    CSound4* sound = getCurrentSound();
    if (((flags | animoFlags_) & kSoundGoesOn) == 0 && sound) {
        currentSound_ = {-1, -1};
        sound->stop(true);
    }
}

void CAnimo::Pause() {
    if (!IsPlaying()) return;
    playState_ = kPaused;
    status_ = 2;
}

void CAnimo::Resume() {
    if (playState_ != kPaused) return;
    playState_ = kPlaying;
    status_ = 1;
}

int CAnimo::next() { return static_cast<int>(direction_ == kForward ? Next() : Prev()); }
int CAnimo::previous() { return static_cast<int>(Prev()); }

// Behind the last frame. True when the animation has stopped, else the index that comes next.
bool CAnimo::endEvent(int& next) {
    if ((animoFlags_ & kNextEvent) == 0) {
        stop(true);
        return true;
    }
    if (GetNOFInEvent(currentEvent_ + 1) > 0) {
        ++currentEvent_;
        next = 0;
    } else {
        next = frameInSequence_;
    }
    return false;
}

bool CAnimo::Next() {
    const ScriptScope scope;
    const int before = currentFrame_;
    _annEventInfo3* event = eventAt(currentEvent_);
    if (!hasFrames() || !event || event->frames.empty()) return false;
    const int count = static_cast<int>(event->frames.size());
    int next = frameInSequence_ + 1;
    if (event->loopEnd == 0) {
        if (next == count && endEvent(next)) return false;
    } else if (next > event->loopEnd) {
        if ((event->flags & kPingPong) != 0) {
            direction_ = kBackward;
            next = frameInSequence_ - 1;
        } else if ((event->flags & kLoopWithSound) == 0 || isSoundPlaying()) {
            const bool isLast = event->loopCount != 0 && ++event->loopCounter >= event->loopCount;
            if (isLast) {
                event->loopCounter = 0;
                stop(true);
            } else {
                next = event->loopStart;
            }
        } else if (next == count || ++next >= count) {
            if (endEvent(next)) return false;
        }
    }
    SetEventFrame(currentEvent_, next);
    return currentFrame_ != before;
}

bool CAnimo::Prev() {
    const ScriptScope scope;
    const int before = currentFrame_;
    const _annEventInfo3* event = eventAt(currentEvent_);
    if (!hasFrames() || !event || event->frames.empty()) return false;
    int next = frameInSequence_ - 1;
    if (event->loopEnd == 0) {
        if (next < 0) {
            stop(true);
            return false;
        }
    } else if (next < event->loopStart) {
        const int loopEnd = event->loopEnd;
        if ((event->flags & kPingPong) != 0) {
            next = frameInSequence_ + 1;
            direction_ = kForward;
        } else if ((event->flags & kLoopWithSound) == 0 || isSoundPlaying()) {
            next = loopEnd;
        } else if (next == 0) {
            stop(true);
            next = loopEnd;
        }
    }
    if (next >= 0) SetEventFrame(currentEvent_, next);
    return currentFrame_ != before;
}

void CAnimo::SetEventFrame(const CXString& event, int index) { SetEventFrame(GetEventNo(event), index); }

int CAnimo::SetEventFrame(int event, const CXString& frameName) {
    const int index = GetFrameNo(event, frameName);
    if (index >= 0) SetEventFrame(GetEventNo(event), index);
    return index;
}

void CAnimo::SetEventFrame(int event, int index) {
    if (index < 0 || index >= GetNOFInEvent(event)) return;
    const ScriptScope scope;
    const int frame = eventAt(event)->frames[static_cast<std::size_t>(index)];
    // The new record may move the old picture's box, so its old place is marked first.
    const _anmFrameInfo3* old = getFrameInfo(currentEvent_, frameInSequence_);
    const _anmFrameInfo3* coming = getFrameInfo(event, index);
    const bool moves = (old ? old->offset : CXPoint()) != (coming ? coming->offset : CXPoint());
    if (moves || currentFrame_ == frame) invalidateBox();
    if (IsPlaying()) PlaySoundFX(event, index);
    if (const _anmFrameInfo3* info = getFrameInfo(event, index)) {
        position_ = position_ + info->offset;
        if (opacity_ == 255) opacity_ = info->opacity == 255 ? eventAt(event)->opacity : info->opacity;
    }
    currentEvent_ = event;
    frameInSequence_ = index;
    if (!GetFrame(frame)) return;
    if (isVisible()) Invalidate();
    currentFrame_ = frame;
    notify(kTellTick);
    updateWithCurrentFrame();
    if (isVisible()) Invalidate();
}

void CAnimo::Set(int frame, bool tell) {
    if (frame < 0 || !GetFrame(frame)) return;
    const ScriptScope scope;
    if (isVisible()) Invalidate();
    currentFrame_ = frame;
    if (tell) notify(kTellTick);
    updateWithCurrentFrame();
    if (isVisible()) Invalidate();
}

void CAnimo::Seek(int frame) {
    if (frame < 0 || !GetFrame(frame)) return;
    CXRect changed = GetBoundingBox();
    currentFrame_ = frame;
    updateWithCurrentFrame();
    changed.Sum(GetBoundingBox());
    if (canvas_) canvas_->Invalidate(&changed);
}
