// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "frame/application.h"

#include "definition/structure_parser.h"
#include "frame/command_line.h"
#include "frame/config.h"
#include "frame/language.h"
#include "frame/resources_manager.h"
#include "frame/unit_container.h"
#include "frame/window.h"
#include "input/hot_spot.h"
#include "storage/folder.h"
#include "storage/path.h"
#include "structure/application.h"

CApplication::CApplication(CWindow* window, const CXString& configName, const CXString& name,
                           CCommandLine6* commandLine)
    : window_(window), commandLine_(commandLine), configName_(configName), name_(name) {
    window_->SetApplicationInterface(this);
    if (!configName_.IsString()) return;
    const CXString fullName = CPath::getFullPath(CWindow::getEXEPath(), configName_);
    config_ = std::make_unique<CConfig>(window_, fullName);
    CLanguageOSVer::initialize(fullName);
}

CApplication::~CApplication() {
    // The tree's last handlers run while it goes, and must still find it here.
    delete application_.get();
    (void)application_.release();
    parser_.reset();
    window_->SetUnitContainer(nullptr);
    unitContainer_.reset();
    config_.reset();
    resources_.reset();
    CHotSpot::done();
    CLanguageOSVer::done();
    window_->SetApplicationInterface(nullptr);
}

void CApplication::preinitializeApplication() {
    resources_ = std::make_unique<CResourcesManager>(window_);
    unitContainer_ = std::make_unique<CUnitContainer6>(window_);
    window_->SetUnitContainer(unitContainer_.get());
    {
        const CPath path(window_);
        window_->setCDPath(path.GetFullPath(""));
        window_->SetSoundFXPath(path.GetFullPath("Wavs"));
    }
    window_->ChDir(CFolder::DATA_FOLDER);
    build();
    if (application_ && commandLine_->is2Bin()) application_->storeBinary();
    prepareunits();
    if (!application_ || !application_->initialize(nullptr)) unitContainer_->initialize(0, false);
}

void CApplication::build() {
    if (!commandLine_->isForceCNV() && CPath::FileExists(window_, "application.bin")) {
        application_ = std::make_unique<CMC_Application>(window_);
        return;
    }
    parser_ = std::make_unique<CMC_StructureParser>(window_, "application.def");
    application_.reset(parser_->getMCApplication());
}

void CApplication::preinitialize(const CXString& path) {
    auto folder = std::make_unique<CFolder>(window_, CXString(".\\") + CFolder::DATA_FOLDER);
    for (int i = 0; i + 1 < path.GetLength(); ++i) {
        const char c = path.GetAt(i);
        if (c >= '0' && c <= '9') folder->GoTo(c - '1');
        if (c >= 'a' && c <= 'z') folder->GoTo(c - 'a');
        if (c >= 'A' && c <= 'Z') folder->GoTo(c - 'A');
    }
    if (unitContainer_) unitContainer_->setWorkingFolder(std::move(folder));
}

bool CApplication::domodal() {
    if (application_) application_->domodal();
    return unitContainer_ && unitContainer_->domodal();
}

CXString CApplication::getWAVPath(const CXString& name) { return window_->GetSoundFXFullPath(name); }
