// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "script/object.h"
#include "script/runner.h"

class CFontCollection;
class CSimpleFont6;
class CWindow;

// FONT, the script object of a collection of fonts. Each property DEF_family_style_size names the file of one; the
// first is the base font.
class CMC_Font : public CMC_Object {
public:
    static constexpr int kType = 2002;

    CMC_Font(CMC_Scene* scene, CMElement* element);
    ~CMC_Font() override;

    CFontCollection* getCollection() const { return collection_.get(); }  // goes with this object

    // A record doesn't tell the files: fonts that are read back have no letters.
    void serialize(CXArchive* archive) override;
    std::span<const std::string_view> getBehavioursList() const override;

    // The script's methods. The last three change what the collection says of itself, not the letters.
    void setColor(int colour);
    void setStyle(const CXString& style);
    void setFamily(const CXString& family);
    void setSize(int size);

private:
    void add(std::unique_ptr<CSimpleFont6> font, const CXString& family, const CXString& style, int size);

    CWindow* window_;
    std::vector<std::unique_ptr<CSimpleFont6>> fonts_;
    std::unique_ptr<CFontCollection> collection_;
};

class CMC_Font_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
