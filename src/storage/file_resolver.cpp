// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "storage/file_resolver.h"

#include "frame/window.h"

void CFileResolver::log(const char* text, bool flag) { CWindow::toLog(text, flag); }
