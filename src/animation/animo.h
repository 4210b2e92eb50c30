// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "animation/animation_file.h"
#include "animation/frame.h"
#include "graphics/graphics_object.h"
#include "sound/playable.h"

class CMElement;
class CSndStream;

// A set of pictures and of events, named sequences of them, one of which runs at a time. The window's animation manager
// steps it by its rate. Events and their frames are told by index from 0; a name may stand for either, in any case.
//
// The animation has no planes of its own: what it shows is its current frame's (`getDrawn`).
class CAnimo : public CGraphicsObject, public CPlayable {
public:
    enum _astatus { kPlaying, kStopped, kPaused };
    enum _direction { kForward, kBackward };
    using _animoevent = int;

    explicit CAnimo(CWindow* window);
    CAnimo(CWindow* window, const CXString& name);  // loads at once
    CAnimo(CAnimo& other);  // over the other's frames and events; stopped, where that one stands
    ~CAnimo() override;

    // Loads the named file, also out of the window's big file, and shows the first frame of the first event that has
    // any. 0, or the error word, which has been told through CWindow::QuitOnError. A damaged file leaves an animation
    // without frames, and a line of debug output.
    int Load(const CXString& name) override;
    int Load(CFile* file) override;
    int Save(const CXString& name, _compression form) override;  // in the newest form; the error word of the file
    int Save(CFile* file, _compression form) override { return Save3(file, form); }
    int Save3(CFile* file, _compression form);
    void Flush() override;
    bool hasFrames() const { return GetNOF() > 0; }

    virtual int GetNOF() const;
    virtual CFrame* GetFrame(int frame) const;     // -1: the current one; null: no such
    CFrame* getFrame(const CXString& name) const;  // the first of that name in any event; null: none
    virtual void clearLastRefreshed() { lastRefreshed_ = -1; }
    virtual _astatus GetStatus() const { return playState_; }
    virtual bool IsPlaying() const { return playState_ == kPlaying; }
    virtual int GetFPS() const { return fps_; }
    virtual void Continue();  // from where it stands, at the event's own rate
    virtual void Play(const CXString& event, int = 0);
    // From the event's first frame. Refused by kNoRestart while playing.
    virtual void Play(_animoevent event, int = 0);
    virtual void Play() { Play(currentEvent_, 0); }
    virtual void Stop();
    virtual void StopNoNotify();
    virtual void Pause();
    virtual void Resume();
    virtual int Current() const { return currentFrame_; }  // -1: none
    // A step backward, a step forward; whether another frame is shown. At the end of its event the animation stops.
    virtual bool Prev();
    virtual bool Next();
    virtual void Seek(int frame);  // shows a frame outside of all events
    void SetFrame(int frame) { Seek(frame); }
    void Set(int frame, bool tell);

    void SetEventFrame(int event, int index);
    void SetEventFrame(const CXString& event, int index);
    // The index of the frame of that name, "Default" being one without a name; -1: none.
    int SetEventFrame(int event, const CXString& frameName);
    int GetCurrentFrameInSequence() const { return frameInSequence_; }
    int getCurrentEvent() const { return currentEvent_; }
    void setCurrentEvent(int event) { currentEvent_ = event; }
    int GetNOE() const;
    int getFirstEvent() const;                   // the first that has frames; 0: none has
    int GetEventNo(const CXString& name) const;  // -1: unknown
    int GetEventNo(int event) const { return event == -1 ? currentEvent_ : event; }
    int resolveEventName(const CXString& name) const { return GetEventNo(name); }
    CXString GetEventName(int event) const;
    CXString getCurrentEventName() const { return GetEventName(currentEvent_); }
    int GetNOFInEvent(int event) const;
    int GetNOFInEvent(const CXString& event) const { return GetNOFInEvent(GetEventNo(event)); }
    // An index in the event; -1: the current one, -2: the first, -3: the last. -1 for what the event hasn't.
    int GetFrameNo(int event = -1, int index = -1) const;
    int GetFrameNo(int event, const CXString& name) const;
    int GetLoop(int event, CXPoint& startAndEnd) const;  // the loop's count
    CXString GetName(int event, int index, const CXString& fallback) const;
    CXString getFrameName(int event, int index) const { return GetName(event, index, "Default"); }
    void setFrameName(int event, int index, const CXString& name);
    const _anmFrameInfo3* getFrameInfo(int event, int index) const;  // null: none
    CXPoint getCurrFramePosition() const;
    CXString getAuthor() const;
    CXString getDescription() const;
    int RandomFramesNumber() const;
    void setFPS(int fps);  // what isn't a rate counts as 15
    void SetDirection(_direction direction) { direction_ = direction; }
    _direction GetDirection() const { return direction_; }
    void SetAnimoFlags(unsigned flags) { animoFlags_ = flags; }
    unsigned GetAnimoFlags() const { return animoFlags_; }
    _compression getStoredCompression() const;            // of the first frame, as read
    bool isInside(int x, int y, bool useAlpha) override;  // of the current frame, where the file has it
    CSound4* getCurrentSound() const;                     // of the latest frame that had one; null: none
    void SetAttachedFilter(unsigned char kind, void* filter) { attachedFilter_ = {kind, filter}; }
    void SetAttachedChangeFilter(unsigned char kind, void* filter) { changeFilter_ = {kind, filter}; }

    void PlaySoundFX(int event, int index);
    void UpdateSoundFX();                      // makes the sounds anew out of the frames' records
    void ClearWAVEntry(int event, int index);  // the frame has no sound any more

    // Building in memory. Events whose frames go keep the others; an animation of clones changes for all of them.
    void AddFrame(CGraphicsObject* picture);  // a copy, at its position
    void RemoveFrame(int frame);
    void ExchangeFrames(int a, int b);  // the pictures; the events show the other one then
    // Gives the animation frames of its own, so that clones don't see what is done to their pictures.
    void ownFrames();
    void AddEvent(_annEventInfo3 event);
    void RemoveEvent(int event);
    void RemoveAllEvents();
    void RemoveAllFrames();

    // As a graphics object.
    CXObject* clone() override;
    CXPoint GetPosition() const override;  // where the current frame stands on the screen
    CXRect GetBoundingBox() const override;
    CXPoint getCenterPoint() const override;
    using CGraphicsObject::Move;
    using CGraphicsObject::SetPosition;
    void Move(int dx, int dy) override;
    void SetPosition(int x, int y) override;  // of every frame: the places that the file gave them are lost
    CGraphicsObject* getDrawn() override;
    char* GetDataPtr() override;
    std::uint8_t GetPixel(_channel channel, const CXPoint& point) override;
    using CGraphicsObject::GetPixel;
    void FlipH() override;
    void FlipV() override;
    void resetFlips() override;
    void Redraw() override { drawAt(position_); }
    bool Convert(int bpp);
    void DeCompress();
    void DeCompressRLE();
    void updateWithCurrentFrame();
    // The current frame with its pixels decoded; null: none.
    CFrame* decodeCurrent();
    bool isVisible() const override { return CGraphicsObject::isVisible(); }

    // As a playable.
    void play() override { Play(currentEvent_, 0); }
    void play(const CXString& event) override;
    void stop(bool tell) override;
    void pause() override { Pause(); }
    void resume() override { Resume(); }
    void seek(int frame) override { Seek(frame); }
    int previous() override;
    int next() override;
    bool isPlaying() const override { return IsPlaying(); }
    int getFPS() const override { return GetFPS(); }
    bool playRandomEvent() override;
    void move(int dx, int dy) override { Move(dx, dy); }
    using CPlayable::move;
    // The point that all frames are placed from.
    void SetGlobalPosition(int x, int y) override;
    using CPlayable::SetGlobalPosition;
    const CXPoint& GetGlobalPosition() const { return globalPosition_; }
    CXPoint getPosition() const override { return globalPosition_; }
    void placeAt(const CXPoint& position) override { globalPosition_ = position; }
    void setPosition(int x, int y) override { SetGlobalPosition(x, y); }
    void setPosition(const CXPoint& p) override { SetGlobalPosition(p.x, p.y); }
    void show() override { Visible(true); }
    void hide() override { Visible(false); }
    void setVisibility(bool visible) override;
    void alwaysOnTop() override;
    void setVolume(int volume) override;
    void setPanning(int panning) override;
    void setFrequency(int frequency) override;

protected:
    void drawAt(const CXPoint& at);
    // What has to be there before the animation can play.
    virtual void prepare() {}

private:
    struct Attached {
        unsigned char kind = 0;
        void* filter = nullptr;
    };

    CFrame* frameAt(int frame) const;
    const _annEventInfo3* eventAt(int event) const;
    _annEventInfo3* eventAt(int event);
    void invalidateBox();
    bool endEvent(int& next);
    bool isSoundPlaying() const;
    CSound4* soundAt(int event, int index) const;
    void bringBackRefreshed();
    template <class Do>
    void forAllSounds(Do action);
    void forgetPictures();

    std::shared_ptr<AnimationData> data_;  // null: nothing loaded
    std::unique_ptr<CSndStream> stream_;
    int frameInSequence_ = 0;
    int currentFrame_ = -1;
    int currentEvent_ = 0;
    unsigned animoFlags_ = 0;
    int lastRefreshed_ = -1;  // the frame that is decoded for the screen; -1: none
    CXPoint globalPosition_;
    _astatus playState_ = kStopped;
    _direction direction_ = kForward;
    int lastEvent_ = 0;
    int fps_ = 15;
    Attached attachedFilter_;
    Attached changeFilter_;
    CXPoint currentSound_{-1, -1};  // event and index of the latest frame that had one
};

// The animation that scripts have: it can leave its frames in the file until they are needed, and give them up again.
class CAnimo6 : public CAnimo {
public:
    explicit CAnimo6(CWindow* window) : CAnimo(window) {}
    CAnimo6(CWindow* window, const CXString& name) : CAnimo(window, name) {}
    CAnimo6(CWindow* window, const CMElement* element);  // RELEASEAFTERUSE, PRELOAD, FILENAME, VISIBLE
    CAnimo6(CAnimo6& other) : CAnimo(other) {}

    virtual void flush() { Flush(); }
    CXObject* clone() override { return new CAnimo6(*this); }
    void Redraw() override { drawAt(position_ + GetGlobalPosition()); }
    void show() override;  // reads the file unless that has been done
    void hide() override;  // and with `toRelease` gives up the frames

protected:
    void prepare() override;
};
