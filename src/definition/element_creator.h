// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

class CMElement;
class CPlayable;
class CWindow;
class CXObject;

// Builds engine objects from elements without a script object round them. It knows the types IMAGE, ANIMO and
// SEQUENCE, none of which can be built yet.
class CMElementCreator {
public:
    static CXObject* createObject(CWindow* window, CMElement* element);     // null: not a type that it builds
    static CPlayable* createPlayable(CWindow* window, CMElement* element);  // the same
};
