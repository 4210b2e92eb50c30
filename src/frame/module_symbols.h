// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "foundation/xstring.h"
#include "platform/shell.h"

// Modules are written in C++, so their entry points are exported under the names that the compiler makes of the
// signatures.

// Loads a module by a name in any case of letters; null, and one line in the log, when that fails.
std::unique_ptr<platform::Module> loadModule(const CXString& name);

// Says that the module is left out.
void reportMissingEntryPoint(const CXString& name);

template <class Function>
Function entryPoint(const platform::Module& module, const char* name) {
    return reinterpret_cast<Function>(module.symbol(name));
}
