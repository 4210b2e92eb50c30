// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// The archive: the first bytes choose what is asked for, the rest is the file.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "graphics/geometry.h"
#include "platform/headless/headless.h"
#include "storage/archive.h"
#include "storage/file.h"

namespace {

void readOne(CXArchive& archive, unsigned kind) {
    int number = 0;
    std::int64_t large = 0;
    bool flag = false;
    double real = 0;
    char letter = 0;
    char* chars = nullptr;
    CXString text;
    CXRect rect;
    switch (kind % 9) {
        case 0:
            archive >> number;
            break;
        case 1:
            archive >> large;
            break;
        case 2:
            archive >> flag;
            break;
        case 3:
            archive >> real;
            break;
        case 4:
            archive >> letter;
            break;
        case 5:
            archive >> &chars;
            break;
        case 6:
            archive >> text;
            break;
        case 7:
            archive.readShortString(text);
            break;
        default:
            archive.FRead(text);
            break;
    }
    delete[] chars;
    archive >> rect;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const headless::HeadlessPlatform host;
    constexpr std::size_t kMostReads = 8;
    const std::size_t reads = std::min(size, kMostReads);
    if (!host.write("a", {reinterpret_cast<const char*>(data) + reads, size - reads})) std::abort();
    CFile file(nullptr, "a", CFile::kReadBinary);
    CXArchive archive(&file, false);
    bool ok = true;
    for (std::size_t i = 0; i < reads; ++i) {
        readOne(archive, data[i]);
        // What has failed stays failed.
        if (archive.ok() && !ok) std::abort();
        ok = archive.ok();
    }
    return 0;
}
