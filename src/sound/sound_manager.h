// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

// Watches all sounds and tells when they end. There are no sounds yet, so there is nothing to watch.
class CSoundManager {
public:
    static void domodal() {}
    static void pause() {}
    static void resume() {}
    static void Flush() {}
};
