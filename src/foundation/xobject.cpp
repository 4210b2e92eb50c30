// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "foundation/xobject.h"

#include "platform/platform.h"

namespace {

struct Measurement {
    CXString name;
    std::uint32_t start = 0;
};

Measurement measurement;

}  // namespace

// The window's log drops every text, so there is nothing to pass on.
void CXObject::log(const char*, bool) {}

void CXObject::profile(const char* name, bool) {
    const std::uint32_t now = platform::current().clock.ticks();
    if (name) {
        measurement = {name, now};
        return;
    }
    if (!measurement.name.IsString()) return;
    CXString text;
    text.Format("Time spend in %s: %d ms.\n", measurement.name, static_cast<int>(now - measurement.start));
    platform::current().shell.debugOutput(text.view());
    measurement.name = "";
}

std::int16_t CXObject::swap_word(std::int16_t value) {
    const auto bits = static_cast<std::uint16_t>(value);
    return static_cast<std::int16_t>(bits >> 8 | bits << 8);
}

std::int32_t CXObject::swap_dword(std::int32_t value) {
    const auto bits = static_cast<std::uint32_t>(value);
    return static_cast<std::int32_t>(bits >> 24 | (bits >> 8 & 0xFF00U) | (bits << 8 & 0xFF0000U) | bits << 24);
}

int CXObject::objectId() const {
    static int last = 0;
    if (objectId_ == 0) {
        if (last == INT32_MAX) last = 0;
        objectId_ = ++last;
    }
    return objectId_;
}
