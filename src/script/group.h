// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "script/object.h"
#include "script/runner.h"

// GROUP: a named set of scene objects. A method that the group doesn't know goes to all its members. It owns none of
// them, and a member that dies is a member no more.
class CMC_Groupped : public CMC_Object {
public:
    using CMC_Object::clone;

    static constexpr int kType = 3000;

    CMC_Groupped(CMC_Scene* scene, CMElement* element);
    CMC_Groupped(CXString name, CMC_Scene* scene);

    // Move the marker by n, round the ends, and give the member there; null, and no move, in an empty group.
    virtual CMC_Object* prev(int n);
    virtual CMC_Object* next(int n);
    virtual void resetMarker() { marker_ = -1; }
    virtual int getMarkerPos() { return marker_; }
    virtual void setMarkerPos(int pos);  // held between -1 and size - 1

    void add(CMC_Object* object);  // unless it is a member already
    // Those of the objects NAME_from to NAME_to that the scene has, also when they are members already.
    void addClones(CXString name, int from, int to);
    void join(CMC_Object* object) { add(object); }
    void remove(CMC_Object* object);
    void removeAll() { members_.clear(); }
    int getSize();
    CMC_Object* get(int index);  // null outside the group
    // The members as they stand; some may be gone.
    std::vector<Ref<CMC_Object>> getList() const { return members_; }

    CXObject* clone() override;  // "cloned", with the same members
    std::span<const std::string_view> getBehavioursList() const override;

private:
    void forgetTheDead();
    CMC_Object* moveMarker(std::int64_t to);

    std::vector<Ref<CMC_Object>> members_;
    int marker_ = -1;
};

class CMC_Groupped_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
    using CMC_Runner::run;
    CMC_Variable* run(CXString name, CMC_Object* object, CMC_Scene* scene, CXVector* params) override;
};
