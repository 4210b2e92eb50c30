// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <iterator>

#include "platform/headless/headless.h"
#include "prosc/animation.h"
#include "prosc/big_file.h"
#include "prosc/commands.h"
#include "prosc/font.h"
#include "prosc/image.h"

// The authors' command: one subcommand for each thing that can be done with a stored file.
namespace {

constexpr int kBadFile = 1;
constexpr int kWrongUse = 2;

struct Arguments {
    std::string file;
    std::string output;  // "": beside the source
    prosc::ImageOptions image;
    prosc::AnimationOptions animation;
    prosc::FontOptions font;
    std::string colour = "FFFFFF";
    std::string at;    // "X,Y"
    std::string name;  // of a big file
};

int fail(const std::string& file, const std::string& what) {
    fmt::print(stderr, "prosc: {}: {}\n", file, what);
    return kBadFile;
}

std::optional<std::string> contentOf(const std::string& file) {
    if (std::filesystem::is_directory(file)) {
        errno = EISDIR;
        return std::nullopt;
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

// Beside the old file and then over it, so that a full disk costs nothing that stood there.
bool replaceFile(const std::string& file, std::string_view content) {
    const std::string temporary = file + ".new";
    std::ofstream stream(temporary, std::ios::binary | std::ios::trunc);
    stream << content;
    stream.close();
    if (stream && std::rename(temporary.c_str(), file.c_str()) == 0) return true;
    const int error = errno;
    std::remove(temporary.c_str());
    errno = error;
    return false;
}

// Turns one file into another by `convert`; without -o the new one stands beside the old, with `suffix` at its end.
int convertFile(const Arguments& arguments, prosc::Outcome (*convert)(std::string_view), const char* suffix) {
    const auto source = contentOf(arguments.file);
    if (!source) return fail(arguments.file, std::strerror(errno));
    const prosc::Outcome outcome = convert(*source);
    if (!outcome.result) return fail(arguments.file, outcome.error);
    const std::string target = arguments.output.empty() ? arguments.file + suffix : arguments.output;
    return replaceFile(target, *outcome.result) ? 0 : fail(target, std::strerror(errno));
}

// PNG into .img or back, by what the source holds.
int convertImage(Arguments arguments) {
    if (!arguments.at.empty() &&
        std::sscanf(arguments.at.c_str(), "%d,%d", &arguments.image.x, &arguments.image.y) != 2) {
        fmt::print(stderr, "prosc: --at takes X,Y and not {}\n", arguments.at);
        return kWrongUse;
    }
    const auto source = contentOf(arguments.file);
    if (!source) return fail(arguments.file, std::strerror(errno));
    const prosc::Outcome outcome =
        prosc::isPng(*source) ? prosc::imageFromPng(*source, arguments.image) : prosc::pngFromImage(*source);
    if (!outcome.result) return fail(arguments.file, outcome.error);
    return replaceFile(arguments.output, *outcome.result) ? 0 : fail(arguments.output, std::strerror(errno));
}

int convertFont(Arguments arguments) {
    const std::string& digits = arguments.colour;
    if (digits.size() != 6 || digits.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos) {
        fmt::print(stderr, "prosc: --colour takes RRGGBB and not {}\n", digits);
        return kWrongUse;
    }
    arguments.font.colour = static_cast<int>(std::strtol(digits.c_str(), nullptr, 16));
    const auto source = contentOf(arguments.file);
    if (!source) return fail(arguments.file, std::strerror(errno));
    const prosc::Outcome outcome = prosc::fontFromOutlines(*source, arguments.font);
    if (!outcome.result) return fail(arguments.file, outcome.error);
    return replaceFile(arguments.output, *outcome.result) ? 0 : fail(arguments.output, std::strerror(errno));
}

// What is in a folder that concerns an animation. None, and errno, when something can't be read.
std::optional<prosc::Files> animationFilesIn(const std::string& folder) {
    prosc::Files files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (name != prosc::kAnimationText && !prosc::frameNumber(name)) continue;
        auto content = contentOf(entry.path().string());
        if (!content) return std::nullopt;
        files[name] = std::move(*content);
    }
    return files;
}

int packAnimation(const Arguments& arguments) {
    const auto files = animationFilesIn(arguments.file);
    if (!files) return fail(arguments.file, std::strerror(errno));
    const prosc::Outcome outcome = prosc::animationFromFiles(*files, arguments.animation);
    if (!outcome.result) {
        fmt::print(stderr, "prosc: {}\n", (std::filesystem::path(arguments.file) / outcome.error).string());
        return kBadFile;
    }
    return replaceFile(arguments.output, *outcome.result) ? 0 : fail(arguments.output, std::strerror(errno));
}

int unpackAnimation(const Arguments& arguments) {
    const auto source = contentOf(arguments.file);
    if (!source) return fail(arguments.file, std::strerror(errno));
    const prosc::FilesOutcome outcome = prosc::filesFromAnimation(*source);
    if (!outcome.result) return fail(arguments.file, outcome.error);
    const std::filesystem::path folder(arguments.output);
    std::filesystem::create_directories(folder);
    // A frame of something else would be taken for one more of this.
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (prosc::frameNumber(name) && !outcome.result->contains(name))
            return fail(entry.path().string(), "is no frame of this animation; the folder is left as it is");
    }
    for (const auto& [name, content] : *outcome.result) {
        const std::string file = (folder / name).string();
        if (!replaceFile(file, content)) return fail(file, std::strerror(errno));
    }
    return 0;
}

// A folder into an .ann file or back, by what the source is.
int convertAnimation(const Arguments& arguments) {
    if (std::filesystem::is_directory(arguments.file)) return packAnimation(arguments);
    if (arguments.animation.bpp == 0 && arguments.animation.form.empty()) return unpackAnimation(arguments);
    fmt::print(stderr, "prosc: --bpp and --form go with a folder that becomes an .ann file\n");
    return kWrongUse;
}

int packBigFile(const Arguments& arguments) {
    if (!std::filesystem::is_directory(arguments.file)) return fail(arguments.file, "is no folder");
    const std::string wrong = prosc::packFolder(arguments.file, arguments.name, arguments.output);
    fmt::print("\n");
    return wrong.empty() ? 0 : fail(arguments.output, wrong);
}

// Lists a big file, or extracts it when there is somewhere to put it.
int readBigFile(const Arguments& arguments) {
    CBigFile bigFile(nullptr, prosc::libraryName(arguments.file), false, "");
    if (!bigFile.GetFile()) return fail(arguments.file, "can't be read, or is no big file");
    if (arguments.output.empty()) {
        fmt::print("{}", prosc::listBigFile(bigFile));
        return 0;
    }
    const std::vector<std::string> wrong = prosc::extractBigFile(bigFile, arguments.output);
    for (const std::string& line : wrong)
        fail(arguments.file, line);
    return wrong.empty() ? 0 : kBadFile;
}

int printInfo(const Arguments& arguments) {
    const auto source = contentOf(arguments.file);
    if (!source) return fail(arguments.file, std::strerror(errno));
    const prosc::Outcome outcome = prosc::info(*source, arguments.file);
    if (!outcome.result) return fail(arguments.file, outcome.error);
    fmt::print("{}: {}", arguments.file, *outcome.result);
    return 0;
}

CLI::App* addCommand(CLI::App& app, const char* name, const char* help, Arguments& arguments, bool hasOutput) {
    CLI::App* command = app.add_subcommand(name, help);
    command->set_help_flag("--help", "Print this help");
    command->add_option("FILE", arguments.file, "The file to read")->required()->type_name("");
    if (hasOutput) command->add_option("-o", arguments.output, "The file to write")->type_name("OUT");
    return command;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        Arguments arguments;
        CLI::App app("Works on the files of Proscenium applications.", "prosc");
        app.set_help_flag("--help", "Print this help");
        app.set_version_flag("--version", "prosc " PROSCENIUM_VERSION, "Print the version");
        app.require_subcommand(1);
        const auto* code =
            addCommand(app, "code", "Write a definition file in coded form, to FILE.coded", arguments, true);
        const auto* decode =
            addCommand(app, "decode", "Write a coded file in plain form, to FILE.decoded", arguments, true);
        CLI::App* img = addCommand(app, "img", "Turn a PNG file into an .img file, or back", arguments, false);
        img->add_option("OUT", arguments.output, "The file to write")->required()->type_name("");
        img->add_option("--bpp", arguments.image.bpp, "Bits a pixel of the .img file: 15, 16 or 24")
            ->check(CLI::IsMember({15, 16, 24}));
        img->add_option("--form", arguments.image.form, "How its planes stand in it: raw, lzw or lzo")
            ->check(CLI::IsMember({"raw", "lzw", "lzo"}));
        img->add_option("--at", arguments.at, "Where it stands on the screen: X,Y");
        CLI::App* ann = addCommand(
            app, "ann", "Turn a folder of PNG files and animation.txt into an .ann file, or back", arguments, false);
        ann->add_option("OUT", arguments.output, "The file or folder to write")->required()->type_name("");
        ann->add_option("--bpp", arguments.animation.bpp, "Bits a pixel of the .ann file: 15 or 16")
            ->check(CLI::IsMember({15, 16}));
        ann->add_option("--form", arguments.animation.form, "How its planes stand in it: raw or rle")
            ->check(CLI::IsMember({"raw", "rle"}));
        CLI::App* font = addCommand(app, "font", "Turn a TrueType font into a font file", arguments, false);
        font->add_option("OUT", arguments.output, "The file to write")->required()->type_name("");
        font->add_option("--size", arguments.font.size, "Of its letters, in pixels")->check(CLI::Range(1, 500));
        font->add_option("--colour", arguments.colour, "Of its letters: RRGGBB");
        font->add_option("--letters", arguments.font.letters, "Which ones; else all of Windows-1250 that it has");
        CLI::App* pack = addCommand(app, "pack", "Pack a folder into a big file", arguments, false);
        pack->add_option("OUT", arguments.output, "The file to write, outside of that folder")
            ->required()
            ->type_name("");
        pack->add_option("--name", arguments.name, "A name that is kept in it");
        const auto* list = addCommand(app, "list", "List a big file: size, offset and path", arguments, false);
        CLI::App* extract = addCommand(app, "extract", "Write the files of a big file into a folder", arguments, false);
        extract->add_option("FOLDER", arguments.output, "The folder to write into")->required()->type_name("");
        addCommand(app, "info", "Tell what a file holds", arguments, false);
        app.footer("Exit status: 0 done, 1 for a file that can't be read, used or written, 2 for wrong use.");
        try {
            app.parse(argc, argv);
        } catch (const CLI::ParseError& error) {
            if (error.get_exit_code() == 0) return app.exit(error);
            fmt::print(stderr, "prosc: {}\n", error.what());
            return kWrongUse;
        }
        const headless::HeadlessPlatform platform(
            {.folder = std::filesystem::current_path().string(), .messages = stderr, .debug = stderr});
        if (code->parsed()) return convertFile(arguments, prosc::code, ".coded");
        if (decode->parsed()) return convertFile(arguments, prosc::decode, ".decoded");
        if (img->parsed()) return convertImage(arguments);
        if (ann->parsed()) return convertAnimation(arguments);
        if (pack->parsed()) return packBigFile(arguments);
        if (list->parsed() || extract->parsed()) return readBigFile(arguments);
        if (font->parsed()) return convertFont(arguments);
        return printInfo(arguments);
    } catch (const std::exception& error) {
        fmt::print(stderr, "prosc: {}\n", error.what());
        return kBadFile;
    }
}
