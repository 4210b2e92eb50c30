// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "foundation/xvector.h"
#include "frame/timer.h"
#include "graphics/geometry.h"
#include "graphics/graphics_link.h"
#include "input/control.h"
#include "input/key_listener.h"
#include "input/mouse_listener.h"

class CButton;
class CEditBox6;
class CSimpleFont6;
class CText6;
class CUnit6;
class CWindow;

// Hears what happens to an edit box.
class CEditBoxNotifier {
public:
    virtual ~CEditBoxNotifier() = default;
    virtual void onFocusOn(CEditBox6*) {}
    virtual void onFocusOff(CEditBox6*) {}
    virtual void onChanged(CEditBox6*) {}  // a character was typed; nothing else counts
    virtual void onEnter(CEditBox6*) {}
    virtual void onEsc(CEditBox6*) {}
};

// A link to an edit box that may go out of service: it reads as null from then on.
class EditBoxLink {
public:
    EditBoxLink& operator=(CEditBox6* box);
    CEditBox6* get() const { return slot_ ? *slot_ : nullptr; }
    CEditBox6* operator->() const { return get(); }
    explicit operator bool() const { return get() != nullptr; }

private:
    std::shared_ptr<CEditBox6*> slot_;
};

// A line of text on the screen that the user edits. While it is enabled and active it takes keys; its cursor, somebody
// else's graphic, stands at the caret and blinks. What is typed is limited by the width of the box alone.
//
// The unit has the list of boxes and gives one of them the focus; `activate` by itself doesn't ask the unit. A box that
// goes out of service leaves its unit, its text and all listeners by itself, so that nobody keeps a dead one.
class CEditBox6 : public CXObject,
                  public CKeyListener,
                  public CControlNotifier,
                  public CMouseListener,
                  public CTimerNotificator {
public:
    // The unit, or null, must outlive the box or flush it. The font may be null, and may die.
    CEditBox6(CWindow* window, CUnit6* unit, CSimpleFont6* font, const CXRect& rect);
    CEditBox6(CWindow* window, CUnit6* unit, CSimpleFont6* font, const CXRect& rect, const CXString& text);
    ~CEditBox6() override;
    CEditBox6(const CEditBox6&) = delete;
    CEditBox6& operator=(const CEditBox6&) = delete;

    // Takes the box out of service and destroys it, when no script is running. Null, and one that is out of service
    // already, are passed over.
    static void discard(CEditBox6* box);
    // Tells for the last time that the focus is gone, whether or not it was there.
    void retire();
    bool isRetired() const { return *self_ == nullptr; }

    void setText(const CXString& text);  // of any width; the caret stays and nobody hears of it
    CXString getText() const { return text_; }
    void setCursor(CGraphicsObject* cursor) { cursor_ = cursor; }  // not owned; null: none
    CGraphicsObject* getCursor() const { return cursor_; }
    void activate(bool active);  // each call is told, also one that changes nothing
    bool isActive() const { return active_; }
    void enable(bool enabled);  // an active box loses the focus by either
    bool isEnabled() const { return enabled_; }
    void setVisibility(bool visible);  // of the letters
    void setColor(int colour);         // of the letters
    int getCaret() const;              // characters before it
    CXRect getBoundingRect() const { return rect_; }

    void addNotifier(CEditBoxNotifier* notifier);  // unless it is listed; not owned
    void removeNotifier(CEditBoxNotifier* notifier);
    void notify(int kind);  // 1 to 5: focus on, focus off, changed, enter, escape
    // The list of the text that has made the box. The box leaves it when it goes.
    void setTextList(CXVector* list) { textList_ = list; }

    using CMouseListener::onClick;
    void onChar(unsigned char character) override;
    void onKeyDown(int key) override;
    void onControlAction(CControl*, CXPoint) override;  // asks the unit for the focus
    bool onClick(CXPoint point) override;               // outside: takes the focus from whichever box has it
    void onTimer(int) override;

private:
    friend class EditBoxLink;

    void updateCursor();
    void loseFocus();
    void stopBlinking();
    void eraseAt(int place);
    void moveCaret(int place);

    CWindow* window_;
    CUnit6* unit_;
    CXRect rect_;
    CXString text_;
    bool active_ = false;
    bool enabled_ = true;
    int caret_ = 0;  // may lie behind the end of a text that was set
    GraphicsLink cursor_;
    std::unique_ptr<CButton> button_;
    std::unique_ptr<CText6> display_;  // knows the font, and when it dies
    std::vector<CEditBoxNotifier*> notifiers_;
    CXVector* textList_ = nullptr;
    std::shared_ptr<CEditBox6*> self_;  // of this; of null once it is out of service
};
