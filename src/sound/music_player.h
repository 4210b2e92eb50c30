// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "foundation/xobject.h"

class CSndStream;
class CWindow;

// The window's music: one stream at a time.
class CMusicPlayer : public CXObject {
public:
    explicit CMusicPlayer(CWindow* window);
    ~CMusicPlayer() override;

    // The file that already plays, in any case of letters, plays on undisturbed.
    void start(const CXString& fullName, bool loop);
    void stop();
    bool isPlaying() const;
    CSndStream* getStream() const { return stream_.get(); }  // null: none
    const CXString& getFileName() const { return fileName_; }

private:
    CWindow* window_;
    std::unique_ptr<CSndStream> stream_;
    CXString fileName_;
};
