// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/host/run.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fmt/format.h>
#include <fstream>
#include <iterator>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

#include "frame/application.h"
#include "frame/command_line.h"
#include "frame/window.h"
#include "input/keyboard.h"
#include "platform/headless/code_page.h"
#include "platform/headless/files.h"
#include "platform/host/backend.h"
#include "platform/host/input_file.h"
#include "platform/host/outputs.h"
#include "storage/big_file.h"

namespace host {

namespace {

constexpr int kNoDisplay = 1;  // exit status: none could be made, or it went away

std::optional<std::string> contentOf(const std::string& file) {
    struct stat status {};
    // A folder opens like a file and then reads as an empty one.
    if (stat(file.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) {
        errno = EISDIR;
        return std::nullopt;
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

// A file's name as the library sees it, from the root of the disk; "", and errno, when there is no such file.
std::string libraryName(const std::string& file) {
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(file.c_str(), nullptr), &std::free);
    if (!real || access(real.get(), R_OK) != 0) return "";
    return "C:" + headless::fromUtf8(real.get());
}

int refuse(const std::string& line) {
    fmt::print(stderr, "{}\n", line);
    return kUsageError;
}

CCommandLine6 engineCommandLine(const Options& options) {
    std::vector<std::string> texts;
    texts.reserve(options.engineArguments.size());
    for (const std::string& argument : options.engineArguments)
        texts.push_back(headless::fromUtf8(argument));
    std::vector<char*> arguments;
    arguments.reserve(texts.size());
    for (std::string& text : texts)
        arguments.push_back(text.data());
    return {static_cast<int>(arguments.size()), arguments.data()};
}

// The engine's side of a run: command line, window and application, built in the order that the library asks for and
// destroyed in the one that it wants, the application before the window.
class Stage {
public:
    Stage(const Options& options, CCommandLine6& commandLine)
        : commandLine_(commandLine),
          window_(nullptr, &commandLine_, commandLine_.getResolution(), &cursors_[0]),
          application_(&window_, CXString(headless::fromUtf8(options.config)), CXString("Proscenium"), &commandLine_) {
        window_.SetActiveCursor(&cursors_[1]);
        window_.SetWaitCursor(&cursors_[2]);
    }

    // False when there is no display; the window has said so.
    bool open(int depth) {
        const int error = commandLine_.isWindowMode() ? window_.CreateSurface()
                                                      : window_.SetDisplayMode(commandLine_.getResolution(), depth);
        if (error != 0) window_.ShowError();
        return error == 0;
    }

    // False when it is no big file.
    bool attach(const std::string& bigFile) {
        auto archive = std::make_unique<CBigFile>(&window_, CXString(std::string_view(bigFile)), false, "");
        if (!archive->GetFile()) return false;
        window_.attach(std::move(archive));
        return true;
    }

    void start() {
        window_.OnCreate();
        application_.preinitializeApplication();
        window_.OnActivateApp(true);
        window_.OnInitialUpdate();
    }

    // True when the loop is to be left.
    bool frame() {
        window_.getKeyboardInterface()->tick();
        window_.processMessages();
        return window_.domodal();
    }

    CWindow& window() { return window_; }
    CXSize size() const { return commandLine_.getResolution(); }

private:
    char cursors_[3] = {};  // stand for the three cursors, which the library only tells apart
    CCommandLine6& commandLine_;
    CWindow window_;
    CApplication application_;
};

// False when the event was a `close` that the application granted.
bool send(const Event& event, CWindow& window, Backend& backend) {
    const CXPoint point(event.first, event.second);
    const bool on = event.first != 0;
    switch (event.kind) {
        case EventKind::move:
            window.OnMouseMove(point, 0);
            break;
        case EventKind::leftDown:
            window.OnLButtonDown(point, 0);
            break;
        case EventKind::leftUp:
            window.OnLButtonUp(point, 0);
            break;
        case EventKind::leftDouble:
            window.OnLButtonDblClk(point, 0);
            break;
        case EventKind::middleDown:
            window.OnMButtonDown(point, 0);
            break;
        case EventKind::middleUp:
            window.OnMButtonUp(point, 0);
            break;
        case EventKind::rightDown:
            window.OnRButtonDown(point, 0);
            break;
        case EventKind::rightUp:
            window.OnRButtonUp(point, 0);
            break;
        case EventKind::keyDown:
            backend.setKey(event.first, true);
            break;
        case EventKind::keyUp:
            backend.setKey(event.first, false);
            break;
        case EventKind::capsLock:
            backend.setCapsLock(on);
            break;
        case EventKind::active:
            window.OnActivateApp(on);
            break;
        case EventKind::close:
            return !window.OnExit();
    }
    return true;
}

void loop(const Options& options, const std::vector<Event>& replayed, Stage& stage, Backend& backend,
          Outputs& outputs) {
    auto next = replayed.begin();
    for (std::uint32_t number = 1; options.frames == 0 || number <= options.frames; ++number) {
        std::vector<Event> events;
        for (const platform::Event& event : backend.nextFrame(number))
            events.push_back({number, event.kind, event.first, event.second});
        for (; next != replayed.end() && next->frame <= number; ++next)
            events.push_back(*next);
        for (const Event& event : events) {
            outputs.record(event);
            if (!send(event, stage.window(), backend)) return;
        }
        const bool leave = stage.frame();
        outputs.frame(number, backend.display());
        backend.frameDone();
        if (leave || backend.shell().quitPosted() || backend.isLost()) return;
    }
}

}  // namespace

std::string folderError(const std::string& folder) {
    struct stat status {};
    if (stat(folder.c_str(), &status) != 0) return fmt::format("{}: {}", folder, std::strerror(errno));
    if (!S_ISDIR(status.st_mode)) return fmt::format("{}: is not a folder", folder);
    if (access(folder.c_str(), R_OK | X_OK) != 0)
        return fmt::format("{}: can't be read: {}", folder, std::strerror(errno));

    headless::DiskFiles files(folder);
    const auto data = files.systemPath("Dane");
    if (data && access(data->c_str(), R_OK | X_OK) != 0)
        return fmt::format("{}: can't be read: {}", *data, std::strerror(errno));
    if (files.changeFolder("Dane")) {
        for (const char* pattern : {"application.def", "application.bin", "r*.dll", "..\\r*.dll"})
            for (const platform::FileEntry& entry : files.find(pattern))
                if (!entry.isFolder) return "";
    }
    return fmt::format(
        "{}: holds no application: \"Dane\" with \"application.def\", \"application.bin\" or a unit module", folder);
}

int run(const Options& options) {
    const std::string wrongFolder = folderError(options.folder);
    if (!wrongFolder.empty()) return refuse("proscenium: " + wrongFolder);

    InputFile input;
    if (options.input) {
        const auto text = contentOf(*options.input);
        if (!text)
            return refuse(fmt::format("proscenium: {}: can't be read: {}", *options.input, std::strerror(errno)));
        input = parseInput(*text);
        if (input.errorLine > 0)
            return refuse(fmt::format("proscenium: {}:{}: {}", *options.input, input.errorLine, input.error));
    }
    std::string resource;
    if (options.resource) {
        resource = libraryName(*options.resource);
        if (resource.empty())
            return refuse(fmt::format("proscenium: {}: can't be read: {}", *options.resource, std::strerror(errno)));
    }
    Outputs outputs(options);
    const std::string unwritable = outputs.open();
    if (!unwritable.empty()) return refuse(unwritable);

    CCommandLine6 commandLine = engineCommandLine(options);
    const bool fullScreen = options.fullScreen || (!commandLine.isWindowMode() && options.scale == 0);
    const std::unique_ptr<Backend> backend =
        options.headless ? makeHeadlessBackend(options) : makeWindowBackend(options, fullScreen);
    if (!backend) return refuse("proscenium: this host was built without a window: use --headless");
    if (options.audio)
        backend->setListener([&outputs](std::span<const std::int16_t> samples) { outputs.hear(samples); });
    std::string unwritten;
    {
        Stage stage(options, commandLine);
        const CXSize size = stage.size();
        backend->shell().setClientArea({0, 0, size.width, size.height});
        if (!stage.open(options.depth)) {
            const std::string why = backend->displayError();
            fmt::print(stderr, "proscenium: a display of {}x{} pixels can't be made{}{}{}\n", size.width, size.height,
                       why.empty() ? "" : ": ", why, options.headless ? "" : "; --headless plays without one");
            return kNoDisplay;
        }
        if (!resource.empty() && !stage.attach(resource))
            return refuse(fmt::format("proscenium: {}: is no big file", *options.resource));
        stage.start();
        outputs.frame(0, backend->display());
        loop(options, input.events, stage, *backend, outputs);
        unwritten = outputs.finish(backend->display());
        stage.window().OnDestroy();
    }
    if (backend->isLost()) {
        fmt::print(stderr, "proscenium: the display has gone away; what the application keeps was written\n");
        return kNoDisplay;
    }
    return unwritten.empty() ? 0 : refuse(unwritten);
}

}  // namespace host
