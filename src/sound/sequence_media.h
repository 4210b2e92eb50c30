// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xstring.h"

class CAnimo;
class CMC_Animo;
class CMC_Sound;
class CResourcesManager;
class CSound4;
class CWindow;

// Where the elements of sequences find their animations and sounds.
namespace media {

// The current scene's object of that name, if it is an ANIMO that has an animation; null: none.
CMC_Animo* sceneAnimo(CWindow* window, const CXString& name);
CSound4* sceneSound(CWindow* window, const CXString& name);  // likewise, the sound of a SOUND
// Out of the cache, with one more count, or new in it; `isNew` tells which.
CAnimo* cachedAnimo(CWindow* window, CResourcesManager* cache, const CXString& fileName, bool& isNew);
CSound4* cachedSound(CWindow* window, CResourcesManager* cache, const CXString& fullName);
void putOnScreen(CWindow* window, CAnimo* animation);  // unless it is there

}  // namespace media
