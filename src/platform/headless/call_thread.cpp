// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/headless/call_thread.h"

#include <chrono>

namespace headless {

CallThread::CallThread(std::uint32_t milliseconds, std::function<void()> call)
    : call_(std::move(call)), thread_([this, milliseconds] { run(milliseconds); }) {}

CallThread::~CallThread() {
    {
        const std::lock_guard guard(mutex_);
        isEnding_ = true;
    }
    ended_.notify_one();
    thread_.join();
}

void CallThread::run(std::uint32_t milliseconds) {
    const std::chrono::milliseconds period(milliseconds);
    auto due = std::chrono::steady_clock::now() + period;
    std::unique_lock lock(mutex_);
    while (!ended_.wait_until(lock, due, [this] { return isEnding_; })) {
        lock.unlock();
        call_();
        due = std::max(due + period, std::chrono::steady_clock::now());
        lock.lock();
    }
}

}  // namespace headless
