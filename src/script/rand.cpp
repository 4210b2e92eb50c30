// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/rand.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "foundation/random.h"
#include "script/array.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "structure/scene.h"

namespace {

// Without a parameter 0; with one, up to below it; with two, from the first, as many values as the second says.
CMC_Variable* get(const MethodCall& c) {
    if (c.count() == 0) return toScript(0);
    return toScript(c.count() == 1 ? CXRandom::random(c.integer(0)) : CXRandom::random(c.integer(0), c.integer(1)));
}

// An array that isn't there takes nothing.
CMC_Variable* getPlenty(const MethodCall& c) {
    CMC_Object* found = c.scene ? c.scene->getObject(c.text(0).c_str()) : nullptr;
    if (found == nullptr || found->getType() != CMC_Array::kType) return nullptr;
    const int asked = c.integer(1);
    const int base = c.integer(2);
    const int span = c.integer(3);
    const auto count =
        static_cast<int>(std::clamp<std::int64_t>(asked == 0 ? std::int64_t{span} - base : asked, 0, 1000));
    const int* drawn = CXRandom::random_vector(base, span, count, c.truth(4));
    // What hears of the change may take the array away, or draw itself, into the same place.
    const ScriptScope scope;
    for (const int number : std::vector<int>(drawn, drawn + count)) {
        CMC_Integer value(number);
        static_cast<CMC_Array*>(found)->add(&value);
    }
    return nullptr;
}

constexpr MethodRow kMethods[] = {
    {1, "GET",       {get, "ii"}         },
    {2, "GETPLENTY", {getPlenty, "siiib"}},
};
static_assert(isMethodTable(kMethods));

}  // namespace

void CMC_Rand_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
