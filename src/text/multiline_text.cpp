// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "text/multiline_text.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>

#include "frame/unit.h"
#include "input/edit_box.h"
#include "script/lifetime.h"
#include "storage/file.h"
#include "text/font_collection.h"

namespace {

constexpr int kDrawnCloser = 4;    // a line's step when drawn, less than its height
constexpr int kCountedCloser = 2;  // and when the block's height is told
constexpr int kMostCells = 4096;   // of an edit field, whatever width its tag asks for

// Cuts a run into words, each with the blanks in front of it; the blanks at the end are lost.
class Words {
public:
    explicit Words(std::string_view run) : rest_(run) {}

    // Empty: no more.
    std::string_view next() {
        const std::size_t start = rest_.find_first_not_of(' ');
        if (start == std::string_view::npos) return {};
        const std::string_view word = rest_.substr(0, rest_.find(' ', start));
        rest_.remove_prefix(word.size());
        return word;
    }

private:
    std::string_view rest_;
};

}  // namespace

// Where breaking a text with markup stands.
struct CMultilineText6::Break {
    CMultilineText6& text;
    const int room;  // the rectangle's width
    std::string line{};
    std::int64_t width = 0;
    int row = 0;
    std::string openTag{};
    bool isFilled = false;  // the line holds more than tags

    void append(std::string_view letters) {
        line += letters;
        isFilled = true;
    }

    void startLine() {
        line = openTag;
        width = 0;
        isFilled = false;
    }

    void endLine() {
        text.addLine(line);
        ++row;
        startLine();
    }

    // A word that has no room even on a line of its own gets no empty line before it.
    void wrap() {
        if (isFilled) endLine();
        width = 0;
    }

    void addRun(CSimpleFont6* font, std::string_view run) {
        Words words(run);
        for (std::string_view word = words.next(); !word.empty(); word = words.next()) {
            const int wordWidth = CText6::getLength(font, word);
            width += wordWidth;
            if (width > room) {
                wrap();
                // The blank that is taken off is still counted.
                width = wordWidth;
                if (word.front() == ' ') word.remove_prefix(1);
            }
            append(word);
        }
    }

    void switchStyle(const CXString& tag) {
        openTag = openTag.empty() ? std::string(tag.view()) : std::string();
        line += tag.view();
    }

    // A text without a unit shows the field's underscores all the same: nobody makes a box over them.
    void addField(CSimpleFont6* font, const CTextFormatCode& field) {
        const int fieldWidth = std::max(field.getWidth(), 0);
        if (width + fieldWidth > room) wrap();
        const int blank = font ? font->getLetterWidth(0, ' ') : 0;
        const int cell = blank + CSimpleFont6::kGap;
        const int cells = cell > 0 ? std::min(fieldWidth / cell, kMostCells) : 0;
        append(" " + std::string(static_cast<std::size_t>(std::max(cells - 2, 0)), '_'));
        const auto left = static_cast<int>(std::clamp<std::int64_t>(width + blank, 0, INT32_MAX));
        text.makeEditBox(field, font, left, row);
        width += std::int64_t{3} * blank + fieldWidth;
    }
};

CMultilineText6::~CMultilineText6() { CMultilineText6::flush(); }

void CMultilineText6::flush() {
    lines_.clear();
    // Each leaves the list by itself, and who hears that it goes may make others leave.
    const ScriptScope scope;
    const std::span<CXObject* const> listed = getEditBoxes()->elements();
    const std::vector<CXObject*> boxes(listed.begin(), listed.end());
    for (CXObject* box : boxes)
        CEditBox6::discard(static_cast<CEditBox6*>(box));
}

const CText6* CMultilineText6::getLine(int i) const {
    return i >= 0 && i < getLineCount() ? lines_[static_cast<std::size_t>(i)].get() : nullptr;
}

int CMultilineText6::getLength() const {
    int longest = 0;
    for (const auto& line : lines_) {
        if (line) longest = std::max(longest, line->Size().width);
    }
    return longest;
}

int CMultilineText6::getHeight() const {
    std::int64_t height = 0;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        if (lines_[i]) {
            height += lines_[i]->Size().height;
        } else if (i > 0 && !lines_[i - 1] && font_) {
            height += font_->Height();
        }
    }
    if (lines_.size() > 1) height -= kCountedCloser * (std::int64_t{getLineCount()} - 1);
    return static_cast<int>(std::clamp<std::int64_t>(height, INT32_MIN, INT32_MAX));
}

void CMultilineText6::setFont(CSimpleFont6* font) {
    font_ = font;
    if (font && text_.IsString()) setText(text_);
}

void CMultilineText6::setText(const CXString& text) {
    if (font_) Invalidate();
    text_ = convTab(text);
    parseText(text_);
    if (!font_) return;
    if (const CFontCollection* fonts = getFonts()) {
        splitMultiText(*fonts);
    } else {
        splitText();
    }
    layOut({getLength(), getHeight()});
}

int CMultilineText6::Load(const CXString& name) {
    constexpr std::size_t kMost = 1 << 26;
    CFile file(window_, name, CFile::kReadText);
    std::string text;
    while (!file.eof() && text.size() < kMost) {
        const CXString line = file.getLine();
        if (!line.IsString() && file.eof()) break;
        text += line.view();
        text += '\n';
    }
    setText(CXString(std::string_view(text)));
    return 0;
}

void CMultilineText6::addLine(std::string_view text) {
    auto line = std::make_unique<CText6>(window_, nullptr);
    line->setFont(font_.get());
    line->setText(CXString(text));
    line->setColor(color_);
    lines_.push_back(std::move(line));
}

void CMultilineText6::splitText() {
    flush();
    const int room = getJustifyRect().Width();
    std::string line;
    std::int64_t width = 0;
    Words words(text_.view());
    for (std::string_view word = words.next(); !word.empty(); word = words.next()) {
        word.remove_prefix(word.find_first_not_of(' '));
        if (!line.empty()) {
            const std::string next = " " + std::string(word);
            const int nextWidth = CText6::getLength(font_.get(), next);
            if (width + nextWidth <= room) {
                line += next;
                width += nextWidth;
                continue;
            }
            addLine(line);
        }
        line = word;
        width = CText6::getLength(font_.get(), word);
    }
    if (!line.empty()) addLine(line);
}

void CMultilineText6::splitMultiText(const CFontCollection& fonts) {
    flush();
    Break at{*this, getJustifyRect().Width()};
    CSimpleFont6* font = fonts.getBaseFont();
    for (const auto& code : codes_) {
        switch (code->getKind()) {
            case CTextFormatCode::kRun:
                at.addRun(font, code->getText().view());
                break;
            case CTextFormatCode::kStyle:
                at.switchStyle(code->getText());
                font = code->getFont();
                break;
            case CTextFormatCode::kLineBreak:
                at.endLine();
                lines_.push_back(nullptr);
                break;
            case CTextFormatCode::kEditField:
                at.addField(font, *code);
                break;
            default:  // every line has the colour of the whole
                break;
        }
    }
    if (at.isFilled) addLine(at.line);
}

void CMultilineText6::makeEditBox(const CTextFormatCode& field, CSimpleFont6* font, int left, int row) {
    if (!unit_ || !font) return;
    const int height = font->Height();
    CXPoint at = position_ + CXPoint(left, 0);
    at = at + CXPoint(0, static_cast<int>(static_cast<std::uint32_t>(row) *
                                          static_cast<std::uint32_t>(height - kDrawnCloser)));
    const CXRect rect = CXRect(0, 0, field.getWidth(), height) + at;
    CEditBox6* box = unit_->addEditBox(font, rect, field.getText());
    if (!box) return;
    getEditBoxes()->add(box);
    box->setTextList(getEditBoxes());
}

void CMultilineText6::Redraw() {
    if (!font_ || !destiny_) return;
    CXPoint at = position_;
    const int emptyStep = font_->Height() - kDrawnCloser;
    bool afterBreak = false;
    for (const auto& line : lines_) {
        if (!line) {
            if (afterBreak) at = at + CXPoint(0, emptyStep);
            afterBreak = true;
            continue;
        }
        afterBreak = false;
        line->SetDestiny(destiny_);
        line->SetClippingRect(CXRect());
        line->placeAt(at);
        if (clip_.IsEmpty()) {
            line->Redraw();
        } else {
            // A line of which nothing is to be shown isn't drawn.
            CXRect shown = line->GetBoundingBox();
            shown = (shown -= position_).Common(clip_);
            if (shown.Width() > 0 && shown.Height() > 0) {
                line->SetClippingRect(shown + (position_ - at));
                line->Redraw();
            }
        }
        at = at + CXPoint(0, line->Size().height - kDrawnCloser);
    }
}
