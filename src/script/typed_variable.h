// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "definition/element.h"
#include "script/variable.h"
#include "script/variable_factory.h"
#include "storage/archive.h"

// What the four kinds of variables share. `Self` gives the kind: kType, read(CMC_Variable*), compute, readProperty, and
// the conversions; `T` is its C++ value.
template <class Self, class T>
class CMC_TypedVariable : public CMC_Variable {
public:
    using CMC_Variable::clone;
    using CMC_Variable::compare;
    using CMC_Variable::equals;

    const T& getValue() const { return value_; }
    const T& getDefault() const { return default_; }

    // Stores without any signal, for values that nobody watches.
    void assign(const T& value) { value_ = value; }

    void set(CMC_Variable* other) override { change(readOf(other)); }
    void clear() override { change(T{}); }
    void swap(CMC_Variable* a, CMC_Variable* b) override { change(value_ == readOf(a) ? readOf(b) : readOf(a)); }
    bool equals(CMC_Variable* other) override { return other && Self::same(value_, Self::read(other)); }
    CMC_Variable* calculate(CMC_Variable* other, Operation op) override {
        Self* result = CMC_VariableFactory::alloc<Self>();
        result->assign(Self::compute(value_, readOf(other), op));
        return result;
    }
    void setDefault(CMC_Variable* value) override { default_ = readOf(value); }
    void resetINI() override {
        if (!isKeptInIni()) return;
        value_ = default_;
        onChange(true);
    }
    CXObject* clone() override {
        auto* copy = new Self(getName());
        copy->value_ = value_;
        copy->setAsClone();
        return copy;
    }
    void serialize(CXArchive* archive) override {
        CMC_Variable::serialize(archive);
        if (archive->isStoring())
            *archive << value_ << default_;
        else
            *archive >> value_ >> default_;
    }

    // That value in this type; null reads as empty.
    static T readOf(CMC_Variable* other) {
        if (other == nullptr) return T{};
        return other->getType() == Self::kType ? static_cast<Self*>(other)->value_ : Self::read(other);
    }

protected:
    CMC_TypedVariable(CXString name, int poolId, T value)
        : CMC_Variable(std::move(name), Self::kType, poolId), value_(value), default_(value) {}
    CMC_TypedVariable(CMC_Scene* scene, CMElement* element) : CMC_Variable(scene, element, Self::kType) {
        value_ = Self::readProperty(element, "VALUE");
        default_ = element->getPropertyValue("DEFAULT").IsString() ? Self::readProperty(element, "DEFAULT") : value_;
        initializeBehaviours(scene, element);
    }

    void change(T next) {
        const bool differs = !(next == value_);
        value_ = std::move(next);
        onChange(differs);
    }

    T value_;

private:
    T default_;
};

// The little-endian bytes of the network form.
void putInt32(std::byte* at, int value);
