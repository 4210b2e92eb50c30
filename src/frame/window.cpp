// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "frame/window.h"

#include <algorithm>

#include "animation/animation_manager.h"
#include "foundation/random.h"
#include "frame/application.h"
#include "frame/command_line.h"
#include "frame/config.h"
#include "frame/error.h"
#include "frame/message.h"
#include "frame/polish_text.h"
#include "frame/public_trash.h"
#include "frame/timer.h"
#include "frame/unit.h"
#include "frame/unit_container.h"
#include "frame/window_listener.h"
#include "graphics/collision_inspector.h"
#include "graphics/refresh_screen.h"
#include "graphics/surface.h"
#include "input/hot_spot.h"
#include "input/keyboard.h"
#include "platform/platform.h"
#include "sound/music_player.h"
#include "sound/sound.h"
#include "sound/sound_manager.h"
#include "sound/stream.h"
#include "storage/big_file.h"
#include "storage/path.h"
#include "structure/application.h"

namespace {

constexpr PolishText kGraphicsFailed = "Nieprawidłowe działanie karty graficznej.";
constexpr PolishText kSoundFailed = "Nieprawidłowe działanie karty dźwiękowej.";
constexpr PolishText kUnknownFailure = "Nieznany błąd krytyczny.";
constexpr PolishText kFileMissing = "Wystąpił błąd krytyczny, plik: ";
constexpr PolishText kFileMissingEnd = " nie został odnaleziony.";

CWindow* theWindow = nullptr;

}  // namespace

CXString CWindow::exePath;
bool CWindow::paused = false;

CWindow* CWindow::current() { return theWindow; }

CWindow::CWindow(HWND handle, CCommandLine6* commandLine, const CXSize& size, HICON mainCursor)
    : handle_(handle), size_(size), commandLine_(commandLine), mainCursor_(mainCursor) {
    windowMode_ = commandLine->isWindowMode();
    CPath path(theWindow);
    CXRandom::seed(platform::current().clock.ticks());
    theWindow = this;
    timer_ = std::make_unique<CXTimer>(this);
    exePath = path.GetFullPath("");
    EndActiveCursor();
    CSound4::CreateDirectSoundInterface(this);
    musicPlayer_ = std::make_unique<CMusicPlayer>(this);
    keyboard_ = std::make_unique<CKeyboard>(this);
    animationManager_ = std::make_unique<CAnimationManager>();
    mouseListeners_ = std::make_unique<CSortedVector>(101);
    collisionInspector_ = std::make_unique<CCollisionInspector>();
    publicTrash_ = std::make_unique<CPublicTrash>(timer_.get());
    musicOn_ = commandLine->isMusicEnabled();
    soundOn_ = commandLine->isSoundEnabled();
    videoMemory_ = commandLine->isVMem();
}

CWindow::~CWindow() { release(); }

void CWindow::release() {
    CGraphicsObject::ReleaseGraphics();
    CSoundManager::Flush();
    publicTrash_.reset();
    bigFile_.reset();
    refreshScreen_.reset();
    backBuffer_.reset();
    surface_.reset();
    musicPlayer_.reset();
    animationManager_.reset();
    timer_.reset();
    keyboard_.reset();
    while (auto* message = static_cast<CMessage*>(messages_.pop()))
        delete message;
    collisionInspector_.reset();
    CSound4::DestroySoundBuffer();
    keyListeners_.removeAll();
    for (CXObject* entry : mouseListeners_->elements())
        delete entry;
    mouseListeners_.reset();
    CHotSpot::done();

    // The next application of this process starts as the first one did.
    CXTimer::enable(true);
    paused = false;
    if (theWindow != this) return;
    exePath = "";
    theWindow = nullptr;
}

int CWindow::SetDisplayMode(const CXSize& size, int bpp) {
    refreshScreen_.reset();
    surface_ = std::make_unique<CSurface>(this, size, bpp, handle_, commandLine_->isPageFlippingEnabled());
    return openScreen();
}

int CWindow::CreateSurface() {
    refreshScreen_.reset();
    surface_ = std::make_unique<CSurface>(this, size_);
    if (openScreen() == 0) {
        const platform::ClientArea client = platform::current().shell.clientArea();
        refreshScreen_->SetPosition(client.left, client.top);
    }
    return LastError();
}

int CWindow::openScreen() {
    setErrorCode(surface_->LastError());
    if (LastError() != 0) {
        surface_.reset();
        return LastError();
    }
    backBuffer_ = std::make_unique<CDirectDrawSurface>(this);
    surface_->setBackBuffer(backBuffer_.get());
    refreshScreen_ = std::make_unique<CRefreshScreen>(this, false);
    return 0;
}

void CWindow::ShowError() {
    if (LastError() == 0) return;
    std::string_view text = kUnknownFailure.view();
    if (LastError() == kErrorGraphics) text = kGraphicsFailed.view();
    if (LastError() == kErrorSound) text = kSoundFailed.view();
    platform::current().shell.messageBox("", text, 0);
}

void CWindow::QuitOnError(CXObject* source, const CXString& name) {
    CUnit6* unit = GetCurrentUnit();
    if (unit && unit->quitOnError(source)) return;
    if (!source || source->LastError() != kErrorNotFound) return;
    CXString text = kFileMissing.view();
    text += name;
    text += kFileMissingEnd.view();
    platform::current().shell.messageBox("", text.view(), platform::kMessageStop);
}

int CWindow::OnCreate() {
    timer_->add(0, 1, this);
    return 0;
}

int CWindow::OnActivateApp(bool active) {
    active_ = active;
    if (!refreshScreen_) return 0;
    if (active) {
        refreshScreen_->onFocusOn();
    } else {
        refreshScreen_->onFocusOff();
    }
    return 0;
}

int CWindow::OnDestroy() {
    platform::current().shell.postQuit();
    return 0;
}

bool CWindow::OnExit() { return !application_ || application_->OnExit(); }

int CWindow::OnMove(int x, int y) {
    if (!windowMode_ || !refreshScreen_) return 0;
    refreshScreen_->SetPosition(x, y);
    Invalidate();
    return 0;
}

void CWindow::step() {
    if (!active_) return;
    timer_->domodal();
    animationManager_->domodal();
    CSoundManager::domodal();
    Redraw();
}

bool CWindow::domodal() {
    step();
    const bool leave = application_ && application_->domodal();
    // Whatever the frame has put into the configuration goes to the disk in one piece.
    if (application_ && application_->GetConfigInterface()) application_->GetConfigInterface()->flush();
    return leave || quit_;
}

int CWindow::Tick() {
    step();
    return 0;
}

int CWindow::Redraw() {
    const platform::ClientArea client = platform::current().shell.clientArea();
    if (!active_ || !refreshScreen_) return 0;
    bool fullRefresh = false;
    if (refreshScreen_->Redraw(backBuffer_.get(), surface_.get(), &fullRefresh)) {
        if (surface_->IsFlippingEnabled()) {
            surface_->Flip();
        } else {
            presentChanges(client.left, client.top);
        }
    }
    if (fullRefresh) Invalidate();
    return 0;
}

void CWindow::presentChanges(int clientLeft, int clientTop) {
    CRefreshRegion* changes = refreshScreen_->getRefreshList();
    const CXSize buffer = backBuffer_->Size();
    for (int i = 0; i < changes->size(); ++i) {
        const CXRect* entry = changes->rectAt(i);
        CXRect part = entry ? *entry : CXRect(0, 0, refreshScreen_->Width(), refreshScreen_->Height());
        if (part.Width() == 0 || part.Height() == 0) continue;
        part.right = std::min(part.right, buffer.width);
        part.bottom = std::min(part.bottom, buffer.height);
        surface_->Blt(backBuffer_.get(), part.left + clientLeft, part.top + clientTop, &part);
    }
    changes->removeAll();
}

void CWindow::Invalidate() { Invalidate(static_cast<const CXRect*>(nullptr)); }

void CWindow::Invalidate(const CXRect* rect) {
    if (refreshScreen_) refreshScreen_->Invalidate(rect);
}

void CWindow::Invalidate(const CGraphicsObject* object) {
    if (refreshScreen_) refreshScreen_->Invalidate(object);
}

void CWindow::SetBackground(CGraphicsObject* object) {
    if (refreshScreen_) refreshScreen_->SetBackground(object);
}

void CWindow::SetBackground(const CColor* color) {
    if (refreshScreen_) refreshScreen_->SetBackground(color);
}

void CWindow::SetBackground(const CXString& fileName) {
    if (refreshScreen_) refreshScreen_->SetBackground(fileName);
}

void CWindow::operator<<(CGraphicsObject* object) {
    if (refreshScreen_) *refreshScreen_ << object;
}

void CWindow::operator>>(CGraphicsObject* object) {
    if (refreshScreen_) *refreshScreen_ >> object;
}

CXSize CWindow::GetScreenSize() const { return surface_ ? surface_->GetScreenSize() : size_; }

int CWindow::GetBpp() const { return surface_ ? surface_->GetBPP() : 0; }

char* CWindow::GetScreenPtr() { return backBuffer_ ? backBuffer_->GetDataPtr() : nullptr; }

void CWindow::showCursorKind(HICON cursor, platform::CursorKind kind) {
    if (cursor && !cursorLocked_) platform::current().input.setCursor(kind);
}

void CWindow::SetCursor(HICON cursor) {
    platform::CursorKind kind = platform::CursorKind::main;
    if (cursor == activeCursor_) kind = platform::CursorKind::active;
    if (cursor == waitCursor_) kind = platform::CursorKind::wait;
    showCursorKind(cursor, cursor == mainCursor_ ? platform::CursorKind::main : kind);
}

void CWindow::BeginActiveCursor() { showCursorKind(activeCursor_, platform::CursorKind::active); }
void CWindow::BeginWaitCursor() { showCursorKind(waitCursor_, platform::CursorKind::wait); }
void CWindow::EndActiveCursor() { showCursorKind(mainCursor_, platform::CursorKind::main); }
void CWindow::ShowCursor() { platform::current().input.showCursor(true); }
void CWindow::HideCursor() { platform::current().input.showCursor(false); }

void CWindow::enableMouse(bool on) {
    mouseEnabled_ = on;
    if (on) {
        EndActiveCursor();
    } else {
        BeginWaitCursor();
    }
}

void CWindow::StartMusic(const CXString& name, bool loop) {
    if (!musicPlayer_ || !soundOn_ || !musicOn_) return;
    musicPlayer_->start(CPath::getFullPath(exePath, name), loop);
}

void CWindow::StopMusic() { musicPlayer_->stop(); }
bool CWindow::isMusicPlaying() const { return musicPlayer_->isPlaying(); }

int CWindow::getMusicVolume() const {
    const CSndStream* stream = musicPlayer_->getStream();
    return stream ? stream->getVolume() : 0;
}

void CWindow::setMusicVolume(int volume) {
    if (CSndStream* stream = musicPlayer_->getStream()) stream->setVolume(volume);
}

void CWindow::setMusicPan(int pan) {
    if (CSndStream* stream = musicPlayer_->getStream()) stream->setPan(pan);
}

void CWindow::setMusicFreq(int frequency) {
    if (CSndStream* stream = musicPlayer_->getStream()) stream->setFreq(frequency);
}

CXString CWindow::GetSoundFXFullPath(const CXString& name) const {
    return soundPath_.IsString() ? soundPath_ + "\\" + name : name;
}

void CWindow::SetTimer(int id, unsigned period, CUnit6* unit, bool onlyActive) {
    if (unit) {
        timer_->add(id, period, unit, onlyActive);
    } else {
        timer_->add(id, period, this);
    }
}

void CWindow::KillTimer(int id) { timer_->remove(id); }

CMC_Scene* CWindow::getCurrentScene() const {
    CMC_Application* application = application_ ? application_->getMCApplicationIfc() : nullptr;
    CMC_Scene* episode = application ? application->getCurrentScene() : nullptr;
    return episode ? episode->getCurrentScene() : nullptr;
}

CUnit6* CWindow::GetCurrentUnit() const { return unitContainer_ ? unitContainer_->getCurrentUnit() : nullptr; }

void CWindow::SetApplicationInterface(CApplication* application) {
    application_ = application;
    unitContainer_ = application ? application->GetUnitContainer() : nullptr;
}

void CWindow::postMessage(CMessage* message) { messages_.push(message); }

void CWindow::processMessages() {
    while (auto* next = static_cast<CMessage*>(messages_.pop())) {
        const std::unique_ptr<CMessage> message(next);
        if (message->getReceiver()) message->setResult(message->getReceiver()->processMessage(next));
        if (message->notify() && message->getSender()) message->getSender()->notifyMessageReceive(next);
    }
}
