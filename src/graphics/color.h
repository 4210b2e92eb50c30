// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xobject.h"

// How a colour's number is to be read. The numbers are part of the interface.
enum _colormodel {
    kModelNone = 0,
    kModelRgb = 4,   // red, green, blue in the bytes 1 to 3; the alpha byte is whatever stood there
    kModelArgb = 5,  // alpha, red, green, blue from the lowest byte up
    kModel15 = 6,    // a pixel 0RRRRRGGGGGBBBBB
    kModel16 = 7,    // a pixel RRRRRGGGGGGBBBBB
};

class CColor : public CXObject {
public:
    CColor() = default;
    CColor(short value, _colormodel model) { Set(value, model); }
    CColor(unsigned char r, unsigned char g, unsigned char b) { Set(r, g, b); }
    CColor(unsigned char r, unsigned char g, unsigned char b, unsigned char a) { Set(r, g, b, a); }
    explicit CColor(int packed) { set(packed); }

    void Set(short value, _colormodel model);
    void Set(unsigned char r, unsigned char g, unsigned char b);
    void Set(unsigned char r, unsigned char g, unsigned char b, unsigned char a);
    void set(int word);

    int getValue() const { return value_; }
    _colormodel getModel() const { return model_; }

    // The colour in another model. Pixels come sign-extended from 16 bits: white is -1 in model 7.
    int Convert(_colormodel model) const;
    int GetInBPP(int bpp) const;  // 15, 16, 24 or 32

private:
    int value_ = 0;
    _colormodel model_ = kModelNone;
};
