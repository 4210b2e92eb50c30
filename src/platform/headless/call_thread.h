// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>

#include "platform/audio.h"

namespace headless {

// A periodic call in real time, on a thread of its own. A call that takes too long delays the next one; none is made
// up.
class CallThread : public platform::PeriodicCall {
public:
    CallThread(std::uint32_t milliseconds, std::function<void()> call);
    ~CallThread() override;
    CallThread(const CallThread&) = delete;
    CallThread& operator=(const CallThread&) = delete;

private:
    void run(std::uint32_t milliseconds);

    std::function<void()> call_;
    std::mutex mutex_;
    std::condition_variable ended_;
    bool isEnding_ = false;
    std::thread thread_;
};

}  // namespace headless
