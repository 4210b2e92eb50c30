// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// The look-up in a big file of 10,000 files, 100 folders of 100; every file must be found before the time counts.
#include "storage/big_file.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <string>
#include <vector>

#include "platform/headless/headless.h"

namespace {

constexpr int kSide = 100;

std::string number(std::size_t value) {
    std::string bytes;
    for (int i = 0; i < 4; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    return bytes;
}

std::string text(const std::string& chars) { return number(chars.size()) + chars; }

void lookUp(benchmark::State& state) {
    const headless::HeadlessPlatform platform;
    std::string bytes = text("") + text("\\") + std::string(28, '\0') + text("") + number(0) + number(kSide);
    std::vector<CXString> names;
    for (int i = 0; i < kSide; ++i) {
        const std::string folder = "Folder" + std::to_string(i);
        bytes += text(folder) + number(kSide) + number(0);
        for (int j = 0; j < kSide; ++j) {
            const std::string name = "Picture" + std::to_string(j) + ".IMG";
            bytes += text(name) + number(names.size()) + std::string(8, '\0') + number(1);
            names.emplace_back(std::string_view(folder + "\\" + name)).Lower();
        }
    }
    if (!platform.write("a.big", bytes)) std::abort();
    const CBigFile bigFile(nullptr, "a.big", false, "");
    for (const CXString& name : names)
        if (!bigFile.FileExists(name)) std::abort();
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(bigFile.FileExists(names[i]));
        i = (i + 7919) % names.size();
    }
}
BENCHMARK(lookUp);

}  // namespace

BENCHMARK_MAIN();
