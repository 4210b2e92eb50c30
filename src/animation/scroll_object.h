// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "graphics/child_list.h"
#include "graphics/graphics_object.h"
#include "script/object.h"
#include "script/runner.h"

// SCROLL moves a set of pictures behind a viewport: each is clipped to it, and hidden while it lies outside. A member
// that dies is a member no more.
class CMC_Scroll : public CMC_Object, public CInvalidateObserver {
public:
    static constexpr int kType = 2022;

    CMC_Scroll(CMC_Scene* scene, CMElement* element);
    ~CMC_Scroll() override;

    const CXRect& getViewport() const { return viewport_; }
    const CXPoint& getOffset() const { return offset_; }  // the sum of all scrolling

    bool done(bool keep) override;
    void retire() override;
    void serialize(CXArchive* archive) override;
    std::span<const std::string_view> getBehavioursList() const override;
    void onDestroy(CGraphicsObject* object) override;

    // The script's methods.
    void add(const CXString& name);  // clips it; one that is a member already stays a member once
    void remove(const CXString& name);
    void scrollUp(int n) { scroll(CXPoint() - CXPoint(0, n)); }
    void scrollDown(int n) { scroll({0, n}); }
    void scrollLeft(int n) { scroll(CXPoint() - CXPoint(n, 0)); }
    void scrollRight(int n) { scroll({n, 0}); }
    void setViewport(int left, int top, int right, int bottom);
    void moveViewport(int dx, int dy);

private:
    struct Member {
        CGraphicsObject* object;
        int priority = 0;  // of all: they stand in the order in which they came
    };

    void scroll(const CXPoint& by);
    void clipAgain();
    void clip(CGraphicsObject* object) const;
    void letGo();

    CXRect viewport_;
    CXPoint offset_;
    ChildList<Member> members_;
};

class CMC_Scroll_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
