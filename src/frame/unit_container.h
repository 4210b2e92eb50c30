// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "foundation/xvector.h"

class CDLLUnitInterface;
class CFolder;
class CUnit6;
class CUnitData;
class CWindow;

// Holds the units and, for units from modules, walks them along a tree of folders by their return codes.
class CUnitContainer6 : public CXObject {
public:
    // Loads the unit modules of the current folder and makes the unit "Default". Requires: the screen exists.
    explicit CUnitContainer6(CWindow* window);
    ~CUnitContainer6() override;
    CUnitContainer6(const CUnitContainer6&) = delete;
    CUnitContainer6& operator=(const CUnitContainer6&) = delete;

    CUnit6* find(const CXString& name) const;  // in any case of letters; null: none
    bool contains(const CXString& name) const { return find(name) != nullptr; }
    void registerUnit(CUnit6* unit);  // not owned
    void releaseUnit(CUnit6* unit);   // forgets it
    void releaseUnit(const CXString& name);
    void setCurrentUnit(CUnit6* unit) { current_ = unit; }
    CUnit6* getCurrentUnit() const { return current_; }  // null: none
    CUnitData* getOldUnitData() const;
    void setWorkingFolder(std::unique_ptr<CFolder> folder);

    // Goes to sub-folder `index`, up for -2, to the start for -1, and unless `noStart` starts the unit of its name.
    // True.
    bool initialize(int index, bool noStart);
    bool domodal();  // serves the current unit's return code; true: end of the program

private:
    void apply(int code, bool noStart);  // a code that leads to a folder; others have no effect
    void applyPath(const CXArray& path);

    CWindow* window_;
    CXVector units_;
    std::vector<std::unique_ptr<CDLLUnitInterface>> modules_;
    CUnit6* current_ = nullptr;
    std::unique_ptr<CUnit6> default_;
    CUnit6* old_ = nullptr;
    std::unique_ptr<CFolder> folder_;
};
