// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "script/object.h"
#include "script/runner.h"

class CMC_Variable;

// ARRAY: a growable list of values. It owns copies: what goes in is cloned.
//
// Adding, reading and the file form work; the arithmetic, the marker, the form in the configuration file and the
// signals of changes come with the other data types.
class CMC_Array : public CMC_Object {
public:
    static constexpr int kType = 3001;

    CMC_Array(CMC_Scene* scene, CMElement* element);
    ~CMC_Array() override;

    CMC_Variable* get(int index);   // null outside the array
    void add(CMC_Variable* value);  // a copy of it
    void join(CMC_Object* object);  // a copy of its value; no effect for an object that has none
    int getSize() const { return static_cast<int>(values_.size()); }
    void removeAll();
    int getSumValue();  // of the INTEGER elements
    // The file form: the number of elements, then each as `store` writes it. A file that can't be opened leaves the
    // array empty, one that is cut short what stands before the cut.
    void load(CXString fileName);
    void save(CXString fileName);

    std::span<const std::string_view> getBehavioursList() const override;

private:
    std::vector<std::unique_ptr<CMC_Variable>> values_;
};

class CMC_Array_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
