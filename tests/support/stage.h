// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frame/application.h"
#include "frame/command_line.h"
#include "frame/window.h"
#include "platform/headless/headless.h"

class CMC_Object;
class CMC_Scene;

// A whole small application on a virtual platform: application APP, episode EP and the scenes that a test gives, the
// first of them "S". Its files are written before it starts; frames are 10 ms apart.
class Stage {
public:
    // `scene`: the definition of scene S, as it would stand in its file.
    explicit Stage(std::string_view scene = "", const headless::Options& options = {});
    ~Stage();

    // Before the start: what else the tree holds.
    void scene(const std::string& name, std::string_view definition);  // after S, in this order
    void level(const std::string& name, std::string_view definition);  // of APP or EP
    void file(const std::string& path, std::string_view content);      // "Dane/S/more.cnv", below the folder
    void definition(std::string_view text);                            // in place of the usual application.def
    void switches(std::string_view text) { switches_ = text; }

    void start();                // at the latest with the first of the operations below
    bool frames(int count = 1);  // true when the application wants to be left
    void end();                  // deletes the application and then the window

    // Runs statements in the running scene, as a behaviour without parameters.
    void run(const std::string& code);
    // The value of an object, looked up from the running scene, as text; "(none)" when there is none.
    std::string value(const std::string& name);
    CMC_Object* object(const std::string& name);
    CMC_Scene* current();  // the running scene; null: none
    // A value of the configuration file as it stands on the disk; "(none)" when there is none.
    std::string kept(const std::string& section, const std::string& key);

    const std::vector<std::string>& debugLines() const { return platform.shell.debugLines(); }
    const std::vector<headless::Message>& messages() const { return platform.shell.messages(); }

    headless::HeadlessPlatform platform;

private:
    void background(const std::string& scene);

    std::string switches_;
    std::string definition_;
    std::vector<std::string> scenes_;
    std::unique_ptr<CCommandLine6> commandLine_;
    std::unique_ptr<CWindow> window_;
    std::unique_ptr<CApplication> application_;
    int cursors_[3] = {};
};

// Definition lines of one object: "NAME:TYPE=...", and each of `properties`, "KEY=value" lines.
std::string lines(const std::string& name, const std::string& type, std::string_view properties = "");
// A behaviour of that name.
std::string code(const std::string& name, const std::string& statements);
