// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "frame/unit_container.h"

#include <cstdint>

#include "frame/unit.h"
#include "frame/unit_module.h"
#include "frame/window.h"
#include "storage/folder.h"

namespace {
constexpr int kCodeEnd = 1;
constexpr int kCodeUp = 2;
constexpr int kCodePath = 4;
constexpr int kCodeStart = 8;
constexpr int kCodeFolder = 0x100;  // with a sub-folder's number

constexpr int kFolderUp = -2;
constexpr int kFolderStart = -1;
}  // namespace

CUnitContainer6::CUnitContainer6(CWindow* window) : window_(window), folder_(std::make_unique<CFolder>(window)) {
    CXArray* names = folder_->list("r*.dll");
    for (int i = 0; names && i < names->size(); ++i) {
        auto module = std::make_unique<CDLLUnitInterface>(window_, *names->stringAt(i));
        if (module->LastError() == 0) units_.add(module->getUnit());
        modules_.push_back(std::move(module));
    }
    CFolder::releaseFilesList(names);
    default_ = std::make_unique<CUnit6>(window_, "Default");
    units_.add(default_.get());
}

CUnitContainer6::~CUnitContainer6() = default;

CUnit6* CUnitContainer6::find(const CXString& name) const {
    for (CXObject* element : units_.elements()) {
        auto* unit = static_cast<CUnit6*>(element);
        if (unit->getUnitName().equalsIgnoreCase(name)) return unit;
    }
    return nullptr;
}

void CUnitContainer6::registerUnit(CUnit6* unit) { units_.add(unit); }

void CUnitContainer6::releaseUnit(CUnit6* unit) {
    units_.remove(unit);
    if (current_ == unit) current_ = nullptr;
    if (old_ == unit) old_ = nullptr;
}

void CUnitContainer6::releaseUnit(const CXString& name) {
    if (CUnit6* unit = find(name)) releaseUnit(unit);
}

CUnitData* CUnitContainer6::getOldUnitData() const { return old_ ? old_->getUnitData() : nullptr; }

void CUnitContainer6::setWorkingFolder(std::unique_ptr<CFolder> folder) { folder_ = std::move(folder); }

bool CUnitContainer6::initialize(int index, bool noStart) {
    CXString name;
    if (index == kFolderUp) {
        name = folder_->GoUp();
    } else if (index == kFolderStart) {
        folder_->GoStart();
        name = folder_->GoTo(0);
    } else {
        name = folder_->GoTo(index);
    }
    if (noStart) return true;

    current_ = find(name);
    if (!current_) {
        current_ = default_.get();
        current_->setUnitName(name);
    }
    window_->BeginWaitCursor();
    current_->initialize(getOldUnitData(), nullptr, nullptr);
    window_->EndActiveCursor();
    return true;
}

bool CUnitContainer6::domodal() {
    if (!current_ || !current_->domodal()) return false;
    const int code = current_->getRetCode();
    const bool toFolder = (code & kCodeFolder) != 0;
    if (!toFolder && code != kCodeEnd && code != kCodeUp && code != kCodePath && code != kCodeStart) return false;

    // The unit's own path is emptied when it ends.
    CXArray path;
    if (!toFolder && code == kCodePath) path.add(*current_->getRetPath());
    old_ = current_;
    old_->done(old_->getUnitData(), nullptr, nullptr);
    if (!toFolder && code == kCodeEnd) return true;
    if (!toFolder && code == kCodePath) {
        applyPath(path);
    } else {
        apply(code, false);
    }
    return false;
}

void CUnitContainer6::applyPath(const CXArray& path) {
    for (int i = 0; i < path.size(); ++i) {
        const auto code = static_cast<int>(reinterpret_cast<std::intptr_t>(path.at(i)));
        apply(code, i + 1 < path.size());
    }
}

void CUnitContainer6::apply(int code, bool noStart) {
    if ((code & kCodeFolder) != 0) {
        initialize(code & ~kCodeFolder, noStart);
    } else if (code == kCodeUp) {
        initialize(kFolderUp, noStart);
    } else if (code == kCodeStart) {
        initialize(kFolderStart, noStart);
    }
}
