// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "foundation/hashtable.h"

#include <algorithm>
#include <limits>
#include <utility>

CHashtable::CHashtable(int capacity, double load, bool ownsKeys)
    : capacity_(std::max(capacity, 1)), load_(load), ownsKeys_(ownsKeys), slots_(static_cast<std::size_t>(capacity_)) {}

CHashtable::~CHashtable() { clear(); }

void CHashtable::put(CXObject* key, CXObject* value) {
    if (!key) return;
    if (capacity_ < count_ * load_) grow();
    enter({key, value, key->getHashcode()});
}

void CHashtable::enter(const Entry& entry) {
    Slot& slot = slots_[slotOf(entry.hash)];
    if (!slot.first.key && !slot.chain) {
        slot.first = entry;
    } else {
        if (!slot.chain) slot.chain = std::make_unique<Chain>(1, std::exchange(slot.first, {}));
        slot.chain->push_back(entry);
    }
    ++count_;
    allValues_.add(entry.value);
}

void CHashtable::grow() {
    if (capacity_ > std::numeric_limits<int>::max() / 2) return;
    capacity_ *= 2;
    count_ = 0;
    allValues_.removeAll();
    std::vector<Slot> old = std::exchange(slots_, std::vector<Slot>(static_cast<std::size_t>(capacity_)));
    for (const Slot& slot : old) {
        if (slot.first.key) enter(slot.first);
        if (!slot.chain) continue;
        for (const Entry& entry : *slot.chain)
            enter(entry);
    }
}

CXObject* CHashtable::get(const CXObject* key) const {
    return key ? find(key->getHashcode(), [key](const CXObject* stored) { return key->equals(stored); }) : nullptr;
}

bool CHashtable::remove(const CXObject* value) {
    return std::any_of(slots_.begin(), slots_.end(), [&](Slot& slot) { return removeFrom(slot, value); });
}

bool CHashtable::remove(const CXObject* key, const CXObject* value) {
    return (key && removeFrom(slots_[slotOf(key->getHashcode())], value)) || remove(value);
}

bool CHashtable::removeFrom(Slot& slot, const CXObject* value) {
    CXObject* key = nullptr;
    if (slot.chain) {
        const auto entry = std::ranges::find(*slot.chain, value, &Entry::value);
        if (entry == slot.chain->end()) return false;
        key = entry->key;
        slot.chain->erase(entry);
        if (slot.chain->empty()) slot.chain.reset();
    } else {
        if (!slot.first.key || slot.first.value != value) return false;
        key = std::exchange(slot.first, {}).key;
    }
    --count_;
    allValues_.remove(value);
    release(key);
    return true;
}

void CHashtable::release(CXObject* key) {
    if (ownsKeys_) delete key;
}

CXVector* CHashtable::getKeys() const {
    if (count_ == 0) return nullptr;
    auto* keys = new CXVector;
    for (const Slot& slot : slots_) {
        if (slot.first.key) keys->add(slot.first.key);
        if (!slot.chain) continue;
        for (const Entry& entry : *slot.chain)
            keys->add(entry.key);
    }
    return keys;
}

void CHashtable::clear() {
    for (Slot& slot : slots_) {
        release(std::exchange(slot.first, {}).key);
        if (!slot.chain) continue;
        for (const Entry& entry : *slot.chain)
            release(entry.key);
        slot.chain.reset();
    }
    count_ = 0;
    allValues_.removeAll();
}

CXObject* CHashtable::clone() {
    auto* copy = new CHashtable(capacity_, load_, false);
    for (std::size_t i = 0; i < slots_.size(); ++i) {
        copy->slots_[i].first = slots_[i].first;
        if (slots_[i].chain) copy->slots_[i].chain = std::make_unique<Chain>(*slots_[i].chain);
    }
    copy->count_ = count_;
    copy->allValues_.add(allValues_);
    return copy;
}
