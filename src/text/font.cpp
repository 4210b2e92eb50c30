// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "text/font.h"

#include <algorithm>

#include "animation/animo.h"
#include "definition/element.h"
#include "frame/window.h"
#include "graphics/refresh_screen.h"

namespace {

// Letters stand on a picture whose corners show nothing. The planes must be decoded.
void clearCorners(CFrame* frame) {
    const CXSize size = frame->Size();
    const std::span<std::uint8_t> alpha = frame->getAlpha().bytes();
    const auto area = static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
    if (alpha.empty() || area == 0 || alpha.size() < area) return;
    const auto width = static_cast<std::size_t>(size.width);
    for (const std::size_t corner : {std::size_t{0}, width - 1, area - width, area - 1})
        alpha[corner] = 0;
}

}  // namespace

CFont5::CFont5(CWindow* window) : window_(window) {}

CFont5::CFont5(CWindow* window, const CXString& file) : window_(window), fileName_(file) { load(file); }

CFont5::CFont5(CWindow* window, CMElement* element) : CFont5(window, element->getPropertyValue("FILENAME")) {}

CFont5::~CFont5() = default;

bool CFont5::load(const CXString& file) {
    animation_ = std::make_unique<CAnimo>(window_, file);
    alphabet_ = "";
    animation_->DeCompress();
    for (int event = 0; event < animation_->GetNOE(); ++event) {
        animation_->SetEventFrame(event, 0);
        CFrame* frame = animation_->GetNOFInEvent(event) > 0 ? animation_->GetFrame(-1) : nullptr;
        if (frame) {
            // Coded again, so that each drawing finds the planes as it expects them.
            const _compression form = frame->getCompression();
            const int bpp = frame->getBpp();
            if (form == kCompressionRle) {
                frame->DeCompressRLE2();
                Plane data = frame->getData().copy(), alpha = frame->getAlpha().copy();
                frame->setPlanes(frame->Size(), bpp, std::move(data), std::move(alpha));
            }
            clearCorners(frame);
        }
        // A place for each event, also for one without a name.
        const char letter = animation_->GetEventName(event).GetAt(0);
        alphabet_ += letter == 0 ? '\1' : letter;
    }
    if (window_) animation_->SetDestiny(window_->GetRefreshScreenInterface());
    return animation_->hasFrames();
}

int CFont5::getAlphabetHeight() const {
    int height = 0;
    for (int i = 0; animation_ && i < animation_->GetNOF(); ++i)
        height = std::max(height, animation_->GetFrame(i)->Size().height);
    return height;
}

CXSize CFont5::getLetterSize(char letter) const {
    const int event = alphabet_.Find(letter);
    if (!animation_ || letter == 0 || event < 0 || animation_->GetNOFInEvent(event) == 0) return {};
    animation_->SetEventFrame(event, 0);
    const CFrame* frame = animation_->GetFrame(-1);
    return frame ? frame->Size() : CXSize();
}

int CFont5::drawLetter(const CXPoint& point, char letter) {
    const int event = alphabet_.Find(letter);
    if (!animation_ || letter == 0 || event < 0 || animation_->GetNOFInEvent(event) == 0) return 0;
    if (destiny_) animation_->SetDestiny(destiny_);
    animation_->StopNoNotify();
    animation_->SetEventFrame(event, 0);
    animation_->SetPosition(point);
    animation_->Redraw();
    const CFrame* frame = animation_->GetFrame(-1);
    return frame ? frame->Size().width : 0;
}

int CFont5::getLengthInPixels(const CXString& text, int spacing) const {
    CXPoint length;
    for (const char letter : text.view())
        length = length + CXPoint(letter == ' ' ? getLetterWidth('A') : getLetterWidth(letter) + spacing, 0);
    return length.x;
}
