// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/behaviour_runner.h"

#include <optional>

#include "script/behaviour.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "structure/scene.h"

namespace {

CMC_Variable* latestReturn(CMC_Scene* scene) {
    CMC_Object* result = scene ? scene->getObject("__RETURN__") : nullptr;
    return result ? result->asVariable() : nullptr;
}

CMC_Variable* runOnce(const MethodCall& c, bool checkCondition) {
    std::optional<CodeParams> params;
    if (c.params) params = getParams(c.runner, c.scene, c.params);
    const bool broke = static_cast<CMC_Behaviour*>(c.object)->run(nullptr, params ? &*params : nullptr, checkCondition);
    return broke ? CMC_Variable::breakValue() : latestReturn(c.scene);
}

CMC_Variable* run(const MethodCall& c) { return runOnce(c, false); }
CMC_Variable* runChecked(const MethodCall& c) { return runOnce(c, true); }

CMC_Variable* runLooped(const MethodCall& c) {
    const ScriptScope scope;
    const std::int64_t start = c.integer(0);
    const std::int64_t bound = start + c.integer(1);
    const int step = c.count() > 2 ? c.integer(2) : 1;
    CodeParams params = {"0"};
    for (int i = 2; i < c.count(); ++i)
        params.push_back(c.text(i));
    const Ref<CMC_Behaviour> block(static_cast<CMC_Behaviour*>(c.object));
    for (std::int64_t i = start; i < bound && block && ScriptBudget::spend(); i += step) {
        params.front() = CXString::toString(static_cast<int>(i));
        if (block->run(nullptr, &params, true)) break;
    }
    return latestReturn(c.scene);
}

constexpr MethodRow kMethods[] = {
    {1, "RUN",       {run, "*"}                  },
    {2, "RUNC",      {runChecked, "*"}           },
    {3, "RUNLOOPED", {runLooped, "iii*"}         },
    {4, "BREAK",     bind<&CMC_Behaviour::_break>},
};
static_assert(isMethodTable(kMethods));

}  // namespace

CodeParams getParams(CMC_Runner& runner, CMC_Scene* scene, CXVector* params, int from) {
    CodeParams texts;
    for (int i = from; i < CMC_Runner::countOf(params); ++i) {
        const CXString text = runner.getParameter(params, i)->asString();
        const CMC_Object* named = scene ? scene->getObject(text.c_str()) : nullptr;
        texts.push_back(named == nullptr || named->getType() <= 4 ? text : "\"" + text + "\"");
    }
    return texts;
}

void CMC_Behaviour_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
