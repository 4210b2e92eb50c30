// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <chrono>
#include <thread>

#include "platform/headless/headless.h"
#include "platform/host/backend.h"

namespace host {

namespace {

class HeadlessBackend : public Backend {
public:
    explicit HeadlessBackend(const Options& options)
        : options_(options),
          platform_(
              {options.folder, options.ticks, options.utcSeconds, options.depth, options.language, stdout, stderr}) {}

    platform::Display& display() override { return platform_.display; }
    headless::StreamShell& shell() override { return platform_.shell; }
    std::string displayError() const override { return ""; }
    void setKey(int key, bool down) override { platform_.input.setKey(key, down); }
    void setCapsLock(bool on) override { platform_.input.setCapsLock(on); }
    void frameDone() override {}
    void setListener(headless::VirtualAudio::Listener listener) override {
        platform_.audio.setListener(std::move(listener));
    }

    std::vector<platform::Event> nextFrame(std::uint32_t number) override {
        if (options_.realtime)
            std::this_thread::sleep_until(start_ + std::chrono::milliseconds(std::uint64_t{options_.step} * number));
        platform_.clock.advance(options_.step);
        return {};
    }

private:
    const Options& options_;
    headless::HeadlessPlatform platform_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace

std::unique_ptr<Backend> makeHeadlessBackend(const Options& options) {
    return std::make_unique<HeadlessBackend>(options);
}

#ifndef PROSCENIUM_SDL
std::unique_ptr<Backend> makeWindowBackend(const Options&, bool) { return nullptr; }
#endif

}  // namespace host
