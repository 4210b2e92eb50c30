// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

class CMElement;
class CPlayable;
class CWindow;
class CXObject;

// Builds engine objects from elements without a script object round them. What comes back is the caller's; null for a
// type that isn't built here.
class CMElementCreator {
public:
    static CXObject* createObject(CWindow* window, CMElement* element);     // IMAGE
    static CPlayable* createPlayable(CWindow* window, CMElement* element);  // ANIMO and SEQUENCE
};
