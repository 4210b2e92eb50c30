// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "sound/sound.h"

// A sound that is another one each time: its name holds several, with ";" between them.
class CRandomSoundFX : public CSound4 {
public:
    CRandomSoundFX(CWindow* window, const CXString& names);

    using CSound4::play;
    void play() override;  // any of them
    void stop(bool tell) override;
    bool isPlaying() const override { return last_ && last_->isPlaying(); }
    void setVolume(int volume) override;
    void setPanning(int panning) override;
    void setFrequency(int frequency) override;
    const std::vector<std::unique_ptr<CSound4>>& getSounds() const { return sounds_; }

private:
    std::vector<std::unique_ptr<CSound4>> sounds_;
    CSound4* last_ = nullptr;  // the one chosen last
};
