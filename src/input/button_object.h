// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "graphics/geometry.h"
#include "input/control.h"
#include "script/object.h"
#include "script/property_table.h"
#include "script/runner.h"

class CButton;
class CGraphicsObject;
class CSound4;

// BUTTON, the script object of a button. Its graphics and sounds are other objects of the scene, found by name when it
// is made; it goes on without those that are removed, or that exchange their picture.
class CMC_Button : public CMC_Object, public CControlNotifier {
public:
    static constexpr int kType = 2001;

    CMC_Button(CMC_Scene* scene, CMElement* element);
    CMC_Button(CMC_Scene* scene, std::unique_ptr<CButton> button, const CXString& name);
    ~CMC_Button() override;

    CButton* getButton() const { return button_.get(); }  // never null

    using CMC_Object::clone;
    CXObject* clone() override;
    bool done(bool keep) override;
    void retire() override;
    std::span<const std::string_view> getBehavioursList() const override;
    void serialize(CXArchive* archive) override;

    void onControlFocusOn(CControl*, CXPoint) override;
    void onControlFocusOff(CControl*, CXPoint) override;
    void onControlClicked(CControl*, CXPoint) override;
    void onControlReleased(CControl*, CXPoint) override;
    void onControlAction(CControl*, CXPoint) override;
    void onStartDragging(CControl*, CXPoint) override;  // the scene knows the dragged graphic's name from here on
    void onDragging(CControl*, CXPoint) override;
    void onEndDragging(CControl*, CXPoint) override;  // it forgets the name once the handler has run

    // The script's methods. A graphic that isn't found is none, save where it says so.
    void setRect(const CXRect& rect);
    void setRectLike(const CXString& text);  // a graphic's name or four numbers; otherwise the area stays
    void enable();
    void disable();
    void enableDragging();
    void disableDragging();
    void disableButVisible();
    void accent(const CXString& name);  // the shape stays when there is no such graphic
    void setStd(const CXString& name, bool remove);
    void setOnMove(const CXString& name);
    void setOnClick(const CXString& name);
    void setPriority(int priority);
    int getPriority() const;
    CXString getStd() const;
    CXString getOnMove() const;
    CXString getOnClick() const;

private:
    struct Properties {
        CXString accent;
        CXString standard, onMove, onClick;
        CXString standardSound, onMoveSound, onClickSound;  // nothing plays the first
        CXString drag;
        CXString rect;
        bool enable = false;
        bool draggable = false;
        int priority = 0;
    };
    static const PropertyRow<Properties> kProperties[];

    void createButton();
    void letGo();
    void tell(int signal);
    CXRect rectLike(const CXString& text) const;
    CGraphicsObject* graphic(const CXString& name) const;
    CSound4* sound(const CXString& name) const;
    CXString nameOf(CGraphicsObject* graphic) const;

    Properties properties_;
    std::unique_ptr<CButton> button_;
};

class CMC_Button_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
