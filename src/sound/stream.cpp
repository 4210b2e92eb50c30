// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/stream.h"

#include "frame/error.h"

CSndStream::CSndStream(CWindow*, const CXString& fileName) { Open(fileName); }

bool CSndStream::Open(const CXString&) {
    setErrorCode(kErrorSound);
    return false;
}

void CSndStream::Play(bool) { started_ = opened_; }

void CSndStream::Close() { started_ = opened_ = false; }
