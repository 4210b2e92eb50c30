// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "definition/element_creator.h"

CXObject* CMElementCreator::createObject(CWindow*, CMElement*) { return nullptr; }
CPlayable* CMElementCreator::createPlayable(CWindow*, CMElement*) { return nullptr; }
