// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Files of arrays: whatever is read is worked with, saved, and read again in the same form.
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

#include "script/array.h"
#include "script/integer.h"
#include "script/variable_factory.h"
#include "support/stage.h"

namespace {

// Not destroyed at the end of the program, when the library's own statics have gone already.
Stage* makeStage() {
    auto* made = new Stage(lines("A", "ARRAY") + lines("B", "ARRAY"));
    made->frames(1);
    return made;
}

std::optional<std::string> read(const Stage& stage, const std::string& name) {
    return stage.platform.files.readFile("C:" + stage.platform.folder() + "/Dane/S/" + name);
}

void workWith(CMC_Array& array) {
    CMC_Integer three(3);
    array.sort(true);
    array.sum(&three);
    array.shiftLeft();
    array.modat(array.getSize() - 1, &three);
    array.suma("A", -1, -1);
    array.saveINI();
    array.loadINI();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Stage* const stage = makeStage();
    if (!stage->platform.write("Dane/S/a.arr", {reinterpret_cast<const char*>(data), size})) std::abort();
    auto& a = static_cast<CMC_Array&>(*stage->object("A"));
    auto& b = static_cast<CMC_Array&>(*stage->object("B"));
    a.load("a.arr");
    // A length stands in the file for every element, so there cannot be more than bytes.
    if (static_cast<std::size_t>(a.getSize()) > size) std::abort();
    a.save("b.arr");
    b.load("b.arr");
    b.save("c.arr");
    // A DOUBLE is stored in thousandths that are cut off, and may lose one each time.
    const std::optional<std::string> saved = read(*stage, "b.arr"), again = read(*stage, "c.arr");
    if (!saved || !again || b.getSize() != a.getSize() || saved->size() != again->size()) std::abort();
    workWith(b);
    if (CMC_VariableFactory::takenCount() != 0) std::abort();
    return 0;
}
