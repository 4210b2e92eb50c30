// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "text/text_markup.h"

#include <string>

#include "text/font_collection.h"

namespace {

struct StyleTag {
    std::string_view word;
    std::string_view style;
};

constexpr StyleTag kStyleTags[] = {
    {"I",  "ITALIC"   },
    {"B",  "BOLD"     },
    {"LS", "LSTRIKE"  },
    {"US", "USTRIKE"  },
    {"U",  "UNDERLINE"},
};
constexpr std::string_view kPlainStyle = "STANDARD", kEditPrefix = "E,", kColorPrefix = "COLOR";

// What stands in front of the next comma, which goes with it.
std::string_view takeField(std::string_view& rest) {
    const std::size_t comma = rest.find(',');
    const std::string_view field = rest.substr(0, comma);
    rest.remove_prefix(comma == std::string_view::npos ? rest.size() : comma + 1);
    return field;
}

class Parser {
public:
    explicit Parser(const CFontCollection& fonts) : fonts_(fonts), current_(fonts.getBaseFont()) {}

    TextCodes parse(std::string_view text) {
        std::size_t i = 0;
        while (i < text.size()) {
            const char c = text[i++];
            if (c == '<') {
                i = readTag(text, i);
            } else if (c == '\r') {
                endRun();
                codes_.push_back(std::make_unique<CTextFormatCode>(CTextFormatCode::kLineBreak, CXString()));
            } else if (c != '\n') {
                run_ += c;
            }
        }
        endRun();
        return std::move(codes_);
    }

private:
    void endRun() {
        if (run_.empty()) return;
        codes_.push_back(std::make_unique<CTextFormatCode>(CXString(std::string_view(run_))));
        run_.clear();
    }

    // `start`: behind the `<`. Where to go on.
    std::size_t readTag(std::string_view text, std::size_t start) {
        const std::size_t end = text.find_first_of("<>", start);
        if (end == std::string_view::npos) {
            run_ += text.substr(start - 1);
            return text.size();
        }
        const std::string_view word = text.substr(start, end - start);
        if (text[end] == '<') {
            run_ += '<';
            run_ += word;
            endRun();
            return end + 1;
        }
        return readWord(word) ? end + 1 : start;
    }

    bool readWord(std::string_view word) {
        for (const StyleTag& tag : kStyleTags) {
            if (!CXString(word).equalsIgnoreCase(CXString(tag.word))) continue;
            endRun();
            switchStyle(tag.style, word);
            return true;
        }
        const bool isField = word.starts_with(kEditPrefix);
        if (!isField && !word.starts_with(kColorPrefix)) return false;
        endRun();
        const std::string_view value = word.substr(isField ? kEditPrefix.size() : kColorPrefix.size());
        codes_.push_back(std::make_unique<CTextFormatCode>(
            isField ? CTextFormatCode::kEditField : CTextFormatCode::kColor, CXString(value)));
        return true;
    }

    void switchStyle(std::string_view style, std::string_view word) {
        if (!current_) return;
        const bool isOn = current_->getStyle().equalsIgnoreCase(CXString(style));
        CSimpleFont6* font =
            fonts_.get(current_->getFamily(), CXString(isOn ? kPlainStyle : style), current_->getSize());
        if (!font) return;
        current_ = font;
        codes_.push_back(std::make_unique<CTextFormatCode>(font, "<" + CXString(word) + ">"));
    }

    const CFontCollection& fonts_;
    CSimpleFont6* current_;  // null: no font at all
    std::string run_;
    TextCodes codes_;
};

}  // namespace

CTextFormatCode::CTextFormatCode(int kind, const CXString& value) : kind_(kind) {
    if (kind == kColor) {
        color_ = leadingInt(value.view());
    } else if (kind == kEditField) {
        std::string_view rest = value.view();
        width_ = leadingInt(takeField(rest));
        name_ = CXString(takeField(rest));
        text_ = CXString(rest);  // commas and all
    } else {
        text_ = value;
    }
}

TextCodes parseMarkup(const CXString& text, const CFontCollection& fonts) { return Parser(fonts).parse(text.view()); }
