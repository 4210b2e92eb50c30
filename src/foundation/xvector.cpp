// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "foundation/xvector.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {

constexpr int kLargest = std::numeric_limits<int>::max() / 2;  // a capacity that can still be doubled

// A factor that no vector can grow by sensibly is brought to one that it can.
float usable(float factor) { return factor >= 0.1F && factor <= 1.0F ? factor : 0.75F; }

}  // namespace

template <class T>
CXPointerVector<T>::CXPointerVector(int capacity, float factor)
    : capacity_(std::max(capacity, 1)),
      factor_(usable(factor)),
      data_(std::make_unique_for_overwrite<T*[]>(static_cast<std::size_t>(capacity_))) {}

template <class T>
void CXPointerVector<T>::doubleSize() {
    if (capacity_ > kLargest) return;
    auto larger = std::make_unique_for_overwrite<T*[]>(static_cast<std::size_t>(capacity_) * 2);
    std::copy_n(data_.get(), size_, larger.get());
    data_ = std::move(larger);
    capacity_ *= 2;
}

template <class T>
void CXPointerVector<T>::add(T* element) {
    // With a factor of 1 the growth test alone would let the vector run full.
    if (size_ == capacity_) doubleSize();
    if (size_ == capacity_) return;
    data_[static_cast<std::size_t>(size_++)] = element;
    if (isFull()) doubleSize();
}

template <class T>
void CXPointerVector<T>::add(const CXPointerVector& other) {
    const std::int64_t size = std::int64_t{size_} + other.size_;
    if (size > kLargest) return;
    while (static_cast<float>(capacity_) * factor_ < static_cast<float>(size) || capacity_ < size) {
        if (capacity_ > kLargest) return;
        doubleSize();
    }
    std::copy_n(other.data_.get(), other.size_, data_.get() + size_);
    size_ = static_cast<int>(size);
}

template <class T>
bool CXPointerVector<T>::replace(const T* old, T* by) {
    const int i = find(old);
    if (i < 0) return false;
    data_[static_cast<std::size_t>(i)] = by;
    return true;
}

template <class T>
T* CXPointerVector<T>::setAt(int i, T* element) {
    if (i < 0 || i >= size_) return nullptr;
    return std::exchange(data_[static_cast<std::size_t>(i)], element);
}

template <class T>
void CXPointerVector<T>::insertAt(int i, T* element) {
    i = std::clamp(i, 0, size_);
    while (isFull() && capacity_ <= kLargest)
        doubleSize();
    if (size_ == capacity_) doubleSize();
    if (size_ == capacity_) return;
    std::copy_backward(data_.get() + i, data_.get() + size_, data_.get() + size_ + 1);
    data_[static_cast<std::size_t>(i)] = element;
    ++size_;
}

template <class T>
void CXPointerVector<T>::remove(const T* element) {
    removeAt(find(element));
}

template <class T>
void CXPointerVector<T>::removeAt(int i) {
    if (i < 0 || i >= size_) return;
    std::copy(data_.get() + i + 1, data_.get() + size_, data_.get() + i);
    --size_;
}

template <class T>
int CXPointerVector<T>::find(const T* element) const {
    const auto end = data_.get() + size_;
    const auto found = std::find(data_.get(), end, element);
    return found == end ? -1 : static_cast<int>(found - data_.get());
}

template <class T>
void CXPointerVector<T>::assignFrom(const CXPointerVector& other) {
    if (this == &other) return;
    capacity_ = other.capacity_;
    factor_ = other.factor_;
    data_ = std::make_unique_for_overwrite<T*[]>(static_cast<std::size_t>(capacity_));
    std::copy_n(other.data_.get(), other.size_, data_.get());
    size_ = other.size_;
}

template class CXPointerVector<CXObject>;
template class CXPointerVector<void>;

CXObject* CXVector::clone() {
    auto* copy = new CXVector(capacity(), factor());
    copy->assignFrom(*this);
    return copy;
}

void CXVector::copyInto(CXVector* target) const {
    if (!target || target == this) return;
    target->removeAll();
    target->add(*this);
}

CXObject* CXArray::clone() {
    auto* copy = new CXArray(capacity(), factor());
    copy->assignFrom(*this);
    return copy;
}

void deleteStrings(CXArray* strings) {
    if (!strings) return;
    for (void* text : strings->elements())
        delete static_cast<CXString*>(text);
    delete strings;
}

CSortedVector::CSortedVector(int capacity) : CXVector(capacity, 0.75F) {}

void CSortedVector::add(CXObject* element) {
    int i = 0;
    while (i < size() && at(i)->compare(element) <= 0)
        ++i;
    if (i == size()) {
        CXVector::add(element);
    } else {
        insertAt(i, element);
    }
}

CSortedVector* CSortedVector::reverse() const {
    auto* turned = new CSortedVector(capacity());
    for (int i = size(); i-- > 0;)
        turned->CXVector::add(at(i));
    return turned;
}
