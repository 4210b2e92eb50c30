// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Animations as files, tables and graphics objects; how they run is in animo_playback.cpp.
#include "animation/animo.h"

#include <algorithm>

#include "animation/animation_manager.h"
#include "animation/random_sound_fx.h"
#include "definition/element.h"
#include "frame/window.h"
#include "graphics/refresh_screen.h"
#include "platform/platform.h"
#include "script/lifetime.h"
#include "sound/stream.h"
#include "storage/big_file.h"
#include "storage/file.h"

namespace {

constexpr int kMostStored = 1 << 30;  // of a file

const CXPoint kNoSound(-1, -1);

bool sameName(const CXString& a, const CXString& b) { return a.equalsIgnoreCase(b); }

}  // namespace

CAnimo::CAnimo(CWindow* window) : CGraphicsObject(window), CPlayable(window) {
    if (window) window->getAnimationManagerInterface()->add(this, window->GetRefreshScreenInterface());
}

CAnimo::CAnimo(CWindow* window, const CXString& name) : CAnimo(window) { CAnimo::Load(name); }

CAnimo::CAnimo(CAnimo& other)
    : CGraphicsObject(other.window_, other),
      CPlayable(other.window_),
      data_(other.data_),
      frameInSequence_(other.frameInSequence_),
      currentFrame_(other.currentFrame_),
      currentEvent_(other.currentEvent_),
      animoFlags_(other.animoFlags_),
      globalPosition_(other.globalPosition_),
      lastEvent_(other.lastEvent_),
      fps_(other.fps_) {
    setFilename(other.CFileResolver::getFileName());
    setLoaded(other.isLoaded());
    opacity_ = other.opacity_;
    visible_ = other.visible_;
    if (window_) window_->getAnimationManagerInterface()->add(this, window_->GetRefreshScreenInterface());
}

CAnimo::~CAnimo() {
    if (window_) window_->getAnimationManagerInterface()->remove(this);
    forgetPictures();
}

void CAnimo::bringBackRefreshed() {
    if (CFrame* frame = frameAt(lastRefreshed_)) frame->bringBackCompressed();
    lastRefreshed_ = -1;
}

CXObject* CAnimo::clone() { return new CAnimo(*this); }

void CAnimo::forgetPictures() {
    bringBackRefreshed();
    currentSound_ = kNoSound;
    currentFrame_ = -1;
    data_.reset();
}

void CAnimo::Flush() {
    CGraphicsObject::Flush();
    forgetPictures();
    setLoaded(false);
}

int CAnimo::Load(const CXString& name) {
    const ScriptScope scope;
    Invalidate();
    Flush();
    CFileResolver::log("CAnimo -> ", true);
    CFileResolver::log(("Loading file " + name + "...").c_str(), true);
    CFile file;
    int error = file.Open(window_, name, CFile::kReadBinary);
    if (error == 0) {
        error = Load(&file);
        CFileResolver::log(" - Succesfull.\n", true);
        setLoaded(true);
        file.Close();
        Visible(true);
    } else if (CBigFile* archive = window_ ? window_->Resource() : nullptr) {
        if (archive->Seek(name) != -1 && archive->GetFile()) {
            CFileResolver::log("from BigFile - Succesfull.\n", true);
            error = Load(archive->GetFile());
        }
    }
    setErrorCode(error);
    if (error != 0) {
        if (window_) window_->QuitOnError(this, name);
        return error;
    }
    frameInSequence_ = 0;
    CGraphicsObject::setFileName(name);
    setFilename(name);
    currentEvent_ = getFirstEvent();
    SetEventFrame(currentEvent_, 0);
    return 0;
}

int CAnimo::Load(CFile* file) {
    Flush();
    std::string reason;
    data_ = readAnimation(window_, file->readRest(kMostStored), reason);
    if (!data_) {
        const std::string name(file->getName().view());
        platform::current().shell.debugOutput("animation " + name + ": " + reason);
        return 0;
    }
    bpp_ = data_->bpp;
    const bool takesScreenFormat = data_->form == "PAK" || data_->form.starts_with("MV");
    if (takesScreenFormat && window_) {
        if (data_->compression == kCompressionRaw) {
            for (const auto& frame : data_->frames)
                frame->Convert(window_->GetBpp());
        }
        bpp_ = window_->GetBpp();
    }
    fps_ = data_->fps;
    opacity_ = data_->opacity;
    SetFlags(static_cast<int>(data_->objectFlags));
    animoFlags_ = data_->animationFlags;
    UpdateSoundFX();
    return 0;
}

int CAnimo::Save(const CXString& name, _compression form) {
    CFile file(window_, name, CFile::kCreateBinary);
    if (file.LastError() != 0) return file.LastError();
    Save3(&file, form);
    return file.Close();
}

int CAnimo::Save3(CFile* file, _compression form) {
    AnimationData empty;
    AnimationData& data = data_ ? *data_ : empty;
    if (data_) data.bpp = bpp_;  // an older file's frames have taken the screen's format
    data.fps = fps_;
    data.opacity = opacity_;
    data.objectFlags = static_cast<unsigned>(GetFlags()) & 0xFF;
    data.animationFlags = animoFlags_;
    lastRefreshed_ = -1;
    const std::vector<std::uint8_t> bytes = writeAnimation(data, form);
    file->Write(bytes.data(), static_cast<int>(bytes.size()));
    return file->LastError();
}

// Sounds of the records in the file's order; those behind the most that a file may have stay silent.
void CAnimo::UpdateSoundFX() {
    currentSound_ = kNoSound;
    if (!data_) return;
    data_->sounds = std::make_shared<AnimationData::Sounds>();
    if ((animoFlags_ & kStreamedSounds) != 0 || !window_) return;
    int count = 0;
    for (const _annEventInfo3& event : data_->events) {
        auto& row = data_->sounds->emplace_back(event.frames.size());
        for (std::size_t i = 0; i < event.infos.size(); ++i) {
            const std::optional<CXString>& name = event.infos[i].sound;
            if (!name || !name->IsString() || ++count > AnimationData::kMostSounds) continue;
            const CXString path = window_->GetSoundFXFullPath(*name);
            if (path.view().find(';') != std::string_view::npos) {
                row[i] = std::make_unique<CRandomSoundFX>(window_, path);
            } else {
                row[i] = std::make_unique<CSound4>(window_, path);
            }
        }
    }
}

const _annEventInfo3* CAnimo::eventAt(int event) const {
    return data_ && event >= 0 && event < GetNOE() ? &data_->events[static_cast<std::size_t>(event)] : nullptr;
}

_annEventInfo3* CAnimo::eventAt(int event) {
    return data_ && event >= 0 && event < GetNOE() ? &data_->events[static_cast<std::size_t>(event)] : nullptr;
}

int CAnimo::GetNOF() const { return data_ ? static_cast<int>(data_->frames.size()) : 0; }
int CAnimo::GetNOE() const { return data_ ? static_cast<int>(data_->events.size()) : 0; }

CFrame* CAnimo::frameAt(int frame) const {
    const bool isThere = data_ && frame >= 0 && frame < std::ssize(data_->frames);
    return isThere ? data_->frames[static_cast<std::size_t>(frame)].get() : nullptr;
}

CFrame* CAnimo::GetFrame(int frame) const { return frameAt(frame == -1 ? currentFrame_ : frame); }

CFrame* CAnimo::getFrame(const CXString& name) const {
    for (int event = 0; event < GetNOE(); ++event) {
        const int index = GetFrameNo(event, name);
        if (index >= 0) return GetFrame(eventAt(event)->frames[static_cast<std::size_t>(index)]);
    }
    return nullptr;
}

int CAnimo::getFirstEvent() const {
    for (int event = 0; event < GetNOE(); ++event) {
        if (GetNOFInEvent(event) > 0) return event;
    }
    return 0;
}

int CAnimo::GetEventNo(const CXString& name) const {
    for (int event = 0; event < GetNOE(); ++event) {
        if (sameName(eventAt(event)->name, name)) return event;
    }
    return -1;
}

CXString CAnimo::GetEventName(int event) const {
    const _annEventInfo3* found = eventAt(event);
    return found ? found->name : CXString();
}

int CAnimo::GetNOFInEvent(int event) const {
    const _annEventInfo3* found = eventAt(event);
    return found ? static_cast<int>(found->frames.size()) : 0;
}

int CAnimo::GetFrameNo(int event, int index) const {
    const int count = GetNOFInEvent(GetEventNo(event));
    const int wanted = index == -1 ? frameInSequence_ : index == -2 ? 0 : index == -3 ? count - 1 : index;
    return wanted >= 0 && wanted < count ? wanted : -1;
}

int CAnimo::GetFrameNo(int event, const CXString& name) const {
    const int wanted = GetEventNo(event);
    for (int index = 0; index < GetNOFInEvent(wanted); ++index) {
        if (sameName(getFrameName(wanted, index), name)) return index;
    }
    return -1;
}

int CAnimo::GetLoop(int event, CXPoint& startAndEnd) const {
    const _annEventInfo3* found = eventAt(event);
    if (!found) return 0;
    startAndEnd = {found->loopStart, found->loopEnd};
    return found->loopCount;
}

const _anmFrameInfo3* CAnimo::getFrameInfo(int event, int index) const {
    const _annEventInfo3* found = eventAt(event);
    const bool isThere = found && index >= 0 && index < static_cast<int>(found->infos.size());
    return isThere ? &found->infos[static_cast<std::size_t>(index)] : nullptr;
}

CXString CAnimo::GetName(int event, int index, const CXString& fallback) const {
    const _anmFrameInfo3* info = getFrameInfo(event, index);
    return info && info->name ? *info->name : fallback;
}

void CAnimo::setFrameName(int event, int index, const CXString& name) {
    if (!getFrameInfo(event, index)) return;
    eventAt(event)->infos[static_cast<std::size_t>(index)].name = name;
}

CXPoint CAnimo::getCurrFramePosition() const {
    const CFrame* frame = GetFrame(-1);
    return frame ? frame->GetFramePosition() : CXPoint();
}

CXString CAnimo::getAuthor() const { return data_ ? data_->author : CXString("Ostrel Vandrik"); }
CXString CAnimo::getDescription() const { return data_ ? data_->description : CXString("Ostrel Vandrik"); }
int CAnimo::RandomFramesNumber() const { return data_ ? data_->randomFramesNumber : 0; }
_compression CAnimo::getStoredCompression() const { return data_ ? data_->compression : kCompressionRaw; }

CXPoint CAnimo::GetPosition() const {
    const CFrame* frame = GetFrame(-1);
    if (!frame) return {};
    const _anmFrameInfo3* info = getFrameInfo(currentEvent_, frameInSequence_);
    return globalPosition_ + frame->GetFramePosition() + (info ? info->offset : CXPoint());
}

CXRect CAnimo::GetBoundingBox() const {
    const CFrame* frame = GetFrame(-1);
    const CXPoint position = GetPosition();
    const CXPoint end = position + CXPoint(frame ? frame->Size() : CXSize());
    const CXRect box(position.x, position.y, end.x, end.y);
    return clip_.IsEmpty() ? box : box.Common(clip_ + position);
}

CXPoint CAnimo::getCenterPoint() const {
    const CFrame* first = GetFrame(0);
    return first ? first->getCenterPoint() : CXPoint();
}

void CAnimo::Move(int dx, int dy) {
    const ScriptScope scope;
    CXRect changed = GetBoundingBox();
    globalPosition_ = globalPosition_ + CXPoint(dx, dy);
    changed.Sum(GetBoundingBox());
    if (canvas_) canvas_->Invalidate(&changed);
    markInvalidated();
    movedTo(position_);
}

void CAnimo::SetGlobalPosition(int x, int y) {
    const ScriptScope scope;
    globalPosition_ = CXPoint(x, y) - anchor_;
    movedTo(position_);
}

void CAnimo::SetPosition(int x, int y) {
    const ScriptScope scope;
    for (int i = 0; i < GetNOF(); ++i)
        GetFrame(i)->SetPosition(x, y);
    const CFrame* current = GetFrame(-1);
    position_ = current ? current->GetFramePosition() : CXPoint(x, y);
    movedTo(position_);
}

CGraphicsObject* CAnimo::getDrawn() {
    CFrame* frame = GetFrame(-1);
    return frame ? frame : static_cast<CGraphicsObject*>(this);
}

CFrame* CAnimo::decodeCurrent() {
    CFrame* frame = GetFrame(-1);
    if (!frame) return nullptr;
    if (lastRefreshed_ != currentFrame_) bringBackRefreshed();
    frame->decode();
    lastRefreshed_ = currentFrame_;
    return frame;
}

char* CAnimo::GetDataPtr() {
    CFrame* frame = decodeCurrent();
    return frame ? frame->GetDataPtr() : nullptr;
}

std::uint8_t CAnimo::GetPixel(_channel channel, const CXPoint& point) {
    CFrame* frame = decodeCurrent();
    return frame ? frame->GetPixel(channel, point) : std::uint8_t{0};
}

bool CAnimo::isInside(int x, int y, bool useAlpha) {
    CFrame* frame = GetFrame(-1);
    return frame && frame->isInside(x, y, useAlpha);
}

void CAnimo::drawAt(const CXPoint& at) {
    CFrame* frame = GetFrame(-1);
    if (!frame) return;
    decodeCurrent();
    frame->drawFor(*this, at);
}

void CAnimo::updateWithCurrentFrame() {
    const CFrame* frame = GetFrame(-1);
    if (!frame) return;
    bpp_ = frame->getBpp();
    size_ = frame->Size();
    pitch_ = size_.width;
    for (int i = 0; i < 4; ++i)
        channelSizes_[i] = frame->GetChannelSize(i);
    const _anmFrameInfo3* info = getFrameInfo(currentEvent_, frameInSequence_);
    position_ = frame->GetFramePosition() + (info ? info->offset : CXPoint());
}

void CAnimo::FlipH() {
    for (int i = 0; i < GetNOF(); ++i)
        GetFrame(i)->FlipH();
    updateWithCurrentFrame();
}

void CAnimo::FlipV() {
    for (int i = 0; i < GetNOF(); ++i)
        GetFrame(i)->FlipV();
    updateWithCurrentFrame();
}

void CAnimo::resetFlips() {
    for (int i = 0; i < GetNOF(); ++i)
        GetFrame(i)->resetFlips();
    updateWithCurrentFrame();
}

bool CAnimo::Convert(int bpp) {
    bool converted = true;
    for (int i = 0; i < GetNOF(); ++i) {
        if (GetFrame(i)->getCompression() == kCompressionRaw) converted = GetFrame(i)->Convert(bpp) && converted;
    }
    bpp_ = bpp;
    return converted;
}

void CAnimo::DeCompress() {
    for (int i = 0; i < GetNOF(); ++i)
        GetFrame(i)->DeCompress();
}

void CAnimo::DeCompressRLE() {
    for (int i = 0; i < GetNOF(); ++i)
        GetFrame(i)->decode();
}

void CAnimo::setVisibility(bool visible) {
    if (visible) {
        show();
    } else {
        hide();
    }
}

void CAnimo::alwaysOnTop() {
    if (window_ && canvas_) canvas_->SetFlags(this, 1);
}

CAnimo6::CAnimo6(CWindow* window, const CMElement* element) : CAnimo(window) {
    toRelease(element->getPropertyBoolValue("RELEASEAFTERUSE"));
    const CXString name = element->getPropertyValue("FILENAME");
    setFilename(name);
    const bool isAbsent = !element->getPropertyValue("PRELOAD").IsString();
    if (name.IsString() && (isAbsent || element->getPropertyBoolValue("PRELOAD"))) CAnimo::Load(name);
    if (element->getPropertyBoolValue("VISIBLE")) return;
    if (releaseAfterUse()) CAnimo::Flush();
    CGraphicsObject::Visible(false);
}

void CAnimo6::prepare() {
    const CXString name = CFileResolver::getFileName();
    if (!hasFrames() && !isLoaded() && name.IsString()) Load(name);
}

void CAnimo6::show() {
    const ScriptScope scope;
    const CXString name = CFileResolver::getFileName();
    if (!isLoaded() && name.IsString()) Load(name);
    Visible(true);
}

void CAnimo6::hide() {
    if (releaseAfterUse()) flush();
    Visible(false);
}
