// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/speaking_animation.h"

#include "animation/animo.h"
#include "animation/animo_object.h"
#include "foundation/random.h"
#include "frame/resources_manager.h"
#include "frame/window.h"
#include "graphics/refresh_screen.h"
#include "script/lifetime.h"
#include "sound/sequence_media.h"
#include "sound/sound.h"

namespace {

constexpr int kPlaying = 1;  // bit of the status
constexpr int kTellStarted = 1, kTellFinished = 3;
constexpr int kMostDraws = 10000;
constexpr char kStart[] = "START", kEnd[] = "END", kStop[] = "STOP";
constexpr char kInvisible[] = "PIXEL.ANN";  // stands for no picture at all

}  // namespace

CSpeakingAnimation::CSpeakingAnimation(CWindow* window, CResourcesManager* resources)
    : SequenceElement(window), resources_(resources) {
    type_ = kType;
}

CSpeakingAnimation::~CSpeakingAnimation() { CSpeakingAnimation::leave(); }

// What the cache has counted for it stays in the cache until the scene is left.
void CSpeakingAnimation::leave() {
    stopListening();
    if (CMC_Animo* object = animationObject_.get()) object->removeSeq(this);
    animationObject_ = nullptr;
    animation_ = nullptr;
    sound_ = nullptr;
    status_ = 0;
}

void CSpeakingAnimation::stopListening() {
    if (CSound4* sound = sound_.get()) sound->removeNotifier(this);
    if (CAnimo* animation = animation_.get()) animation->removeNotifier(this);
}

void CSpeakingAnimation::dropAnimation() {
    CAnimo* former = animation_.get();
    if (former) former->removeNotifier(this);
    if (CMC_Animo* object = animationObject_.get()) object->removeSeq(this);
    if (former && animationCounted_) resources_->remove(former);
    animationObject_ = nullptr;
    animationCounted_ = false;
    animation_ = nullptr;
}

void CSpeakingAnimation::setAnimation(const CXString& name) {
    dropAnimation();
    if (CMC_Animo* object = media::sceneAnimo(playableWindow_, name)) {
        animation_ = object->getAnimo();
        animationObject_ = object;
        object->addSeq(this);
        return;
    }
    if (!resources_) return;
    bool isNew = false;
    CAnimo* animation = media::cachedAnimo(playableWindow_, resources_, name, isNew);
    animation_ = animation;
    animationCounted_ = true;
    if (!name.equalsIgnoreCase(kInvisible)) media::putOnScreen(playableWindow_, animation);
}

// In the midst of speech the new animation goes on with it.
void CSpeakingAnimation::substAnimation(CAnimo* animation) {
    if (CAnimo* former = animation_.get()) former->removeNotifier(this);
    animation_ = animation;
    if ((status_ & kPlaying) != 0) animation->addNotifier(this);
}

void CSpeakingAnimation::dropSound() {
    CSound4* former = sound_.get();
    if (former) former->removeNotifier(this);
    if (former && soundCounted_) resources_->remove(former);
    soundCounted_ = false;
    sound_ = nullptr;
    ownSound_.reset();
}

void CSpeakingAnimation::apply(const CXString& name) {
    dropSound();
    if (CSound4* sound = media::sceneSound(playableWindow_, name)) {
        sound_ = sound;
    } else if (resources_) {
        sound_ = media::cachedSound(playableWindow_, resources_, name);
        soundCounted_ = true;
    } else {
        ownSound_ = std::make_unique<CSound4>(playableWindow_, name, true, false);
        sound_ = ownSound_.get();
    }
}

void CSpeakingAnimation::apply(CPlayable* sound) {
    dropSound();
    if (sound && sound->getType() == CSound4::kType) sound_ = static_cast<CSound4*>(sound);
}

CXString CSpeakingAnimation::eventName(const char* word) const {
    return prefix_.IsString() ? prefix_ + "_" + word : CXString(word);
}

bool CSpeakingAnimation::isMouthEvent(const CXString& name) const {
    if (!prefix_.IsString()) return name.GetAt(0) >= '0' && name.GetAt(0) <= '9';
    const CXString lead = prefix_ + "_";
    if (!name.startsWith(lead)) return false;
    const CXString rest = name.Right(lead.GetLength());
    return !(rest == kStart || rest == kEnd || rest == kStop);
}

bool CSpeakingAnimation::isAnimationPlaying() const {
    const CAnimo* animation = animation_.get();
    return animation && animation->isPlaying();
}

bool CSpeakingAnimation::isSoundPlaying() const {
    const CSound4* sound = sound_.get();
    return sound && sound->isPlaying();
}

// Whether the animation plays then, be it this event or, for want of it, whatever it played before.
bool CSpeakingAnimation::tryEvent(const char* word) {
    if (CAnimo* animation = animation_.get()) animation->Play(eventName(word), 0);
    return isAnimationPlaying();
}

void CSpeakingAnimation::playSound() {
    soundStarted_ = true;
    if (CSound4* sound = sound_.get()) sound->play();
}

// Without a sound the speech ends at once; without an animation nothing is said at all.
void CSpeakingAnimation::play() {
    const ScriptScope scope;
    notify(kTellStarted);
    soundStarted_ = finishing_ = false;
    CSound4* sound = sound_.get();
    if (sound) sound->addNotifier(this);
    CAnimo* animation = animation_.get();
    if (!animation) return;
    status_ |= kPlaying;
    animation->addNotifier(this);
    if (sound) {
        sound->load();
        sound->setVolume(volume_);
        sound->setPanning(panning_);
        if (frequency_ > 0) sound->setFrequency(frequency_);
    }
    if (starting_) {
        if (tryEvent(kStart)) return;
    } else if (sound) {
        sound->setNotifier(this);
    }
    playSound();
    playOnOf();
}

void CSpeakingAnimation::playOnOf() {
    CAnimo* animation = animation_.get();
    if (!animation) return;
    if (!isSoundPlaying()) return finish();
    const int count = animation->GetNOE();
    if (count == 0) return;
    int event = 0;
    for (int i = 0; i < kMostDraws; ++i) {
        event = CXRandom::draw() % count;
        if (isMouthEvent(animation->GetEventName(event))) break;
    }
    animation->Play(event, 0);
}

bool CSpeakingAnimation::onPlayableFinished(CPlayable* playable) {
    const ScriptScope scope;
    if (playable == animation_.get()) {
        if (!soundStarted_) playSound();
        if (finishing_) {
            stopListening();
            endWith();
        } else {
            playOnOf();
        }
    } else if (playable == sound_.get()) {
        finish();
    }
    return false;
}

void CSpeakingAnimation::endWith() {
    stop(false);
    notify(kTellFinished);
}

void CSpeakingAnimation::finish() {
    finishing_ = true;
    CAnimo* animation = animation_.get();
    if (!animation || !animation->isPlaying() || !animation->isVisible()) return endWith();
    // Its end comes back here, and is told as the end of the speech.
    animation->stop(true);
    if (ending_ && !tryEvent(kEnd) && !tryEvent(kStop)) endWith();
}

void CSpeakingAnimation::stop(bool tell) {
    const ScriptScope scope;
    status_ &= ~kPlaying;
    if (CSound4* sound = sound_.get()) {
        if (tell) {
            sound->stop(true);
        } else {
            sound->Stop();
        }
    }
    if (CAnimo* animation = animation_.get()) {
        if (tell) {
            animation->stop(true);
        } else {
            animation->Stop();
        }
    }
    if (CSound4* sound = sound_.get()) sound->Flush();
    stopListening();
}

void CSpeakingAnimation::pause() {
    if (CSound4* sound = sound_.get()) sound->pause();
    if (CAnimo* animation = animation_.get()) animation->pause();
}

void CSpeakingAnimation::resume() {
    const ScriptScope scope;
    if (CSound4* sound = sound_.get()) sound->resume();
    if (CAnimo* animation = animation_.get()) animation->resume();
}

bool CSpeakingAnimation::isPlaying() const { return isSoundPlaying() || isAnimationPlaying(); }

bool CSpeakingAnimation::isVisible() const {
    const CAnimo* animation = animation_.get();
    return animation ? animation->isVisible() : CPlayable::isVisible();
}

void CSpeakingAnimation::setVisibility(bool visible) {
    CPlayable::setVisibility(visible);
    if (CAnimo* animation = animation_.get()) animation->setVisibility(visible);
}

void CSpeakingAnimation::move(int dx, int dy) {
    if (CAnimo* animation = animation_.get()) animation->move(dx, dy);
}

void CSpeakingAnimation::setPosition(int x, int y) {
    const ScriptScope scope;
    CAnimo* animation = animation_.get();
    if (!animation) return;
    animation->Invalidate();
    animation->SetPosition(x, y);
    if (animation_.get()) animation->Invalidate();
}
