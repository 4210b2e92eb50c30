// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "animation/animo_object.h"

#include <algorithm>
#include <array>

#include "animation/animo.h"
#include "definition/element.h"
#include "frame/window.h"
#include "graphics/refresh_screen.h"
#include "input/mouse.h"
#include "script/lifetime.h"
#include "structure/scene.h"

namespace {

constexpr std::array<std::string_view, 14> kSignals = {
    "ONINIT",    "ONDONE",     "ONSIGNAL",       "ONSTARTED",   "ONFINISHED",
    "ONPAUSED",  "ONRESUMED",  "ONFRAMECHANGED", "ONCOLLISION", "ONCOLLISIONFINISHED",
    "ONFOCUSON", "ONFOCUSOFF", "ONCLICK",        "ONRELEASE"};
enum Signal {
    kOnStarted = 3,
    kOnFinished = 4,
    kOnFrameChanged = 7,
    kOnCollision,
    kOnCollisionFinished,
    kOnFocusOn,
    kOnFocusOff,
    kOnClick,
    kOnRelease
};

CXString upper(CXString text) { return text.Upper(); }

}  // namespace

CMC_Animo::CMC_Animo(CMC_Scene* scene, CMElement* element)
    : CMC_Picture(scene, element, kType, {kOnCollision, kOnCollisionFinished, kOnFocusOn}) {
    observer_ = this;
    readDefinition(element);
    fps_ = element->getPropertyIntValue("FPS");
    onFirstFrame_ = element->getPropertyBoolValue("ONFIRSTFRAME");
    CMC_Animo::place();
    getAnimo()->setFPS(fps_);
    initializeBehaviours(scene, element);
}

CMC_Animo::CMC_Animo(CMC_Scene* scene, std::unique_ptr<CAnimo6> animo)
    : CMC_Picture(scene, mediaOf(std::move(animo)), kType, {kOnCollision, kOnCollisionFinished, kOnFocusOn}) {
    observer_ = this;
    getAnimo()->addNotifier(this);
}

CAnimo6* CMC_Animo::getAnimo() const { return static_cast<CAnimo6*>(getGraphic()); }

CMC_Picture::Media CMC_Animo::makeMedia(const CXString& name, bool preload) {
    auto animo = std::make_unique<CAnimo6>(window_);
    animo->setFilename(name);
    if (preload && name.IsString()) animo->Load(name);
    return mediaOf(std::move(animo));
}

bool CMC_Animo::fits(CFileResolver* cached) const { return dynamic_cast<CAnimo6*>(cached) != nullptr; }

void CMC_Animo::onExchanged() {
    CAnimo6* animo = getAnimo();
    const std::vector<CPlayable*> sequences = sequences_;
    for (CPlayable* sequence : sequences)
        sequence->substAnimation(animo);
}

void CMC_Animo::place() {
    getAnimo()->toRelease(properties_.toRelease);
    monitorAsDefined();
    putOnScreen();
    getAnimo()->setVisibility(properties_.visible);
}

void CMC_Animo::setAsButton(bool asButton, bool changeCursor) {
    properties_.asButton = asButton;
    changeCursor_ = changeCursor;
    if (CAnimo6* animo = getAnimo()) animo->Play("ONNOEVENT", 0);
    focus_ = false;
}

void CMC_Animo::addSeq(CPlayable* sequence) {
    if (std::find(sequences_.begin(), sequences_.end(), sequence) == sequences_.end()) sequences_.push_back(sequence);
}

void CMC_Animo::removeSeq(CPlayable* sequence) { std::erase(sequences_, sequence); }

CXObject* CMC_Animo::clone() {
    CAnimo6* animo = getAnimo();
    if (!animo) return nullptr;
    std::unique_ptr<CAnimo6> copy(static_cast<CAnimo6*>(animo->clone()));
    if (CRefreshScreen* screen = getScreen()) screen->put(copy.get(), std::max(getPriority(), 0));
    return new CMC_Animo(getScene(), std::move(copy));
}

std::span<const std::string_view> CMC_Animo::getBehavioursList() const { return kSignals; }

void CMC_Animo::fireOfEvent(int signal) {
    if (isRetired() || !getAnimo()) return;
    fire(signal, upper(getAnimo()->getCurrentEventName()));
}

bool CMC_Animo::onPlayableStarted(CPlayable*) {
    fireOfEvent(kOnStarted);
    return false;
}

bool CMC_Animo::onPlayableFinished(CPlayable*) {
    fireOfEvent(kOnFinished);
    return false;
}

bool CMC_Animo::onPlayableTick(CPlayable*) {
    const CAnimo6* animo = getAnimo();
    if (isRetired() || !animo || !isSignalUsed(kOnFrameChanged)) return false;
    const ScriptScope scope;
    const CXString plain(kSignals[kOnFrameChanged]);
    const CXString event = animo->getCurrentEventName();
    const CXString frame = animo->GetName(animo->getCurrentEvent(), animo->GetCurrentFrameInSequence(), "");
    if (frame.IsString()) {
        if (onSignal(plain + "^" + upper(frame)) || onSignal(plain + "^" + upper(event))) return false;
    } else {
        const CXString number = CXString::toString(animo->Current());
        if (onSignal("ONFRAMECHANGEDFRAME^" + number) || onSignal(plain + "^" + event)) return false;
    }
    onSignal(plain);
    return false;
}

CXString CMC_Animo::collisionQualifier() const { return upper(getAnimo()->getCurrentEventName()); }

bool CMC_Animo::isButtonNow() const { return properties_.asButton && !CWindow::isPaused() && isVisible(); }

bool CMC_Animo::boxHolds(CXPoint point) const {
    const CFrame* first = onFirstFrame_ ? getAnimo()->GetFrame(0) : nullptr;
    return first ? first->GetBoundingBox().IsInRect(point) : holdsPoint(point);
}

bool CMC_Animo::isClickPlaying() const {
    const CAnimo6* animo = getAnimo();
    return animo && animo->IsPlaying() && animo->getCurrentEventName().equalsIgnoreCase("ONCLICK");
}

void CMC_Animo::playOwn(const char* event) {
    if (!isClickPlaying()) getAnimo()->Play(event, 0);
}

bool CMC_Animo::onMouseMove(CXPoint point) {
    if (!isButtonNow()) return false;
    const bool inside = boxHolds(point);
    if (inside == focus_) return false;
    // A handler may take the object out of service; its memory stays for as long as the scope.
    const ScriptScope scope;
    const bool signalling = mouseAware_ && (isSignalUsed(kOnFocusOn) || isSignalUsed(kOnFocusOff));
    playOwn(inside ? "ONFOCUSON" : "ONFOCUSOFF");
    if (changeCursor_) {
        if (inside) {
            window_->BeginActiveCursor();
        } else {
            window_->EndActiveCursor();
        }
    }
    if (!signalling || isRetired()) return false;
    focus_ = inside;
    onSignal(inside ? "ONFOCUSON" : "ONFOCUSOFF");
    return false;
}

bool CMC_Animo::onClick(int button, CXPoint point) {
    if (!isButtonNow() || !mouseAware_ || !boxHolds(point)) return false;
    const ScriptScope scope;
    playOwn("ONCLICK");
    if (changeCursor_) window_->EndActiveCursor();
    if (!isRetired()) fire(kOnClick, CMC_Mouse::getButton(button));
    return false;
}

bool CMC_Animo::onRelease(int button, CXPoint point) {
    if (!isButtonNow() || !mouseAware_ || !boxHolds(point)) return false;
    fire(kOnRelease, CMC_Mouse::getButton(button));
    return false;
}
