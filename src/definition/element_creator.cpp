// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "definition/element_creator.h"

#include <memory>

#include "animation/animo.h"
#include "animation/image.h"
#include "definition/element.h"
#include "sound/sequence.h"

CXObject* CMElementCreator::createObject(CWindow* window, CMElement* element) {
    if (element->getPropertyValue("TYPE") != "IMAGE") return nullptr;
    auto image = std::make_unique<CImage>(window, element->getPropertyValue("FILENAME"));
    image->Visible(element->getPropertyBoolValue("VISIBLE"));
    return image.release();
}

CPlayable* CMElementCreator::createPlayable(CWindow* window, CMElement* element) {
    const CXString type = element->getPropertyValue("TYPE");
    if (type == "ANIMO") {
        auto animo = std::make_unique<CAnimo6>(window, element->getPropertyValue("FILENAME"));
        animo->Visible(element->getPropertyBoolValue("VISIBLE"));
        return animo.release();
    }
    // Its children come from a file, which an element of this kind doesn't name.
    if (type == "SEQUENCE") return std::make_unique<CSequencedPlayable>(window).release();
    return nullptr;
}
