// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "animation/animation_file.h"

// The text file of an animation's folder; animation.h tells its lines.
namespace prosc {

struct FrameText {
    CXPoint position;
    std::optional<bool> alpha;         // none: as the picture is
    std::optional<_compression> form;  // none: that of the animation
    std::optional<int> channels;
    std::optional<CXSize> emptySize;  // of a frame without picture
};

struct AnimationText {
    AnimationData data;  // without frames
    _compression form = kCompressionRle;
    std::map<int, FrameText> frames;
};

// False for a wrong line: `error` then tells which and why.
bool parseAnimationText(std::string_view source, AnimationText& text, std::string& error);

std::string printAnimationText(const AnimationText& text);

// In UTF-8 and in double quotes, as the text file has it.
std::string quotedText(const CXString& text);

// Names joined by "|", numbers for what has none.
std::string flagNames(unsigned flags);

}  // namespace prosc
