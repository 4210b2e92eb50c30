// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "prosc/commands.h"

// Animations: an .ann file into a folder of pictures with a text file, and back.
//
// The pictures are `frame000.png`, `frame001.png` and so on. The text file, `animation.txt`, is UTF-8 and says what
// pictures can't, a line for each thing; what it doesn't mention has the default that stands behind the line here:
//
//     # from here to the end of the line is for people
//     bpp 16                              15, 16 or 24. 16
//     form rle                            of the planes, or raw. rle
//     rate 15                             frames a second. 15
//     flags ping-pong|0x4                 names and numbers. 0
//     opacity 255                         0 to 255. 255
//     random 0                            the random frames number. 0
//     author "Who made it"                ""
//     description "What it shows"         ""
//     frame 3 at 10 20 alpha form raw     a frame without a line stands at 0 0
//     event "Walk" 0-3 2 1 loop 0 5 2     its name, its frames in order, and more
//     step 4 sound "step.wav"             of the event above it
//
// Behind a frame's number, in any order: `at X Y`; `alpha` or `opaque`, whether it has an alpha plane, which it has
// else when its picture isn't opaque everywhere; `form raw` or `form rle`, when it isn't that of the file; `channels
// N`, the count of channels in its header, 4 with an alpha plane and 0 without; `empty W H` for a frame of that size
// without pixels and without picture.
//
// An event's frames are numbers and ranges, as 0-3 or 3-0, and may be beyond the last frame. Behind them, in any order:
// `loop START END COUNT`, places in that list and how often, 0 without end (0 0 0: no loop; COUNT may be left out for
// 0); `rate N` (that of the file), `flags F` (0), `opacity N` (255), `counter N` (0) and `reserved`, the record's last
// 12 bytes as hexadecimal digits.
//
// Behind a step's number, its place in the event's list from 0, in any order: `name TEXT`, `text TEXT`, `sound TEXT`,
// `offset X Y` (0 0), `opacity N` (255), `reserved12 N` (-1), `reserved20 N` (0) and `reserved25 N` (0).
//
// Numbers are decimal or hexadecimal as 0x1F. A text stands in double quotes, in which \" \\ \n \r \t and \xHH, a byte
// of Windows-1250, stand for what can't; one without blanks, that doesn't start with a quote or #, needs no quotes.
// Flags: hide-at-stop, ping-pong, no-restart, sound-goes-on, loop-with-sound, streamed-sounds, next-event.
namespace prosc {

// Names and contents of a folder's files.
using Files = std::map<std::string, std::string>;

inline constexpr const char* kAnimationText = "animation.txt";

// Either the files or what is wrong with the source.
struct FilesOutcome {
    std::optional<Files> result;
    std::string error;
};

// What goes before the text file.
struct AnimationOptions {
    int bpp = 0;       // 15 or 16; 0: as the text file says
    std::string form;  // "raw" or "rle"; "": as the text file says
};

// A file of any generation. Forms 2 and 3 of planes become raw and rle. An error for planes that don't decode.
FilesOutcome filesFromAnimation(std::string_view bytes);
// An NVP file: the same bytes that `filesFromAnimation` was given, when they were written by this library. An error
// begins with the name of the file that is wrong.
Outcome animationFromFiles(const Files& files, const AnimationOptions& options);

// The number in the name of a frame's picture; none for any other name.
std::optional<int> frameNumber(std::string_view name);
std::string frameName(int number);

// By its magic, or only by its name where pictures have the same magic.
bool isAnimation(std::string_view bytes, std::string_view name);
Outcome animationInfo(std::string_view bytes);

}  // namespace prosc
