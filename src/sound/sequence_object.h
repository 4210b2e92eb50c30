// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "script/object.h"
#include "script/property_table.h"
#include "script/runner.h"
#include "sound/playable.h"

class SequenceTree;

// SEQUENCE, the script object of a sequence file. It hears every element of the file's tree, and tells the start and
// the end of each by the element's name.
//
// A file that can't be read, or that names no root, is tried again whenever the object is used; until then its methods
// do nothing.
class CMC_Sequence : public CMC_Object, public CPlayableObserver {
public:
    static constexpr int kType = 2004;

    explicit CMC_Sequence(CMC_Scene* scene);  // "temp"
    CMC_Sequence(CMC_Scene* scene, CMElement* element);
    ~CMC_Sequence() override;

    CPlayable* getSequence();  // loads it unless it is there; null: it can't be

    // A tree that was used before is kept, for it may be playing.
    void init() override;
    void retire() override;
    std::span<const std::string_view> getBehavioursList() const override;
    void serialize(CXArchive* archive) override;
    bool onPlayableStarted(CPlayable* playable) override;
    bool onPlayableFinished(CPlayable* playable) override;

    // The script's methods; volume and panning in the script's levels.
    void play(const CXString& event);
    // With this value for the event from now on. The name of an array stands for the event's old value with each "x"
    // replaced by the digit of the element at its place.
    void play(const CXString& event, const CXString& value);
    void stop(bool tell);
    void pause();
    void resume();
    void show();
    void hide();
    bool isPlaying();
    void setVolume(int volume);
    void setPan(int pan);
    void setFrequency(int frequency);
    CXString getEventName();
    CXString getPlayingName();

private:
    struct Properties {
        CXString fileName;
    };
    static const PropertyRow<Properties> kProperties[];

    CXString fillIn(CXString pattern, CMC_Object* array) const;
    void letGo();

    Properties properties_;
    std::unique_ptr<SequenceTree> tree_;
};

class CMC_Sequence_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
