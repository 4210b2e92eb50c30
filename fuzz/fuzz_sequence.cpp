// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Sequence files: each input becomes a SEQUENCE in a scene with an animation and a sound, is played by every event that
// it may have, and goes while it plays.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "definition/element.h"
#include "script/lifetime.h"
#include "sound/sequence_object.h"
#include "structure/scene.h"
#include "support/animations.h"
#include "support/stage.h"

namespace {

constexpr int kStatements = 2000;
constexpr std::size_t kLongest = 2048;  // longer inputs tell nothing new
constexpr int kInputsOfAStage = 256;

// Not destroyed at the end of the program, when the library's own statics have gone already.
Stage* stage = nullptr;

void removeFolder() {
    std::error_code error;
    std::filesystem::remove_all(stage->platform.folder(), error);
}

std::string sound() {
    std::string bytes = "RIFF    WAVEfmt ";
    for (const auto& [value, size] : {
             std::pair{16,   4},
             {1,    2},
             {1,    2},
             {8000, 4},
             {8000, 4},
             {1,    2},
             {8,    2}
    })
        animations::put(bytes, value, size);
    bytes += "data";
    animations::put(bytes, 100, 4);
    return bytes + std::string(100, '\x80');
}

Stage* makeStage() {
    auto* made = new Stage(lines("HERO", "ANIMO", "FILENAME=hero.ann\nTOCANVAS=TRUE\nVISIBLE=TRUE\n") +
                           lines("VOICE", "SOUND", "FILENAME=A.WAV\n") + lines("LIST", "ARRAY"));
    made->file("Dane/S/hero.ann",
               animations::third("NVP", animations::sheet(2),
                                 {
                                     {"1",     {0, 1}, 0, 0, 0, 0, {}},
                                     {"START", {1},    0, 0, 0, 0, {}}
    }));
    made->file("Wavs/A.WAV", sound());
    return made;
}

}  // namespace

// The stage outlives an input, which looks like a leak each time. The tests look for leaks.
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
        stage->start();
    }
    stage->file("Dane/S/t.seq", {reinterpret_cast<const char*>(data), size});
    {
        const ScriptBudget budget(kStatements);
        CMElement element("SQ");
        element.addProperty("FILENAME", "t.seq");
        auto* sequence = new CMC_Sequence(stage->current(), &element);
        stage->current()->addObject(sequence);
        sequence->init();
        stage->run("SQ^PLAY(\"GO\");SQ^HIDE();SQ^SHOW();S^GETPLAYINGSEQ(\"LIST\");");
        stage->frames(12);
        stage->run("SQ^PAUSE();SQ^RESUME();SQ^STOP();LIST^ADD(1,60);SQ^PLAY(\"GO\",\"LIST\");SQ^SETVOLUME(9);");
        stage->frames(12);
        stage->run("SQ^PLAY(\"GO\",\"21\");S^REMOVE(\"SQ\");HERO^STOP();VOICE^PLAY();");
        stage->frames(2);
    }
    if (stage->object("SQ") != nullptr) std::abort();
    return 0;
}
