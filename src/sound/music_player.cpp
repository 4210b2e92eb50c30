// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/music_player.h"

#include "sound/stream.h"

CMusicPlayer::CMusicPlayer(CWindow* window) : window_(window) {}
CMusicPlayer::~CMusicPlayer() = default;

void CMusicPlayer::start(const CXString& fullName, bool loop) {
    if (isPlaying() && fileName_.equalsIgnoreCase(fullName)) return;
    stop();
    fileName_ = fullName;
    stream_ = std::make_unique<CSndStream>(window_, fullName);
    if (stream_->LastError() == 0) stream_->Play(loop);
}

void CMusicPlayer::stop() { stream_.reset(); }

bool CMusicPlayer::isPlaying() const { return stream_ && stream_->IsPlaying(); }
