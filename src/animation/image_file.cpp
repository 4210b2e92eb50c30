// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/image_file.h"

#include <string_view>

#include "animation/animo.h"
#include "animation/bitmap.h"
#include "animation/image.h"
#include "animation/photoshop.h"
#include "animation/targa.h"
#include "storage/path.h"

namespace {

template <class Picture>
std::unique_ptr<CGraphicsObject> make(CWindow* window, const CXString& name) {
    return std::make_unique<Picture>(window, name);
}

struct Kind {
    std::string_view extension;
    _filetype type;
    std::unique_ptr<CGraphicsObject> (*make)(CWindow* window, const CXString& name);
};

constexpr Kind kKinds[] = {
    {"img", kFileImg, make<CImage>  },
    {"tga", kFileTga, make<CTarga>  },
    {"bmp", kFileBmp, make<CXBitmap>},
    {"psd", kFilePsd, make<CPSD>    },
    {"ann", kFileAnn, make<CAnimo>  },
};

const Kind* kindOf(const CXString& name) {
    const CXString extension = CPath(nullptr, name).GetExtension();
    for (const Kind& kind : kKinds) {
        if (extension.equalsIgnoreCase(CXString(kind.extension))) return &kind;
    }
    return nullptr;
}

}  // namespace

CImageFile::CImageFile(CWindow* window) : window_(window) {}
CImageFile::~CImageFile() = default;

_filetype CImageFile::Load(const CXString& name) {
    const Kind* kind = kindOf(name);
    if (!kind) return kFileUnknown;
    object_ = kind->make(window_, name);
    return kind->type;
}

_filetype CImageFile::Save(CGraphicsObject* object, const CXString& name, _compression form) {
    const Kind* kind = kindOf(name);
    if (!kind || !object) return kFileUnknown;
    if (kind->type == kFileAnn) {
        object->Save(name, form);
        return kFileAnn;
    }
    if (kind->type != kFileImg) return kFileUnknown;
    // The one made last may be the one to be saved.
    auto image = std::make_unique<CImage>(window_, object);
    image->Save(name, form);
    object_ = std::move(image);
    return kFileImg;
}
