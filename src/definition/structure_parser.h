// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "foundation/xvector.h"

class CMC_Application;
class CMC_Object;
class CMC_Scene;
class CWindow;

// Reads "application.def" and builds the tree: scenes first, then episodes, which take their scenes, then the
// application, which takes its episodes. Lives as long as the values of the script may be needed.
class CMC_StructureParser : public CXObject {
public:
    CMC_StructureParser(CWindow* window, CXString fileName);
    ~CMC_StructureParser() override;

    CMC_Object* get(const CXString& name) const;  // the first of that name; null: none
    // Null when the file is missing or defines none. The application is the caller's; of several the last one.
    CMC_Application* getMCApplication() const { return application_; }

private:
    CMC_Application* application_ = nullptr;
    CXVector structures_;                              // all that was built; void once the tree is taken down
    std::vector<std::unique_ptr<CMC_Scene>> orphans_;  // what no level took
};
