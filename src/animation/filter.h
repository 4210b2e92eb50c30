// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>
#include <variant>
#include <vector>

#include "foundation/xstring.h"
#include "graphics/graphics_object.h"
#include "script/object.h"
#include "script/ref.h"

class CAnimo;

// What a filter lets scripts choose, as texts of a key and a value.
class CFilterProperties {
public:
    explicit CFilterProperties(int classId) : classId_(classId) {}
    virtual ~CFilterProperties() = default;
    CFilterProperties(const CFilterProperties&) = delete;
    CFilterProperties& operator=(const CFilterProperties&) = delete;

    virtual void setProperty(const CXString& key, const CXString& value) = 0;  // no effect for an unknown key
    int getClassId() const { return classId_; }

private:
    int classId_;
};

template <class T>
struct FilterKey {
    std::string_view key;
    std::variant<bool T::*, int T::*, double T::*, CXString T::*> member;
};

template <class T>
void setByKey(T& target, std::span<const FilterKey<T>> keys, const CXString& key, const CXString& value) {
    for (const FilterKey<T>& row : keys) {
        if (row.key != key.view()) continue;
        if (const auto* truth = std::get_if<bool T::*>(&row.member)) target.*(*truth) = value.toBool();
        if (const auto* number = std::get_if<int T::*>(&row.member)) target.*(*number) = CXString::toNumber(value);
        if (const auto* real = std::get_if<double T::*>(&row.member)) target.*(*real) = value.toDouble();
        if (const auto* text = std::get_if<CXString T::*>(&row.member)) target.*(*text) = value;
    }
}

// What a filter keeps of one object.
struct CFilterState {
    virtual ~CFilterState() = default;
};

// An object under a filter.
class CFilterEntry : public CXObject {
public:
    // Without a script object for a graphics object that none stands for, a single frame of an animation.
    CFilterEntry(CGraphicsObject* object, CMC_Object* scriptObject);

    CGraphicsObject* getObject() const { return object_; }  // null once it is gone or unlinked
    CAnimo* getAnimation() const { return animation_; }     // the same object; null when it is no animation
    CXString getScriptName() const;                         // "" without a script object
    bool isOrphan() const { return hasScriptObject_ && !scriptObject_; }  // its script object has gone
    void forget();

    bool active = false;
    bool starting = false;  // its start is being told
    std::unique_ptr<CFilterState> state;

private:
    CGraphicsObject* object_;
    CAnimo* animation_;
    Ref<CMC_Object> scriptObject_;
    bool hasScriptObject_;
};

// The base of both kinds of filters: the objects that it is linked to, and the properties that count for all of them.
//
// An object that is destroyed is unlinked by that. Entries may go at any time, also while they are walked over: they
// stay in memory, without an object, until the walk has ended.
class CFilterBase : public CXObject, public CInvalidateObserver {
public:
    CFilterBase(CWindow* window, std::unique_ptr<CFilterProperties> properties);
    ~CFilterBase() override;

    virtual void link(CGraphicsObject* object, CMC_Object* scriptObject);  // unless it is linked
    virtual void add(std::unique_ptr<CFilterEntry> entry);
    virtual void unlink(CGraphicsObject* object);
    virtual void remove(CFilterEntry* entry);  // null is allowed
    virtual CFilterEntry* find(const CGraphicsObject* object) const;
    virtual std::unique_ptr<CFilterEntry> createEntry(CGraphicsObject* object, CMC_Object* scriptObject);
    // Lets go of all objects, as they are, and takes no more.
    virtual void release();

    void setProperty(const CXString& key, const CXString& value) { properties_->setProperty(key, value); }
    void onDestroy(CGraphicsObject* object) override;

protected:
    CFilterProperties& getProperties() const { return *properties_; }
    // Entries that come meanwhile are left out.
    template <class Do>
    void forEachEntry(Do action) {
        ++walks_;
        const std::size_t count = entries_.size();
        for (std::size_t i = 0; i < count; ++i) {
            if (entries_[i]->getObject()) action(*entries_[i]);
        }
        --walks_;
        sweep();
    }
    // The entry has no object any more, and is freed when nobody walks over it.
    void drop(CFilterEntry* entry);

    CWindow* window_;

private:
    void sweep();

    std::vector<std::unique_ptr<CFilterEntry>> entries_;
    std::unique_ptr<CFilterProperties> properties_;
    int walks_ = 0;
    bool isReleased_ = false;
};

// Readies a picture for work on its pixels: decoded for good, in that format. False for one without 16-bit pixels, or
// with planes that its size doesn't fit.
bool prepareForFilter(CGraphicsObject& picture, int bpp);
