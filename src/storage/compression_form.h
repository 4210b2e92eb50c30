// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

// In which form the planes of a picture stand. The numbers are those of stored files.
enum _compression {
    kCompressionRaw = 0,
    kCompressionFrame = 1,          // raw planes of the second frame layout; nothing decodes it
    kCompressionDictionary = 2,     // a dictionary coder's stream of the raw planes
    kCompressionDictionaryRle = 3,  // a dictionary coder's stream of the form below
    kCompressionRle = 4,            // runs: of 16-bit units in the pixel plane, of bytes in the alpha plane
};
