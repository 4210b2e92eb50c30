// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "animation/animated_filter.h"
#include "animation/static_filter.h"
#include "script/object.h"
#include "script/runner.h"

// What FILTER and STATICFILTER have in common: an effect that ACTION chooses, and the objects that a script links to it
// by name. With an unknown ACTION there is no effect, and nothing has one.
class CMC_FilterObject : public CMC_Object {
public:
    CXString toString() override { return "Filter"; }
    void serialize(CXArchive* archive) override;
    void retire() override;

    // The script's methods that both have.
    void setProperty(const CXString& key, const CXString& value);
    void unlink(const CXString& name);

protected:
    CMC_FilterObject(CMC_Scene* scene, int type);  // "temp"
    CMC_FilterObject(CMC_Scene* scene, CMElement* element, int type);

    virtual CFilterBase* getEffect() const = 0;  // null: none
    virtual void makeEffect(const CXString& action) = 0;
    CGraphicsObject* graphicOf(const CXString& name) const;  // null: none
    void linkNamed(const CXString& name);
    CWindow* getWindow() const;
    const CXString& getAction() const { return action_; }

private:
    CXString action_;
};

// FILTER, the script object of a running effect.
class CMC_Filter : public CMC_FilterObject, public CFilterListener {
public:
    static constexpr int kType = 2014;

    explicit CMC_Filter(CMC_Scene* scene);
    CMC_Filter(CMC_Scene* scene, CMElement* element);

    std::span<const std::string_view> getBehavioursList() const override;
    void onStarted(CFilterEntry* entry, CAnimatedFilter* filter) override;
    void onFinished(CFilterEntry* entry, CAnimatedFilter* filter) override;
    void onTick(CFilterEntry* entry, CAnimatedFilter* filter) override;

    // The script's methods.
    void link(const CXString& name) { linkNamed(name); }
    void start(const CXString& name);
    void stop(const CXString& name);
    bool isRunning(const CXString& name) const;

private:
    CFilterBase* getEffect() const override { return effect_.get(); }
    void makeEffect(const CXString& action) override;
    void fireFor(int signal, const CFilterEntry& entry);

    std::unique_ptr<CAnimatedFilter> effect_;
};

// STATICFILTER, the script object of an operation on pictures.
class CMC_StaticFilter : public CMC_FilterObject {
public:
    static constexpr int kType = 2015;

    explicit CMC_StaticFilter(CMC_Scene* scene);
    CMC_StaticFilter(CMC_Scene* scene, CMElement* element);

    std::span<const std::string_view> getBehavioursList() const override;

    // The script's method.
    void link(const CXString& name);

private:
    CFilterBase* getEffect() const override { return effect_.get(); }
    void makeEffect(const CXString& action) override;

    std::unique_ptr<CStaticFilter> effect_;
};

class CMC_Filter_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};

class CMC_StaticFilter_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
