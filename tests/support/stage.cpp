// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "support/stage.h"

#include "input/keyboard.h"
#include "script/behaviour.h"
#include "script/variable.h"
#include "structure/application.h"
#include "structure/scene.h"

Stage::Stage(std::string_view scene, const headless::Options& options) : platform(options), scenes_{"S"} {
    level("APP", "");
    level("EP", "");
    file("Dane/S/S.cnv", scene);
    background("S");
}

Stage::~Stage() { end(); }

void Stage::scene(const std::string& name, std::string_view definition) {
    scenes_.push_back(name);
    background(name);
    file("Dane/" + name + "/" + name + ".cnv", definition);
}

// A black pixel: without a background every scene would begin with a message.
void Stage::background(const std::string& scene) {
    std::string picture("NVI\0\1\0\1\0\x10\2", 10);
    picture.resize(37 + 2);
    file("Dane/" + scene + "/bkg.img", picture);
}

void Stage::level(const std::string& name, std::string_view definition) {
    file("Dane/" + name + "/" + name + ".cnv", definition);
}

void Stage::file(const std::string& path, std::string_view content) { platform.write(path, content); }

void Stage::definition(std::string_view text) { definition_ = text; }

void Stage::start() {
    if (window_) return;
    if (definition_.empty()) {
        std::string names;
        for (const std::string& name : scenes_)
            names += (names.empty() ? "" : ",") + name;
        definition_ = lines("APP", "APPLICATION", "EPISODES=EP\nSTARTWITH=EP\nPATH=APP\n") +
                      lines("EP", "EPISODE", "SCENES=" + names + "\nSTARTWITH=S\nPATH=EP\n");
        for (const std::string& name : scenes_)
            definition_ += lines(name, "SCENE", "PATH=" + name + "\n");
    }
    file("Dane/application.def", definition_);
    commandLine_ = std::make_unique<CCommandLine6>(switches_.c_str());
    window_ = std::make_unique<CWindow>(nullptr, commandLine_.get(), CXSize(800, 600), &cursors_[0]);
    application_ = std::make_unique<CApplication>(window_.get(), "application.ini", "Stage", commandLine_.get());
    window_->SetDisplayMode(800, 600, 16);
    window_->OnCreate();
    application_->preinitializeApplication();
    window_->OnActivateApp(true);
}

bool Stage::frames(int count) {
    start();
    bool leave = false;
    for (int i = 0; i < count && !leave; ++i) {
        platform.clock.advance(10);
        window_->getKeyboardInterface()->tick();
        window_->processMessages();
        leave = window_->domodal();
    }
    return leave;
}

void Stage::end() {
    application_.reset();
    window_.reset();
    commandLine_.reset();
}

CMC_Scene* Stage::current() {
    start();
    CMC_Scene* level = application_->getMCApplicationIfc();
    while (level && level->getCurrentScene())
        level = level->getCurrentScene();
    return level;
}

void Stage::run(const std::string& code) {
    CMC_Behaviour block(current(), CXString(std::string_view(code)), "stage");
    block.init();
    block.run(nullptr, nullptr, false);
}

CMC_Object* Stage::object(const std::string& name) {
    CMC_Scene* scene = current();
    return scene ? scene->getObject(name.c_str()) : nullptr;
}

std::string Stage::value(const std::string& name) {
    CMC_Object* found = object(name);
    return found ? std::string(found->toString().view()) : "(none)";
}

std::string Stage::kept(const std::string& section, const std::string& key) {
    const std::string text = platform.files.readFile("C:" + platform.folder() + "/application.ini").value_or("");
    std::string here;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t stop = std::min(text.find('\n', at), text.size());
        std::string line = text.substr(at, stop - at);
        at = stop + 1;
        if (line.ends_with('\r')) line.pop_back();
        if (line.starts_with('[') && line.ends_with(']')) here = line.substr(1, line.size() - 2);
        if (here == section && line.starts_with(key + "=")) return line.substr(key.size() + 1);
    }
    return "(none)";
}

std::string lines(const std::string& name, const std::string& type, std::string_view properties) {
    std::string text = "OBJECT=" + name + "\n";
    if (!type.empty()) text += name + ":TYPE=" + type + "\n";
    for (std::size_t at = 0; at < properties.size();) {
        const std::size_t stop = std::min(properties.find('\n', at), properties.size());
        text += name + ":" + std::string(properties.substr(at, stop - at)) + "\n";
        at = stop + 1;
    }
    return text;
}

std::string code(const std::string& name, const std::string& statements) {
    return lines(name, "BEHAVIOUR", "CODE={" + statements + "}\n");
}
