// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/runner_factory.h"

#include <algorithm>
#include <array>

#include "animation/animo_object.h"
#include "animation/canvas_object.h"
#include "animation/canvas_observer_object.h"
#include "animation/filter_object.h"
#include "animation/image_object.h"
#include "animation/pattern_object.h"
#include "animation/scroll_object.h"
#include "definition/cnv_loader.h"
#include "input/button_object.h"
#include "input/dialog_object.h"
#include "input/edit_box_object.h"
#include "input/keyboard_object.h"
#include "input/mouse.h"
#include "script/array.h"
#include "script/behaviour_runner.h"
#include "script/condition.h"
#include "script/dummy_runner.h"
#include "script/group.h"
#include "script/path.h"
#include "script/queue.h"
#include "script/rand.h"
#include "script/system.h"
#include "script/timer.h"
#include "script/variable_runner.h"
#include "script/vector.h"
#include "sound/sequence_object.h"
#include "sound/sound_object.h"
#include "structure/application.h"
#include "structure/episode.h"
#include "structure/scene_runner.h"
#include "text/font_object.h"
#include "text/text_object.h"

using Owned = std::unique_ptr<CMC_Runner>;

Owned CMC_RunnerFactory::pDummyRunner, CMC_RunnerFactory::pVariableRunner, CMC_RunnerFactory::pConditionRunner,
    CMC_RunnerFactory::pBehaviourRunner, CMC_RunnerFactory::pRandRunner, CMC_RunnerFactory::pAppRunner,
    CMC_RunnerFactory::pEpisodeRunner, CMC_RunnerFactory::pSceneRunner, CMC_RunnerFactory::pTimerRunner,
    CMC_RunnerFactory::pAnimoRunner, CMC_RunnerFactory::pImageRunner, CMC_RunnerFactory::pMouseRunner,
    CMC_RunnerFactory::pKeyboardRunner, CMC_RunnerFactory::pSoundRunner, CMC_RunnerFactory::pGroupRunner,
    CMC_RunnerFactory::pArrayRunner, CMC_RunnerFactory::pSystemRunner, CMC_RunnerFactory::pCNVLoaderRunner,
    CMC_RunnerFactory::pCORunner, CMC_RunnerFactory::pCanvasRunner, CMC_RunnerFactory::pPatternRunner,
    CMC_RunnerFactory::pScrollRunner, CMC_RunnerFactory::pVectorRunner, CMC_RunnerFactory::pPathRunner,
    CMC_RunnerFactory::pQueneRunner, CMC_RunnerFactory::pFilterRunner, CMC_RunnerFactory::pStaticFilterRunner,
    CMC_RunnerFactory::pSequenceRunner, CMC_RunnerFactory::pButtonRunner, CMC_RunnerFactory::pFontRunner,
    CMC_RunnerFactory::pTextRunner, CMC_RunnerFactory::pEditBoxRunner, CMC_RunnerFactory::pDialogRunner;

namespace {

struct RunnerRow {
    int type;
    Owned* runner;
};

constexpr std::array kRunners = {
#define SCRIPT_TYPE(number, text, keyword, pass, class, runner) RunnerRow{number, &CMC_RunnerFactory::runner},
#define LATER_TYPE(number, text, keyword, pass)
#include "script/script_types.def"
#undef SCRIPT_TYPE
#undef LATER_TYPE
};
static_assert(std::ranges::is_sorted(kRunners, {}, &RunnerRow::type));

template <class T>
void make(Owned& runner) {
    runner = std::make_unique<T>();
    runner->prepareMthHashSet();
}

}  // namespace

void CMC_RunnerFactory::initialize() {
    // Compiled lines hold on to their runners.
    if (pDummyRunner) return;
    make<CMC_Dummy_Runner>(pDummyRunner);
    make<CMC_Variable_Runner>(pVariableRunner);
    make<CMC_BasicCondition_Runner>(pConditionRunner);
    make<CMC_Behaviour_Runner>(pBehaviourRunner);
    make<CMC_Rand_Runner>(pRandRunner);
    make<CMC_Application_Runner>(pAppRunner);
    make<CMC_Episode_Runner>(pEpisodeRunner);
    make<CMC_Scene_Runner>(pSceneRunner);
    make<CMC_Timer_Runner>(pTimerRunner);
    make<CMC_Animo_Runner>(pAnimoRunner);
    make<CMC_Image_Runner>(pImageRunner);
    make<CMC_Font_Runner>(pFontRunner);
    make<CMC_Text_Runner>(pTextRunner);
    make<CMC_EditBox_Runner>(pEditBoxRunner);
    make<CMC_Dialog_Runner>(pDialogRunner);
    make<CMC_Filter_Runner>(pFilterRunner);
    make<CMC_StaticFilter_Runner>(pStaticFilterRunner);
    make<CMC_Mouse_Runner>(pMouseRunner);
    make<CMC_Keyboard_Runner>(pKeyboardRunner);
    make<CMC_Sequence_Runner>(pSequenceRunner);
    make<CMC_Button_Runner>(pButtonRunner);
    make<CMC_Sound_Runner>(pSoundRunner);
    make<CMC_CanvasObserver_Runner>(pCORunner);
    make<CMC_Canvas_Runner>(pCanvasRunner);
    make<CMC_Pattern_Runner>(pPatternRunner);
    make<CMC_Scroll_Runner>(pScrollRunner);
    make<CMC_Groupped_Runner>(pGroupRunner);
    make<CMC_Array_Runner>(pArrayRunner);
    make<CMC_Vector_Runner>(pVectorRunner);
    make<CMC_Path_Runner>(pPathRunner);
    make<CMC_Quene_Runner>(pQueneRunner);
    make<CMC_System_Runner>(pSystemRunner);
    make<CMC_CNVLoader_Runner>(pCNVLoaderRunner);
}

void CMC_RunnerFactory::done() {
    for (const RunnerRow& row : kRunners)
        row.runner->reset();
}

CMC_Runner* CMC_RunnerFactory::getRunner(int type) {
    const auto* row = std::ranges::lower_bound(kRunners, type, {}, &RunnerRow::type);
    return row != kRunners.end() && row->type == type ? row->runner->get() : nullptr;
}
