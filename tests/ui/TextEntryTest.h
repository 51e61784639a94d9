#pragma once

#include "UITest.h"

#include "text/KXUIGlobalFont.h"

#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXUITextEntry.h>

/// Two text entries, one above the other, and what a user does with them.
struct TextEntryTest : UITest {
    TextEntryTest() {
        for (KXUITextEntry* e : {&entry, &other}) {
            e->setRect({10, e == &entry ? 10.0f : 50.0f}, {100, -1});
            poll();
        }
    }

    int poll() {
        const int first = entry.poll();
        other.poll();
        return first;
    }
    /// Presses the entry at a distance from where its text begins.
    void pressAt(int x, int y = 18) {
        moveMouse(13 + x, y);
        poll();
        press();
        poll();
    }
    void clickAt(int x, int y = 18) {
        pressAt(x, y);
        release();
        poll();
    }
    void clickLater(int x, int y = 18) {
        step(100);
        clickAt(x, y);
    }
    /// Presses and releases a key, with up to two others held. @return what poll() told of the press.
    int key(int keycode, int modifier = 0, int second = 0) {
        for (int held : {modifier, second})
            if (held)
                keyDown(held);
        keyDown(keycode);
        const int told = poll();
        for (int held : {keycode, modifier, second})
            if (held)
                keyUp(held);
        poll();
        return told;
    }
    int typed(const char* text) {
        type(text);
        return poll();
    }
    int widthOf(const char* text) const { return static_cast<int>(_KXUIGlobalFont->advance(text)); }

    /// "start+length" of the selection, or the cursor's number.
    std::string selection(const KXUITextEntry& e) const {
        const std::string start = std::to_string(e.selectionStart());
        return e.selectionLength() ? start + "+" + std::to_string(e.selectionLength()) : start;
    }
    std::string selection() const { return selection(entry); }

    KXUITextEntry entry, other;
};
