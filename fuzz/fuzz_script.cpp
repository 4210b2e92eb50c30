// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Script code: each input is a block that runs in a scene with one object of each type, and again as a handler, as a
// timer's block and through the evaluator of text.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

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
    code("B", "LOG^ADD(\"$1\");D^ADD($2);") + lines("N", "INTEGER", "VALUE=3\nONCHANGED=B(a,1)\n") +
    lines("HOOK", "INTEGER", "TOINI=TRUE\n") + lines("D", "DOUBLE", "VALUE=2.5\nONBRUTALCHANGED^1.00=GUARDED\n") +
    lines("F", "BOOL", "VALUE=TRUE\n") + lines("LOG", "STRING") + lines("W", "STRING", "VALUE=N\nONDONE=B(w)\n") +
    lines("C", "CONDITION", "OPERAND1=N\nOPERATOR=LESS\nOPERAND2=5\nONRUNTIMESUCCESS=B(c)\n") +
    lines("CC", "COMPLEXCONDITION", "OPERATOR=AND\nCONDITION1=C\nCONDITION2=C\n") +
    lines("E", "EXPRESSION", "OPERAND1=N\nOPERATOR=ADD\nOPERAND2=[D*2]\n") + lines("LIST", "ARRAY") +
    lines("T", "TIMER", "ELAPSE=10\nONTICK=B(t)\n") + lines("G", "GROUP") +
    lines("GUARDED", "BEHAVIOUR", "CODE={@LOOP({LOG^ADD(_I_);},0,$1,1);}\nCONDITION=C\n");

// Not destroyed at the end of the program, when the library's own statics have gone already.
Stage* stage = nullptr;

void removeFolder() {
    std::error_code error;
    std::filesystem::remove_all(stage->platform.folder(), error);
}

Stage* makeStage() {
    auto* made = new Stage(kScene);
    made->scene("T2", kScene);
    made->file("Dane/S/more.cnv", kScene);
    return made;
}

}  // namespace

// The stage outlives an input, which looks like a leak each time, and the search for it takes far longer than the
// input; scenes come and go, and a long quarantine of their tables is slow as well. The tests look for leaks.
extern "C" const char* __asan_default_options() {  // NOLINT(bugprone-reserved-identifier): the sanitizer's name
    return "detect_leaks=0:quarantine_size_mb=8";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static int inputs = 0;
    if (size > kLongest) return 0;
    if (inputs == 0) std::atexit(removeFolder);
    if (inputs++ % kInputsOfAStage == 0) {
        delete stage;
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
    }
    // A scene that nothing has touched, for the next input.
    stage->run("S^RESUME();T2^RESUME();EP^GOTO(\"S\");");
    stage->frames(1);
    const CMC_Scene* scene = stage->current();
    if (scene == nullptr || scene->getName() != "S") std::abort();
    return 0;
}
