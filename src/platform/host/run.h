// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>

#include "platform/host/options.h"

namespace host {

// Plays the application to its end and returns the exit status. Errors are told on standard error.
int run(const Options& options);

// What is wrong with the folder as that of an application, as a line of text; "" when nothing is.
std::string folderError(const std::string& folder);

}  // namespace host
