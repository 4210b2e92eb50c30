// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/random_sound_fx.h"

#include "foundation/random.h"
#include "foundation/string_tokenizer.h"
#include "frame/window.h"

CRandomSoundFX::CRandomSoundFX(CWindow* window, const CXString& names) : CSound4(window, names) {
    CStringTokenizer tokens(names, ";");
    while (tokens.hasMoreTokens()) {
        CXString name = tokens.nextToken();
        // The first part of a list comes with the folder that was put before the whole list.
        const CXString folder = window ? window->GetSoundFXFullPath("") : CXString();
        const bool isPlaced = folder.IsString() && name.view().starts_with(folder.view());
        const bool isWhole = name.view().find(':') != std::string_view::npos;
        if (window && !isPlaced && !isWhole) name = window->GetSoundFXFullPath(name);
        sounds_.push_back(std::make_unique<CSound4>(window, name));
    }
}

void CRandomSoundFX::play() {
    if (sounds_.empty()) return;
    last_ = sounds_[static_cast<std::size_t>(CXRandom::draw()) % sounds_.size()].get();
    last_->play();
}

void CRandomSoundFX::stop(bool tell) {
    CSound4::stop(tell);
    if (last_) last_->stop(tell);
}

void CRandomSoundFX::setVolume(int volume) {
    for (const auto& sound : sounds_)
        sound->setVolume(volume);
}

void CRandomSoundFX::setPanning(int panning) {
    for (const auto& sound : sounds_)
        sound->setPanning(panning);
}

void CRandomSoundFX::setFrequency(int frequency) {
    for (const auto& sound : sounds_)
        sound->setFrequency(frequency);
}
