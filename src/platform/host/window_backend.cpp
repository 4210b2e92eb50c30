// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <thread>

#include "platform/headless/files.h"
#include "platform/host/backend.h"
#include "platform/host/picture.h"
#include "platform/platform.h"
#include "platform/sdl/audio.h"
#include "platform/sdl/clock.h"
#include "platform/sdl/shell.h"
#include "platform/sdl/window.h"

namespace host {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kInactiveWait = 100;  // milliseconds; nothing moves while another window has the keys

// The user's folder of pictures, as the desktop has it configured; else the home folder.
std::filesystem::path picturesFolder() {
    const char* home = std::getenv("HOME");
    const std::filesystem::path root = home ? home : ".";
    const char* configured = std::getenv("XDG_CONFIG_HOME");
    std::ifstream folders((configured ? std::filesystem::path(configured) : root / ".config") / "user-dirs.dirs");
    constexpr std::string_view kKey = "XDG_PICTURES_DIR=\"", kHome = "$HOME/";
    for (std::string line; std::getline(folders, line);) {
        if (!line.starts_with(kKey) || !line.ends_with('"')) continue;
        const std::string value = line.substr(kKey.size(), line.size() - kKey.size() - 1);
        return value.starts_with(kHome) ? root / value.substr(kHome.size()) : std::filesystem::path(value);
    }
    std::error_code error;
    return std::filesystem::is_directory(root / "Pictures", error) ? root / "Pictures" : root;
}

class WindowBackend : public Backend {
public:
    WindowBackend(const Options& options, bool fullScreen)
        : window_({"Proscenium", options.depth, fullScreen, options.scale}),
          shell_(window_),
          clock_(options.ticks, options.utcSeconds),
          files_(options.folder),
          former_(platform::install(&platform_)) {
        shell_.setLocaleCode(options.language.empty() ? sdl::localeCodeOfUser() : options.language);
    }
    ~WindowBackend() override { platform::install(former_); }
    WindowBackend(const WindowBackend&) = delete;
    WindowBackend& operator=(const WindowBackend&) = delete;

    platform::Display& display() override { return window_; }
    headless::StreamShell& shell() override { return shell_; }
    std::string displayError() const override { return window_.error(); }
    void setKey(int key, bool down) override { window_.setKey(key, down); }
    void setCapsLock(bool on) override { window_.setCapsLock(on); }

    std::vector<platform::Event> nextFrame(std::uint32_t) override {
        if (!window_.isActive()) window_.waitForEvent(kInactiveWait);
        const auto period =
            std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(1.0 / window_.refreshRate()));
        // Time that was lost isn't made up.
        next_ = std::max(next_ + period, Clock::now());
        std::this_thread::sleep_until(next_);
        audio_.advance(clock_.ticks() - std::exchange(lastTicks_, clock_.ticks()));
        return window_.takeEvents();
    }

    bool isLost() const override { return window_.isLost(); }

    void frameDone() override {
        window_.show();
        if (window_.takePictureWish()) writePicture();
    }

private:
    void writePicture() {
        const std::filesystem::path folder = picturesFolder();
        std::error_code error;
        for (int number = 1; number < 10'000; ++number) {
            const std::filesystem::path file = folder / fmt::format("proscenium-{:04}.png", number);
            if (std::filesystem::exists(file, error)) continue;
            const bool written = writePng(file.string(), window_);
            fmt::print(stderr, "proscenium: {}: {}\n", file.string(),
                       written ? "the screen is kept here" : "can't be written");
            return;
        }
    }

    sdl::Window window_;
    sdl::Shell shell_;
    sdl::SystemClock clock_;
    headless::DiskFiles files_;
    sdl::Audio audio_;
    platform::Platform platform_{clock_, files_, shell_, window_, window_, audio_};
    platform::Platform* former_;
    std::uint32_t lastTicks_ = clock_.ticks();
    Clock::time_point next_ = Clock::now();
};

}  // namespace

std::unique_ptr<Backend> makeWindowBackend(const Options& options, bool fullScreen) {
    return std::make_unique<WindowBackend>(options, fullScreen);
}

}  // namespace host
