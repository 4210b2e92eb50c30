// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Script code: each input is a block that runs in a scene with one object of each type, and again as a handler, as a
// timer's block and through the evaluator of text.
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "script/behaviour.h"
#include "script/lifetime.h"
#include "script/variable.h"
#include "structure/scene.h"
#include "support/stage.h"

namespace {

constexpr int kStatements = 2000;
constexpr std::size_t kLongest = 4096;  // longer inputs tell nothing new
constexpr int kInputsOfAStage = 256;    // what scripts leave on the disk is cleared away then

const std::string kScene =
    code("B", "LOG^ADD(\"$1\");N^ADD($2);") + lines("N", "INTEGER", "VALUE=3\nONCHANGED=B(a,1)\n") +
    lines("HOOK", "INTEGER", "TOINI=TRUE\n") + lines("D", "DOUBLE", "VALUE=2.5\nONBRUTALCHANGED^1.00=B\n") +
    lines("F", "BOOL", "VALUE=TRUE\n") + lines("LOG", "STRING") + lines("W", "STRING", "VALUE=N\nONDONE=B(w)\n") +
    lines("C", "CONDITION", "OPERAND1=N\nOPERATOR=LESS\nOPERAND2=5\nONRUNTIMESUCCESS=B(c)\n") +
    lines("CC", "COMPLEXCONDITION", "OPERATOR=AND\nCONDITION1=C\nCONDITION2=C\n") +
    lines("E", "EXPRESSION", "OPERAND1=N\nOPERATOR=ADD\nOPERAND2=[D*2]\n") + lines("LIST", "ARRAY") +
    lines("T", "TIMER", "ELAPSE=10\nONTICK=B(t)\n") + lines("G", "GROUP") +
    lines("GUARDED", "BEHAVIOUR", "CODE={@LOOP({LOG^ADD(_I_);},0,$1,1);}\nCONDITION=C\n");

std::unique_ptr<Stage> makeStage() {
    auto stage = std::make_unique<Stage>(kScene);
    stage->scene("T2", kScene);
    stage->file("Dane/S/more.cnv", kScene);
    return stage;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static std::unique_ptr<Stage> stage;
    static int inputs = 0;
    if (size > kLongest) return 0;
    if (inputs++ % kInputsOfAStage == 0) {
        stage.reset();
        stage = makeStage();
    }
    const std::string text(reinterpret_cast<const char*>(data), size);
    stage->start();
    {
        const ScriptBudget budget(kStatements);
        stage->run(text);
        if (CMC_Scene* scene = stage->current()) {
            CMC_Object::release(
                CMC_Behaviour::runLine(scene, stage->object("N"), CXString(std::string_view(text)), nullptr));
            auto* block = new CMC_Behaviour(scene, CXString(std::string_view(text)), "FUZZED");
            block->init();
            scene->addObject(block);
            stage->run("G^ADD(\"N\",\"D\",\"W\",\"B\");B^CLONE();FUZZED^RUN(N,\"x\",[N+1]);");
            stage->run(
                "HOOK^ADDBEHAVIOUR(\"ONCHANGED\",\"FUZZED\",1,W);HOOK^INC();@RUNONTIMER(10,2,\"FUZZED\",\"FUZZED\");");
        }
        stage->frames(3);
        stage->run("S^RESUME();EP^GOTO(\"T2\");APP^GOTO(\"EP\");");
        stage->frames(1);
    }
    // A scene that nothing has touched, for the next input.
    stage->run("S^RESUME();T2^RESUME();EP^GOTO(\"S\");");
    stage->frames(2);
    const CMC_Scene* scene = stage->current();
    if (scene == nullptr || scene->getName() != "S") std::abort();
    return 0;
}
