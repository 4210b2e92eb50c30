// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

#include "graphics/graphics_object.h"
#include "sound/playable.h"

class CMElement;

// A still picture out of an `.img` file: docs/formats/img.md tells its three forms. It is a playable, too, so that a
// sequence can show it; it never ends by itself.
class CImage : public CGraphicsObject, public CPlayable {
public:
    explicit CImage(CWindow* window);
    CImage(CWindow* window, const CXString& name);           // loads at once
    CImage(CWindow* window, const CGraphicsObject* planes);  // over the other's planes
    CImage(CWindow* window, const CMElement* element);       // FILENAME, PRELOAD, RELEASEAFTERUSE, VISIBLE
    CImage(CImage& other);                                   // over the other's planes

    // What a file holds, once every size in it was found to be true.
    struct Stored {
        const char* form = "";  // for people
        CXSize size;
        int bpp = 0;
        CXPoint position;
        _compression compression = kCompressionRaw;
        Plane data, alpha;  // as they stand in the object; of `compression`, still coded
    };
    // None for a damaged picture; `reason` then tells the place and what is wrong.
    static std::optional<Stored> parse(std::span<const std::byte> bytes, std::string& reason);

    // Loads the named file, also out of the window's big file, and with `convert` brings it to the screen's format. 0,
    // or the error word, which has been told through CWindow::QuitOnError. A damaged file leaves an image without
    // pixels, and a line of debug output.
    virtual int Load(const CXString& name, bool convert);
    int Load(CFile* file) override;
    using CGraphicsObject::Load;
    virtual int Load3(CFile* file);  // the form of 37 bytes alone; anything else counts as damaged
    virtual void flush();            // gives up the pixels, which the next `show` reads again

    CXObject* clone() override;  // over the same planes

    using CPlayable::play;
    void play() override;
    void stop(bool tell) override;
    void pause() override { status_ |= 2; }
    void resume() override { status_ &= ~2; }
    void seek(int) override {}
    void show() override;  // reads the file unless that has been done
    void hide() override;  // and with `toRelease` gives up the pixels
    void setVisibility(bool visible) override { Visible(visible); }
    bool isVisible() const override { return CGraphicsObject::isVisible(); }
    void setPosition(int x, int y) override { SetPosition(x, y); }
    void setPosition(const CXPoint& p) override { SetPosition(p); }
    void SetGlobalPosition(int x, int y) override { SetPosition(x, y); }
    using CPlayable::SetGlobalPosition;
    void move(int dx, int dy) override { Move(dx, dy); }
    using CPlayable::move;

private:
    int readFrom(CFile* file, bool onlyThirdForm);
};
