// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xvector.h"
#include "graphics/geometry.h"

// A command line in pieces.
class CCommandLine : public CXObject {
public:
    explicit CCommandLine(const char* text);  // cut at blanks; quotes mean nothing
    CCommandLine(int count,
                 char* const* arguments);  // copies them; the program's name, if it is there, stays the first
    ~CCommandLine() override;
    CCommandLine(const CCommandLine&) = delete;
    CCommandLine& operator=(const CCommandLine&) = delete;

    // True when an argument is the name behind "-" or "/", exactly.
    bool FindToken(const CXString& name) const;
    // What follows the first argument that is the name, bare or behind "-" or "/"; "" when nothing does.
    CXString GetNextToken(const CXString& name) const;
    int GetNoArgs() const { return arguments_.size(); }

private:
    CXArray arguments_;  // of CXString, owned
};

// The switches of the library.
class CCommandLine6 : public CCommandLine {
public:
    explicit CCommandLine6(const char* text) : CCommandLine(text) { parse(); }
    CCommandLine6(int count, char* const* arguments) : CCommandLine(count, arguments) { parse(); }

    bool isMusicEnabled() const { return music_; }
    bool isSoundEnabled() const { return sound_; }
    bool isWindowMode() const { return window_; }
    bool isGFXEnabled() const { return graphics_; }
    bool isServer() const { return server_; }
    bool isClient() const { return client_; }
    bool isToCode() const { return code_; }
    bool isToDecode() const { return decode_; }
    bool isToRemove() const { return remove_; }
    bool isPageFlippingEnabled() const { return pageFlipping_; }
    bool isVMem() const { return videoMemory_; }
    bool isCheatMode() const { return cheat_; }
    bool is2Bin() const { return toBinary_; }
    bool isForceCNV() const { return forceDefinitions_; }
    bool isDebugMode() const { return debug_; }
    CXSize getResolution() const { return resolution_; }

private:
    void parse();

    CXSize resolution_{800, 600};
    bool music_ = true;
    bool sound_ = true;
    bool window_ = false;
    bool graphics_ = true;
    bool server_ = false;
    bool client_ = false;
    bool code_ = false;
    bool decode_ = false;
    bool remove_ = false;
    bool pageFlipping_ = false;
    bool videoMemory_ = false;
    bool cheat_ = false;
    bool toBinary_ = false;
    bool forceDefinitions_ = false;
    bool debug_ = false;
};
