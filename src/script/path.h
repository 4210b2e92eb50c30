// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <vector>

#include "script/object.h"
#include "script/runner.h"

// PATH: a list of scene objects and a density, both for those that walk along it. It owns none of the objects; one that
// vanishes, and a name that nobody bore, keep their place as a node without an object.
class CMC_Path : public CMC_Object {
public:
    static constexpr int kType = 2017;

    explicit CMC_Path(CMC_Scene* scene);  // without nodes, to be filled from the binary store
    // Reads NODES, names of objects that stand in the scene by now.
    CMC_Path(CMC_Scene* scene, CMElement* element);

    int getSize() const { return static_cast<int>(nodes_.size()); }
    CMC_Object* getNode(int i) const;  // null outside the path, and for a node without an object
    double getDensity() const { return density_; }
    void setDensity(double density) { density_ = density; }
    void add(CXString name);  // of an object of the scene

    CXString toString() override;  // [text of a node] of each; a node without an object, and a path in itself: []
    std::span<const std::string_view> getBehavioursList() const override;
    void serialize(CXArchive* archive) override;  // the names of the nodes; the density isn't kept

private:
    std::vector<Ref<CMC_Object>> nodes_;
    double density_ = 1;
    bool isTelling_ = false;  // its text is being made
};

class CMC_Path_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
