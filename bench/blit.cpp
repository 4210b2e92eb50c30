// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// The copies from picture to picture beside SDL2, pixman and memcpy, which do the same amount of pixels.
//
// The pictures are 800x600 at 16 bits unless a name says otherwise. "noise" is an alpha plane of random bytes,
// "sprite" one of long transparent and opaque runs with soft edges between them.
#include "graphics/blit.h"

#include <SDL.h>
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <pixman.h>
#include <random>
#include <string>
#include <vector>

#include "graphics/graphics_object.h"

namespace {

enum class Alpha { kNone, kNoise, kSprite };

constexpr int kWidth = 800, kHeight = 600, kSpriteSide = 64;

// A disc to every 100 pixels: inside opaque, outside transparent, two pixels between.
std::uint8_t spriteAlpha(int x, int y, int side) {
    const double dx = x % side - side / 2.0, dy = y % side - side / 2.0;
    const double edge = side * 0.45 - std::sqrt(dx * dx + dy * dy);
    return static_cast<std::uint8_t>(edge <= 0 ? 0 : edge >= 2 ? 255 : edge * 127);
}

// A picture in the forms that the three need.
struct Picture {
    std::vector<std::uint8_t> pixels;  // 16 bits
    std::vector<std::uint8_t> alpha;
    std::vector<std::uint32_t> argb;  // not premultiplied
    std::vector<std::uint32_t> premultiplied;
    int width, height;

    Picture(int w, int h, Alpha kind, unsigned seed) : width(w), height(h) {
        std::mt19937 random(seed);
        for (int i = 0; i < w * h; ++i) {
            const auto pixel = static_cast<std::uint16_t>(random());
            pixels.push_back(static_cast<std::uint8_t>(pixel));
            pixels.push_back(static_cast<std::uint8_t>(pixel >> 8));
            const std::uint8_t a = kind == Alpha::kNone    ? std::uint8_t{255}
                                   : kind == Alpha::kNoise ? static_cast<std::uint8_t>(random())
                                                           : spriteAlpha(i % w, i / w, w == kWidth ? 100 : w);
            if (kind != Alpha::kNone) alpha.push_back(a);
            const std::uint32_t r = (pixel >> 11) << 3, g = (pixel >> 5 & 0x3F) << 2, b = (pixel & 0x1F) << 3;
            argb.push_back(static_cast<std::uint32_t>(a) << 24 | r << 16 | g << 8 | b);
            premultiplied.push_back(static_cast<std::uint32_t>(a) << 24 | (r * a / 255) << 16 | (g * a / 255) << 8 |
                                    b * a / 255);
        }
    }
};

enum class Form { kWhole, kClipped, kSmall };

constexpr const char* kFormNames[] = {"", "/clip", "/64x64"};

// The part that a clipped copy shows; others show all.
CXRect part(Form form) { return form == Form::kClipped ? CXRect(101, 77, 701, 477) : CXRect(); }

struct Sides {
    Picture from, to;
    std::vector<std::uint8_t> targetAlpha;
    _canvas source, target;

    // A small source is drawn into a target of the full size.
    Sides(Alpha kind, bool withTargetAlpha, Form form) : Sides(kind, withTargetAlpha, form == Form::kSmall) {
        source.clip = part(form);
    }

    // Of what is shown.
    int left() const { return source.clip.left; }
    int top() const { return source.clip.top; }
    int width() const { return source.clip.IsEmpty() ? from.width : source.clip.right - source.clip.left; }
    int height() const { return source.clip.IsEmpty() ? from.height : source.clip.bottom - source.clip.top; }
    std::int64_t pixels() const { return std::int64_t{width()} * height(); }

private:
    Sides(Alpha kind, bool withTargetAlpha, bool small)
        : from(small ? kSpriteSide : kWidth, small ? kSpriteSide : kHeight, kind, 1),
          to(kWidth, kHeight, Alpha::kNone, 2),
          targetAlpha(withTargetAlpha ? kWidth * kHeight : 0, 100),
          source{from.pixels, from.alpha, 16, small ? 333 : 0, small ? 222 : 0, from.width, from.height, {}},
          target{to.pixels, targetAlpha, 16, 0, 0, kWidth, kHeight, {}} {}
};

void count(benchmark::State& state, std::int64_t pixels) { state.SetItemsProcessed(state.iterations() * pixels); }

struct Case {
    const char* name;
    Alpha alpha;
    bool targetAlpha;
    bool (*copy)(const _canvas* source, const _canvas* target);
};

bool blendHalf(const _canvas* source, const _canvas* target) {
    return CGraphicsObject::__copy_blend(source, target, 128);
}

constexpr Case kCases[] = {
    {"copy",                 Alpha::kNone,   false, CGraphicsObject::__copy              },
    {"alpha/noise",          Alpha::kNoise,  false, CGraphicsObject::__copy_alpha        },
    {"alpha/sprite",         Alpha::kSprite, false, CGraphicsObject::__copy_alpha        },
    {"alpha_as_mask/noise",  Alpha::kNoise,  false, CGraphicsObject::__copy_alpha_as_mask},
    {"alpha_as_mask/sprite", Alpha::kSprite, false, CGraphicsObject::__copy_alpha_as_mask},
    {"blend",                Alpha::kNone,   false, blendHalf                            },
    {"alpha_blend/noise",    Alpha::kNoise,  false, blendHalf                            },
    {"alpha_blend/sprite",   Alpha::kSprite, false, blendHalf                            },
    {"to_canvas/opaque",     Alpha::kNone,   true,  CGraphicsObject::copyToCanvas        },
    {"to_canvas/noise",      Alpha::kNoise,  true,  CGraphicsObject::copyToCanvas        },
    {"to_canvas/sprite",     Alpha::kSprite, true,  CGraphicsObject::copyToCanvas        },
};

void ours(benchmark::State& state, const Case& row, Form form, int bpp) {
    Sides sides(row.alpha, row.targetAlpha, form);
    sides.source.bpp = sides.target.bpp = bpp;
    for (auto _ : state) {
        if (!row.copy(&sides.source, &sides.target)) state.SkipWithError("the copy refused");
        benchmark::ClobberMemory();
    }
    count(state, sides.pixels());
}

void copyOfMemory(benchmark::State& state) {
    Sides sides(Alpha::kNone, false, Form::kWhole);
    for (auto _ : state) {
        std::memcpy(sides.to.pixels.data(), sides.from.pixels.data(), sides.to.pixels.size());
        benchmark::ClobberMemory();
    }
    count(state, kWidth * kHeight);
}

// SDL's sources: 32 bits with alpha, or 16 bits.
void sdl(benchmark::State& state, Alpha kind, Form form, int opacity) {
    Sides sides(kind, false, form);
    const int w = sides.from.width, h = sides.from.height;
    SDL_Surface* source =
        kind == Alpha::kNone
            ? SDL_CreateRGBSurfaceWithFormatFrom(sides.from.pixels.data(), w, h, 16, 2 * w, SDL_PIXELFORMAT_RGB565)
            : SDL_CreateRGBSurfaceWithFormatFrom(sides.from.argb.data(), w, h, 32, 4 * w, SDL_PIXELFORMAT_ARGB8888);
    SDL_Surface* target = SDL_CreateRGBSurfaceWithFormatFrom(sides.to.pixels.data(), kWidth, kHeight, 16, 2 * kWidth,
                                                             SDL_PIXELFORMAT_RGB565);
    const bool opaque = kind == Alpha::kNone && opacity == 255;
    if (!source || !target || SDL_SetSurfaceBlendMode(source, opaque ? SDL_BLENDMODE_NONE : SDL_BLENDMODE_BLEND) != 0 ||
        SDL_SetSurfaceAlphaMod(source, static_cast<Uint8>(opacity)) != 0)
        state.SkipWithError(SDL_GetError());
    for (auto _ : state) {
        const SDL_Rect shown{sides.left(), sides.top(), sides.width(), sides.height()};
        SDL_Rect at{sides.source.x + sides.left(), sides.source.y + sides.top(), 0, 0};
        if (SDL_BlitSurface(source, &shown, target, &at) != 0) state.SkipWithError(SDL_GetError());
        benchmark::ClobberMemory();
    }
    count(state, sides.pixels());
    SDL_FreeSurface(source);
    SDL_FreeSurface(target);
}

enum class PixmanSource { kArgb, kPixelsAndMask, kPixels, kPixelsAndOpacity };

pixman_image_t* image(pixman_format_code_t format, int w, int h, void* bytes, int stride) {
    pixman_image_t* result = pixman_image_create_bits(format, w, h, static_cast<std::uint32_t*>(bytes), stride);
    if (!result) std::abort();
    return result;
}

void pixman(benchmark::State& state, PixmanSource what, Alpha kind, Form form) {
    Sides sides(kind, false, form);
    const int w = sides.from.width, h = sides.from.height;
    pixman_image_t* source = what == PixmanSource::kArgb
                                 ? image(PIXMAN_a8r8g8b8, w, h, sides.from.premultiplied.data(), 4 * w)
                                 : image(PIXMAN_r5g6b5, w, h, sides.from.pixels.data(), 2 * w);
    pixman_image_t* mask = nullptr;
    if (what == PixmanSource::kPixelsAndMask) mask = image(PIXMAN_a8, w, h, sides.from.alpha.data(), w);
    const pixman_color_t half{0, 0, 0, 0x8080};
    if (what == PixmanSource::kPixelsAndOpacity) mask = pixman_image_create_solid_fill(&half);
    pixman_image_t* target = image(PIXMAN_r5g6b5, kWidth, kHeight, sides.to.pixels.data(), 2 * kWidth);
    const pixman_op_t op = what == PixmanSource::kPixels ? PIXMAN_OP_SRC : PIXMAN_OP_OVER;
    for (auto _ : state) {
        pixman_image_composite32(op, source, mask, target, sides.left(), sides.top(), sides.left(), sides.top(),
                                 sides.source.x + sides.left(), sides.source.y + sides.top(), sides.width(),
                                 sides.height());
        benchmark::ClobberMemory();
    }
    count(state, sides.pixels());
    pixman_image_unref(source);
    pixman_image_unref(target);
    if (mask) pixman_image_unref(mask);
}

void enterAll() {
    using benchmark::RegisterBenchmark;
    RegisterBenchmark("memcpy", copyOfMemory);
    for (const Case& row : kCases) {
        const std::string name = row.name;
        RegisterBenchmark(name.c_str(), ours, row, Form::kWhole, 16);
        RegisterBenchmark((name + "/15").c_str(), ours, row, Form::kWhole, 15);
        RegisterBenchmark((name + "/clip").c_str(), ours, row, Form::kClipped, 16);
        RegisterBenchmark((name + "/64x64").c_str(), ours, row, Form::kSmall, 16);
    }
    for (const Form form : {Form::kWhole, Form::kClipped, Form::kSmall}) {
        const std::string size = kFormNames[static_cast<int>(form)];
        RegisterBenchmark(("sdl/copy" + size).c_str(), sdl, Alpha::kNone, form, 255);
        RegisterBenchmark(("sdl/alpha/noise" + size).c_str(), sdl, Alpha::kNoise, form, 255);
        RegisterBenchmark(("sdl/alpha/sprite" + size).c_str(), sdl, Alpha::kSprite, form, 255);
        RegisterBenchmark(("sdl/blend" + size).c_str(), sdl, Alpha::kNone, form, 128);
        RegisterBenchmark(("sdl/alpha_blend/noise" + size).c_str(), sdl, Alpha::kNoise, form, 128);
        RegisterBenchmark(("sdl/alpha_blend/sprite" + size).c_str(), sdl, Alpha::kSprite, form, 128);
        RegisterBenchmark(("pixman/copy" + size).c_str(), pixman, PixmanSource::kPixels, Alpha::kNone, form);
        RegisterBenchmark(("pixman/alpha/noise" + size).c_str(), pixman, PixmanSource::kArgb, Alpha::kNoise, form);
        RegisterBenchmark(("pixman/alpha/sprite" + size).c_str(), pixman, PixmanSource::kArgb, Alpha::kSprite, form);
        RegisterBenchmark(("pixman/mask/noise" + size).c_str(), pixman, PixmanSource::kPixelsAndMask, Alpha::kNoise,
                          form);
        RegisterBenchmark(("pixman/mask/sprite" + size).c_str(), pixman, PixmanSource::kPixelsAndMask, Alpha::kSprite,
                          form);
        RegisterBenchmark(("pixman/blend" + size).c_str(), pixman, PixmanSource::kPixelsAndOpacity, Alpha::kNone, form);
    }
}

}  // namespace

int main(int argc, char** argv) {
    enterAll();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
