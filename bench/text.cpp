// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// A page of 2,000 letters in two styles and a colour: breaking it into lines, drawing it, both as a frame of the
// compositor does them, and a frame in which it stands as it is.
#include <benchmark/benchmark.h>
#include <memory>

#include "graphics/color.h"
#include "graphics/refresh_screen.h"
#include "graphics/surface.h"
#include "support/fonts.h"
#include "support/stage.h"
#include "text/font_collection.h"
#include "text/multiline_text.h"

namespace {

constexpr int kLetters = 2000;
constexpr int kWidth = 780;

fonts::Face face(int cell, std::uint16_t pixel) {
    fonts::Face made{.cell = cell, .height = 18, .pixel = pixel};
    made.letters.clear();
    for (char letter = 'A'; letter <= 'z'; ++letter)
        made.letters += letter;
    for (const char letter : made.letters)
        made.right[letter] = letter % 4;
    return made;
}

CXString content() {
    std::string text;
    int letters = 0;
    for (int word = 0; letters < kLetters; ++word) {
        if (word % 25 == 12) text += "<B>";
        const int length = 3 + word * 7 % 6;
        for (int i = 0; i < length; ++i)
            text += static_cast<char>('a' + (word * 5 + i * 3) % 26);
        letters += length;
        text += ' ';
    }
    return CXString(std::string_view(text));
}

class Page {
public:
    Page() {
        stage_.start();
        CWindow* window = CWindow::current();
        plain_ = std::make_unique<fonts::Font>(face(10, 0xFFFF));
        bold_ = std::make_unique<fonts::Font>(face(12, 0xF800), "BOLD");
        fonts_ = std::make_unique<CFontCollection>(window);
        fonts_->addFont(plain_.get());
        fonts_->addFont(bold_.get());
        screen_ = std::make_unique<CRefreshScreen>(window, false);
        target_ = std::make_unique<CDirectDrawSurface>(window);
        const CColor green(static_cast<short>(0x0340), kModel16);
        screen_->SetBackground(&green);
        text = std::make_unique<CMultilineText6>(window, nullptr);
        text->setJustify({10, 10, 10 + kWidth, 590}, kJustifyLeft, kJustifyTop);
        text->setFont(fonts_.get());
        text->setText(content());
        screen_->put(text.get(), 1);
    }

    void frame() {
        bool full = false;
        benchmark::DoNotOptimize(screen_->Redraw(target_.get(), nullptr, &full));
        screen_->validate();
    }

private:
    Stage stage_;
    std::unique_ptr<fonts::Font> plain_, bold_;
    std::unique_ptr<CFontCollection> fonts_;
    std::unique_ptr<CRefreshScreen> screen_;

public:
    std::unique_ptr<CMultilineText6> text;

private:
    std::unique_ptr<CDirectDrawSurface> target_;
};

// A result that is believed: the page has lines, and none is wider than its room.
bool isLaidOut(const Page& page) { return page.text->getLineCount() > 20 && page.text->getLength() <= kWidth; }

void layOut(benchmark::State& state) {
    Page page;
    const CXString text = content();
    for (auto _ : state)
        page.text->setText(text);
    if (!isLaidOut(page)) state.SkipWithError("the page isn't laid out");
    state.counters["lines"] = page.text->getLineCount();
}

void layOutAndDraw(benchmark::State& state) {
    Page page;
    const CXString text = content();
    for (auto _ : state) {
        page.text->setText(text);
        page.frame();
    }
    if (!isLaidOut(page)) state.SkipWithError("the page isn't laid out");
}

void draw(benchmark::State& state) {
    Page page;
    for (auto _ : state) {
        page.text->Invalidate();
        page.frame();
    }
}

void unchanged(benchmark::State& state) {
    Page page;
    page.frame();
    for (auto _ : state)
        page.frame();
}

}  // namespace

BENCHMARK(layOut)->Unit(benchmark::kMicrosecond);
BENCHMARK(layOutAndDraw)->Unit(benchmark::kMicrosecond);
BENCHMARK(draw)->Unit(benchmark::kMicrosecond);
BENCHMARK(unchanged)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
