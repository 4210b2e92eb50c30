// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "script/ref.h"
#include "sound/sequence_element.h"

class CMC_Animo;
class CResourcesManager;
class CSound4;

// Moves a mouth while a sound runs: random ones of an animation's events, one behind the other, until the sound has
// ended. It looks at no sample.
//
// With a prefix P the mouth's events are P_... but for P_START, P_END and P_STOP; without one, those that begin with a
// digit.
class CSpeakingAnimation : public SequenceElement {
public:
    static constexpr int kType = 5;

    CSpeakingAnimation(CWindow* window, CResourcesManager* resources);  // null: no cache
    ~CSpeakingAnimation() override;

    // A script object of the scene, or else a file, which then stands on the screen.
    void setAnimation(const CXString& name);
    void substAnimation(CAnimo* animation) override;
    CAnimo* getAnimation() const { return animation_.get(); }  // null: none, or gone
    void apply(const CXString& name);                          // likewise, for the sound; a file by its full name
    void apply(CPlayable* sound);                              // what isn't a sound is none
    void setStarting(bool starting) { starting_ = starting; }  // an event before the sound starts
    void setEnding(bool ending) { ending_ = ending; }          // and one when it has ended
    void setPrefix(const CXString& prefix) { prefix_ = prefix; }
    void leave() override;

    using CPlayable::play;
    void play() override;
    void stop(bool tell) override;
    void pause() override;
    void resume() override;
    void seek(int) override {}
    bool isPlaying() const override;
    bool isVisible() const override;
    void setVisibility(bool visible) override;
    void move(int dx, int dy) override;
    void setPosition(int x, int y) override;
    using CPlayable::move;
    using CPlayable::setPosition;
    bool onPlayableFinished(CPlayable* playable) override;

private:
    CXString eventName(const char* word) const;
    bool isMouthEvent(const CXString& name) const;
    bool isAnimationPlaying() const;
    bool isSoundPlaying() const;
    bool tryEvent(const char* word);
    void playSound();
    void playOnOf();
    void finish();
    void endWith();
    void stopListening();
    void dropAnimation();
    void dropSound();

    PlayableLink<CSound4> sound_;
    PlayableLink<CAnimo> animation_;
    CResourcesManager* resources_;
    bool soundStarted_ = false;
    bool finishing_ = false;
    bool starting_ = false;
    bool ending_ = false;
    Ref<CMC_Animo> animationObject_;  // whose animation it is, when it is the scene's
    bool animationCounted_ = false;   // by the cache, for this playable
    bool soundCounted_ = false;
    std::unique_ptr<CSound4> ownSound_;  // without a cache
    CXString prefix_;
};
