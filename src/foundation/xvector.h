// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <span>

#include "foundation/xobject.h"

// A growable vector of pointers that owns none of them. Doubles its capacity when capacity * factor falls below the
// size: with the default 101 and 0.75 at the 76th element.
//
// `T` is what it points to: CXObject in a CXVector, void in a CXArray.
template <class T>
class CXPointerVector : public CXObject {
public:
    explicit CXPointerVector(int capacity = 101, float factor = 0.75F);
    CXPointerVector(const CXPointerVector&) = delete;
    CXPointerVector& operator=(const CXPointerVector&) = delete;

    virtual void doubleSize();
    virtual void add(T* element);
    virtual void add(const CXPointerVector& other);
    virtual bool replace(const T* old, T* by);  // the first `old`; true when there was one
    virtual T* setAt(int i, T* element);        // the former element; null and no effect outside the vector
    virtual void insertAt(int i, T* element);   // an index outside 0 to size() is brought to the nearer end
    virtual void remove(const T* element);      // the first one that is this pointer
    virtual void removeAt(int i);               // no effect outside the vector
    virtual int find(const T* element) const;   // -1: none
    virtual bool contains(const T* element) const { return find(element) != -1; }
    virtual void removeAll() { size_ = 0; }
    virtual T* operator[](int i) const { return at(i); }  // null outside the vector

    int size() const { return size_; }
    bool isEmpty() const { return size_ == 0; }
    int capacity() const { return capacity_; }
    float factor() const { return factor_; }
    T* at(int i) const { return i >= 0 && i < size_ ? data_[static_cast<std::size_t>(i)] : nullptr; }
    // The elements as they stand; void after any change.
    std::span<T* const> elements() const { return {data_.get(), static_cast<std::size_t>(size_)}; }

protected:
    bool isFull() const { return static_cast<float>(capacity_) * factor_ < static_cast<float>(size_); }
    void assignFrom(const CXPointerVector& other);

private:
    int capacity_;
    float factor_;
    std::unique_ptr<T*[]> data_;
    int size_ = 0;
};

extern template class CXPointerVector<CXObject>;
extern template class CXPointerVector<void>;

// The vector of objects.
class CXVector : public CXPointerVector<CXObject> {
public:
    using CXPointerVector::CXPointerVector;

    CXObject* clone() override;                     // a new vector of the same capacity on the same elements
    virtual void copyInto(CXVector* target) const;  // these elements in place of the target's
};

// The vector of anything.
class CXArray : public CXPointerVector<void> {
public:
    using CXPointerVector::CXPointerVector;

    CXObject* clone() override;
    virtual CXString* stringAt(int i) const { return static_cast<CXString*>(at(i)); }  // null outside the array
};

// Frees the texts of an array of new CXString, and the array. Null is allowed.
void deleteStrings(CXArray* strings);

// A vector kept in the order of `compare`; of equal elements the later one stands behind.
class CSortedVector : public CXVector {
public:
    explicit CSortedVector(int capacity);

    using CXVector::add;
    void add(CXObject* element) override;
    // A new vector with the elements the other way round, the caller's.
    CSortedVector* reverse() const;
};
