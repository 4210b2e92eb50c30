// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/object_factory.h"

#include <algorithm>
#include <array>

#include "animation/animo_object.h"
#include "animation/canvas_object.h"
#include "animation/canvas_observer_object.h"
#include "animation/filter_object.h"
#include "animation/image_object.h"
#include "animation/pattern_object.h"
#include "animation/scroll_object.h"
#include "definition/element.h"
#include "input/button_object.h"
#include "input/dialog_object.h"
#include "input/edit_box_object.h"
#include "input/keyboard_object.h"
#include "input/mouse.h"
#include "platform/platform.h"
#include "script/array.h"
#include "script/behaviour.h"
#include "script/bool.h"
#include "script/condition.h"
#include "script/double.h"
#include "script/expression.h"
#include "script/group.h"
#include "script/integer.h"
#include "script/object.h"
#include "script/path.h"
#include "script/queue.h"
#include "script/string.h"
#include "script/timer.h"
#include "script/vector.h"
#include "sound/sequence_object.h"
#include "sound/sound_object.h"
#include "structure/scene.h"
#include "text/font_object.h"
#include "text/text_object.h"

namespace {

using Maker = std::unique_ptr<CMC_Object> (*)(CMC_Scene*, CMElement*);

template <class T>
std::unique_ptr<CMC_Object> make(CMC_Scene* scene, CMElement* element) {
    return std::make_unique<T>(scene, element);
}

struct nothing;
template <>
std::unique_ptr<CMC_Object> make<nothing>(CMC_Scene*, CMElement*) {
    return nullptr;
}

std::unique_ptr<CMC_Object> makeLater(CMC_Scene* scene, CMElement* element) {
    const CXString line = "scene " + scene->getName() + ": object " + element->getName() + " is of type " +
                          element->getPropertyValue("TYPE") + ", which is not built yet";
    platform::current().shell.debugOutput(line.view());
    return nullptr;
}

struct TypeRow {
    int number;
    std::string_view text;
    std::string_view keyword;
    int pass;
    Maker make;
};

constexpr std::array kTypes = {
#define SCRIPT_TYPE(number, text, keyword, pass, class, runner) TypeRow{number, text, keyword, pass, &make<class>},
#define LATER_TYPE(number, text, keyword, pass) TypeRow{number, text, keyword, pass, &makeLater},
#include "script/script_types.def"
#undef SCRIPT_TYPE
#undef LATER_TYPE
};

// A word that is recognised and makes nothing.
constexpr TypeRow kMultiImage{-1, "", "MULTIIMAGE", 5, &make<nothing>};

const TypeRow* findKeyword(std::string_view keyword) {
    if (keyword.empty()) return nullptr;
    if (keyword == kMultiImage.keyword) return &kMultiImage;
    const auto* row = std::ranges::find(kTypes, keyword, &TypeRow::keyword);
    return row == kTypes.end() ? nullptr : row;
}

}  // namespace

std::string_view scriptTypeText(int type) {
    const auto* row = std::ranges::find(kTypes, type, &TypeRow::number);
    return row == kTypes.end() ? std::string_view() : row->text;
}

int passOfKeyword(std::string_view keyword) {
    const TypeRow* row = findKeyword(keyword);
    return row ? row->pass : 0;
}

std::unique_ptr<CMC_Object> makeScriptObject(CMC_Scene* scene, CMElement* element) {
    const CXString keyword = element->getPropertyValue("TYPE");
    const TypeRow* row = findKeyword(keyword.view());
    return row ? row->make(scene, element) : nullptr;
}
