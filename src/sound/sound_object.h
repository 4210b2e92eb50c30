// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "script/object.h"
#include "script/property_table.h"
#include "script/runner.h"
#include "sound/playable.h"

class CSound4;

// SOUND, the script object of a WAV file. Objects of one file share one sound through the unit's cache: what one of
// them plays, stops or softens is so for all, and all of them hear of it.
class CMC_Sound : public CMC_Object, public CPlayableObserver {
public:
    static constexpr int kType = 2005;

    explicit CMC_Sound(CMC_Scene* scene);  // "temp", without a sound until a record is read
    CMC_Sound(CMC_Scene* scene, CMElement* element);
    ~CMC_Sound() override;

    CSound4* getSound() const { return sound_; }  // null once the object is out of service

    bool done(bool keep) override;
    void retire() override;
    std::span<const std::string_view> getBehavioursList() const override;
    void serialize(CXArchive* archive) override;
    bool onPlayableStarted(CPlayable* playable) override;
    bool onPlayableFinished(CPlayable* playable) override;

    // The script's methods; volume and panning in the script's levels.
    void play();
    void pause();
    void resume();
    void load(const CXString& name);
    void setVolume(int volume);
    void setPan(int pan);
    void setFrequency(int frequency);
    bool isPlaying() const;

private:
    struct Properties {
        CXString fileName;
        bool preload = false;
        bool flushAfterPlayed = false;
    };
    static const PropertyRow<Properties> kProperties[];

    void initSound(const CXString& name);
    void letGo();

    Properties properties_;
    CSound4* sound_ = nullptr;      // the cache's, or the next
    std::unique_ptr<CSound4> own_;  // without a cache
};

class CMC_Sound_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
