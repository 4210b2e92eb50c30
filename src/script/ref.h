// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <vector>

class CMC_Object;

// Where references to script objects are resolved: a slot for each referenced object, with a generation that moves on
// when the object retires.
class RefRegistry {
public:
    struct Slot {
        CMC_Object* object = nullptr;
        std::uint32_t generation = 0;
    };

    // A free slot, now taken by the object. Slot 0 is never given.
    static std::uint32_t acquire(CMC_Object* object);
    // All references to the slot's object read as null from now on.
    static void release(std::uint32_t slot);
    static const Slot& at(std::uint32_t slot) { return slots_[slot]; }

private:
    static inline constinit std::vector<Slot> slots_;
    static inline constinit std::vector<std::uint32_t> free_;
};

// A link to a script object that may die: it reads as null once the object has been taken out of its scene for good.
// Whatever holds a script object beyond one call holds one of these.
template <class T>
class Ref {
public:
    Ref() = default;
    Ref(T* object) {  // NOLINT(google-explicit-constructor): it stands where a pointer would
        if (object == nullptr) return;
        slot_ = object->refSlot();
        if (slot_) generation_ = RefRegistry::at(slot_).generation;
    }

    T* get() const {
        if (slot_ == 0) return nullptr;
        const RefRegistry::Slot& slot = RefRegistry::at(slot_);
        return slot.generation == generation_ ? static_cast<T*>(slot.object) : nullptr;
    }
    T* operator->() const { return get(); }
    explicit operator bool() const { return get() != nullptr; }
    friend bool operator==(const Ref& a, const T* b) { return a.get() == b; }

private:
    std::uint32_t slot_ = 0;
    std::uint32_t generation_ = 0;
};
