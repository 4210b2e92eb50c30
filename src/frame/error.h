// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

enum _errtype { kErrorNone = 0 };

inline constexpr int kErrorGraphics = -998;  // the graphics device failed
inline constexpr int kErrorSound = -997;     // the sound device failed
inline constexpr int kErrorNotFound = 2000;  // no such file

// An error word with a type, for what isn't a CXObject.
class CError {
public:
    void Type(_errtype type) { type_ = type; }
    _errtype GetType() const { return type_; }
    int LastError() const { return error_; }
    int operator<<(int code) { return error_ = code; }

private:
    int error_ = 0;
    _errtype type_ = kErrorNone;
};
