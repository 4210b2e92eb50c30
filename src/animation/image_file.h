// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "foundation/xobject.h"
#include "storage/compression_form.h"

class CGraphicsObject;
class CWindow;

// What kind of picture a file holds, by its extension in any case of letters. The name is part of the interface.
enum _filetype {
    kFileUnknown = 0,
    kFileImg = 1,
    kFileTga = 2,
    kFileBmp = 3,  // the name is held, nothing is read
    kFilePsd = 4,
    kFileAnn = 5,
};

// Makes the class that reads a picture, for code that has only a name.
class CImageFile : public CXObject {
public:
    explicit CImageFile(CWindow* window);
    ~CImageFile() override;

    // Makes the object and loads it; its error word tells how that went. 0 for an extension that nobody reads: the
    // object made last stays.
    _filetype Load(const CXString& name);
    // Writes "img", the object's planes, through an image that is made for it, and "ann", an animation, by its own
    // `Save`. 0 for any other extension.
    _filetype Save(CGraphicsObject* object, const CXString& name, _compression form);

    CGraphicsObject* getObject() const { return object_.get(); }  // made last, owned here; null: none

private:
    CWindow* window_;
    std::unique_ptr<CGraphicsObject> object_;
};
