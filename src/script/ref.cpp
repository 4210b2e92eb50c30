// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/ref.h"

std::uint32_t RefRegistry::acquire(CMC_Object* object) {
    if (slots_.empty()) slots_.emplace_back();
    std::uint32_t slot;
    if (free_.empty()) {
        slot = static_cast<std::uint32_t>(slots_.size());
        slots_.emplace_back();
    } else {
        slot = free_.back();
        free_.pop_back();
    }
    slots_[slot].object = object;
    return slot;
}

void RefRegistry::release(std::uint32_t slot) {
    slots_[slot].object = nullptr;
    // A slot whose generations are used up stays out of service, so that no old reference can come to life again.
    if (++slots_[slot].generation != 0) free_.push_back(slot);
}
