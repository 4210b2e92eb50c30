// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <algorithm>
#include <memory>

class CXObject;

// While one of these lives, script is running. Everything that calls into script code holds one: objects that a script
// removes meanwhile are destroyed when the outermost one ends, so that code never runs on a dead object.
class ScriptScope {
public:
    ScriptScope() { ++depth_; }
    ~ScriptScope() {
        if (--depth_ == 0) end();
    }
    ScriptScope(const ScriptScope&) = delete;
    ScriptScope& operator=(const ScriptScope&) = delete;

    static int depth() { return depth_; }
    // False when the script is nested so deeply that it must not go further; says so once for each outermost run.
    // From then on every way down is closed until the script has come back nearly to its start: a recursion with two
    // branches would else try all of them.
    static bool mayEnter() { return depth_ < kDeepest && !overflowed_ ? true : mayEnterAgain(); }
    // Closes every way down, as too deep a nesting does.
    static void giveUp();

private:
    // Behaviours within behaviours. Far above what scripts need, and well within the stack of a debugging build.
    static constexpr int kDeepest = 1000;

    static bool mayEnterAgain();
    static void end();

    static inline int depth_ = 0;
    static inline bool overflowed_ = false;
};

// While one of these lives, script runs this many statements and passes of loops at most; what is left over is skipped.
// For those who run code that nobody has looked at. There is no limit without one.
class ScriptBudget {
public:
    explicit ScriptBudget(int statements) { left_ = statements; }
    ~ScriptBudget() { left_ = kUnlimited; }
    ScriptBudget(const ScriptBudget&) = delete;
    ScriptBudget& operator=(const ScriptBudget&) = delete;

    // Takes one off. False when none was left.
    static bool spend() {
        if (left_ == kUnlimited) return true;
        if (left_ == 0) return false;
        --left_;
        return true;
    }
    // Long texts count as statements, too: those that are made, and, much dearer, those that are compiled.
    static void spendOnText(int length) { spendMany(length / 4096); }
    static void spendOnCode(int length) { spendMany(length / 32); }

private:
    static void spendMany(int statements) {
        if (left_ != kUnlimited) left_ -= std::min(left_, statements);
    }

    static constexpr int kUnlimited = -1;
    static inline int left_ = kUnlimited;
};

// Destroys the object when no script is running, else at the end of the outermost run; in the order of the calls.
void destroyLate(std::unique_ptr<CXObject> object);

// Destroys the object at the end of the next outermost run, for one that its maker may still touch.
void destroyLater(std::unique_ptr<CXObject> object);
