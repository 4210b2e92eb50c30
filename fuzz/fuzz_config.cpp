// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// The configuration file: what the bytes hold is read, one entry of their own words is put, and the file is written
// and read again. The entry must come back, and every line but the changed one must stand as it stood.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "frame/config_file.h"
#include "platform/headless/headless.h"

namespace {

// One file in memory.
class OneFile : public platform::Files {
public:
    std::string content;

    std::FILE* open(std::string_view, const char*) override { return nullptr; }
    bool changeFolder(std::string_view) override { return false; }
    std::string currentFolder() const override { return "C:\\"; }
    std::vector<platform::FileEntry> find(std::string_view) const override { return {}; }
    bool replaceFile(std::string_view, std::span<const std::byte> bytes) override {
        content.assign(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        return true;
    }
    std::optional<std::string> readFile(std::string_view) const override { return content; }
    std::optional<std::string> systemPath(std::string_view) const override { return "/"; }
};

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

// A line end that the file lacked at its end may have been given one.
bool isLine(std::string_view after, std::string_view before) {
    return after == before || (after.ends_with('\r') && after.substr(0, after.size() - 1) == before);
}

// How many lines of `before` stand between what both texts begin with and what both end with.
std::size_t linesLost(const std::string& before, const std::string& after) {
    const std::vector<std::string_view> then = linesOf(before), now = linesOf(after);
    std::size_t same = 0;
    while (same < then.size() && same < now.size() && isLine(now[same], then[same]))
        ++same;
    std::size_t lost = then.size() - same, more = now.size() - same;
    while (lost > 0 && more > 0 && isLine(now[more + same - 1], then[lost + same - 1])) {
        --lost;
        --more;
    }
    return lost;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static headless::HeadlessPlatform host;
    OneFile files;
    platform::Platform withOneFile{host.clock, files, host.shell, host.input, host.display, host.audio};
    platform::Platform* former = platform::install(&withOneFile);

    const std::string text(reinterpret_cast<const char*>(data), size);
    files.content = text;
    ConfigFile file("a.ini");
    // The names and the value are three pieces of the text itself, so that they often meet what it holds.
    const std::size_t seed = size > 0 ? data[size - 1] : 0;
    const auto piece = [&](std::size_t factor) {
        if (text.empty()) return std::string_view();
        const std::size_t begin = seed * factor % text.size();
        return std::string_view(text).substr(begin, seed * 7 / factor % 12);
    };
    const std::string_view section = piece(3), key = piece(5), value = piece(11);
    (void)file.get(section, key);
    file.put(section, key, value);
    const bool changed = file.isChanged();
    const std::optional<std::string_view> put = file.get(section, key);
    const std::optional<std::string> inMemory = put ? std::optional<std::string>(*put) : std::nullopt;
    if (!file.write(false)) std::abort();

    if (!changed && files.content != text) std::abort();
    if (linesLost(text, files.content) > 1) std::abort();
    const ConfigFile again("a.ini");
    const std::optional<std::string_view> back = again.get(section, key);
    if (back.has_value() != inMemory.has_value() || (back && *back != *inMemory)) std::abort();

    platform::install(former);
    return 0;
}
