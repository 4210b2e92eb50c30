// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <atomic>
#include <vector>

class CSound4;

// Watches all sounds from the main loop and tells each one when it has come to its end, once for each time it was
// played.
class CSoundManager {
public:
    static void add(CSound4* sound, bool owned);
    static void remove(CSound4* sound);  // also from within what the sound tells
    static void play(CSound4* sound);    // from now on its end is waited for
    static void pause();                 // every sound that plays
    static void resume();                // every one that is paused
    // One look at all sounds. Also passes on what the streams have told.
    static void domodal();
    static void Flush();  // forgets all sounds and deletes those that it owns

    // A stream has begun anew. From any thread; the current scene hears of it in the next frame.
    static void musicLooped() { ++turns_; }

private:
    struct Entry {
        CSound4* sound;  // null: removed
        bool active;
        bool owned;
    };

    static Entry* find(const CSound4* sound);
    static void sweep();  // at the end of each walk

    static inline constinit std::vector<Entry> entries_;
    static inline constinit int walks_ = 0;  // while above 0 entries are only marked
    static inline constinit std::atomic<int> turns_ = 0;
};
