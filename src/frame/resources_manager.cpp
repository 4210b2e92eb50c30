// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "frame/resources_manager.h"

#include <algorithm>
#include <memory>

#include "frame/window.h"
#include "graphics/graphics_object.h"
#include "graphics/refresh_screen.h"
#include "script/lifetime.h"
#include "sound/playable.h"

CResourcesManager::~CResourcesManager() {
    // The children aren't flushed: they are the units', which may be gone already.
    children_.clear();
    flush();
}

void CResourcesManager::add(CResourcesManager* child) { children_.push_back(child); }

void CResourcesManager::remove(CResourcesManager* child) { std::erase(children_, child); }

void CResourcesManager::add(CFileResolver* object) { entries_.push_back({object->getFileName(), object, 1}); }

void CResourcesManager::insertAt(CFileResolver* object, int index) {
    const std::ptrdiff_t place =
        std::clamp(static_cast<std::ptrdiff_t>(index), std::ptrdiff_t{0}, std::ssize(entries_));
    entries_.insert(entries_.begin() + place, {object->getFileName(), object, 1});
}

CFileResolver* CResourcesManager::get(const CXString& name) {
    for (Entry& entry : entries_) {
        if (!entry.fileName.equalsIgnoreCase(name)) continue;
        ++entry.count;
        return entry.object;
    }
    for (CResourcesManager* child : children_) {
        if (CFileResolver* object = child->get(name)) return object;
    }
    return nullptr;
}

void CResourcesManager::remove(CFileResolver* object) {
    const auto it =
        std::find_if(entries_.begin(), entries_.end(), [=](const Entry& entry) { return entry.object == object; });
    if (it == entries_.end() || --it->count > 0) return;
    entries_.erase(it);
    // A resolver knows neither screen nor visibility; those it may have as a playable and as a graphic.
    if (auto* playable = dynamic_cast<CPlayable*>(object)) playable->hide();
    auto* graphic = dynamic_cast<CGraphicsObject*>(object);
    CRefreshScreen* screen = window_->GetRefreshScreenInterface();
    if (graphic && screen) *screen >> graphic;
    // It may be in the midst of an operation that called the script that gave it up.
    if (graphic) {
        destroyLate(std::unique_ptr<CXObject>(graphic));
    } else {
        delete object;
    }
}

void CResourcesManager::flush() {
    for (CResourcesManager* child : children_)
        child->flush();
    children_.clear();
    // An object's end may reach back here, so the list is taken over first.
    std::vector<Entry> entries;
    entries.swap(entries_);
    for (const Entry& entry : entries)
        delete entry.object;
}
