// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Numbers and their texts. Scripts see these texts, so they are made by hand from the decimal digits of the value: the
// C library's own forms differ from one platform to the next and follow the locale.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

#include "foundation/xstring.h"

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// The text behind blanks and a sign, which is told in `negative`.
std::string_view behindSign(std::string_view text, bool& negative) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    return text;
}

// A magnitude as 0.DIGITS * 10^point, without a zero in front.
struct Decimal {
    std::string digits;
    int point = 0;

    // Keeps `count` digits. A half goes up, and it is the half of the 17 digits, not of the binary value.
    void roundTo(int count) {
        if (count >= static_cast<int>(digits.size())) return;
        const bool up = count >= 0 && digits[static_cast<std::size_t>(count)] >= '5';
        digits.resize(static_cast<std::size_t>(std::max(count, 0)));
        if (!up) return;
        auto i = digits.size();
        while (i > 0 && digits[i - 1] == '9')
            digits[--i] = '0';
        if (i > 0) {
            ++digits[i - 1];
        } else {
            digits.insert(0, 1, '1');
            ++point;
        }
    }
};

Decimal decimalOf(double magnitude) {
    char text[40];
    const auto end = std::to_chars(text, text + sizeof text, magnitude, std::chars_format::scientific, 16).ptr;
    const std::string_view all(text, static_cast<std::size_t>(end - text));
    const std::size_t exponent = all.find('e');
    Decimal decimal;
    decimal.digits = std::string(1, all[0]) + std::string(all.substr(2, exponent - 2));
    decimal.point = leadingInt(all.substr(exponent + 1)) + 1;
    return decimal;
}

// What the number texts show for values that have no digits.
std::string wordFor(double value) {
    if (std::isnan(value)) return "1.#QNAN";
    return value < 0 ? "-1.#INF" : "1.#INF";
}

// Two decimals: the digits without leading zeros, and where the decimal point stands among them.
Decimal digitsWithTwoDecimals(double magnitude) {
    if (magnitude == 0) return {"000", 1};
    Decimal decimal = decimalOf(magnitude);
    const auto wanted = [&] { return decimal.point + 2; };
    decimal.roundTo(wanted());
    decimal.digits.resize(static_cast<std::size_t>(std::max(wanted(), 0)), '0');
    return decimal;
}

std::string nineDigits(double value) {
    constexpr int kDigits = 9;
    if (!std::isfinite(value)) return wordFor(value);
    const std::string sign = std::signbit(value) ? "-" : "";
    if (value == 0) return sign + "0.";
    Decimal decimal = decimalOf(std::abs(value));
    decimal.roundTo(kDigits);
    std::string& digits = decimal.digits;
    digits.resize(digits.find_last_not_of('0') + 1);
    const int exponent = decimal.point - 1;
    if (exponent < -1 || exponent > kDigits - 1) {
        const std::string power = std::to_string(std::abs(exponent));
        return sign + digits.substr(0, 1) + "." + digits.substr(1) + (exponent < 0 ? "e-" : "e+") +
               std::string(power.size() < 3 ? 3 - power.size() : 0, '0') + power;
    }
    if (decimal.point <= 0) return sign + "0." + digits;
    const auto whole = static_cast<std::size_t>(decimal.point);
    if (digits.size() < whole) digits.resize(whole, '0');
    return sign + digits.substr(0, whole) + "." + digits.substr(whole);
}

}  // namespace

int leadingInt(std::string_view text) {
    bool negative = false;
    text = behindSign(text, negative);
    constexpr std::int64_t kLimit = std::int64_t{std::numeric_limits<int>::max()} + 1;
    std::int64_t value = 0;
    for (char c : text) {
        if (!isDigit(c)) break;
        value = std::min(value * 10 + (c - '0'), kLimit);
    }
    return static_cast<int>(negative ? -value : std::min(value, kLimit - 1));
}

double leadingDouble(std::string_view text) {
    bool negative = false;
    text = behindSign(text, negative);
    // Words for infinity and the like are no numbers here.
    const bool startsNumber =
        !text.empty() && (isDigit(text[0]) || (text[0] == '.' && text.size() > 1 && isDigit(text[1])));
    if (!startsNumber) return 0;
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::result_out_of_range) {
        // Too large or too small: told by the power of ten of the first digit that isn't zero.
        text = text.substr(0, static_cast<std::size_t>(end - text.data()));
        const std::size_t e = std::min(text.find_first_of("eE"), text.size());
        const std::size_t point = std::min(text.find('.'), e);
        const std::size_t first = text.find_first_of("123456789");
        const std::int64_t exponent = e < text.size() ? leadingInt(text.substr(e + 1)) : 0;
        const bool large = exponent + static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first) > 0;
        value = large ? std::numeric_limits<double>::infinity() : 0;
    }
    return negative ? -value : value;
}

bool CXString::toBool(const CXString& text) { return text.equalsIgnoreCase("TRUE"); }
int CXString::toNumber(const CXString& text) { return leadingInt(text.view()); }
double CXString::toDouble(const CXString& text) { return leadingDouble(text.view()); }
CXString CXString::toString(bool value) { return value ? "TRUE" : "FALSE"; }

CXString CXString::toString(int value) {
    char text[16];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    return std::string_view(text, static_cast<std::size_t>(end - text));
}

// Below 1 the zeros in front come from the value and the digits from its rounding. So a value that rounds up to a
// further place shows both: 0.996 gives "0.1.00". Stored values and comparisons of texts know these forms.
CXString CXString::toString(double value) {
    if (!std::isfinite(value)) return std::string_view(wordFor(value));
    const double magnitude = std::abs(value);
    Decimal decimal = digitsWithTwoDecimals(magnitude);
    std::string text = value < 0 ? "-" : "";
    if (value != 0 && value * value < 1) text += "0.";
    // By 10.0001, not 10: else 0.1 would get a zero more through its rounding error.
    for (double m = magnitude; m > 0 && m * 10.0001 < 1; m *= 10)
        text += '0';
    if (decimal.digits.empty()) decimal.digits = "0";
    if (decimal.point >= 1) decimal.digits.insert(static_cast<std::size_t>(decimal.point), 1, '.');
    return std::string_view(text += decimal.digits);
}

CXString& CXString::operator=(int value) { return *this = toString(value); }

CXString& CXString::operator=(double value) {
    assign(nineDigits(value));
    return *this;
}

CXString& CXString::operator+=(int value) { return *this += toString(value); }
