// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <compare>
#include <cstdint>
#include <cstring>
#include <string_view>

class CXArray;
class CXRect;

// Eight-bit text in the Windows-1250 code page: counted, and ended by a zero byte that the count leaves out.
//
// Capacity is bytes allocated and never below 32. A text of n characters gets 32 when n is at most 31, else n + 32; a
// copy takes its source's capacity. The capacity of 32 is served by a buffer inside the object, so short texts never
// touch the heap. Positions are zero-based. Nothing here fails: searches answer -1, and positions outside the text
// are brought to its ends. A text holds at most 2^26 characters; what would go beyond is dropped.
class CXString final {
public:
    CXString() noexcept;
    CXString(
        const char* text);  // NOLINT(google-explicit-constructor): literals stand for texts everywhere; null: empty
    CXString(std::string_view text);  // NOLINT(google-explicit-constructor)
    CXString(const CXString& other);
    CXString(CXString&& other) noexcept;  // takes the buffer with its capacity; the other one becomes empty
    // An empty text with room for `capacity` bytes. It never builds a text from the number.
    explicit CXString(int capacity);
    ~CXString();

    // In place when this capacity is at least the other's, else in a new buffer of its length + 32.
    CXString& operator=(const CXString& other);
    CXString& operator=(CXString&& other) noexcept;
    CXString& operator=(const char* text);  // null changes nothing
    CXString& operator=(char c);            // '\0': empty
    CXString& operator=(int value);         // decimal
    CXString& operator=(double value);      // nine significant digits, as _gcvt writes them; not toString(double)

    CXString& operator+=(const CXString& text);
    CXString& operator+=(const char* text);
    CXString& operator+=(std::string_view text);
    CXString& operator+=(char c);  // '\0' adds nothing
    CXString& operator+=(int value);

    // The leading number of the text, 0 when it doesn't start with one.
    explicit operator int() const { return toNumber(*this); }

    virtual int indexOf(const CXString& sub, int start) const;
    virtual int findOneOf(const CXString& set, int start) const;
    virtual int getCount(unsigned char c) const;

    int GetLength() const { return length_; }
    int getCapacity() const { return capacity_; }
    const char* c_str() const { return chars_; }
    std::string_view view() const { return {chars_, static_cast<std::size_t>(length_)}; }

    char GetAt(int i) const {  // -1: the last character; 0 outside the text
        if (i == -1) i = length_ - 1;
        return i >= 0 && i < length_ ? chars_[i] : '\0';
    }
    char lastChar() const { return GetAt(-1); }
    bool IsString() const { return length_ > 0; }
    bool IsLower() const;  // a to z and the nine Polish letters alone; true for the empty text
    bool IsUpper() const;

    void left(int n);  // keeps the first n characters
    void left(int n, CXString* out) const;
    CXString Left(int n) const;
    void right(int n);  // drops the first n characters: n is where the rest starts, not a count from the end
    void right(int n, CXString* out) const;
    CXString Right(int n) const;
    void mid(int a, int b);  // keeps index a up to, not including, b
    void mid(int a, int b, CXString* out) const;
    CXString Mid(int a, int b) const;

    void LTrim(char c);
    void RTrim(char c);
    void AllTrim(char c);
    void FillWith(char c, int n);
    CXString& Lower();  // in place; a to z and nine Polish letters, whatever the locale
    CXString& Upper();

    int Find(char c, int start = 0) const;
    int FindLast(char c) const;
    int FindSubString(const CXString& sub, int start = 0) const;
    void Replace(char from, char to);
    CXString replace(const CXString& sub, const CXString& by) const;  // what is put in isn't scanned again
    // Keeps the text from `start` on, with the first `sub` in it replaced.
    void replaceOnce(const CXString& sub, const CXString& by, int start);
    // Removes each `<tag ...>`. A tag that is never closed is removed to the end of the text.
    void removeTag(const CXString& tag);

    // The format of sprintf, cut at 255 characters. A format that asks for other arguments than it gets is safe: such
    // a directive is copied as it stands.
    void Format(const char* format, int a);
    void Format(const char* format, int a, int b);
    void Format(const char* format, const CXString& a);
    void Format(const char* format, const CXString& a, int b);
    void Format(const char* format, const CXString& a, int b, const CXString& c);
    void Format(const char* format, const CXString& a, int b, int c);

    bool equals(const CXString& other) const { return view() == other.view(); }
    bool equalsIgnoreCase(const CXString& other) const;
    bool startsWith(const CXString& text) const { return view().starts_with(text.view()); }
    bool isNumber() const { return toNumber(*this) != 0; }  // so "0" is none
    double toDouble() const { return toDouble(*this); }
    bool toBool() const { return toBool(*this); }

    static bool toBool(const CXString& text);  // "true" in any case of letters
    static int toNumber(const CXString& text);
    static double toDouble(const CXString& text);
    static CXString toString(bool value);
    static CXString toString(int value);
    static CXString toString(double value);  // two decimals, by rules of its own: 0.996 gives 0.1.00

    // Four numbers, separated by any of ".|, ": left, top, right, bottom. Missing ones are 0.
    CXRect toRect() const;
    // The pieces between commas and blanks: a new array of new CXString, both the caller's.
    CXArray* toVector() const;

    // True when the name fits this pattern: `?` is any character, `*` is limited to what fits by length. Letters
    // must agree in case.
    bool FilterFits(const CXString& name) const;

    friend bool operator==(const CXString& a, const CXString& b) { return a.view() == b.view(); }
    friend bool operator==(const CXString& a, const char* b) { return a.view() == (b ? b : ""); }
    friend std::strong_ordering operator<=>(const CXString& a, const CXString& b) { return a.view() <=> b.view(); }

private:
    static constexpr int kInline = 32;  // also the slack of a larger buffer

    // The views below may look into this very text.
    void assign(std::string_view text);  // in place when it is shorter than the capacity
    void append(std::string_view text);
    void copyLarge(const CXString& other);     // for a constructor
    void renewBuffer(int capacity, int keep);  // a buffer of that capacity with the first `keep` characters
    void freeBuffer() {
        if (chars_ != inline_) delete[] chars_;
    }
    void setLength(int length) {
        length_ = length;
        chars_[length] = '\0';
    }

    int length_ = 0;
    int capacity_ = kInline;
    char* chars_;  // inline_ or an array on the heap, owned
    char inline_[kInline] = {};
};

// These few run at every parameter and every return of a text: they are a plain copy of the 32 bytes when the text is
// a short one.
inline CXString::CXString() noexcept : chars_(inline_) {}

inline CXString::CXString(const CXString& other) : length_(other.length_), chars_(inline_) {
    if (other.capacity_ == kInline) {
        std::memcpy(inline_, other.inline_, kInline);
    } else {
        copyLarge(other);
    }
}

inline CXString::CXString(CXString&& other) noexcept : length_(other.length_), capacity_(other.capacity_) {
    if (other.capacity_ == kInline) {
        chars_ = inline_;
        std::memcpy(inline_, other.inline_, kInline);
    } else {
        chars_ = other.chars_;
        other.chars_ = other.inline_;
        other.capacity_ = kInline;
    }
    other.setLength(0);
}

inline CXString::~CXString() { freeBuffer(); }

CXString operator+(const CXString& a, const CXString& b);
CXString operator+(const CXString& a, const char* b);
CXString operator+(const char* a, const CXString& b);

// Letters of the Windows-1250 code page, by the same table as CXString::Lower and Upper.
char lowerCase(char c);
char upperCase(char c);

// The leading number of a text as `atoi` and `atof` of the C library read it, without regard to the locale. A number
// outside the range of int becomes the nearest end of it.
int leadingInt(std::string_view text);
double leadingDouble(std::string_view text);
