// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Big files: every file is found by its own path or by an equal one before it, and gives no more than its bytes.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "platform/headless/headless.h"
#include "storage/big_file.h"
#include "storage/file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const headless::HeadlessPlatform platform;
    if (!platform.write("a", {reinterpret_cast<const char*>(data), size})) std::abort();
    CBigFile bigFile(nullptr, "a", false, "");
    if (!bigFile.GetFile()) return 0;
    // A name from the input, so that the look-up sees any text.
    bigFile.Seek(CXString(std::string_view(reinterpret_cast<const char*>(data), size)));
    _finddata_t found;
    bigFile.FindFirst("*.x", &found);
    int most = 100;
    bigFile.walk([](_entry&) {},
                 [&](_file& file) {
                     if (--most < 0) return;
                     const CXString name = "\\" + CBigFile::pathOf(*file.parent) + file.name;
                     bigFile.FileExists(name);
                     if (!bigFile.seekTo(file)) return;
                     const auto bytes = bigFile.GetFile()->readRest(1 << 20);
                     if (static_cast<int>(bytes.size()) > file.size) std::abort();
                 });
    return 0;
}
