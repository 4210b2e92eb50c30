// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/image_file.h"

#include "animation/image.h"
#include "storage/path.h"

namespace {

bool isImg(const CXString& name) { return CPath(nullptr, name).GetExtension().equalsIgnoreCase("img"); }

}  // namespace

CImageFile::CImageFile(CWindow* window) : window_(window) {}
CImageFile::~CImageFile() = default;

_filetype CImageFile::Load(const CXString& name) {
    if (!isImg(name)) return kFileUnknown;
    object_ = std::make_unique<CImage>(window_, name);
    return kFileImg;
}

_filetype CImageFile::Save(CGraphicsObject* object, const CXString& name, _compression form) {
    if (!isImg(name)) return kFileUnknown;
    object_ = std::make_unique<CImage>(window_, object);
    object_->Save(name, form);
    return kFileImg;
}
