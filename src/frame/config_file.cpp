// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "frame/config_file.h"

#include <algorithm>
#include <span>

#include "platform/platform.h"

namespace {

constexpr std::string_view kBlanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string lowered(std::string_view name) {
    std::string result(trimmed(name));
    std::transform(result.begin(), result.end(), result.begin(), [](char c) { return lowerCase(c); });
    return result;
}

// A line feed stands in no name, so it keeps section and key apart.
std::string entryKey(std::string_view loweredSection, std::string_view key) {
    return std::string(loweredSection) + '\n' + lowered(key);
}

std::string onOneLine(std::string_view text) {
    std::string result(text.substr(0, text.find('\0')));
    std::replace_if(
        result.begin(), result.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    return result;
}

bool canBeSection(std::string_view name) { return name.find(']') == std::string_view::npos; }

bool canBeKey(std::string_view name) {
    return !name.empty() && name.find('=') == std::string_view::npos && name.front() != '[' && name.front() != ';';
}

}  // namespace

ConfigFile::ConfigFile(const CXString& name) : name_(name) {
    sections_.emplace_back();
    const platform::Files& files = platform::current().files;
    if (const std::optional<std::string> content = files.readFile(name_.view())) {
        parse(*content);
    } else if (files.systemPath(name_.view())) {
        locked_ = true;
        tell("can't be read");
    }
}

void ConfigFile::tell(const char* what) const {
    platform::current().shell.debugOutput("configuration " + std::string(name_.view()) + ": " + what);
}

void ConfigFile::parse(std::string_view content) {
    const std::size_t firstEnd = content.find('\n');
    if (firstEnd != std::string_view::npos && (firstEnd == 0 || content[firstEnd - 1] != '\r')) lineEnd_ = "\n";
    while (!content.empty()) {
        const std::size_t end = std::min(content.find('\n'), content.size() - 1) + 1;
        addLine(std::string(content.substr(0, end)));
        content.remove_prefix(end);
    }
}

void ConfigFile::addLine(std::string text) {
    const std::string_view body = std::string_view(text).substr(0, text.find('\n'));
    const std::string_view meaning = trimmed(body);
    const std::size_t line = lines_.size();

    const std::size_t close = meaning.find(']');
    if (meaning.starts_with('[') && close != std::string_view::npos) {
        Section section{lowered(meaning.substr(1, close - 1)), {line}, 1};
        sectionIndex_.try_emplace(section.key, sections_.size());
        sections_.push_back(std::move(section));
        lines_.push_back({std::move(text)});
        return;
    }

    Section& section = sections_.back();
    section.lines.push_back(line);
    const std::size_t equals = body.find('=');
    const std::string_view key = trimmed(body.substr(0, equals));
    if (equals == std::string_view::npos || !canBeKey(key)) {
        lines_.push_back({std::move(text)});
        return;
    }
    section.entriesEnd = section.lines.size();
    // What stands before the first header belongs to no section.
    if (sections_.size() > 1) entryIndex_.try_emplace(entryKey(section.key, key), line);
    const std::size_t begin = body.find_first_not_of(kBlanks, equals + 1);
    if (begin == std::string_view::npos) {
        lines_.push_back({std::move(text), equals + 1, 0});
        return;
    }
    const std::size_t size = trimmed(body.substr(begin)).size();
    lines_.push_back({std::move(text), begin, size});
}

std::optional<std::string_view> ConfigFile::get(std::string_view section, std::string_view key) const {
    const auto it = entryIndex_.find(entryKey(lowered(section), key));
    if (it == entryIndex_.end()) return std::nullopt;
    const Line& line = lines_[it->second];
    std::string_view value = std::string_view(line.text).substr(line.valueBegin, line.valueSize);
    const bool quoted = value.size() >= 2 && (value.front() == '"' || value.front() == '\'');
    if (quoted && value.back() == value.front()) value = value.substr(1, value.size() - 2);
    return value;
}

void ConfigFile::endLine(std::size_t line) {
    std::string& text = lines_[line].text;
    if (!text.ends_with('\n')) text += lineEnd_;
}

ConfigFile::Section& ConfigFile::sectionFor(std::string_view name) {
    const std::string key = lowered(name);
    const auto it = sectionIndex_.find(key);
    if (it != sectionIndex_.end()) return sections_[it->second];
    if (!sections_.back().lines.empty()) endLine(sections_.back().lines.back());
    addLine("[" + std::string(trimmed(name)) + "]" + lineEnd_);
    return sections_.back();
}

void ConfigFile::put(std::string_view section, std::string_view key, std::string_view value) {
    const std::string sectionName = onOneLine(section);
    const std::string keyText = onOneLine(key);
    const std::string_view keyName = trimmed(keyText);
    if (!canBeSection(sectionName) || !canBeKey(keyName)) {
        tell("a name that no line can hold is dropped");
        return;
    }
    const std::string flat = onOneLine(value);
    const std::string_view stored = trimmed(flat);

    const std::string index = entryKey(lowered(sectionName), keyName);
    const auto it = entryIndex_.find(index);
    if (it != entryIndex_.end()) {
        Line& line = lines_[it->second];
        if (std::string_view(line.text).substr(line.valueBegin, line.valueSize) == stored) return;
        line.text.replace(line.valueBegin, line.valueSize, stored);
        line.valueSize = stored.size();
    } else {
        Section& home = sectionFor(sectionName);
        endLine(home.lines[home.entriesEnd - 1]);
        Line line;
        line.text = std::string(keyName) + "=";
        line.valueBegin = line.text.size();
        line.valueSize = stored.size();
        line.text.append(stored).append(lineEnd_);
        entryIndex_.emplace(index, lines_.size());
        home.lines.insert(home.lines.begin() + static_cast<std::ptrdiff_t>(home.entriesEnd), lines_.size());
        ++home.entriesEnd;
        lines_.push_back(std::move(line));
    }
    changed_ = true;
}

bool ConfigFile::write(bool insist) {
    if (!changed_) return true;
    if (locked_ || (failed_ && !insist)) return false;
    std::string content;
    for (const Section& section : sections_) {
        for (const std::size_t line : section.lines)
            content += lines_[line].text;
    }
    if (platform::current().files.replaceFile(name_.view(), std::as_bytes(std::span(content)))) {
        changed_ = false;
        failed_ = false;
        return true;
    }
    if (!failed_) tell("can't be written");
    failed_ = true;
    return false;
}
