// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Stands in for the fuzzer: gives the target every file of the folders that are named, whole and cut off.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

// Exactly as large as the input, so that a sanitizer sees a read behind its end.
void replay(const std::string& input) {
    const std::vector<std::uint8_t> bytes(input.begin(), input.end());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

}  // namespace

int main(int count, char** arguments) {
    constexpr std::size_t kMostCuts = 512;
    std::vector<std::filesystem::path> files;
    for (int i = 1; i < count; ++i) {
        std::error_code error;
        for (const auto& entry : std::filesystem::directory_iterator(arguments[i], error))
            files.push_back(entry.path());
        if (error) std::fprintf(stderr, "%s: %s\n", arguments[i], error.message().c_str());
    }
    std::sort(files.begin(), files.end());
    for (const auto& file : files) {
        std::ifstream stream(file, std::ios::binary);
        const std::string input{std::istreambuf_iterator<char>(stream), {}};
        const std::size_t step = std::max<std::size_t>(input.size() / kMostCuts, 1);
        for (std::size_t length = 0; length < input.size(); length += step)
            replay(input.substr(0, length));
        replay(input);
    }
    std::printf("%zu inputs replayed\n", files.size());
    return files.empty() ? 1 : 0;
}
