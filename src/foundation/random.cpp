// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "foundation/random.h"

#include <algorithm>
#include <cstdint>

#include "platform/platform.h"

namespace {

constexpr int kMostValues = 1000;

std::uint32_t state = 1;

// The sum is unsigned, so a negative span acts as a very large one.
std::uint32_t drawBelow(int span) {
    if (span == 0) return 0;
    return (platform::current().clock.ticks() + static_cast<std::uint32_t>(CXRandom::draw())) %
           static_cast<std::uint32_t>(span);
}

}  // namespace

CXRandom::CXRandom() { seed(static_cast<unsigned>(platform::current().clock.utcSeconds())); }

void CXRandom::seed(unsigned value) { state = value; }

int CXRandom::draw() {
    state = state * 214013U + 2531011U;
    return static_cast<int>(state >> 16 & 0x7FFFU);
}

int CXRandom::random(int n) { return static_cast<int>(drawBelow(n)); }

int CXRandom::random(int a, int b) { return static_cast<int>(static_cast<std::uint32_t>(a) + drawBelow(b)); }

int* CXRandom::random_vector(int base, int span, int count, bool unique) {
    static int values[kMostValues];
    if (count == 0) count = static_cast<int>(static_cast<std::uint32_t>(span) - static_cast<std::uint32_t>(base));
    count = std::clamp(count, 0, kMostValues);
    const std::uint32_t different = span == 0 ? 1U : static_cast<std::uint32_t>(span);
    for (int i = 0; i < count; ++i) {
        do {
            values[i] = random(base, span);
        } while (unique && static_cast<std::uint32_t>(i) < different &&
                 std::find(values, values + i, values[i]) != values + i);
    }
    return values;
}
