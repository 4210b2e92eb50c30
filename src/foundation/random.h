// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

// Random numbers: the tick count plus a draw from a generator of 15 bits, modulo a span.
//
// The generator is the library's own, so that a run on the virtual clock can be played again; its seed comes from the
// platform's clock.
class CXRandom {
public:
    CXRandom();  // seeds by the wall time

    static void seed(unsigned value);
    static int draw();  // 0 to 32767, the generator alone

    static int random(int n);         // 0 to n - 1; 0 when n is 0
    static int random(int a, int b);  // a to a + b - 1: b is the span, not the upper bound; a when b is 0

    // `count` values, each drawn like random(base, span), in a static array that the next call overwrites. A count of
    // 0 stands for span - base; it is held between 0 and 1000. When `unique` asks for more values than the span has,
    // the surplus ones repeat.
    static int* random_vector(int base, int span, int count, bool unique);
};
