// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "foundation/xobject.h"

class CCommandLine6;
class CConfig;
class CFont5;
class CMC_Application;
class CMC_StructureParser;
class CResourcesManager;
class CUnitContainer6;
class CWindow;

// The application beside the window: it reads the configuration, builds the tree of application, episodes and scenes
// from its files, and advances it each frame. A host may derive from it.
class CApplication : public CXObject {
public:
    // Registers itself in the window. Reads the configuration file of that name in the program's folder; with an empty
    // name there is no configuration.
    CApplication(CWindow* window, const CXString& configName, const CXString& name, CCommandLine6* commandLine);
    ~CApplication() override;
    CApplication(const CApplication&) = delete;
    CApplication& operator=(const CApplication&) = delete;

    virtual void prepareunits() {}
    // Sets the unit container's working folder: each letter or digit of the path but the last goes one folder down.
    virtual void preinitialize(const CXString& path);
    // The start of the application, up to the first scene's ONINIT. Called once, when the screen exists.
    virtual void preinitializeApplication();
    virtual bool domodal();  // one frame of application logic; true: leave
    virtual bool OnExit() { return true; }
    virtual void OnWindowCommand(int) {}
    virtual int OnKeyDown(int, int) { return 0; }
    virtual CXString getWAVPath(const CXString& name);

    CCommandLine6* getCommandLine() const { return commandLine_; }
    CUnitContainer6* GetUnitContainer() const { return unitContainer_.get(); }
    CConfig* GetConfigInterface() const { return config_.get(); }  // null: none
    CResourcesManager* getGeneralResourcesManager() const { return resources_.get(); }
    CFont5* getDefaultFont() const { return defaultFont_; }
    void setDefaultFont(CFont5* font) { defaultFont_ = font; }  // not owned
    CMC_Application* getMCApplicationIfc() const { return application_.get(); }

private:
    void build();

    CWindow* window_;
    CCommandLine6* commandLine_;
    std::unique_ptr<CUnitContainer6> unitContainer_;
    std::unique_ptr<CConfig> config_;
    std::unique_ptr<CResourcesManager> resources_;
    CFont5* defaultFont_ = nullptr;
    CXString configName_;
    CXString name_;
    std::unique_ptr<CMC_Application> application_;
    std::unique_ptr<CMC_StructureParser> parser_;
};
