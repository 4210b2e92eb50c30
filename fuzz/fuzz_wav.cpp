// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Sound files: each input is read as a sound, which is played, and as a stream, which goes round.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "platform/headless/headless.h"
#include "sound/sound.h"
#include "sound/sound_manager.h"
#include "sound/stream.h"
#include "sound/wave_file.h"
#include "storage/file.h"

namespace {

constexpr char kName[] = "input.wav";

void checkHead() {
    CFile file(nullptr, kName, CFile::kReadBinary);
    const int length = file.Length();
    const auto head = readWaveHead(file, length);
    if (head && (head->dataStart < 0 || head->dataLength < 0 || head->dataStart > length - head->dataLength))
        std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static headless::HeadlessPlatform host;
    if (!host.write(kName, {reinterpret_cast<const char*>(data), size})) std::abort();
    checkHead();

    CSound4 sound(nullptr, kName, true);
    sound.setFrequency(size % 2 == 0 ? 0 : 100'000);
    sound.SetPosition(static_cast<int>(size) * 3);
    sound.play();
    host.audio.advance(20);
    sound.pause();
    sound.resume();
    host.audio.advance(20);
    CSoundManager::domodal();
    sound.stop(true);

    CSndStream stream(nullptr);
    if (!stream.Open(kName)) return 0;
    stream.Play(size % 3 != 0);
    host.audio.advance(200);
    stream.Pause();
    stream.Resume();
    host.audio.advance(100);
    return 0;
}
