// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "script/ref.h"
#include "sound/sequence_element.h"

class CMC_Animo;

// One event of an animation, as a step of a sequence. It plays as long as the animation does, whatever that plays.
class CAnimoEventPlayable : public SequenceElement {
public:
    static constexpr int kType = 6;

    CAnimoEventPlayable(CWindow* window, CAnimo* animation, int event);
    // On the animation of a script object, and on any that takes its place.
    CAnimoEventPlayable(CWindow* window, CMC_Animo* object, int event);
    ~CAnimoEventPlayable() override;

    CAnimo* getAnimation() const { return animation_.get(); }  // null once it is gone
    void substAnimation(CAnimo* animation) override;
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
    bool onPlayableFinished(CPlayable* playable) override;

private:
    int event_;
    PlayableLink<CAnimo> animation_;
    Ref<CMC_Animo> object_;
};
