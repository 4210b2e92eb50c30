// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "animation/picture_object.h"
#include "script/runner.h"

class CImage;

// IMAGE, the script object of a still picture on the scene.
class CMC_Image : public CMC_Picture {
public:
    static constexpr int kType = 2008;

    CMC_Image(CMC_Scene* scene, CMElement* element);
    CMC_Image(CMC_Scene* scene, std::unique_ptr<CImage> image);  // "clone"

    void setAsButton(bool asButton, bool changeCursor);
    CImage* getImage() const;  // null once the object is out of service

    using CMC_Object::clone;
    CXObject* clone() override;
    std::span<const std::string_view> getBehavioursList() const override;

    // The script's methods.
    void show();
    void hide();
    int getPositionX() const;
    int getPositionY() const;
    void setScaleFactor() {}          // accepted, without effect
    void link(const CXString& name);  // shows the planes of the other IMAGE, which must have its size and format
    void save(const CXString& name);

private:
    void place() override;
    Media makeMedia(const CXString& name, bool preload) override;
    bool fits(CFileResolver* cached) const override;
};

class CMC_Image_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
