// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <vector>

#include "script/object.h"
#include "script/runner.h"

// VECTOR: an n-dimensional vector of doubles. Its size changes by `expand` alone.
class CMC_Vector : public CMC_Object {
public:
    using CMC_Object::clone;

    static constexpr int kType = 2016;

    explicit CMC_Vector(CMC_Scene* scene);  // without elements, to be filled from the binary store
    // Reads SIZE and VALUE, a list of numbers. Elements without a number are 0, numbers without an element are dropped.
    CMC_Vector(CMC_Scene* scene, CMElement* element);

    int getSize() const { return static_cast<int>(values_.size()); }
    double at(int i) const;           // 0 outside the vector
    void setAt(int i, double value);  // no effect outside the vector
    double length() const;

    // No effect with a vector of another size.
    void add(const CMC_Vector& other);
    void sub(const CMC_Vector& other);
    double dot(const CMC_Vector& other) const;  // 0 with a vector of another size
    void mul(double factor);
    void neg();
    void normalize();  // a vector of length 0 has no direction: its elements are no numbers then
    // `out`, which may be this vector or `normal`, takes the mirror image about the axis `normal`, a unit vector.
    void reflect(const CMC_Vector& normal, CMC_Vector& out) const;
    // Zeros come in front of the old values. No effect for fewer elements than there are, and for absurdly many.
    void expand(int size);
    void assign(const CMC_Vector& other);  // as many elements as both have
    void fill(double value);

    CXObject* clone() override;  // "clone", with the same elements
    CXString toString() override;
    std::span<const std::string_view> getBehavioursList() const override;
    void serialize(CXArchive* archive) override;

private:
    std::vector<double> values_;
};

class CMC_Vector_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
