// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/foreign_picture.h"

#include "frame/window.h"
#include "graphics/graphics_object.h"
#include "platform/platform.h"
#include "storage/big_file.h"
#include "storage/file.h"

int loadForeign(CGraphicsObject& picture, const CXString& name) {
    picture.Flush();
    CWindow* window = picture.getWindow();
    CFile file;
    // Binary for all of them: a CR before an LF is a colour like any other.
    int error = file.Open(window, name, CFile::kReadBinary);
    if (error == 0) {
        error = picture.Load(&file);
        if (const int closing = file.Close(); error == 0) error = closing;
        if (error == 0) picture.Visible(true);
    } else if (CBigFile* archive = window ? window->Resource() : nullptr) {
        if (archive->Seek(name) != -1 && archive->GetFile()) error = picture.Load(archive->GetFile());
    }
    picture.setErrorCode(error);
    if (error == 0) {
        picture.setFileName(name);
        picture.CGraphicsObject::Load(name);
    } else if (window) {
        window->QuitOnError(&picture, name);
    }
    return error;
}

void tellForeign(const CFile& file, const std::string& reason) {
    const std::string name(file.getName().view());
    platform::current().shell.debugOutput("picture " + name + ": " + reason);
}
