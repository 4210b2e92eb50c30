// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>

#include "foundation/xstring.h"

class CMessage;

// The root of nearly every class.
//
// It carries an error word (0: none), a mark by which an object that can't be deleted where it is given up asks the
// window's public trash to do so later, and the operations that the containers use.
class CXObject {
public:
    CXObject() = default;
    // A copy is an object of its own: neither the delete mark nor the identity goes with it.
    CXObject(const CXObject& other) : errorCode_(other.errorCode_) {}
    CXObject& operator=(const CXObject& other) {
        errorCode_ = other.errorCode_;
        return *this;
    }
    virtual ~CXObject() = default;

    virtual bool isToDelete() const { return toDelete_; }
    virtual void setToDelete() { toDelete_ = true; }

    // The object's identity here; keys override it.
    virtual int getHashcode() const { return objectId(); }
    // Identity here; keys and values override it.
    virtual bool equals(const CXObject* other) const { return this == other; }
    // Above 0 when this object belongs behind the other in a sorted vector.
    virtual int compare(CXObject* other) { return other == this ? 1 : 0; }
    // A copy that the caller owns; null for what can't be cloned.
    virtual CXObject* clone() { return nullptr; }
    virtual CXString toString() { return CXString(); }
    virtual void notifyMessageReceive(CMessage*) {}
    virtual int processMessage(CMessage*) { return 0; }

    void setErrorCode(int code) { errorCode_ = code; }
    int LastError() const { return errorCode_; }

    // Passes the text on to the window's log, which drops it.
    void log(const char* text, bool flag);

    // Times a piece of code: with a name the clock is read and the name kept; with null the elapsed time goes to the
    // debug output. `flag` has no effect.
    static void profile(const char* name, bool flag);

    static std::int16_t swap_word(std::int16_t value);
    static std::int32_t swap_dword(std::int32_t value);

    // A number of this object's own, above 0, given when it is first asked for. Timers and other places that
    // identify an object by an int use it, for an address doesn't fit.
    int objectId() const;

private:
    bool toDelete_ = false;
    int errorCode_ = 0;
    mutable int objectId_ = 0;
};
