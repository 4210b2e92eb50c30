// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "graphics/geometry.h"
#include "storage/file_resolver.h"

class CAnimo;
class CPlayable;
class CWindow;

// Hears of the life of a playable. Each answer is passed on by CPlayable::notify.
class CPlayableObserver {
public:
    virtual ~CPlayableObserver() = default;
    virtual bool onPlayableStarted(CPlayable*) { return false; }
    virtual bool onPlayableTick(CPlayable*) { return false; }
    virtual bool onPlayableFinished(CPlayable*) { return false; }
};

// The one interface of everything that runs in time, so that a sequence plays its steps without knowing what they are.
//
// A derived class sets the status, and notifies of its start (1), of each step of its own clock (2) and of its end (3).
class CPlayable : public CFileResolver {
public:
    explicit CPlayable(CWindow* window) : playableWindow_(window) {}
    CPlayable(const CPlayable&) = delete;
    CPlayable& operator=(const CPlayable&) = delete;

    virtual void addChild(CPlayable*) {}
    virtual void setParent(CPlayable* parent) { parent_ = parent; }
    virtual bool isParent() const { return parent_ == nullptr; }
    virtual void substAnimation(CAnimo*) {}
    virtual void setNotifier(CPlayableObserver* observer);  // the only one from now on
    virtual CPlayable* getPlaying() { return isPlaying() ? this : nullptr; }
    virtual CXString getParam() const { return parameter_; }
    virtual CXString getParameter(const CXString& key) const;  // of the event with that key in any case; "": none
    virtual CXString getParameter() const { return parameter_; }
    virtual void play(const CXString& event);  // with that event's value as the current parameter
    virtual void play() = 0;
    virtual void stop(bool notify) = 0;
    virtual void pause() = 0;
    virtual void resume() = 0;
    virtual bool onPlayableFinished(CPlayable*) { return false; }
    virtual void onStarted() {}
    virtual void onFinished() {}
    virtual int getStatus() const { return status_; }
    virtual bool isPlaying() const { return (status_ & 1) != 0; }
    virtual bool isPaused() const { return (status_ & 2) != 0; }
    virtual int getType() const { return type_; }
    virtual void seek(int position) = 0;  // 0 or more; -3: a step back, -4: a step forward
    virtual int previous();               // a step back; the position then
    virtual int next();                   // a step forward; the position then
    virtual int getFPS() const { return 10; }
    virtual void move(int, int) {}
    virtual void move(const CXPoint& by) { move(by.x, by.y); }
    virtual void setPosition(int, int) {}
    virtual void setPosition(const CXPoint& p) { setPosition(p.x, p.y); }
    virtual void SetGlobalPosition(int, int) {}
    virtual void SetGlobalPosition(const CXPoint& p) { SetGlobalPosition(p.x, p.y); }
    virtual bool isVisible() const { return playableVisible_; }
    virtual void setVisibility(bool visible) { playableVisible_ = visible; }
    virtual void show() { setVisibility(true); }
    virtual void hide() { setVisibility(false); }
    virtual void alwaysOnTop() {}
    virtual CXString getLastPlayedEvent() const { return lastEvent_; }
    // Calls the observers and last the generic one, 1: started, 2: a step, 3: finished. The last one's answer, true
    // when there is none. An observer that has left the list meanwhile is passed over.
    virtual bool notify(int kind);
    virtual void setVolume(int volume) { volume_ = volume; }  // hundredths of a decibel
    virtual void setPanning(int panning) { panning_ = panning; }
    virtual void setFrequency(int frequency) { frequency_ = frequency; }
    // Starts any of its events; false for what has none to choose from.
    virtual bool playRandomEvent() { return false; }

    void addEvent(const CXString& key, const CXString& value);      // also behind one of the same key
    void setParameter(const CXString& key, const CXString& value);  // of the first event with exactly that key
    void setParameter(const CXString& parameter) { parameter_ = parameter; }
    void setName(const CXString& name) { name_ = name; }
    const CXString& getName() const { return name_; }
    void setMode(int mode) { mode_ = mode; }
    void setWaitMode(bool wait) { wait_ = wait; }  // whether a sequence waits for the end of this step
    bool getWaitMode() const { return wait_; }
    void addParent() { ++parents_; }
    void subParent() { --parents_; }
    void setGenericNotifier(CPlayableObserver* observer) { genericNotifier_ = observer; }  // not owned; null: none
    // For one that goes: what others have put in its place meanwhile stays.
    void dropGenericNotifier(const CPlayableObserver* observer) {
        if (genericNotifier_ == observer) genericNotifier_ = nullptr;
    }
    void dropParent(const CPlayable* parent) {
        if (parent_ == parent) parent_ = nullptr;
    }
    void addNotifier(CPlayableObserver* observer);  // unless it is listed; not owned
    void removeNotifier(CPlayableObserver* observer);
    void clearNotifiers() { notifiers_.clear(); }

    // Expires with the playable.
    std::weak_ptr<const CPlayable*> life() const { return life_; }

protected:
    CWindow* playableWindow_;
    int type_ = 0;
    int status_ = 0;  // bit 0: playing, bit 1: paused
    int step_ = -1;   // where it stands, what `previous` and `next` return
    int mode_ = 1;
    int parents_ = 0;
    int volume_ = 0;
    int panning_ = 0;
    int frequency_ = 0;

private:
    struct Event {
        CXString key;
        CXString value;
    };

    CXString name_;
    bool wait_ = true;
    CXString parameter_;
    std::vector<Event> events_;
    bool playableVisible_ = true;
    CXString lastEvent_;
    CPlayable* parent_ = nullptr;                   // not owned
    CPlayableObserver* genericNotifier_ = nullptr;  // not owned
    std::vector<CPlayableObserver*> notifiers_;
    std::shared_ptr<const CPlayable*> life_ = std::make_shared<const CPlayable*>(this);
};
