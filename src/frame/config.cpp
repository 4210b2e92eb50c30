// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "frame/config.h"

#include "frame/config_file.h"

namespace {
constexpr int kLongestValue = 10239;  // characters
}

CConfig::CConfig(CWindow*, const CXString& fullName)
    : fullName_(fullName), file_(std::make_unique<ConfigFile>(fullName)) {}

CConfig::~CConfig() { file_->write(true); }

int CConfig::GetInt(const CXString& section, const CXString& key) const {
    return CXString::toNumber(GetString(section, key));
}

CXString CConfig::GetString(const CXString& section, const CXString& key) const {
    return file_->get(section.view(), key.view()).value_or("").substr(0, kLongestValue);
}

void CConfig::PutInt(const CXString& section, const CXString& key, int value) {
    PutString(section, key, CXString::toString(value));
}

void CConfig::PutString(const CXString& section, const CXString& key, const CXString& value) {
    file_->put(section.view(), key.view(), value.view());
}

void CConfig::flush() { file_->write(false); }
