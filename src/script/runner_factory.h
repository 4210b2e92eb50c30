// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

class CMC_Runner;

// The runners, one for each family of script types, made once for an application and shared by all its scenes.
class CMC_RunnerFactory {
public:
    static void initialize();  // before any script is compiled
    static void done();

    // Null for a type without a runner here.
    static CMC_Runner* getRunner(int type);

    static std::unique_ptr<CMC_Runner> pDummyRunner, pVariableRunner, pConditionRunner, pBehaviourRunner, pRandRunner,
        pAppRunner, pEpisodeRunner, pSceneRunner, pTimerRunner, pAnimoRunner, pImageRunner, pMouseRunner,
        pKeyboardRunner, pSoundRunner, pGroupRunner, pArrayRunner, pSystemRunner, pCNVLoaderRunner, pCORunner,
        pCanvasRunner, pPatternRunner, pScrollRunner, pVectorRunner, pPathRunner, pQueneRunner, pFilterRunner,
        pStaticFilterRunner, pSequenceRunner, pButtonRunner, pFontRunner, pTextRunner, pEditBoxRunner, pDialogRunner;
};
