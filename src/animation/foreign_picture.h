// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>

#include "foundation/xstring.h"

class CFile;
class CGraphicsObject;

// What the readers of other programs' pictures have in common.

// Loads the named file through the picture's own `Load(CFile*)`, also out of the window's big file, and brings it to
// the screen's format. 0, or the error word, which has been told through CWindow::QuitOnError.
int loadForeign(CGraphicsObject& picture, const CXString& name);

// A line of debug output about a file that can't be used.
void tellForeign(const CFile& file, const std::string& reason);
