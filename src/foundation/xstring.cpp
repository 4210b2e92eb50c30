// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "foundation/xstring.h"

#include <algorithm>
#include <array>
#include <string>

#include "foundation/string_tokenizer.h"
#include "foundation/xvector.h"
#include "graphics/geometry.h"

namespace {

constexpr int kMaxLength = 1 << 26;

constexpr unsigned char byteOf(char c) { return static_cast<unsigned char>(c); }

using CaseTable = std::array<char, 256>;

constexpr struct {
    int lower, upper;
} kPolish[] = {
    {0x9C, 0x8C},
    {0x9F, 0x8F},
    {0xB3, 0xA3},
    {0xB9, 0xA5},
    {0xBF, 0xAF},
    {0xE6, 0xC6},
    {0xEA, 0xCA},
    {0xF1, 0xD1},
    {0xF3, 0xD3}
};

constexpr CaseTable makeCaseTable(bool toLower) {
    CaseTable table{};
    for (int i = 0; i < 256; ++i)
        table[static_cast<std::size_t>(i)] = static_cast<char>(i);
    const auto enter = [&](int lower, int upper) {
        table[static_cast<std::size_t>(toLower ? upper : lower)] = static_cast<char>(toLower ? lower : upper);
    };
    for (int i = 0; i < 26; ++i)
        enter('a' + i, 'A' + i);
    for (const auto& pair : kPolish)
        enter(pair.lower, pair.upper);
    return table;
}

constexpr CaseTable kLower = makeCaseTable(true);
constexpr CaseTable kUpper = makeCaseTable(false);

std::size_t indexFrom(int start) { return static_cast<std::size_t>(std::max(start, 0)); }

int position(std::size_t found) { return found == std::string_view::npos ? -1 : static_cast<int>(found); }

std::string_view orEmpty(const char* text) { return text ? std::string_view(text) : std::string_view(); }

}  // namespace

char lowerCase(char c) { return kLower[byteOf(c)]; }
char upperCase(char c) { return kUpper[byteOf(c)]; }

// --- the buffer

CXString::CXString(const char* text) : CXString(orEmpty(text)) {}

CXString::CXString(std::string_view text) : chars_(inline_) { assign(text); }

CXString::CXString(int capacity) : chars_(inline_) {
    capacity = std::min(capacity, kMaxLength);
    if (capacity > kInline) renewBuffer(capacity, 0);
}

void CXString::copyLarge(const CXString& other) {
    chars_ = new char[static_cast<std::size_t>(other.capacity_)];
    capacity_ = other.capacity_;
    std::memcpy(chars_, other.chars_, static_cast<std::size_t>(length_) + 1);
}

void CXString::renewBuffer(int capacity, int keep) {
    char* chars = capacity > kInline ? new char[static_cast<std::size_t>(capacity)] : inline_;
    if (chars != chars_) std::memcpy(chars, chars_, static_cast<std::size_t>(keep));
    freeBuffer();
    chars_ = chars;
    capacity_ = std::max(capacity, kInline);
    setLength(keep);
}

void CXString::assign(std::string_view text) {
    const int length = static_cast<int>(std::min(text.size(), std::size_t{kMaxLength}));
    // A text that is too long for this buffer doesn't lie in it.
    if (length >= capacity_) renewBuffer(length + kInline, 0);
    if (length > 0) std::memmove(chars_, text.data(), static_cast<std::size_t>(length));
    setLength(length);
}

void CXString::append(std::string_view text) {
    const int more = static_cast<int>(std::min(text.size(), static_cast<std::size_t>(kMaxLength - length_)));
    const int length = length_ + more;
    const char* from = text.data();
    if (capacity_ <= length) {
        char* chars = new char[static_cast<std::size_t>(length + kInline)];
        std::memcpy(chars, chars_, static_cast<std::size_t>(length_));
        if (more > 0) std::memcpy(chars + length_, from, static_cast<std::size_t>(more));
        freeBuffer();
        chars_ = chars;
        capacity_ = length + kInline;
    } else if (more > 0) {
        std::memmove(chars_ + length_, from, static_cast<std::size_t>(more));
    }
    setLength(length);
}

CXString& CXString::operator=(const CXString& other) {
    if (this == &other) return *this;
    if (other.capacity_ == kInline) {
        std::memcpy(chars_, other.inline_, kInline);
        length_ = other.length_;
    } else {
        if (capacity_ < other.capacity_) renewBuffer(other.length_ + kInline, 0);
        assign(other.view());
    }
    return *this;
}

CXString& CXString::operator=(CXString&& other) noexcept {
    if (this == &other) return *this;
    if (other.capacity_ <= capacity_) {
        std::memcpy(chars_, other.chars_, static_cast<std::size_t>(other.length_) + 1);
        length_ = other.length_;
        return *this;
    }
    freeBuffer();
    chars_ = other.chars_;
    capacity_ = other.capacity_;
    length_ = other.length_;
    other.chars_ = other.inline_;
    other.capacity_ = kInline;
    other.setLength(0);
    return *this;
}

CXString& CXString::operator=(const char* text) {
    if (text) assign(text);
    return *this;
}

CXString& CXString::operator=(char c) {
    chars_[0] = c;
    setLength(c ? 1 : 0);
    return *this;
}

CXString& CXString::operator+=(const CXString& text) {
    append(text.view());
    return *this;
}

CXString& CXString::operator+=(const char* text) {
    append(orEmpty(text));
    return *this;
}

CXString& CXString::operator+=(std::string_view text) {
    append(text);
    return *this;
}

CXString& CXString::operator+=(char c) {
    if (c) append({&c, 1});
    return *this;
}

CXString operator+(const CXString& a, const CXString& b) {
    CXString sum(a.GetLength() + b.GetLength() + 1 <= 32 ? 32 : a.GetLength() + b.GetLength() + 32);
    sum += a;
    sum += b;
    return sum;
}

CXString operator+(const CXString& a, const char* b) { return a + CXString(b); }
CXString operator+(const char* a, const CXString& b) { return CXString(a) + b; }

// --- parts

void CXString::left(int n) { mid(0, n); }
void CXString::left(int n, CXString* out) const { mid(0, n, out); }
CXString CXString::Left(int n) const { return Mid(0, n); }

void CXString::right(int n) { mid(n, length_); }
void CXString::right(int n, CXString* out) const { mid(n, length_, out); }
CXString CXString::Right(int n) const { return Mid(n, length_); }

void CXString::mid(int a, int b) { mid(a, b, this); }

void CXString::mid(int a, int b, CXString* out) const {
    const int from = std::clamp(a, 0, length_);
    const int to = std::clamp(b, from, length_);
    if (out) out->assign(view().substr(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from)));
}

CXString CXString::Mid(int a, int b) const {
    CXString part;
    mid(a, b, &part);
    return part;
}

void CXString::LTrim(char c) {
    const std::size_t first = view().find_first_not_of(c);
    right(first == std::string_view::npos ? length_ : static_cast<int>(first));
}

void CXString::RTrim(char c) { setLength(position(view().find_last_not_of(c)) + 1); }

void CXString::AllTrim(char c) {
    if (length_ > 0 && chars_[0] != c && chars_[length_ - 1] != c) return;
    RTrim(c);
    LTrim(c);
}

void CXString::FillWith(char c, int n) {
    n = std::clamp(n, 0, kMaxLength);
    if (n >= capacity_) renewBuffer(n + kInline, 0);
    std::memset(chars_, c, static_cast<std::size_t>(n));
    setLength(c ? n : 0);
}

CXString& CXString::Lower() {
    std::transform(chars_, chars_ + length_, chars_, lowerCase);
    return *this;
}

CXString& CXString::Upper() {
    std::transform(chars_, chars_ + length_, chars_, upperCase);
    return *this;
}

bool CXString::IsLower() const {
    return std::all_of(chars_, chars_ + length_, [](char c) { return upperCase(c) != c; });
}

bool CXString::IsUpper() const {
    return std::all_of(chars_, chars_ + length_, [](char c) { return lowerCase(c) != c; });
}

// --- search and replacement

int CXString::indexOf(const CXString& sub, int start) const {
    return position(view().find(sub.view(), indexFrom(start)));
}

int CXString::findOneOf(const CXString& set, int start) const {
    return position(view().find_first_of(set.view(), indexFrom(start)));
}

int CXString::getCount(unsigned char c) const {
    return static_cast<int>(std::count(chars_, chars_ + length_, static_cast<char>(c)));
}

int CXString::Find(char c, int start) const { return position(view().find(c, indexFrom(start))); }
int CXString::FindLast(char c) const { return position(view().rfind(c)); }
int CXString::FindSubString(const CXString& sub, int start) const { return CXString::indexOf(sub, start); }

void CXString::Replace(char from, char to) { std::replace(chars_, chars_ + length_, from, to); }

CXString CXString::replace(const CXString& sub, const CXString& by) const {
    if (!sub.IsString()) return *this;
    std::string result;
    std::size_t from = 0;
    for (std::size_t at; (at = view().find(sub.view(), from)) != std::string_view::npos;
         from = at + sub.view().size()) {
        result += view().substr(from, at - from);
        result += by.view();
    }
    result += view().substr(from);
    return CXString(std::string_view(result));
}

void CXString::replaceOnce(const CXString& sub, const CXString& by, int start) {
    const int at = sub.IsString() ? indexOf(sub, start) : -1;
    CXString result = Mid(start, at < 0 ? length_ : at);
    if (at >= 0) {
        result += by;
        result += view().substr(static_cast<std::size_t>(at) + sub.view().size());
    }
    *this = std::move(result);
}

void CXString::removeTag(const CXString& tag) {
    std::string kept;
    for (std::size_t i = 0; i < view().size(); ++i) {
        if (chars_[i] == '<' && view().substr(i + 1).starts_with(tag.view())) {
            i = view().find('>', i);
            if (i == std::string_view::npos) break;
        } else {
            kept += chars_[i];
        }
    }
    assign(kept);
}

bool CXString::equalsIgnoreCase(const CXString& other) const {
    return std::equal(chars_, chars_ + length_, other.chars_, other.chars_ + other.length_,
                      [](char a, char b) { return upperCase(a) == upperCase(b); });
}

CXRect CXString::toRect() const {
    CStringTokenizer numbers(*this, ".|, ");
    const int left = toNumber(numbers.nextToken());
    const int top = toNumber(numbers.nextToken());
    const int right = toNumber(numbers.nextToken());
    return {left, top, right, toNumber(numbers.nextToken())};
}

CXArray* CXString::toVector() const {
    auto* pieces = new CXArray;
    for (CStringTokenizer tokens(*this, ", "); tokens.hasMoreTokens();)
        pieces->add(new CXString(tokens.nextToken()));
    return pieces;
}

bool CXString::FilterFits(const CXString& name) const {
    if (*this == "*" || *this == "*.*") return true;
    const int missing = length_ - name.length_;
    for (int i = 0, p = 0; i < name.length_; ++i, ++p) {
        if (p >= length_) return false;
        if (chars_[p] == '?') continue;
        if (chars_[p] != '*') {
            if (chars_[p] != name.chars_[i]) return false;
        } else if (missing > 0) {
            p += missing;
        } else if (p == length_ - 1) {
            return true;
        }
    }
    return true;
}
