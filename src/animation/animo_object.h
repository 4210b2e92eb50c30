// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "animation/picture_object.h"
#include "script/method_table.h"
#include "sound/playable.h"

class CAnimo6;

// ANIMO, the script object of an animation on the scene. Told to be a button, it plays its events "ONFOCUSON",
// "ONFOCUSOFF" and "ONCLICK" by itself.
class CMC_Animo : public CMC_Picture, public CPlayableObserver {
public:
    static constexpr int kType = 2000;

    CMC_Animo(CMC_Scene* scene, CMElement* element);
    CMC_Animo(CMC_Scene* scene, std::unique_ptr<CAnimo6> animo);  // "clone"

    CAnimo6* getAnimo() const;  // null once the object is out of service
    // Plays "ONNOEVENT" and forgets the focus.
    void setAsButton(bool asButton, bool changeCursor);
    void setOnFirstFrame(bool on) { onFirstFrame_ = on; }  // the mouse is tested against the box of the first frame
    // A playable that refers to the animation, and is told when another takes its place. Not owned.
    void addSeq(CPlayable* sequence);
    void removeSeq(CPlayable* sequence);

    using CMC_Object::clone;
    CXObject* clone() override;
    std::span<const std::string_view> getBehavioursList() const override;

    bool onPlayableStarted(CPlayable* playable) override;
    bool onPlayableTick(CPlayable* playable) override;
    bool onPlayableFinished(CPlayable* playable) override;
    using CMouseListener::onClick;
    using CMouseListener::onRelease;
    bool onMouseMove(CXPoint point) override;
    bool onClick(int button, CXPoint point) override;
    bool onRelease(int button, CXPoint point) override;

private:
    void place() override;
    Media makeMedia(const CXString& name, bool preload) override;
    bool fits(CFileResolver* cached) const override;
    void onExchanged() override;
    CXString collisionQualifier() const override;
    bool isButtonNow() const;  // whether the mouse matters at all
    bool boxHolds(CXPoint point) const;
    bool isClickPlaying() const;
    void playOwn(const char* event);  // unless "ONCLICK" plays
    void fireOfEvent(int signal);

    int fps_ = 0;
    bool onFirstFrame_ = false;
    std::vector<CPlayable*> sequences_;
};

class CMC_Animo_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
