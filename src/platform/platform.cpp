// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/platform.h"

#include <utility>

namespace platform {

namespace {
Platform* installed = nullptr;
}

Platform& current() { return *installed; }

Platform* install(Platform* platform) { return std::exchange(installed, platform); }

}  // namespace platform
