// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/display.h"
#include "platform/event.h"
#include "platform/headless/display.h"
#include "platform/input.h"
#include "platform/sdl/layout.h"

struct SDL_Cursor;
struct SDL_Renderer;
struct SDL_Texture;
struct SDL_Window;
union SDL_Event;

namespace sdl {

struct WindowOptions {
    std::string title;
    int bitsPerPixel = 16;
    bool fullScreen = false;
    int scale = 0;  // how large the window is at first; 0: as the desktop allows
};

// The screen, the keys and the pointer in a window of the desktop. Only what has changed goes to the display.
class Window : public platform::Display, public platform::Input {
public:
    explicit Window(const WindowOptions& options);
    ~Window() override;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    bool open(int width, int height) override;
    const std::string& error() const { return error_; }  // why `open` failed
    int width() const override { return screen_.width(); }
    int height() const override { return screen_.height(); }
    int bitsPerPixel() const override { return screen_.bitsPerPixel(); }
    void present(std::span<const std::uint16_t> pixels, const platform::DisplayRect& rect) override;
    std::span<const std::uint16_t> screen() const override { return screen_.screen(); }

    bool keyState(std::array<std::uint8_t, 256>& keys) override;
    bool capsLock() const override { return capsLock_; }
    void setCursor(platform::CursorKind kind) override;
    void showCursor(bool show) override;
    void setCursorPosition(int x, int y) override;

    // What has happened since the last call, in order. Sets the key state by the way.
    std::vector<platform::Event> takeEvents();
    void waitForEvent(int milliseconds);  // at most that long
    // For a replayed event: as if the key had been pressed or let go.
    void setKey(int key, bool down) { keys_[static_cast<std::size_t>(key & 0xFF)] = down ? 0x80 : 0; }
    void setCapsLock(bool on) { capsLock_ = on; }
    // Brings what has changed to the display.
    void show();
    bool isActive() const { return active_; }
    // The display has gone away: nothing is shown and nothing comes in any more.
    bool isLost() const { return lost_; }
    bool takePictureWish() { return std::exchange(pictureWished_, false); }  // F12 was pressed
    double refreshRate() const { return refreshRate_; }                      // in frames a second
    SDL_Window* handle() const { return window_; }

private:
    struct Forget {
        void operator()(SDL_Cursor* cursor) const;
    };

    bool fail();
    bool makeTexture();
    void upload();
    void take(const SDL_Event& event, std::vector<platform::Event>& events);
    void takeKey(const SDL_Event& event, std::vector<platform::Event>& events);
    void takeButton(const SDL_Event& event, std::vector<platform::Event>& events);
    void holdShortTaps(std::vector<platform::Event>& events);
    void letGoOfKeys(std::vector<platform::Event>& events);
    platform::Event at(platform::EventKind kind, int x, int y) const;
    Layout layout() const;

    WindowOptions options_;
    headless::MemoryDisplay screen_;
    std::string error_;
    SDL_Window* window_ = nullptr;
    SDL_Renderer* renderer_ = nullptr;
    SDL_Texture* texture_ = nullptr;
    std::array<std::unique_ptr<SDL_Cursor, Forget>, 3> cursors_;
    platform::DisplayRect changed_;  // not on the display yet
    bool isStale_ = true;            // the display may have lost what it showed
    std::array<std::uint8_t, 256> keys_{};
    std::vector<platform::Event> held_;  // for the next frame
    bool capsLock_ = false;
    bool active_ = true;
    bool pictureWished_ = false;
    std::atomic<bool> lost_ = false;
    int showCount_ = 0;
    double refreshRate_ = 60.0;
};

}  // namespace sdl
