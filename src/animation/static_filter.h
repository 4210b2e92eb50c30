// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "animation/filter.h"
#include "animation/static_effects.h"
#include "sound/playable.h"

class CFrame;

// What a static filter has done to an object: a slot for each frame of an animation, or one.
struct CFilterUndoState : CFilterState {
    struct Slot {
        bool treated = false;
        bool saved = false;
        // The picture before the effect, as it stood: coded planes stay coded.
        CXSize size;
        CXPoint position;
        int bpp = 0;
        _compression compression = kCompressionRaw;
        Plane data, alpha;
    };
    std::vector<Slot> slots;
};

// A picture operation: linking applies it, once, to the object's picture or to frames of the animation, and with
// CANUNDO unlinking takes it back. Frames that come later are treated when they are shown for the first time.
class CStaticFilter : public CFilterBase, public CPlayableObserver {
public:
    CStaticFilter(CWindow* window, const StaticEffect& effect);
    ~CStaticFilter() override;

    void add(std::unique_ptr<CFilterEntry> made) override;
    void remove(CFilterEntry* entry) override;
    std::unique_ptr<CFilterEntry> createEntry(CGraphicsObject* object, CMC_Object* scriptObject) override;
    void release() override;
    bool onPlayableTick(CPlayable* playable) override;

private:
    const StaticProperties& chosen() const { return static_cast<const StaticProperties&>(getProperties()); }
    void treatFrame(CFilterEntry& entry, int number);
    void treat(CGraphicsObject& picture, CFilterUndoState::Slot& slot);
    static void prepareUndo(const CGraphicsObject& picture, CFilterUndoState::Slot& slot);
    void undo(CGraphicsObject& picture, const CFilterUndoState::Slot& slot) const;

    const StaticEffect& effect_;
};

std::unique_ptr<CStaticFilter> makeStaticFilter(const CXString& action, CWindow* window);  // null: an unknown action
