// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "structure/episode.h"

#include "definition/element.h"
#include "definition/structure_parser.h"
#include "foundation/string_tokenizer.h"
#include "script/method_table.h"

namespace {

CMC_Variable* goTo(const MethodCall& c) {
    static_cast<CMC_Episode*>(c.object)->_goto(c.text(0));
    return nullptr;
}

constexpr MethodRow kMethods[] = {
    {1, "NEXT",           bind<&CMC_Episode::next>          },
    {2, "PREV",           bind<&CMC_Episode::prev>          },
    {3, "BACK",           bind<&CMC_Episode::back>          },
    {4, "RESTART",        bind<&CMC_Episode::restart>       },
    {5, "GOTO",           {goTo, "s"}                       },
    {6, "GETLATESTSCENE", bind<&CMC_Episode::getLatestScene>},
};
static_assert(isMethodTable(kMethods));

}  // namespace

CMC_Episode::CMC_Episode(CWindow* window) : CMC_Scene(window, kType) {}

CMC_Episode::CMC_Episode(CWindow* window, CMC_StructureParser* parser, CMElement* element)
    : CMC_Scene(window, nullptr, element, kType) {
    CStringTokenizer names(element->getPropertyValue("SCENES"), ", ");
    while (names.hasMoreTokens())
        addChild(parser->get(names.nextToken()));
    startScene_ = static_cast<CMC_Scene*>(parser->get(element->getPropertyValue("STARTWITH")));
    if (startScene_ == nullptr) startScene_ = firstChild();
    loadOwnObjects();
}

CMC_Episode::~CMC_Episode() {
    if (getCurrentScene()) CMC_Episode::unload(nullptr);
    deleteChildren();
}

bool CMC_Episode::initialize(CMC_Scene*) {
    if (CMC_Scene* parent = getParent()) {
        removeObject(parent);
        addObject(parent);
    }
    onInit();
    if (startScene_ == nullptr) {
        setCurrent(nullptr);
        return false;
    }
    _goto(startScene_, nullptr);
    return true;
}

void CMC_Episode::unload(CMC_Scene* next) {
    CMC_Scene* scene = getCurrentScene();
    if (scene == nullptr) return;
    if (getBehaviour("ONDONE")) onSignal("ONDONE");
    scene->unload(next);
    latestScene_ = scene->getName();
    setCurrent(nullptr);
}

void CMC_Episode::next() {
    const int at = getSubId(getCurrentScene());
    if (at >= 0 && at + 1 < getSubScenes()->size()) setPending(static_cast<CMC_Scene*>(getSubScenes()->at(at + 1)));
}

void CMC_Episode::prev() {
    const int at = getSubId(getCurrentScene());
    if (at > 0) setPending(static_cast<CMC_Scene*>(getSubScenes()->at(at - 1)));
}

// The scene that is gone back to joins the history again when it is entered, so one step leads one scene back.
void CMC_Episode::back() {
    const int size = history().size();
    if (size < 2) return;
    setPending(static_cast<CMC_Scene*>(history().at(size - 2)));
    history().removeAt(size - 1);
}

void CMC_Episode_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
