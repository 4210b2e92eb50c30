// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <string_view>

// Windows-1250, the code page of everything inside the library, against UTF-8, that of the world around it.
namespace headless {

// Bytes to which the code page gives no character become U+FFFD.
std::string toUtf8(std::string_view text);

// Characters that the code page lacks become '_'. A text that isn't UTF-8 is given back as it stands: a folder that was
// unpacked from an old archive holds names in Windows-1250 already.
std::string fromUtf8(std::string_view text);

// The lower case of every letter of the code page.
char foldCase(char c);
std::string foldCase(std::string_view text);

}  // namespace headless
