// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "frame/unit_module.h"

#include <string>

#include "frame/error.h"
#include "frame/module_symbols.h"
#include "frame/window.h"
#include "platform/platform.h"
#include "storage/path.h"

namespace {

void report(CXString text) {
    text += ".\n";
    CWindow::toLog(text, true);
    text.left(text.GetLength() - 1);
    platform::current().shell.debugOutput(text.view());
}

}  // namespace

std::unique_ptr<platform::Module> loadModule(const CXString& name) {
    std::unique_ptr<platform::Module> module;
    const platform::Platform& platform = platform::current();
    if (const auto path = platform.files.systemPath(name.view())) module = platform.shell.loadModule(*path);
    if (!module) report(CXString("Error while loading dll: ") + name);
    return module;
}

void reportMissingEntryPoint(const CXString& name) {
    report(CXString("Error while loading dll: ") + name + ": it lacks an entry point");
}

CDLLUnitInterface::CDLLUnitInterface(CWindow* window, const CXString& fileName) : window_(window), fileName_(fileName) {
    extension_ = CPath(window_, fileName_).GetExtension();
    std::unique_ptr<platform::Module> module = loadModule(fileName_);
    setErrorCode(kErrorNotFound);
    if (!module) return;
    const auto create = entryPoint<bool (*)(CWindow*)>(*module, "_Z6createP7CWindow");
    const auto getUnitInterface = entryPoint<CUnit6* (*)()>(*module, "_Z16getUnitInterfacev");
    const auto release = entryPoint<bool (*)()>(*module, "_Z7releasev");
    if (!create || !getUnitInterface || !release) {
        reportMissingEntryPoint(fileName_);
        return;
    }
    module_ = std::move(module);
    release_ = release;
    create(window_);
    unit_ = getUnitInterface();
    if (unit_) setErrorCode(0);
}

CDLLUnitInterface::~CDLLUnitInterface() {
    if (release_) release_();
}
