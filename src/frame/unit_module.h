// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "foundation/xobject.h"

class CUnit6;
class CWindow;
namespace platform {
class Module;
}

// A module that brings a unit. Its error word isn't 0 when the file can't be loaded or lacks an entry point.
class CDLLUnitInterface : public CXObject {
public:
    CDLLUnitInterface(CWindow* window, const CXString& fileName);
    ~CDLLUnitInterface() override;  // nothing that came out of the module may be used after that
    CDLLUnitInterface(const CDLLUnitInterface&) = delete;
    CDLLUnitInterface& operator=(const CDLLUnitInterface&) = delete;

    CUnit6* getUnit() const { return unit_; }  // the module's
    const CXString& getExtension() const { return extension_; }
    const CXString& getFileName() const { return fileName_; }

private:
    CWindow* window_;
    CXString fileName_;
    std::unique_ptr<platform::Module> module_;
    CXString extension_;
    CUnit6* unit_ = nullptr;
    bool (*release_)() = nullptr;
};
