// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <algorithm>
#include <string_view>

#include "frame/application.h"
#include "frame/window.h"
#include "frame/window_listener.h"
#include "input/hot_spot.h"
#include "input/key_listener.h"
#include "input/mouse_listener.h"

// The window's events: hot spots, listeners and keys.

namespace {

constexpr int kCaptionPriority = 1'000'000;

const MouseListenerEntry* entryAt(const CSortedVector& entries, int i) {
    return static_cast<const MouseListenerEntry*>(entries.at(i));
}

bool isListed(const CSortedVector& entries, unsigned serial) {
    for (int i = 0; i < entries.size(); ++i) {
        if (entryAt(entries, i)->serial == serial) return true;
    }
    return false;
}

struct VirtualKey {
    int vk;
    int code;
};

constexpr VirtualKey kVirtualKeys[] = {
    {0x0D, -50},
    {0x20, -39},
    {0x21, -52},
    {0x22, -51},
    {0x23, -53},
    {0x24, -54},
    {0x25, -43},
    {0x26, -41},
    {0x27, -42},
    {0x28, -40},
    {0x2D, -56},
    {0x2E, -55},
};

}  // namespace

// A listener may take itself or others out, or bring new ones, from inside a call: those that were listed when the
// event came are asked, unless they have left meanwhile.
template <class... Calls>
int CWindow::offerMouseEvent(_event event, CXPoint point, int flags, Calls... calls) {
    if (!mouseEnabled_) return 0;
    const int result = CHotSpot::OnMouseEvent(event, point, flags);
    struct Listed {
        CMouseListener* listener;
        unsigned serial;
    };
    std::vector<Listed> listed;
    for (int i = mouseListeners_->size() - 1; i >= 0; --i) {
        const MouseListenerEntry* entry = entryAt(*mouseListeners_, i);
        listed.push_back({entry->listener, entry->serial});
    }
    for (const Listed& entry : listed) {
        const bool taken = ((isListed(*mouseListeners_, entry.serial) && calls(*entry.listener)) || ...);
        if (taken) break;
    }
    return result;
}

int CWindow::OnMouseMove(CXPoint point, int flags) {
    return offerMouseEvent(kMouseMove, point, flags, [=](CMouseListener& l) { return l.onMouseMove(point); });
}

int CWindow::OnLButtonDown(CXPoint point, int flags) {
    return offerMouseEvent(
        kLeftDown, point, flags, [=](CMouseListener& l) { return l.onClick(point); },
        [=](CMouseListener& l) { return l.onClick(0, point); });
}

int CWindow::OnLButtonUp(CXPoint point, int flags) {
    return offerMouseEvent(
        kLeftUp, point, flags, [=](CMouseListener& l) { return l.onRelease(point); },
        [=](CMouseListener& l) { return l.onRelease(0, point); });
}

int CWindow::OnLButtonDblClk(CXPoint point, int flags) {
    return offerMouseEvent(kLeftDoubleClick, point, flags, [=](CMouseListener& l) { return l.onDblClick(point); });
}

int CWindow::OnMButtonDown(CXPoint point, int flags) {
    return offerMouseEvent(kMiddleDown, point, flags, [=](CMouseListener& l) { return l.onClick(1, point); });
}

int CWindow::OnMButtonUp(CXPoint point, int flags) {
    return offerMouseEvent(kMiddleUp, point, flags, [=](CMouseListener& l) { return l.onRelease(1, point); });
}

int CWindow::OnRButtonDown(CXPoint point, int flags) {
    return offerMouseEvent(kRightDown, point, flags, [=](CMouseListener& l) { return l.onClick(2, point); });
}

int CWindow::OnRButtonUp(CXPoint point, int flags) {
    return offerMouseEvent(kRightUp, point, flags, [=](CMouseListener& l) { return l.onRelease(2, point); });
}

template <class Call>
void CWindow::offerToKeyListeners(Call call) {
    const std::span<void* const> elements = keyListeners_.elements();
    const std::vector<void*> listed(elements.begin(), elements.end());
    for (void* listener : listed) {
        if (keyListeners_.contains(listener)) call(*static_cast<CKeyListener*>(listener));
    }
}

int CWindow::OnChar(int character, int) {
    offerToKeyListeners([=](CKeyListener& l) { l.onChar(static_cast<unsigned char>(character)); });
    return 0;
}

int CWindow::OnKeyDown(int key, int flags) {
    if (!application_) return 0;
    int answer = application_->OnKeyDown(key, flags);
    if (answer == 0) answer = CHotSpot::OnKeyDown(key, flags);
    offerToKeyListeners([=](CKeyListener& l) { l.onKeyDown(key); });
    return answer;
}

int CWindow::OnKeyUp(int key, int flags) {
    offerToKeyListeners([=](CKeyListener& l) { l.onKeyUp(key); });
    return CHotSpot::OnKeyUp(key, flags);
}

void CWindow::registerKeyListener(CKeyListener* listener) { keyListeners_.add(listener); }

void CWindow::removeKeyListener(CKeyListener* listener) { keyListeners_.remove(listener); }

void CWindow::registerMouseListener(CMouseListener* listener, int priority) {
    auto* entry = new MouseListenerEntry;
    entry->listener = listener;
    entry->priority = priority;
    entry->serial = ++lastListener_;
    mouseListeners_->add(entry);
}

void CWindow::removeMouseListener(CMouseListener* listener) {
    for (int i = 0; i < mouseListeners_->size(); ++i) {
        const MouseListenerEntry* entry = entryAt(*mouseListeners_, i);
        if (entry->listener != listener) continue;
        mouseListeners_->removeAt(i);
        delete entry;
        return;
    }
}

void CWindow::setMouseCaption(CMouseListener* listener) {
    const int count = mouseListeners_->size();
    CMouseListener* top = count == 0 ? nullptr : entryAt(*mouseListeners_, count - 1)->listener;
    if (top == listener) return;
    if (top) top->onSetFocus();
    listener->onSetFocus();
    removeMouseListener(listener);
    registerMouseListener(listener, kCaptionPriority);
}

int CWindow::__get_virtualkey_code(int vk, int lParam) {
    if (vk == 0x10) return lParam == 0x1D0001 ? -45 : -44;
    if (vk == 0x11) return lParam == 0x2A0001 ? -48 : -47;
    for (const VirtualKey& key : kVirtualKeys) {
        if (key.vk == vk) return key.code;
    }
    return vk;
}

char CWindow::tranlateToChar(int scanCode) {
    struct Row {
        int first;
        std::string_view characters;
    };
    constexpr Row kRows[] = {
        {0x02, "1234567890"},
        {0x10, "QWERTYUIOP"},
        {0x1E, "ASDFGHJKL" },
        {0x2C, "ZXCVBNM"   },
        {0x39, " "         },
    };
    for (const Row& row : kRows) {
        const int place = scanCode - row.first;
        if (scanCode >= row.first && place < static_cast<int>(row.characters.size())) {
            return row.characters[static_cast<std::size_t>(place)];
        }
    }
    return 0;
}
