// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include "script/bool.h"
#include "script/double.h"
#include "script/integer.h"
#include "script/runner.h"
#include "script/string.h"
#include "script/variable_factory.h"

// How a runner declares its methods: one table of id, name and what it does. `bind<&CMC_Timer::set>` takes the kinds
// of the parameters and of the result from the member's signature; a method of an odd shape takes a handler on the raw
// call. Compiled statements keep the ids: append, never renumber.

// One call from a script, before its parameters are read. `params` is null when the statement had none.
struct MethodCall {
    CMC_Runner& runner;
    CMC_Object* object;
    CMC_Scene* scene;
    CXVector* params;

    int count() const { return CMC_Runner::countOf(params); }
    CMC_Variable* value(int i) const {
        const auto* given = params ? static_cast<const CMC_Object*>(params->at(i)) : nullptr;
        CMC_Variable* plain = given ? given->asVariable() : nullptr;
        return plain && !plain->isComputed() ? plain : runner.getParameter(params, i);
    }
    int integer(int i) const { return CMC_Integer::readOf(value(i)); }
    double real(int i) const { return value(i)->asDouble(); }
    bool truth(int i) const { return value(i)->asBool(); }
    CXString text(int i) const { return CMC_String::readOf(value(i)); }
};

struct MethodBinding {
    CMC_Variable* (*handler)(const MethodCall&);
    const char* params;  // a letter each: i INTEGER, d DOUBLE, b BOOL, s STRING, v any value, * any number of them
};

struct MethodRow {
    int id;
    std::string_view name;
    MethodBinding does;
};

// True for ids from 1 to `last` in ascending order and names that differ. For static_assert beside each table.
constexpr bool isMethodTable(std::span<const MethodRow> rows, int last = 95) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].id <= (i ? rows[i - 1].id : 0) || rows[i].id > last || rows[i].name.empty()) return false;
        for (const MethodRow& earlier : rows.first(i))
            if (earlier.name == rows[i].name) return false;
    }
    return true;
}

// A parameter as a C++ value; 0, false or "" when the script gave too few.
template <class T>
T readParam(const MethodCall& c, int i) {
    if constexpr (std::is_same_v<T, int>)
        return c.integer(i);
    else if constexpr (std::is_same_v<T, bool>)
        return c.truth(i);
    else if constexpr (std::is_same_v<T, double>)
        return c.real(i);
    else
        return c.text(i);
}
template <class T>
constexpr char letterOf = std::is_same_v<T, int>      ? 'i'
                          : std::is_same_v<T, bool>   ? 'b'
                          : std::is_same_v<T, double> ? 'd'
                                                      : 's';

// A pool variable of that value.
CMC_Variable* toScript(int value);
CMC_Variable* toScript(bool value);
CMC_Variable* toScript(double value);
CMC_Variable* toScript(const CXString& value);

// The binding of a member function: its C++ signature says what the script must pass and what comes back.
template <auto Member, class Signature = decltype(Member)>
struct Bound;
template <auto Member, class C, class R, class... A>
struct Bound<Member, R (C::*)(A...)> {
    static constexpr char letters[] = {letterOf<std::decay_t<A>>..., '\0'};
    static CMC_Variable* call(const MethodCall& c) { return callWith(c, std::index_sequence_for<A...>()); }

private:
    template <std::size_t... I>
    static CMC_Variable* callWith(const MethodCall& c, std::index_sequence<I...>) {
        std::tuple<std::decay_t<A>...> args{readParam<std::decay_t<A>>(c, static_cast<int>(I))...};  // braces: in order
        return std::apply(
            [&](auto&... a) -> CMC_Variable* {
                auto& object = static_cast<C&>(*c.object);
                if constexpr (std::is_void_v<R>)
                    return (object.*Member)(a...), nullptr;
                else
                    return toScript((object.*Member)(a...));
            },
            args);
    }
};
template <auto Member, class C, class R, class... A>
struct Bound<Member, R (C::*)(A...) const> : Bound<Member, R (C::*)(A...)> {};

template <auto Member>
constexpr MethodBinding bind{&Bound<Member>::call, Bound<Member>::letters};
