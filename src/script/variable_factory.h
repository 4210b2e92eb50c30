// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

class CMC_Bool;
class CMC_Double;
class CMC_Integer;
class CMC_String;
class CMC_Variable;
class CXArchive;

// A pool of values that are built beforehand and handed out in turn.
//
// The next free slot behind the last one is taken, so a freed value stays as it was for a whole lap. A pool whose slots
// all are taken doubles.
template <class T>
class VariablePool {
public:
    void fill(int count);
    void drop();
    T* alloc() {
        do {
            if (++current_ >= taken_.size()) current_ = 0;
            if (++tried_ > taken_.size()) grow();
        } while (taken_[current_]);
        tried_ = 0;
        taken_[current_] = true;
        return variables_[current_].get();
    }
    void free(int id) { taken_[static_cast<std::size_t>(id)] = false; }
    int size() const { return static_cast<int>(taken_.size()); }
    int taken() const;

private:
    void grow();

    std::vector<std::unique_ptr<T>> variables_;
    std::vector<char> taken_;
    std::size_t current_ = 0;
    std::size_t tried_ = 0;
};

// The short-lived values of the script: literals, results and conversions. A value that alloc gives still holds its
// old value and signals nothing; who gets it frees it.
class CMC_VariableFactory {
public:
    // Fills the pools when they are empty; the two levels of an application may both ask.
    static void initialize();
    static void done();

    static CMC_Bool* allocBool();
    static CMC_Double* allocDouble();
    static CMC_Integer* allocInteger();
    static CMC_String* allocString();
    template <class T>
    static T* alloc();

    // A pool variable of the same type and value; null for null and for what isn't one of the four types.
    static CMC_Variable* copyVariable(CMC_Variable* value);
    static void free(CMC_Variable* value);  // no effect on a value that isn't pooled
    // A pool variable out of the network form; null when the bytes hold none.
    static CMC_Variable* netrestore(std::span<const std::byte> bytes);
    // A pool variable out of the archive's form, type and value; null for an unknown type.
    static CMC_Variable* restore(CXArchive* archive);

    static int takenCount();  // of all pools together, for tests

    static VariablePool<CMC_Bool> variablesBool;
    static VariablePool<CMC_Double> variablesDbl;
    static VariablePool<CMC_Integer> variablesInt;
    static VariablePool<CMC_String> variablesStr;

#ifdef PROSCENIUM_STRESS
    static constexpr int iVariablesBoolNo = 8, iVariablesDoubleNo = 8, iVariablesIntegerNo = 8, iVariablesStringNo = 8;
#else
    static constexpr int iVariablesBoolNo = 500;
    static constexpr int iVariablesDoubleNo = 500;
    static constexpr int iVariablesIntegerNo = 2000;
    static constexpr int iVariablesStringNo = 2000;
#endif
};

template <>
CMC_Bool* CMC_VariableFactory::alloc<CMC_Bool>();
template <>
CMC_Double* CMC_VariableFactory::alloc<CMC_Double>();
template <>
CMC_Integer* CMC_VariableFactory::alloc<CMC_Integer>();
template <>
CMC_String* CMC_VariableFactory::alloc<CMC_String>();
