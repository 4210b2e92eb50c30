// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "graphics/graphics_object.h"

// The layers of a Photoshop file, each a picture of its own that stands at the layer's place. The object itself has no
// pixels: who wants to show something shows `GetCurrentLayer`.
//
// Read are RGB files of 8 bits a channel whose layers all have the same number of channels, plain or in runs. Red,
// green, blue and transparency count, masks don't; nor does the composite picture at the end, so that a file without
// layers has none here either. A file with colour mode data or with different numbers of channels is refused like a
// damaged one: no layers, no error, and a line of debug output.
class CPSD : public CGraphicsObject {
public:
    explicit CPSD(CWindow* window);
    CPSD(CWindow* window, const CXString& name);           // loads at once
    CPSD(CWindow* window, const CGraphicsObject* planes);  // over the other's planes; no layers
    CPSD(CPSD& other);                                     // over the planes of the other and of its layers
    ~CPSD() override;

    struct Channel {
        std::int16_t id = 0;
        std::int32_t length = 0;  // of its data in the file, as that tells it
    };

    // The rectangle is the layer's place in the picture.
    struct Layer : CXRect {
        std::vector<Channel> channels;
        CXString name;                             // "": none
        std::unique_ptr<CGraphicsObject> picture;  // 24 bits until it is drawn; a layer without area has no pixels
    };

    // None for a damaged or refused file; `reason` then tells the place and what is wrong.
    static std::optional<std::vector<Layer>> parse(CWindow* window, std::span<const std::byte> bytes,
                                                   std::string& reason);

    // Loads the named file, also out of the window's big file, and selects its first layer. 0, or the error word,
    // which has been told through CWindow::QuitOnError.
    int Load(const CXString& name) override;
    int Load(CFile* file) override;
    void Flush() override;  // the layers too

    int GetLayerNo() const { return static_cast<int>(layers_.size()); }
    int GetSelLayer() const { return selected_; }  // -1: none
    CGraphicsObject* GetCurrentLayer() const;      // the selected layer's, owned here; null: none
    void SelectLayer(int layer);                   // unless there is no such
    void SelectLayer(const CXString& name);        // the first of exactly that name, if any
    CXString GetLayerName(int layer) const;        // -1: the selected one
    CXRect GetLayerRect(int layer) const;          // of the selected one, whatever the argument

    // Moves the selected layer and its rectangle too; the rectangle keeps its place where a coordinate is negative.
    void SetPosition(const CXPoint& p) override;
    using CGraphicsObject::SetPosition;

private:
    const Layer* layerAt(int layer) const;

    std::vector<Layer> layers_;
    int selected_ = -1;
};
