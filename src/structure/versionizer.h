// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xobject.h"

// The version of a stored form: "7.2.b1".
class CVersionizer : public CXObject {
public:
    CVersionizer(int major, int minor, int build) : major_(major), minor_(minor), build_(build) {}

    int getMajor() const { return major_; }
    int getMinor() const { return minor_; }
    int getBuild() const { return build_; }
    CXString toString() override {
        return CXString::toString(major_) + "." + CXString::toString(minor_) + ".b" + CXString::toString(build_);
    }

private:
    int major_, minor_, build_;
};
