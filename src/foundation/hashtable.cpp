// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "foundation/hashtable.h"

#include <algorithm>
#include <limits>
#include <utility>

CHashtable::CHashtable(int capacity, double load, bool ownsKeys)
    : capacity_(std::max(capacity, 1)), load_(load), ownsKeys_(ownsKeys), slots_(static_cast<std::size_t>(capacity_)) {}

CHashtable::~CHashtable() { clear(); }

std::size_t CHashtable::slotOf(int hash) const {
    const int rest = hash % capacity_;
    return static_cast<std::size_t>(rest < 0 ? -rest : rest);
}

void CHashtable::put(CXObject* key, CXObject* value) {
    if (!key) return;
    if (capacity_ < count_ * load_) grow();
    enter(key, value);
}

void CHashtable::enter(CXObject* key, CXObject* value) {
    Slot& slot = slots_[slotOf(key->getHashcode())];
    if (!slot.key && !slot.chain) {
        slot.key = key;
        slot.value = value;
    } else {
        if (!slot.chain) {
            slot.chain = std::make_unique<Chain>();
            slot.chain->keys.add(std::exchange(slot.key, nullptr));
            slot.chain->values.add(std::exchange(slot.value, nullptr));
        }
        slot.chain->keys.add(key);
        slot.chain->values.add(value);
    }
    ++count_;
    allValues_.add(value);
}

void CHashtable::grow() {
    if (capacity_ > std::numeric_limits<int>::max() / 2) return;
    capacity_ *= 2;
    count_ = 0;
    allValues_.removeAll();
    std::vector<Slot> old = std::exchange(slots_, std::vector<Slot>(static_cast<std::size_t>(capacity_)));
    for (const Slot& slot : old) {
        if (slot.key) enter(slot.key, slot.value);
        for (int i = 0; slot.chain && i < slot.chain->keys.size(); ++i)
            enter(slot.chain->keys.at(i), slot.chain->values.at(i));
    }
}

CXObject* CHashtable::get(const CXObject* key) const {
    if (!key) return nullptr;
    const int hash = key->getHashcode();
    const Slot& slot = slots_[slotOf(hash)];
    const auto fits = [&](const CXObject* stored) { return stored->getHashcode() == hash && key->equals(stored); };
    if (slot.key) return fits(slot.key) ? slot.value : nullptr;
    for (int i = 0; slot.chain && i < slot.chain->keys.size(); ++i)
        if (fits(slot.chain->keys.at(i))) return slot.chain->values.at(i);
    return nullptr;
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
        const int i = slot.chain->values.find(value);
        if (i < 0) return false;
        key = slot.chain->keys.at(i);
        slot.chain->keys.removeAt(i);
        slot.chain->values.removeAt(i);
        if (slot.chain->keys.isEmpty()) slot.chain.reset();
    } else {
        if (!slot.key || slot.value != value) return false;
        key = std::exchange(slot.key, nullptr);
        slot.value = nullptr;
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
        if (slot.key) keys->add(slot.key);
        if (slot.chain) keys->add(slot.chain->keys);
    }
    return keys;
}

void CHashtable::clear() {
    for (Slot& slot : slots_) {
        release(std::exchange(slot.key, nullptr));
        slot.value = nullptr;
        if (!slot.chain) continue;
        for (CXObject* key : slot.chain->keys.elements())
            release(key);
        slot.chain.reset();
    }
    count_ = 0;
    allValues_.removeAll();
}

CXObject* CHashtable::clone() {
    auto* copy = new CHashtable(capacity_, load_, false);
    for (std::size_t i = 0; i < slots_.size(); ++i) {
        copy->slots_[i].key = slots_[i].key;
        copy->slots_[i].value = slots_[i].value;
        if (!slots_[i].chain) continue;
        copy->slots_[i].chain = std::make_unique<Chain>();
        copy->slots_[i].chain->keys.add(slots_[i].chain->keys);
        copy->slots_[i].chain->values.add(slots_[i].chain->values);
    }
    copy->count_ = count_;
    copy->allValues_.add(allValues_);
    return copy;
}
