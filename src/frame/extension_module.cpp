// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "frame/extension_module.h"

#include "frame/module_symbols.h"

CMC_DLLExModuleInterface::CMC_DLLExModuleInterface(const CXString& fileName, CMC_Scene* scene) : fileName_(fileName) {
    if (fileName_.Find('.') == -1) fileName_ += ".dll";
    std::unique_ptr<platform::Module> module = loadModule(fileName_);
    if (!module) return;
    const auto create = entryPoint<void (*)(CMC_Scene*)>(*module, "_Z6createP9CMC_Scene");
    const auto getModuleInterface = entryPoint<CMC_ExternObject* (*)()>(*module, "_Z18getModuleInterfacev");
    const auto release = entryPoint<void (*)()>(*module, "_Z7releasev");
    if (!create || !getModuleInterface || !release) {
        reportMissingEntryPoint(fileName_);
        return;
    }
    module_ = std::move(module);
    release_ = release;
    create(scene);
    interface_ = getModuleInterface();
}

CMC_DLLExModuleInterface::~CMC_DLLExModuleInterface() {
    if (release_) release_();
}
