// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "script/object.h"

class CConfig;

// The operators of expressions and of arithmetic methods, by their codes.
enum class Operation { add = 1, subtract = 2, multiply = 3, divide = 4, modulo = 5 };

// A script value: INTEGER, DOUBLE, BOOL, STRING, or an expression that gives one.
//
// The same classes serve as named objects of a scene and as short-lived values out of the pools of
// CMC_VariableFactory, which the receiver flushes. A null operand counts as an empty value.
class CMC_Variable : public CMC_Object {
public:
    using CMC_Object::clone;

    // Takes the other's value, converted to this type; onChange tells whether it differs.
    virtual void set(CMC_Variable* other) = 0;
    virtual void clear() = 0;
    virtual void swap(CMC_Variable* a, CMC_Variable* b) = 0;  // the one of the two values that this one hasn't
    virtual void inc() = 0;
    virtual void dec() = 0;
    // Identity for objects, value for variables.
    bool equals(const CXObject* other) const override { return this == other; }
    virtual bool equals(CMC_Variable* other) = 0;
    int compare(CXObject* other) override;  // `other` must be a CMC_Object
    virtual int compare(CMC_Variable* other) = 0;
    // This value as that type: itself when it has it already, else a pool variable, and this one is flushed when it
    // is pooled. Null for a type that isn't one of the four.
    virtual CMC_Variable* convert(int type);
    // A pool variable of this type; this is the left operand. Division by zero gives 0.
    virtual CMC_Variable* calculate(CMC_Variable* other, Operation op) = 0;
    // All changes of a value end here: signals, then the configuration file. `changed`: the value differs.
    virtual void onChange(bool changed);
    virtual void onNetChange(CMC_Variable* value);  // a value that came over the network
    virtual void setDefault(CMC_Variable* value) = 0;
    virtual void resetINI() = 0;  // back to the default, when the value is kept in the configuration file

    // The form that goes over the network: int32 type, then the value, little-endian.
    virtual int getBufferLen() = 0;
    virtual void netstore(void* buffer) = 0;  // writes getBufferLen() bytes
    // Reads such a form of this type; false, and no change, when the bytes don't hold one. No signal.
    virtual bool netrestore(std::span<const std::byte> bytes) = 0;
    virtual void store(CXArchive* archive) = 0;    // type and value
    virtual void restore(CXArchive* archive) = 0;  // the value alone

    void init() override;
    std::span<const std::string_view> getBehavioursList() const override;
    void serialize(CXArchive* archive) override;

    // The value as a C++ one, by the rules of `convert`.
    virtual int asInteger() = 0;
    virtual double asDouble() = 0;
    virtual bool asBool() = 0;
    virtual CXString asString() = 0;
    CXString toString() override { return asString(); }

    // The variable that holds the value now: this one, or an expression's result after calculating anew.
    virtual CMC_Variable* current() { return this; }
    bool isComputed() const { return getType() == kComputedType; }  // an expression: `current` is another one

    int getPoolId() const { return poolId_; }
    bool isPooled() const { return poolId_ >= 0; }
    bool isKeptInIni() const { return toIni_; }
    bool isNetNotify() const { return netNotify_; }

    // A value from literal text: a number, TRUE, FALSE, a quoted text, else the text itself. A pool variable.
    static CMC_Variable* resolve(const CXString& text);

    // Puts a copy of the value into `kept`, an own variable that is neither pooled nor a clone; null empties it.
    static void keep(std::unique_ptr<CMC_Variable>& kept, CMC_Variable* value);

    // What a statement gives that leaves the running block. An object of no scene, told by its address.
    static CMC_Variable* breakValue() { return breakValue_; }

protected:
    CMC_Variable(CXString name, int type, int poolId = -1) : CMC_Object(std::move(name), type), poolId_(poolId) {
        setAsVariable(this);
    }
    CMC_Variable(CMC_Scene* scene, CMElement* element, int type);

    bool keepsSignalsOrIni() const { return hasSignals() || toIni_ || netNotify_; }

private:
    static constexpr int kComputedType = 12;

    void tellChange(bool changed);

    static CMC_Variable* const breakValue_;
    int poolId_ = -1;  // place in the pool of its type; -1: not pooled
    bool toIni_ = false;
    bool netNotify_ = false;
};

// Where values of that scene are kept; null when the application has no configuration file.
CConfig* configOf(CMC_Scene* scene);

// Truncated towards 0; brought to the ends of int, 0 for what is no number.
int truncated(double value);
