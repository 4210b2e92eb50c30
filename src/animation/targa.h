// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>

#include "graphics/graphics_object.h"

// A picture out of a TGA file of the plainest form: a header of 18 bytes, then rows of blue, green and red, the bottom
// one first. The type of the file and its bits of orientation aren't looked at.
//
// A file of another form, and one that is cut off, leaves a picture without pixels, no error, and a line of debug
// output.
class CTarga : public CGraphicsObject {
public:
    static constexpr std::size_t kHeaderBytes = 18;
    using Header = std::array<std::byte, kHeaderBytes>;

    explicit CTarga(CWindow* window);
    CTarga(CWindow* window, const CXString& name);  // loads at once

    // What a file holds; rows as they stand in it.
    struct Stored {
        Header header = {};
        CXSize size;
        Plane data;  // 24 bits
    };
    // None for a file that isn't read; `reason` then tells why. What stands behind the pixels isn't looked at.
    static std::optional<Stored> parse(std::span<const std::byte> bytes, std::string& reason);

    // Loads the named file, also out of the window's big file, and brings it to the screen's format. 0, or the error
    // word, which has been told through CWindow::QuitOnError.
    int Load(const CXString& name) override;
    int Load(CFile* file) override;

    const Header& getHeader() const { return header_; }  // of the latest file that could be read

private:
    Header header_ = {};
};
