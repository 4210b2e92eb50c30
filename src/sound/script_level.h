// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

// From the levels of scripts to the device's hundredths of a decibel. What would hardly be heard is silence.

int volumeLevel(int volume);  // 0 to 800, full
int panLevel(int pan);        // 0, left, to 800, right; 400 is the middle
