// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <algorithm>
#include <memory>
#include <vector>

class CGraphicsObject;

// Graphics objects that somebody shows without owning them, by ascending priority; of equal ones the later stands
// behind. `Entry` has at least a pointer `object` and a number `priority`.
//
// A walk may lead to code that takes entries out or puts new ones in. An entry that is taken out meanwhile stays where
// it is, without an object, until the outermost walk ends.
template <class Entry>
class ChildList {
public:
    void add(Entry entry) {
        const auto at = std::ranges::upper_bound(entries_, entry.priority, {},
                                                 [](const std::unique_ptr<Entry>& e) { return e->priority; });
        entries_.insert(at, std::make_unique<Entry>(std::move(entry)));
    }

    bool contains(const CGraphicsObject* object) const {
        return std::ranges::any_of(entries_, [=](const auto& entry) { return entry->object == object; });
    }

    // Calls `leaving(object)` for each entry that `matches`, once the entry is out.
    template <class Matches, class Leaving>
    void removeIf(Matches matches, Leaving leaving) {
        for (std::size_t i = 0; i < entries_.size(); ++i) {
            CGraphicsObject* object = entries_[i]->object;
            if (!object || !matches(*entries_[i])) continue;
            entries_[i]->object = nullptr;
            leaving(object);
        }
        sweep();
    }

    // Calls `visit(entry)` for each entry that still has its object. When that is gone behind an operation that may
    // have destroyed it, `entry.object` is null.
    template <class Visit>
    void walk(Visit visit) {
        ++walks_;
        for (std::size_t i = 0; i < entries_.size(); ++i) {
            const Entry& entry = *entries_[i];
            if (entry.object) visit(entry);
        }
        --walks_;
        sweep();
    }

private:
    void sweep() {
        if (walks_ == 0) std::erase_if(entries_, [](const auto& entry) { return !entry->object; });
    }

    std::vector<std::unique_ptr<Entry>> entries_;
    int walks_ = 0;
};
