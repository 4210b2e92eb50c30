// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <map>
#include <memory>
#include <vector>

#include "foundation/quene.h"
#include "foundation/xvector.h"
#include "frame/handles.h"
#include "graphics/geometry.h"
#include "platform/files.h"

class CAnimationManager;
class CApplication;
class CBigFile;
class CCollisionInspector;
class CColor;
class CCommandLine6;
class CDirectDrawSurface;
class CFile;
class CGraphicsObject;
class CKeyListener;
class CKeyboard;
class CMC_Scene;
class CMessage;
class CMouseListener;
class CMusicPlayer;
class CPublicTrash;
class CRefreshScreen;
class CSurface;
class CUnit6;
class CUnitContainer6;
class CXTimer;
enum _event : unsigned;
namespace platform {
enum class CursorKind;
}
struct _finddata_t;

// The one object through which the library meets the outside world: the screen, the events, the frame.
//
// A host builds the command line, the window and the application in this order, then makes the screen, and deletes
// application and window in this order at the end. Exactly one window lives at a time. All calls come from one thread.
class CWindow : public CXObject {
public:
    // The command line stays the caller's and must outlive the window. The window isn't active until it is told so.
    CWindow(HWND handle, CCommandLine6* commandLine, const CXSize& size, HICON mainCursor);
    ~CWindow() override;
    CWindow(const CWindow&) = delete;
    CWindow& operator=(const CWindow&) = delete;

    static CWindow* current();  // null: there is none

    // Host: the screen. Each returns the error word, 0 or -998.
    int SetDisplayMode(int width, int height, int bpp) { return SetDisplayMode(CXSize(width, height), bpp); }
    int SetDisplayMode(const CXSize& size, int bpp);
    int CreateSurface();
    void ShowError();  // a message for the error word, if it isn't 0

    // Host: life and events. Points are in the client area; keys are DirectInput scan codes, characters Windows-1250.
    virtual int Redraw();
    virtual int OnCreate();
    virtual int OnInitialUpdate() { return 0; }
    virtual int OnTimer(int) { return 0; }
    virtual int OnActivateApp(bool active);
    virtual int OnDestroy();
    virtual bool OnExit();
    virtual int OnMove(int x, int y);
    void Activate(bool active) { active_ = active; }
    bool isActive() const { return active_; }
    bool domodal();  // one frame; true: leave the loop
    int Tick();      // one frame in which the application stands still; 0
    int OnMouseMove(CXPoint point, int flags);
    int OnLButtonDown(CXPoint point, int flags);
    int OnLButtonUp(CXPoint point, int flags);
    int OnLButtonDblClk(CXPoint point, int flags);
    int OnMButtonDown(CXPoint point, int flags);
    int OnMButtonUp(CXPoint point, int flags);
    int OnRButtonDown(CXPoint point, int flags);
    int OnRButtonUp(CXPoint point, int flags);
    int OnChar(int character, int flags);
    int OnKeyDown(int key, int flags);
    int OnKeyUp(int key, int flags);
    void processMessages();

    // Drawing. Nothing happens while no screen exists.
    void Invalidate();
    void Invalidate(const CXRect* rect);
    void Invalidate(const CGraphicsObject* object);
    void SetBackground(CGraphicsObject* object);
    void SetBackground(const CColor* color);
    void SetBackground(const CXString& fileName);
    void operator<<(CGraphicsObject* object);
    void operator>>(CGraphicsObject* object);
    CXSize GetScreenSize() const;  // the window's before the screen exists
    int GetBpp() const;            // 0 before the screen exists
    char* GetScreenPtr();
    CSurface* GetSurface() const { return surface_.get(); }
    CDirectDrawSurface* GetBackBuffer() const { return backBuffer_.get(); }
    CRefreshScreen* GetRefreshScreenInterface() const { return refreshScreen_.get(); }

    // Cursor. A cursor that is null, and every one while the cursor is locked, is not passed on to the platform.
    void SetActiveCursor(HICON cursor) { activeCursor_ = cursor; }
    void SetWaitCursor(HICON cursor) { waitCursor_ = cursor; }
    void SetCursor(HICON cursor);
    void BeginActiveCursor();
    void BeginWaitCursor();
    void EndActiveCursor();  // back to the main cursor
    void EndWaitCursor() { EndActiveCursor(); }
    void SetMainCursor() { EndActiveCursor(); }
    void LockCursor() { cursorLocked_ = true; }
    void UnLockCursor() { cursorLocked_ = false; }
    void ShowCursor();
    void HideCursor();
    void enableMouse(bool on);
    bool isMouseEnabled() const { return mouseEnabled_; }

    // Sound.
    void SoundOn(bool on) { soundOn_ = on; }
    void MusicOn(bool on) { musicOn_ = on; }
    bool IsSoundOn() const { return soundOn_; }
    bool IsMusicOn() const { return musicOn_; }
    // A file name below the program's folder. The music that plays already plays on.
    void StartMusic(const CXString& name, bool loop);
    void StopMusic();
    bool isMusicPlaying() const;
    int getMusicVolume() const;
    void setMusicVolume(int volume);
    void setMusicPan(int pan);
    void setMusicFreq(int frequency);
    CXString GetSoundFXFullPath(const CXString& name) const;
    const CXString& GetSoundFXPath() const { return soundPath_; }
    void SetSoundFXPath(const CXString& path) { soundPath_ = path; }

    // Timers and units.
    void SetTimer(int id, unsigned period, CUnit6* unit, bool onlyActive);  // without a unit the window's own
    void KillTimer(int id);
    CXTimer* GetTimerInterface() const { return timer_.get(); }
    void SetUnitContainer(CUnitContainer6* container) { unitContainer_ = container; }
    CUnitContainer6* GetUnitContainer() const { return unitContainer_; }
    CUnit6* GetCurrentUnit() const;  // null: none

    // Listeners; none is owned, each must be removed before it dies, and may be from inside a call. Key listeners hear
    // in order of registration. Mouse listeners are asked from the highest priority down, of equal ones the later
    // first.
    void registerKeyListener(CKeyListener* listener);
    void removeKeyListener(CKeyListener* listener);
    void registerMouseListener(CMouseListener* listener, int priority);
    void removeMouseListener(CMouseListener* listener);
    void setMouseCaption(CMouseListener* listener);  // puts it above all others, and tells it and the former top one

    // Files: of the attached big file, of the disk without one.
    int ChDir(const CXString& folder);  // 0, or -1 when there is no such folder
    CXString GetCurrentDirectoryA() const;
    void GetCurrentDirectoryA(int size, char* buffer) const;  // cut to the buffer, ended by a zero byte
    // The first find's result is a handle for the others, -1: nothing found. FindNext answers 0, or -1 at the end,
    // which also frees the handle.
    int FindFirst(const CXString& pattern, _finddata_t* data);
    int FindNext(int handle, _finddata_t* data);
    void FindClose(int handle);
    int FSeek(CFile* file, int offset, int whence);
    int FTell(CFile* file);
    bool DirExists(const CXString& name) const;   // false without a big file
    bool FileExists(const CXString& name) const;  // false without a big file
    CBigFile* Resource() const { return bigFile_.get(); }
    void attach(std::unique_ptr<CBigFile> bigFile);

    // The rest of the system.
    HWND GetHwnd() const { return handle_; }
    void SetApplicationInterface(CApplication* application);  // and its unit container; null takes both out
    CApplication* GetApplicationInterface() const { return application_; }
    CCommandLine6* getCommandLine() const { return commandLine_; }
    bool isWindowMode() const { return windowMode_; }
    bool isVMem() const { return videoMemory_; }
    const CXString& getCDPath() const { return dataRoot_; }  // the folder of the application's folders
    void setCDPath(const CXString& path) { dataRoot_ = path; }
    CKeyboard* getKeyboardInterface() const { return keyboard_.get(); }
    CCollisionInspector* getCollisionInspectorInterface() const { return collisionInspector_.get(); }
    CPublicTrash* getPublicTrashInterface() const { return publicTrash_.get(); }
    CAnimationManager* getAnimationManagerInterface() const { return animationManager_.get(); }
    void quit() { quit_ = true; }
    void postMessage(CMessage* message);  // takes it over
    // Says that a file wasn't found, unless the current unit takes the matter over. Despite its name it returns, and
    // the loop goes on.
    void QuitOnError(CXObject* source, const CXString& name);

    static const CXString& getEXEPath() { return exePath; }  // with a backslash at its end
    static bool isPaused() { return paused; }
    // The scene that is being played; null: none.
    CMC_Scene* getCurrentScene() const;
    static void pause() { paused = true; }
    static void resume() { paused = false; }
    static void toLog(const CXString&, bool) {}  // drops the text
    // The engine's own, negative code of a platform's virtual key; other keys come back as they are. The name is part
    // of the interface.
    static int __get_virtualkey_code(int vk, int lParam);
    // The upper-case letter, digit or blank of a key; 0 for others. The name is part of the interface.
    static char tranlateToChar(int scanCode);

private:
    struct Search {
        std::vector<platform::FileEntry> found;
        std::size_t next = 0;
        bool foldersOnly = false;
    };

    void release();
    int openScreen();
    void step();  // what every frame does while the window is active
    void presentChanges(int clientLeft, int clientTop);
    void showCursorKind(HICON cursor, platform::CursorKind kind);
    template <class Call>
    void offerToKeyListeners(Call call);
    template <class... Calls>
    int offerMouseEvent(_event event, CXPoint point, int flags, Calls... calls);
    static bool fill(Search& search, _finddata_t* data);  // the next entry; false at the end

    static CXString exePath;
    static bool paused;

    HWND handle_;
    CApplication* application_ = nullptr;
    std::unique_ptr<CDirectDrawSurface> backBuffer_;
    CXSize size_;
    bool quit_ = false;
    bool videoMemory_ = false;
    bool mouseEnabled_ = true;
    std::unique_ptr<CCollisionInspector> collisionInspector_;
    CCommandLine6* commandLine_;
    bool cursorLocked_ = false;
    HICON mainCursor_;
    HICON activeCursor_ = nullptr;
    HICON waitCursor_ = nullptr;
    std::unique_ptr<CSurface> surface_;
    std::unique_ptr<CRefreshScreen> refreshScreen_;
    std::unique_ptr<CBigFile> bigFile_;
    bool soundOn_ = true;
    bool musicOn_ = false;
    bool windowMode_ = false;
    std::unique_ptr<CMusicPlayer> musicPlayer_;
    CUnitContainer6* unitContainer_ = nullptr;
    std::unique_ptr<CXTimer> timer_;
    CXString dataRoot_;
    CXString soundPath_;
    std::unique_ptr<CKeyboard> keyboard_;
    CXArray keyListeners_;                           // of CKeyListener
    std::unique_ptr<CSortedVector> mouseListeners_;  // of MouseListenerEntry, owned
    std::unique_ptr<CPublicTrash> publicTrash_;
    CFifoQuene messages_;  // of CMessage, owned
    bool active_ = false;
    std::unique_ptr<CAnimationManager> animationManager_;
    std::map<int, Search> searches_;
    int lastSearch_ = 0;
    unsigned lastListener_ = 0;
};
