// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "script/runner.h"
#include "structure/scene.h"

class CMC_StructureParser;

// A level that holds scenes. Its own objects live from its making to the end of the application; its ONINIT runs on
// every entry, its ONDONE on every change of scene within it.
class CMC_Episode : public CMC_Scene {
public:
    static constexpr int kType = 1001;

    explicit CMC_Episode(CWindow* window);
    // Takes the scenes that SCENES names out of the parser.
    CMC_Episode(CWindow* window, CMC_StructureParser* parser, CMElement* element);
    ~CMC_Episode() override;

    bool initialize(CMC_Scene* previous) override;  // false without scenes
    void unload(CMC_Scene* next) override;

    void next();  // the scene behind the current one, with the next domodal
    void prev();
    void back();
    const CXString& getLatestScene() const { return latestScene_; }  // the scene left last; "" at first

private:
    CMC_Scene* startScene_ = nullptr;
    CXString latestScene_;
};

class CMC_Episode_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
