// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "platform/sdl/window.h"

#include <SDL.h>
#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "platform/sdl/display_loss.h"
#include "platform/sdl/keys.h"

namespace sdl {

namespace {

using platform::EventKind;

constexpr double kOrdinaryRate = 60.0;

// The largest whole number that leaves room on the desktop for the window's frame, 1 when there is none.
int roomyScale(int width, int height) {
    SDL_Rect desktop{};
    if (SDL_GetDisplayUsableBounds(0, &desktop) != 0) return 1;
    constexpr int kPercent = 95;
    const int fits = std::min(desktop.w * kPercent / 100 / width, desktop.h * kPercent / 100 / height);
    return std::max(fits, 1);
}

constexpr Uint32 wide5(unsigned c) { return c << 3 | c >> 2; }
constexpr Uint32 wide6(unsigned c) { return c << 2 | c >> 4; }

Uint32 argbOf15(std::uint16_t pixel) {
    return 0xFF000000U | wide5(pixel >> 10 & 31U) << 16 | wide5(pixel >> 5 & 31U) << 8 | wide5(pixel & 31U);
}

Uint32 argbOf16(std::uint16_t pixel) {
    return 0xFF000000U | wide5(pixel >> 11 & 31U) << 16 | wide6(pixel >> 5 & 63U) << 8 | wide5(pixel & 31U);
}

// SDL also has drivers that draw where nobody sees it, which stand in when there is no display; who wants one names it.
bool hasDesktop() {
    const char* driver = SDL_GetCurrentVideoDriver();
    const std::string_view name = driver ? driver : "";
    constexpr std::string_view kUnseen[] = {"", "dummy", "offscreen", "evdev"};
    const bool isUnseen = std::find(std::begin(kUnseen), std::end(kUnseen), name) != std::end(kUnseen);
    return !isUnseen || std::getenv("SDL_VIDEODRIVER") != nullptr;
}

void grow(platform::DisplayRect& whole, const platform::DisplayRect& part) {
    if (whole.right <= whole.left || whole.bottom <= whole.top) {
        whole = part;
        return;
    }
    whole = {std::min(whole.left, part.left), std::min(whole.top, part.top), std::max(whole.right, part.right),
             std::max(whole.bottom, part.bottom)};
}

}  // namespace

void Window::Forget::operator()(SDL_Cursor* cursor) const { SDL_FreeCursor(cursor); }

Window::Window(const WindowOptions& options) : options_(options), screen_(options.bitsPerPixel) {}

Window::~Window() {
    if (lost_) {  // the X library doesn't survive that its dead connection is closed
        for (auto& cursor : cursors_)
            static_cast<void>(cursor.release());
        return;
    }
    for (auto& cursor : cursors_)
        cursor.reset();
    if (texture_) SDL_DestroyTexture(texture_);
    if (renderer_) SDL_DestroyRenderer(renderer_);
    if (window_) SDL_DestroyWindow(window_);
    SDL_Quit();
}

bool Window::fail() {
    error_ = SDL_GetError();
    return false;
}

bool Window::open(int width, int height) {
    if (!screen_.open(width, height)) {
        error_ = "no screen has that size";
        return false;
    }
    if (!window_) {
        SDL_SetHint(SDL_HINT_VIDEO_MINIMIZE_ON_FOCUS_LOSS, "0");
        // Who closes the window is asked first whether the application agrees.
        SDL_SetHint(SDL_HINT_QUIT_ON_LAST_WINDOW_CLOSE, "0");
        if (SDL_Init(SDL_INIT_VIDEO | SDL_INIT_EVENTS) != 0) return fail();
        if (!hasDesktop()) {
            error_ = "there is no desktop to open a window on";
            return false;
        }
        const int scale = options_.scale > 0 ? options_.scale : roomyScale(width, height);
        const Uint32 flags = SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI |
                             (options_.fullScreen ? static_cast<Uint32>(SDL_WINDOW_FULLSCREEN_DESKTOP) : 0U);
        window_ = SDL_CreateWindow(options_.title.c_str(), SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED,
                                   width * scale, height * scale, flags);
        if (!window_) return fail();
        tellLossOfDisplay(window_, lost_);
        renderer_ = SDL_CreateRenderer(window_, -1, SDL_RENDERER_PRESENTVSYNC);
        if (!renderer_) renderer_ = SDL_CreateRenderer(window_, -1, SDL_RENDERER_SOFTWARE);
        if (!renderer_) return fail();
        SDL_DisplayMode mode{};
        const bool known = SDL_GetWindowDisplayMode(window_, &mode) == 0 && mode.refresh_rate > 0;
        refreshRate_ = known ? std::min<double>(mode.refresh_rate, kOrdinaryRate) : kOrdinaryRate;
        constexpr SDL_SystemCursor kCursors[] = {SDL_SYSTEM_CURSOR_ARROW, SDL_SYSTEM_CURSOR_HAND,
                                                 SDL_SYSTEM_CURSOR_WAIT};
        for (std::size_t i = 0; i < cursors_.size(); ++i)
            cursors_[i].reset(SDL_CreateSystemCursor(kCursors[i]));
        capsLock_ = (SDL_GetModState() & KMOD_CAPS) != 0;
    }
    return makeTexture();
}

bool Window::makeTexture() {
    if (texture_) SDL_DestroyTexture(texture_);
    texture_ = SDL_CreateTexture(renderer_, SDL_PIXELFORMAT_ARGB8888, SDL_TEXTUREACCESS_STREAMING, width(), height());
    changed_ = {0, 0, width(), height()};
    isStale_ = true;
    return texture_ != nullptr || fail();
}

void Window::present(std::span<const std::uint16_t> pixels, const platform::DisplayRect& rect) {
    screen_.present(pixels, rect);
    const platform::DisplayRect inside = {std::max(rect.left, 0), std::max(rect.top, 0), std::min(rect.right, width()),
                                          std::min(rect.bottom, height())};
    if (inside.left < inside.right && inside.top < inside.bottom) grow(changed_, inside);
}

Layout Window::layout() const {
    int outputWidth = 0, outputHeight = 0;
    if (SDL_GetRendererOutputSize(renderer_, &outputWidth, &outputHeight) != 0) return {0, 0, width(), height(), true};
    return layOut(width(), height(), std::max(outputWidth, 1), std::max(outputHeight, 1));
}

// The display gets its own form of pixels from here: drivers differ in how they widen 5 and 6 bits.
void Window::upload() {
    const SDL_Rect part{changed_.left, changed_.top, changed_.right - changed_.left, changed_.bottom - changed_.top};
    void* target = nullptr;
    int pitch = 0;
    if (SDL_LockTexture(texture_, &part, &target, &pitch) != 0) return;
    for (int y = 0; y < part.h; ++y) {
        const std::size_t first =
            static_cast<std::size_t>(part.y + y) * static_cast<std::size_t>(width()) + static_cast<std::size_t>(part.x);
        const auto row = screen().subspan(first, static_cast<std::size_t>(part.w));
        auto* out = reinterpret_cast<Uint32*>(static_cast<Uint8*>(target) + static_cast<std::ptrdiff_t>(y) * pitch);
        if (bitsPerPixel() == 15) {
            std::transform(row.begin(), row.end(), out, argbOf15);
        } else {
            std::transform(row.begin(), row.end(), out, argbOf16);
        }
    }
    SDL_UnlockTexture(texture_);
}

void Window::show() {
    const bool hasChanged = changed_.left < changed_.right && changed_.top < changed_.bottom;
    if (lost_ || !window_ || !texture_ || (!hasChanged && !isStale_)) return;
    if (hasChanged) upload();
    const Layout place = layout();
    const SDL_Rect target{place.left, place.top, place.width, place.height};
    SDL_SetTextureScaleMode(texture_, place.isWhole ? SDL_ScaleModeNearest : SDL_ScaleModeLinear);
    SDL_SetRenderDrawColor(renderer_, 0, 0, 0, SDL_ALPHA_OPAQUE);
    SDL_RenderClear(renderer_);
    SDL_RenderCopy(renderer_, texture_, nullptr, &target);
    SDL_RenderPresent(renderer_);
    changed_ = {};
    isStale_ = false;
}

bool Window::keyState(std::array<std::uint8_t, 256>& keys) {
    keys = keys_;
    return true;
}

void Window::setCursor(platform::CursorKind kind) {
    if (!lost_) SDL_SetCursor(cursors_[static_cast<std::size_t>(kind)].get());
}

void Window::showCursor(bool show) {
    showCount_ += show ? 1 : -1;
    if (!lost_) SDL_ShowCursor(showCount_ >= 0 ? SDL_ENABLE : SDL_DISABLE);
}

void Window::setCursorPosition(int x, int y) {
    if (lost_ || !window_ || !active_) return;
    const Layout place = layout();
    int outputWidth = 0, outputHeight = 0, windowWidth = 0, windowHeight = 0;
    SDL_GetRendererOutputSize(renderer_, &outputWidth, &outputHeight);
    SDL_GetWindowSize(window_, &windowWidth, &windowHeight);
    if (outputWidth < 1 || outputHeight < 1) return;
    // The middle of the pixel.
    const double outputX = place.left + (x + 0.5) * place.width / width();
    const double outputY = place.top + (y + 0.5) * place.height / height();
    SDL_WarpMouseInWindow(window_, static_cast<int>(outputX * windowWidth / outputWidth),
                          static_cast<int>(outputY * windowHeight / outputHeight));
}

platform::Event Window::at(EventKind kind, int x, int y) const {
    int outputWidth = 0, outputHeight = 0, windowWidth = 0, windowHeight = 0;
    SDL_GetRendererOutputSize(renderer_, &outputWidth, &outputHeight);
    SDL_GetWindowSize(window_, &windowWidth, &windowHeight);
    const double ratioX = static_cast<double>(outputWidth) / std::max(windowWidth, 1);
    const double ratioY = static_cast<double>(outputHeight) / std::max(windowHeight, 1);
    const ScreenPoint point = toScreen(layout(), width(), height(), (x + 0.5) * ratioX, (y + 0.5) * ratioY);
    return {kind, point.x, point.y};
}

void Window::waitForEvent(int milliseconds) {
    if (!lost_) SDL_WaitEventTimeout(nullptr, milliseconds);
}

std::vector<platform::Event> Window::takeEvents() {
    std::vector<platform::Event> events = std::exchange(held_, {});
    if (lost_) return events;
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0)
        take(event, events);
    holdShortTaps(events);
    const bool caps = (SDL_GetModState() & KMOD_CAPS) != 0;
    if (window_ && caps != capsLock_) events.push_back({EventKind::capsLock, caps ? 1 : 0, 0});
    return events;
}

// Keys are polled once a frame: of one that goes down and up between two polls, all that comes behind the first is held
// for the next frame.
void Window::holdShortTaps(std::vector<platform::Event>& events) {
    std::vector<platform::Event> now;
    for (const platform::Event& event : events) {
        const bool isKey = event.kind == EventKind::keyDown || event.kind == EventKind::keyUp;
        const auto isSameKey = [&](const platform::Event& other) {
            return (other.kind == EventKind::keyDown || other.kind == EventKind::keyUp) && other.first == event.first;
        };
        const bool isLater = isKey && std::any_of(now.begin(), now.end(), isSameKey);
        (isLater ? held_ : now).push_back(event);
    }
    events = std::move(now);
}

void Window::take(const SDL_Event& event, std::vector<platform::Event>& events) {
    switch (event.type) {
        case SDL_MOUSEMOTION:
            events.push_back(at(EventKind::move, event.motion.x, event.motion.y));
            break;
        case SDL_MOUSEBUTTONDOWN:
        case SDL_MOUSEBUTTONUP:
            takeButton(event, events);
            break;
        case SDL_KEYDOWN:
        case SDL_KEYUP:
            takeKey(event, events);
            break;
        case SDL_RENDER_TARGETS_RESET:
        case SDL_RENDER_DEVICE_RESET:
            makeTexture();
            break;
        case SDL_QUIT:
            events.push_back({EventKind::close, 0, 0});
            break;
        case SDL_WINDOWEVENT:
            isStale_ = true;
            if (event.window.event == SDL_WINDOWEVENT_CLOSE) events.push_back({EventKind::close, 0, 0});
            if (event.window.event == SDL_WINDOWEVENT_FOCUS_GAINED && !active_) {
                active_ = true;
                events.push_back({EventKind::active, 1, 0});
            }
            if (event.window.event == SDL_WINDOWEVENT_FOCUS_LOST && active_) {
                active_ = false;
                letGoOfKeys(events);
                events.push_back({EventKind::active, 0, 0});
            }
            break;
        default:
            break;
    }
}

void Window::takeButton(const SDL_Event& event, std::vector<platform::Event>& events) {
    struct Button {
        Uint8 number;
        EventKind down, twice, up;
    };
    static constexpr Button kButtons[] = {
        {SDL_BUTTON_LEFT,   EventKind::leftDown,   EventKind::leftDouble, EventKind::leftUp  },
        {SDL_BUTTON_MIDDLE, EventKind::middleDown, EventKind::middleDown, EventKind::middleUp},
        {SDL_BUTTON_RIGHT,  EventKind::rightDown,  EventKind::rightDown,  EventKind::rightUp },
    };
    for (const Button& button : kButtons) {
        if (button.number != event.button.button) continue;
        const bool isSecond = event.button.clicks > 0 && event.button.clicks % 2 == 0;
        const EventKind down = isSecond ? button.twice : button.down;
        events.push_back(at(event.type == SDL_MOUSEBUTTONDOWN ? down : button.up, event.button.x, event.button.y));
    }
}

void Window::takeKey(const SDL_Event& event, std::vector<platform::Event>& events) {
    const bool down = event.type == SDL_KEYDOWN;
    if (down && event.key.repeat != 0) return;
    const SDL_Keysym& key = event.key.keysym;
    if (down && key.scancode == SDL_SCANCODE_RETURN && (key.mod & KMOD_ALT) != 0) {
        const bool isFull = (SDL_GetWindowFlags(window_) & SDL_WINDOW_FULLSCREEN_DESKTOP) != 0;
        SDL_SetWindowFullscreen(window_, isFull ? 0U : static_cast<Uint32>(SDL_WINDOW_FULLSCREEN_DESKTOP));
        return;
    }
    if (down && key.scancode == SDL_SCANCODE_F12) pictureWished_ = true;
    const int number = keyNumber(key.scancode);
    if (number == 0) return;
    events.push_back({down ? EventKind::keyDown : EventKind::keyUp, number, 0});
}

void Window::letGoOfKeys(std::vector<platform::Event>& events) {
    for (int key = 0; key < 256; ++key) {
        if (keys_[static_cast<std::size_t>(key)] != 0) events.push_back({EventKind::keyUp, key, 0});
    }
}

}  // namespace sdl
