// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <string_view>

class CMC_Object;
class CMC_Scene;
class CMElement;

// The text of a script type; "" for a type without one.
std::string_view scriptTypeText(int type);

// The pass of the scene's loader, 1 to 5, in which elements of that TYPE word are built; 0 for a word that isn't known.
int passOfKeyword(std::string_view keyword);

// The object that the element defines, by its TYPE word; null for a word that isn't known or builds nothing.
std::unique_ptr<CMC_Object> makeScriptObject(CMC_Scene* scene, CMElement* element);
