// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "script/object.h"
#include "script/property_table.h"
#include "script/runner.h"
#include "text/text.h"

class CMultilineText6;

// TEXT, the script object of a text on the scene, broken into lines in its rectangle. When its FONT goes it stays as it
// is and shows nothing.
class CMC_Text : public CMC_Object {
public:
    static constexpr int kType = 2006;

    CMC_Text(CMC_Scene* scene, CMElement* element);
    ~CMC_Text() override;

    // LEFT, RIGHT, CENTER, TOP and BOTTOM, exactly so; any other word is the centre.
    static _justify resolveJustify(const CXString& word);

    CMultilineText6* getText() const { return text_.get(); }  // null once the object is out of service

    bool done(bool keep) override;
    void retire() override;
    void serialize(CXArchive* archive) override;
    std::span<const std::string_view> getBehavioursList() const override;

    // The script's methods.
    void setText(const CXString& text);
    void setJustify(const CXRect& rect, const CXString& horizontal, const CXString& vertical);
    void show();
    void hide();
    void setPosition(int x, int y);
    void move(int dx, int dy);
    void load(const CXString& file);
    void clearClipping();
    int getPositionX() const;
    int getPositionY() const;
    int getWidth() const;
    int getHeight() const;
    void setPriority(int priority);
    void setColor(int colour);

private:
    struct Properties {
        bool toCanvas = false;
        bool visible = false;
        CXString text;
        CXString vertical;
        CXString horizontal;
        CXString rect;  // four numbers, or the name of an object
        int priority = 0;
        CXString font;
    };
    static const PropertyRow<Properties> kProperties[];

    void build();
    void letGo();

    CWindow* window_;
    Properties properties_;
    std::unique_ptr<CMultilineText6> text_;
};

class CMC_Text_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
