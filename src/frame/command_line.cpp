// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "frame/command_line.h"

#include <string_view>

CCommandLine::CCommandLine(const char* text) {
    std::string_view rest = text ? text : "";
    while (true) {
        const std::size_t begin = rest.find_first_not_of(' ');
        if (begin == std::string_view::npos) return;
        rest.remove_prefix(begin);
        const std::string_view token = rest.substr(0, rest.find(' '));
        arguments_.add(new CXString(token));
        rest.remove_prefix(token.size());
    }
}

CCommandLine::CCommandLine(int count, char* const* arguments) {
    for (int i = 0; i < count; ++i)
        arguments_.add(new CXString(arguments[i]));
}

CCommandLine::~CCommandLine() {
    for (int i = 0; i < arguments_.size(); ++i)
        delete arguments_.stringAt(i);
}

bool CCommandLine::FindToken(const CXString& name) const {
    for (int i = 0; i < arguments_.size(); ++i) {
        const std::string_view argument = arguments_.stringAt(i)->view();
        const bool marked = argument.starts_with('-') || argument.starts_with('/');
        if (marked && argument.substr(1) == name.view()) return true;
    }
    return false;
}

CXString CCommandLine::GetNextToken(const CXString& name) const {
    for (int i = 0; i < arguments_.size(); ++i) {
        std::string_view argument = arguments_.stringAt(i)->view();
        if (argument != name.view()) {
            if (!argument.starts_with('-') && !argument.starts_with('/')) continue;
            if (argument.substr(1) != name.view()) continue;
        }
        return i + 1 < arguments_.size() ? *arguments_.stringAt(i + 1) : CXString();
    }
    return {};
}

void CCommandLine6::parse() {
    music_ = !FindToken("nomusic");
    sound_ = !FindToken("nosound");
    window_ = FindToken("window");
    graphics_ = !FindToken("nogfx");
    server_ = FindToken("server");
    client_ = FindToken("client");
    code_ = FindToken("code");
    decode_ = FindToken("decode");
    remove_ = FindToken("remove");
    pageFlipping_ = FindToken("pf");
    videoMemory_ = FindToken("vmem");
    cheat_ = FindToken("cheat") || FindToken("mirkobatul");
    toBinary_ = FindToken("2bin");
    forceDefinitions_ = FindToken("forceCNV");
    debug_ = FindToken("debug");
    if (FindToken("res")) {
        const CXString width = GetNextToken("res");
        // The height is what follows the width's own text, wherever that stands first.
        resolution_.width = CXString::toNumber(width);
        resolution_.height = CXString::toNumber(GetNextToken(width));
    }
}
