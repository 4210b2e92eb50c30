// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

// The host's window, cursors and menu, which the library passes on and compares but never looks into.
using HWND = void*;
using HICON = void*;
using HMENU = void*;
