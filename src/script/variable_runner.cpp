// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/variable_runner.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "script/method_table.h"

namespace {

constexpr double kDegreesPerRadian = 57.29577950560105;
constexpr float kRadiansPerDegree = 0.017453292F;

CMC_Variable* receiver(const MethodCall& c) { return static_cast<CMC_Variable*>(c.object); }

// The receiver as that class; null when it is of another type.
template <class T>
T* as(const MethodCall& c) {
    return c.object->getType() == T::kType ? static_cast<T*>(c.object) : nullptr;
}

// Stores a number both in the receiver and in the result. A receiver of another numeric type takes it converted; the
// other types stay as they are.
CMC_Variable* storeAndGive(const MethodCall& c, int value) {
    if (auto* number = as<CMC_Integer>(c)) number->setValue(value);
    if (auto* number = as<CMC_Double>(c)) number->setValue(value);
    return toScript(value);
}

CMC_Variable* storeAndGive(const MethodCall& c, double value) {
    if (auto* number = as<CMC_Integer>(c)) number->setValue(truncated(value));
    if (auto* number = as<CMC_Double>(c)) number->setValue(value);
    return toScript(value);
}

CMC_Variable* set(const MethodCall& c) {
    if (c.count() > 0) receiver(c)->set(c.value(0));
    return nullptr;
}

CMC_Variable* _switch(const MethodCall& c) {
    // The second value is read while the first still stands: both may come out of one pool.
    receiver(c)->swap(c.value(0), c.value(1));
    return nullptr;
}

CMC_Variable* clear(const MethodCall& c) { return receiver(c)->clear(), nullptr; }
CMC_Variable* inc(const MethodCall& c) { return receiver(c)->inc(), nullptr; }
CMC_Variable* dec(const MethodCall& c) { return receiver(c)->dec(), nullptr; }
CMC_Variable* resetIni(const MethodCall& c) { return receiver(c)->resetINI(), nullptr; }

CMC_Variable* setDefault(const MethodCall& c) {
    if (c.count() > 0) receiver(c)->setDefault(c.value(0));
    return nullptr;
}

// The receiver takes what the operation gives; the result of that stays with the caller.
CMC_Variable* compute(const MethodCall& c, Operation op) {
    CMC_Variable* result = c.count() > 0 ? receiver(c)->calculate(c.value(0), op) : nullptr;
    if (result) receiver(c)->set(result);
    return result;
}

template <Operation op>
CMC_Variable* apply(const MethodCall& c) {
    CMC_Object::flush(compute(c, op));
    return nullptr;
}

CMC_Variable* add(const MethodCall& c) { return compute(c, Operation::add); }

// On a text: removes `count` characters at `from`.
CMC_Variable* sub(const MethodCall& c) {
    auto* text = as<CMC_String>(c);
    if (text == nullptr) return apply<Operation::subtract>(c);
    const int length = text->getValue().GetLength();
    const int from = std::clamp(c.integer(0), 0, length);
    const int count = std::clamp(c.integer(1), 0, length - from);
    text->setValue(text->getValue().Left(from) + text->getValue().Right(from + count));
    return nullptr;
}

CMC_Variable* abs(const MethodCall& c) {
    const int x = c.integer(0);
    return storeAndGive(c, x < 0 ? CMC_Integer::compute(0, x, Operation::subtract) : x);
}

CMC_Variable* bitAnd(const MethodCall& c) { return storeAndGive(c, receiver(c)->asInteger() & c.integer(0)); }
CMC_Variable* bitOr(const MethodCall& c) { return storeAndGive(c, receiver(c)->asInteger() | c.integer(0)); }
CMC_Variable* bitXor(const MethodCall& c) { return storeAndGive(c, receiver(c)->asInteger() ^ c.integer(0)); }

// On a text: its characters in reverse order.
CMC_Variable* bitNot(const MethodCall& c) {
    auto* text = as<CMC_String>(c);
    if (text == nullptr) return storeAndGive(c, ~receiver(c)->asInteger());
    std::string reversed(text->getValue().view());
    std::ranges::reverse(reversed);
    const CXString result{std::string_view(reversed)};
    text->setValue(result);
    return toScript(result);
}

CMC_Variable* power(const MethodCall& c) {
    return storeAndGive(c, truncated(std::pow(receiver(c)->asInteger(), c.integer(0))));
}

CMC_Variable* sqrt(const MethodCall& c) { return storeAndGive(c, truncated(std::sqrt(receiver(c)->asInteger()))); }

CMC_Variable* clamp(const MethodCall& c) {
    if (auto* number = as<CMC_Integer>(c)) {
        const int lo = c.integer(0);
        const int hi = c.integer(1);
        const int value = number->getValue();
        return toScript(value < lo ? lo : value > hi ? hi : value);
    }
    if (auto* number = as<CMC_Double>(c)) {
        const double lo = c.real(0);
        const double hi = c.real(1);
        const double value = number->getValue();
        return toScript(value < lo ? lo : value > hi ? hi : value);
    }
    return nullptr;
}

// Of a text: the number of its characters; of a number: the length of the vector (x, y).
CMC_Variable* length(const MethodCall& c) {
    if (auto* text = as<CMC_String>(c)) return toScript(text->getValue().GetLength());
    if (as<CMC_Integer>(c) == nullptr && as<CMC_Double>(c) == nullptr) return nullptr;
    const double x = c.real(0);
    const double y = c.real(1);
    const auto squareOfX = static_cast<float>(x * x);  // the precision that stored applications were made with
    return storeAndGive(c, std::sqrt(static_cast<double>(squareOfX) + y * y));
}

CMC_Variable* arcTan(const MethodCall& c) { return storeAndGive(c, std::atan2(c.real(0), 1.0) * kDegreesPerRadian); }

CMC_Variable* arcTanEX(const MethodCall& c) {
    const double y = c.real(0);
    const double x = c.real(1);
    double angle = std::atan2(y, x) * kDegreesPerRadian;
    if (angle < 0) angle += 360;
    if (c.count() > 2) angle = truncated(angle + c.real(2)) % 360;
    return storeAndGive(c, angle);
}

CMC_Variable* sind(const MethodCall& c) {
    return storeAndGive(c, std::sin(c.real(0) * static_cast<double>(kRadiansPerDegree)));
}
CMC_Variable* cosd(const MethodCall& c) {
    return storeAndGive(c, std::cos(c.real(0) * static_cast<double>(kRadiansPerDegree)));
}

CMC_Variable* mina(const MethodCall& c) {
    double least = c.real(0);
    for (int i = 1; i < c.count(); ++i)
        least = std::min(least, c.real(i));
    return storeAndGive(c, least);
}

CMC_Variable* maxa(const MethodCall& c) {
    double largest = c.real(0);
    for (int i = 1; i < c.count(); ++i)
        largest = std::max(largest, c.real(i));
    return storeAndGive(c, largest);
}

// Of a text with parameters: a part of it. Positions outside the text give what of the part lies inside.
CMC_Variable* get(const MethodCall& c) {
    auto* text = as<CMC_String>(c);
    if (text == nullptr || c.count() == 0) return receiver(c);
    const CXString& value = text->getValue();
    const int from = std::clamp(c.integer(0), 0, value.GetLength());
    const int count = c.count() > 1 ? c.integer(1) : 1;
    const int most = value.GetLength() - from;
    return toScript(value.Mid(from, from + (count == -1 ? most : std::clamp(count, 0, most))));
}

CMC_Variable* upper(const MethodCall& c) {
    if (auto* text = as<CMC_String>(c)) text->upper();
    return nullptr;
}

CMC_Variable* find(const MethodCall& c) {
    auto* text = as<CMC_String>(c);
    if (text == nullptr) return nullptr;
    const CXString sub = c.text(0);
    return toScript(text->getValue().FindSubString(sub, c.count() > 1 ? c.integer(1) : 0));
}

CMC_Variable* cut(const MethodCall& c) {
    auto* text = as<CMC_String>(c);
    if (text == nullptr) return nullptr;
    const CXString& value = text->getValue();
    const int from = std::clamp(c.integer(0), 0, value.GetLength());
    const int count = c.integer(1);
    const bool isInside = count > 0 && count < value.GetLength() - from;
    text->setValue(isInside ? value.Mid(from, from + count) : value.Right(from));
    return nullptr;
}

CMC_Variable* replaceAt(const MethodCall& c) {
    auto* text = as<CMC_String>(c);
    if (text == nullptr) return nullptr;
    const int at = c.integer(0);
    const CXString by = c.text(1);
    const CXString& value = text->getValue();
    if (at < 0 || at > value.GetLength()) return nullptr;
    const int behind = std::min(value.GetLength(), at + by.GetLength());
    text->setValue(value.Left(at) + by + value.Right(behind));
    return nullptr;
}

CMC_Variable* insertAt(const MethodCall& c) {
    auto* text = as<CMC_String>(c);
    if (text == nullptr) return nullptr;
    const int at = std::clamp(c.integer(0), 0, text->getValue().GetLength());
    const CXString what = c.text(1);
    const int times = c.count() > 2 ? c.integer(2) : 1;
    constexpr std::int64_t kLongest = 16 << 20;  // no text of a script comes near it
    if (times <= 0 || std::int64_t{times} * what.GetLength() > kLongest) return nullptr;
    std::string inserted;
    inserted.reserve(static_cast<std::size_t>(times) * what.view().size());
    for (int i = 0; i < times && !what.view().empty(); ++i)
        inserted += what.view();
    text->setValue(text->getValue().Left(at) + CXString(std::string_view(inserted)) + text->getValue().Right(at));
    return nullptr;
}

CMC_Variable* replace(const MethodCall& c) {
    auto* text = as<CMC_String>(c);
    if (text == nullptr) return nullptr;
    const CXString what = c.text(0);
    const CXString by = c.text(1);
    if (what.IsString()) text->setValue(text->getValue().replace(what, by));
    return nullptr;
}

// Half and more goes up; what is below 0 is cut towards 0.
CMC_Variable* round(const MethodCall& c) {
    auto* number = as<CMC_Double>(c);
    if (number == nullptr) return nullptr;
    const double value = number->getValue();
    const int whole = truncated(value);
    const int hundredths = static_cast<int>(std::fmod(std::trunc(value * 100), 100));
    return toScript(hundredths >= 50 ? CMC_Integer::compute(whole, 1, Operation::add) : whole);
}

constexpr MethodRow kMethods[] = {
    {1,  "SET",        {set, "v"}                       },
    {2,  "SWITCH",     {_switch, "vv"}                  },
    {3,  "CLEAR",      {clear, ""}                      },
    {4,  "INC",        {inc, ""}                        },
    {5,  "DEC",        {dec, ""}                        },
    {6,  "ADD",        {add, "v"}                       },
    {7,  "MUL",        {apply<Operation::multiply>, "v"}},
    {8,  "RESETINI",   {resetIni, ""}                   },
    {9,  "SETDEFAULT", {setDefault, "v"}                },
    {10, "SUB",        {sub, "vi"}                      },
    {11, "DIV",        {apply<Operation::divide>, "v"}  },
    {12, "MOD",        {apply<Operation::modulo>, "v"}  },
    {13, "ABS",        {abs, "i"}                       },
    {14, "AND",        {bitAnd, "i"}                    },
    {15, "OR",         {bitOr, "i"}                     },
    {16, "NOT",        {bitNot, ""}                     },
    {17, "XOR",        {bitXor, "i"}                    },
    {18, "POWER",      {power, "i"}                     },
    {20, "SQRT",       {sqrt, ""}                       },
    {21, "CLAMP",      {clamp, "vv"}                    },
    {22, "LENGTH",     {length, "dd"}                   },
    {23, "ARCTAN",     {arcTan, "d"}                    },
    {24, "GET",        {get, "ii"}                      },
    {25, "MINA",       {mina, "d*"}                     },
    {26, "MAXA",       {maxa, "d*"}                     },
    {27, "ARCTANEX",   {arcTanEX, "ddd"}                },
    {28, "SINUS",      {sind, "d"}                      },
    {29, "COSINUS",    {cosd, "d"}                      },
    {30, "UPPER",      {upper, ""}                      },
    {31, "FIND",       {find, "si"}                     },
    {32, "CUT",        {cut, "ii"}                      },
    {33, "REPLACEAT",  {replaceAt, "is"}                },
    {34, "INSERTAT",   {insertAt, "isi"}                },
    {35, "REPLACE",    {replace, "ss"}                  },
    {36, "ROUND",      {round, ""}                      },
};
static_assert(isMethodTable(kMethods));

}  // namespace

void CMC_Variable_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
