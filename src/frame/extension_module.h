// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "foundation/xobject.h"

class CMC_Object;
class CMC_Scene;
class CMElement;
class CXArchive;
namespace platform {
class Module;
}

// What an extension module implements: objects of types that the library doesn't have.
class CMC_ExternObject {
public:
    virtual ~CMC_ExternObject() = default;
    virtual void reserved1() = 0;  // the library calls neither of these two
    virtual void reserved2() = 0;
    virtual CMC_Object* resolveEx(CMElement* element) = 0;              // a new object, or null
    virtual CMC_Object* serializeEx(CXArchive* archive, int type) = 0;  // a new object, or null
};

// A module that brings object types to one scene.
class CMC_DLLExModuleInterface : public CXObject {
public:
    CMC_DLLExModuleInterface(const CXString& fileName, CMC_Scene* scene);  // ".dll" is added to a name without a "."
    ~CMC_DLLExModuleInterface() override;
    CMC_DLLExModuleInterface(const CMC_DLLExModuleInterface&) = delete;
    CMC_DLLExModuleInterface& operator=(const CMC_DLLExModuleInterface&) = delete;

    CMC_ExternObject* getInterface() const { return interface_; }  // the module's; null: not loaded
    const CXString& getFileName() const { return fileName_; }

private:
    CXString fileName_;
    CMC_ExternObject* interface_ = nullptr;
    std::unique_ptr<platform::Module> module_;
    void (*release_)() = nullptr;
};
