// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "foundation/xobject.h"
#include "graphics/geometry.h"

class CAnimo;
class CGraphicsObject;
class CMElement;
class CWindow;

// The older kind of font, whose letters are pictures of an animation: each event is a letter, the first character of
// its name, and the letter's picture is the event's first.
class CFont5 : public CXObject {
public:
    explicit CFont5(CWindow* window);
    CFont5(CWindow* window, const CXString& file);
    CFont5(CWindow* window, CMElement* element);  // FILENAME
    ~CFont5() override;

    bool load(const CXString& file);  // whether there are letters now
    const CXString& getAlphabet() const { return alphabet_; }
    void setDestiny(CGraphicsObject* destiny) { destiny_ = destiny; }  // not owned; must outlive the drawing

    int getAlphabetHeight() const;            // of the tallest picture
    CXSize getLetterSize(char letter) const;  // 0 by 0 for one that the font hasn't
    int getLetterWidth(char letter) const { return getLetterSize(letter).width; }
    int getLetterHeight(char letter) const { return getLetterSize(letter).height; }
    // Draws into the destiny; the width of the picture.
    int drawLetter(const CXPoint& point, char letter);
    int drawLetter(int x, int y, char letter) { return drawLetter({x, y}, letter); }
    // A blank is as wide as an `A`, and has no spacing behind it; a letter that is missing counts as spacing alone.
    int getLengthInPixels(const CXString& text, int spacing) const;

private:
    CWindow* window_;
    CXString alphabet_;
    CXString fileName_;
    std::unique_ptr<CAnimo> animation_;  // null until loaded
    CGraphicsObject* destiny_ = nullptr;
};
