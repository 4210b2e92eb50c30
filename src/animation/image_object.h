// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "graphics/collision_inspector.h"
#include "input/mouse_listener.h"
#include "script/object.h"
#include "script/property_table.h"
#include "script/runner.h"

class CImage;
class CWindow;

// IMAGE, the script object of a still picture on the scene.
//
// Objects of one file share its picture through the unit's cache: what one of them moves or hides moves and hides for
// all. A clone has a picture of its own over the same pixels.
class CMC_Image : public CMC_Object, public CCollisionObserver, public CMouseListener {
public:
    static constexpr int kType = 2008;

    CMC_Image(CMC_Scene* scene, CMElement* element);
    CMC_Image(CMC_Scene* scene, std::unique_ptr<CImage> image);  // "clone"
    ~CMC_Image() override;

    // Exchanges the picture, unless it is of that file already; its place among the others and its monitoring stay.
    void load(const CXString& name, bool preload);
    void setAsButton(bool asButton, bool changeCursor);
    void removeCollisionsMonitoring();           // the flags stay
    CImage* getImage() const { return image_; }  // null once the object is out of service

    using CMC_Object::clone;
    CXObject* clone() override;
    bool done(bool keep) override;
    void retire() override;
    std::span<const std::string_view> getBehavioursList() const override;
    bool verifyBehaviour(const CXString& key) override;
    void serialize(CXArchive* archive) override;

    void onCollision(CGraphicsObject* moved, CGraphicsObject* met) override;
    void onCollisionFinished(CGraphicsObject* moved, CGraphicsObject* met) override;
    using CMouseListener::onClick;
    using CMouseListener::onRelease;
    bool onMouseMove(CXPoint point) override;
    bool onClick(int button, CXPoint point) override;
    bool onRelease(int button, CXPoint point) override;

    // The script's methods.
    void show();
    void hide();
    void setPosition(int x, int y);
    void move(int dx, int dy);
    void loadFile(const CXString& name) { load(name, true); }
    void clearClipping();
    int getPositionX() const;
    int getPositionY() const;
    int getWidth() const;
    int getHeight() const;
    bool isInside(int x, int y, bool useAlpha) const;
    void monitorCollision(bool useAlpha);
    void removeMonitorCollision();
    void setScaleFactor() {}  // accepted, without effect
    void setPriority(int priority);
    int getAlpha(int x, int y) const;
    int getPixel(int x, int y) const;
    void invalidate();
    int getCenterX() const;
    int getCenterY() const;
    bool isVisible() const;
    void link(const CXString& name);  // shows the planes of the other IMAGE, which must have its size and format
    void setOpacity(int opacity);
    void save(const CXString& name);
    void flipH();
    void flipV();
    void resetFlips();

private:
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
    static const PropertyRow<Properties> kProperties[];

    void place();  // what creation and a stored record do once the picture is there
    void fireCollision(int signal, CGraphicsObject* moved, CGraphicsObject* met);
    bool hears(int signal, CXPoint point) const;
    void letGo();
    bool watchesCollisions() const { return properties_.monitorCollision || properties_.monitorCollisionAlpha; }

    CWindow* window_;
    CImage* image_ = nullptr;      // the cache's, or the next
    std::unique_ptr<CImage> own_;  // without a cache, and for clones
    Properties properties_;
    bool focus_ = false;
    bool mouseAware_ = false;
    bool changeCursor_ = true;
};

class CMC_Image_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
