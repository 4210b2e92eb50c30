// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "script/runner.h"
#include "structure/scene.h"
#include "structure/versionizer.h"

class CCommandLine6;
class CMC_StructureParser;

// The root of the tree: holds the episodes. Its own objects live from its making to its end.
class CMC_Application : public CMC_Scene {
public:
    static constexpr int kType = 1000;

    // From "application.bin". Nothing reads that file yet: the application stays without episodes.
    explicit CMC_Application(CWindow* window);
    // From a definition: takes the episodes that EPISODES names out of the parser. Starts the runners.
    CMC_Application(CWindow* window, CMC_StructureParser* parser, CMElement* element, CCommandLine6* commandLine);
    ~CMC_Application() override;

    bool initialize(CMC_Scene* previous) override;  // false without episodes
    void domodal() override;
    void unload(CMC_Scene* next) override;
    CMC_Application* getMCApplication() override { return this; }
    // Back to the start episode, at once; in the start episode, to its first scene with the next domodal.
    void restart() override;
    virtual void exit();         // ends the loop with this frame, and fires ONEXIT
    virtual void storeBinary();  // writes the binary form of the tree, once there is one

    static CVersionizer version;  // of the binary form

private:
    CMC_Scene* startEpisode_ = nullptr;
    CCommandLine6* commandLine_ = nullptr;
};

class CMC_Application_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
