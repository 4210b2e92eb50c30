// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "foundation/xvector.h"

// A chained hash table from key objects to values. It never owns its values; it owns its keys when told so.
//
// The slot is the key's hash modulo the capacity, taken non-negative. The capacity doubles when it falls below
// count * load, and every entry is entered anew, slot by slot.
class CHashtable : public CXObject {
public:
    CHashtable(int capacity, double load, bool ownsKeys);
    ~CHashtable() override;
    CHashtable(const CHashtable&) = delete;
    CHashtable& operator=(const CHashtable&) = delete;

    // Doesn't look for an equal key: a second entry of one key is kept, and `get` finds the first.
    void put(CXObject* key, CXObject* value);
    CXObject* get(const CXObject* key) const;  // null: none
    // The first value whose key has that hash and passes the test; for lookups that don't need a key object.
    template <class Fits>
    CXObject* find(int hash, Fits fits) const {
        const Slot& slot = slots_[slotOf(hash)];
        if (slot.first.key) return slot.first.hash == hash && fits(slot.first.key) ? slot.first.value : nullptr;
        if (slot.chain)
            for (const Entry& entry : *slot.chain)
                if (entry.hash == hash && fits(entry.key)) return entry.value;
        return nullptr;
    }
    // Takes out the first entry of that value by slot order; a key that the table owns is destroyed. False: none.
    bool remove(const CXObject* value);
    // The same for the entry of that value in the key's slot, without a walk over the slots; falls back on
    // remove(value).
    bool remove(const CXObject* key, const CXObject* value);
    bool contains(const CXObject* value) const { return allValues_.contains(value); }
    // All keys in slot order, a new vector that is the caller's; null for an empty table.
    CXVector* getKeys() const;
    // Every value in order of entry; after a growth, in order of the re-entry.
    const CXVector* getAllValues() const { return &allValues_; }
    int getCount() const { return count_; }
    int getCapacity() const { return capacity_; }
    double getLoad() const { return load_; }
    void clear();
    // A table of the same capacity, load, keys and values that doesn't own the keys.
    CXObject* clone() override;

private:
    struct Entry {
        CXObject* key = nullptr;
        CXObject* value = nullptr;
        int hash = 0;  // the key's, so that a walk along a chain asks no key that can't be the one
    };
    using Chain = std::vector<Entry>;
    struct Slot {
        Entry first;
        std::unique_ptr<Chain> chain;  // when set, `first` is unused; a chain that shrinks to one stays one
    };

    std::size_t slotOf(int hash) const {
        const int rest = hash % capacity_;
        return static_cast<std::size_t>(rest < 0 ? -rest : rest);
    }
    void enter(const Entry& entry);
    void grow();
    bool removeFrom(Slot& slot, const CXObject* value);
    void release(CXObject* key);

    int capacity_;
    int count_ = 0;
    double load_;
    bool ownsKeys_;
    std::vector<Slot> slots_;
    CXVector allValues_;
};
