// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>

// What the subcommands of prosc do, on bytes. Texts of definition files are Windows-1250, everything else is UTF-8.
namespace prosc {

// Either the result or what is wrong with the source, with its place: "line 3: ...".
struct Outcome {
    std::optional<std::string> result;
    std::string error;
};

// The coded form of a definition file; it keeps neither indentation nor tabs. An error for a file that is coded already
// or that the form, which knows no escapes, can't hold.
Outcome code(std::string_view plain);

// The plain form of a coded file. An error for a plain file, and for a damaged one.
Outcome decode(std::string_view coded);

// What the file holds, as lines for a person. An error for what isn't a kind of file known here. Only the name tells
// some animations from pictures.
Outcome info(std::string_view bytes, std::string_view name = "");

}  // namespace prosc
