// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <utility>

#include "animation/mouse_target.h"
#include "graphics/collision_inspector.h"
#include "script/property_table.h"

class CFileResolver;
class CGraphicsObject;
class CPlayable;
class CPlayableObserver;
class CRefreshScreen;
class CWindow;

// What ANIMO and IMAGE have in common: a picture out of a named file on the scene, which hears collisions and the
// mouse.
//
// Objects of one file share its picture through the unit's cache: what one of them moves or hides moves and hides for
// all. A clone has a picture of its own over the same pixels.
class CMC_Picture : public CMC_MouseTarget, public CCollisionObserver {
public:
    ~CMC_Picture() override;

    // Exchanges the picture, unless it is of that file already; its place among the others and its monitoring stay.
    void load(const CXString& name, bool preload);
    void removeCollisionsMonitoring();  // the flags stay
    CGraphicsObject* getGraphic() const override { return graphic_; }

    bool done(bool keep) override;
    void retire() override;
    void serialize(CXArchive* archive) override;
    void onCollision(CGraphicsObject* moved, CGraphicsObject* met) override;
    void onCollisionFinished(CGraphicsObject* moved, CGraphicsObject* met) override;

    // The script's methods that both have.
    void setPosition(int x, int y);
    void move(int dx, int dy);
    void loadFile(const CXString& name) { load(name, true); }
    void clearClipping();
    int getWidth() const;
    int getHeight() const;
    bool isInside(int x, int y, bool useAlpha) const;
    void monitorCollision(bool useAlpha);
    void removeMonitorCollision();
    void setPriority(int priority);
    int getPriority() const;  // -1: not on the screen
    int getAlpha(int x, int y) const;
    int getPixel(int x, int y) const;
    void invalidate();
    int getCenterX() const;
    int getCenterY() const;
    bool isVisible() const;
    void setOpacity(int opacity);
    void flipH();
    void flipV();
    void resetFlips();

protected:
    // A picture with both of its faces.
    struct Media {
        std::unique_ptr<CGraphicsObject> owned;
        CPlayable* playable = nullptr;
    };
    template <class T>
    static Media mediaOf(std::unique_ptr<T> picture) {
        CPlayable* playable = picture.get();
        return {std::move(picture), playable};
    }
    // Where a type has the signals that both know.
    struct SignalPlaces {
        int collision, collisionFinished, focusOn;
    };
    struct Properties {
        CXString fileName;
        bool toCanvas = false;
        bool visible = false;
        bool toRelease = false;
        bool preload = false;
        bool monitorCollision = false;
        bool monitorCollisionAlpha = false;
        int priority = 0;
        bool asButton = false;
        bool unlisted = false;  // by the compositor
    };

    CMC_Picture(CMC_Scene* scene, CMElement* element, int type, const SignalPlaces& signalPlaces);
    CMC_Picture(CMC_Scene* scene, Media media, int type, const SignalPlaces& signalPlaces);  // "clone"

    void readDefinition(CMElement* element);  // the keys, then the file
    // What creation and a stored record do once the picture is there.
    virtual void place() = 0;
    void putOnScreen();       // TOCANVAS
    void monitorAsDefined();  // MONITORCOLLISION and MONITORCOLLISIONALPHA
    virtual Media makeMedia(const CXString& name, bool preload) = 0;
    virtual bool fits(CFileResolver* cached) const = 0;         // whether it is a picture of this type
    virtual void onExchanged() {}                               // another picture has come
    virtual CXString collisionQualifier() const { return {}; }  // asked for before the plain keys
    void letGo();
    CPlayable* getPlayable() const { return playable_; }
    CRefreshScreen* getScreen() const;

    CPlayableObserver* observer_ = nullptr;  // hears the picture, whichever it is
    Properties properties_;

    bool isButton() const override { return properties_.asButton; }
    int listenerPriority() const override { return properties_.priority; }

private:
    static const PropertyRow<Properties> kProperties[];

    void adopt(CGraphicsObject* graphic, CPlayable* playable);
    void fireCollision(int signal, CGraphicsObject* moved, CGraphicsObject* met);
    bool watchesCollisions() const { return properties_.monitorCollision || properties_.monitorCollisionAlpha; }
    void dropMedia();
    void flip(void (CGraphicsObject::*turn)());

    SignalPlaces signalPlaces_;
    CGraphicsObject* graphic_ = nullptr;    // the cache's, or the next
    CPlayable* playable_ = nullptr;         // the same object
    std::unique_ptr<CGraphicsObject> own_;  // without a cache, and for clones
};
