#include "TextEntryTest.h"

#include "input/TextInput.h"

#include <Kobaltrix/KXKeyboard.h>

#include <SDL.h>

#include <chrono>
#include <climits>

namespace {
constexpr int keyBackspace = _KXKeyBackspace, keyLeft = _KXKeyLeft;

struct TextEntry : TextEntryTest {};

TEST_F(TextEntry, TypingFromTheFirstClickToReturn) {
    type("lost");
    EXPECT_EQ(poll(), 0);
    EXPECT_EQ(KXUIFocusedTextEntry(), nullptr);
    clickAt(5);
    EXPECT_EQ(KXUIFocusedTextEntry(), &entry);
    EXPECT_EQ(entry.isFocused(), -1);
    EXPECT_STREQ(entry.text(), "");
    EXPECT_EQ(poll(), 0);

    EXPECT_EQ(typed("Grö"), -1);
    EXPECT_EQ(entry.changed(), -1);
    EXPECT_EQ(entry.entered(), 0);
    type("ß");
    type("e 🙂");
    EXPECT_EQ(poll(), -1);
    EXPECT_STREQ(entry.text(), "Größe 🙂");
    EXPECT_EQ(entry.length(), 7);
    EXPECT_EQ(poll(), 0);
    EXPECT_EQ(entry.changed(), 0);

    for (int keycode : {SDLK_RETURN, SDLK_KP_ENTER}) {
        EXPECT_EQ(key(keycode), -1);
        keyDown(keycode);
        poll();
        EXPECT_EQ(entry.entered(), -1);
        EXPECT_EQ(entry.changed(), 0);
        EXPECT_EQ(poll(), 0); // once, though it is held
        EXPECT_EQ(entry.entered(), 0);
        keyUp(keycode);
    }
    EXPECT_EQ(key(SDLK_RETURN, SDLK_LALT), 0);
    EXPECT_EQ(entry.isFocused(), -1);

    EXPECT_EQ(key(SDLK_ESCAPE), 0);
    EXPECT_EQ(KXUIFocusedTextEntry(), nullptr);
    EXPECT_EQ(typed("more"), 0);
    EXPECT_STREQ(entry.text(), "Größe 🙂");
    EXPECT_STREQ(other.text(), "");
}

TEST_F(TextEntry, KeysEditAndMove) {
    clickAt(5);
    const struct {
        int key, modifier, second;
        const char *text, *selection;
        int told;
    } rows[] = {
        {SDLK_LEFT, 0, 0, "one two three", "12", 0},
        {SDLK_LEFT, SDLK_LSHIFT, 0, "one two three", "11+1", 0},
        {SDLK_LEFT, SDLK_RCTRL, SDLK_RSHIFT, "one two three", "8+4", 0},
        {SDLK_BACKSPACE, 0, 0, "one two e", "8", -1},
        {SDLK_HOME, SDLK_LSHIFT, 0, "one two e", "0+8", 0},
        {SDLK_RIGHT, 0, 0, "one two e", "8", 0},
        {SDLK_BACKSPACE, SDLK_LCTRL, 0, "one e", "4", -1},
        {SDLK_HOME, 0, 0, "one e", "0", 0},
        {SDLK_BACKSPACE, 0, 0, "one e", "0", 0},
        {SDLK_RIGHT, 0, 0, "one e", "1", 0},
        {SDLK_RIGHT, SDLK_LCTRL, 0, "one e", "3", 0},
        {SDLK_DELETE, 0, 0, "onee", "3", -1},
        {SDLK_END, SDLK_RSHIFT, 0, "onee", "3+1", 0},
        {SDLK_LEFT, SDLK_LSHIFT, 0, "onee", "3", 0},
        {SDLK_DELETE, SDLK_LCTRL, 0, "one", "3", -1},
        {SDLK_DELETE, 0, 0, "one", "3", 0},
        {SDLK_a, 0, 0, "one", "3", 0},
        {SDLK_a, SDLK_RCTRL, 0, "one", "0+3", 0},
        {SDLK_END, 0, 0, "one", "3", 0},
        {SDLK_a, SDLK_LCTRL, SDLK_RALT, "one", "3", 0}, // makes a letter on some layouts
        {SDLK_a, SDLK_LGUI, 0, "one", "0+3", 0},
        {SDLK_DELETE, 0, 0, "", "0", -1},
    };
    typed("one two three");
    for (const auto& row : rows) {
        EXPECT_EQ(key(row.key, row.modifier, row.second), row.told) << &row - rows;
        EXPECT_STREQ(entry.text(), row.text) << &row - rows;
        EXPECT_EQ(selection(), row.selection) << &row - rows;
    }
    // A letter that is held while Control comes down is no shortcut.
    typed("x");
    keyDown(SDLK_a);
    poll();
    keyDown(SDLK_LCTRL);
    poll();
    EXPECT_EQ(selection(), "1");
}

TEST_F(TextEntry, TheClipboard) {
    clickAt(5);
    typed("héllo wörld");
    entry.select(6, 5);
    EXPECT_EQ(key(SDLK_c, SDLK_LCTRL), 0);
    EXPECT_EQ(_KXClipboardText(), "wörld");
    EXPECT_EQ(key(SDLK_x, SDLK_LCTRL), -1);
    EXPECT_STREQ(entry.text(), "héllo ");
    EXPECT_EQ(key(SDLK_v, SDLK_LCTRL), -1);
    EXPECT_EQ(key(SDLK_v, SDLK_LGUI), -1);
    EXPECT_STREQ(entry.text(), "héllo wörldwörld");
    EXPECT_EQ(key(SDLK_x, SDLK_LCTRL), 0); // nothing is selected
    EXPECT_EQ(_KXClipboardText(), "wörld");

    entry.setMaximumLength(8);
    EXPECT_STREQ(entry.text(), "héllo wö");
    entry.select(0, 6);
    SDL_SetClipboardText("a\r\nb\x1b\xc3(\n\xe2\x82\xac ..............");
    EXPECT_EQ(key(SDLK_v, SDLK_LCTRL), -1);
    EXPECT_STREQ(entry.text(), "a b?( wö");
    EXPECT_EQ(selection(), "6");
    SDL_SetClipboardText("");
    EXPECT_EQ(key(SDLK_v, SDLK_LCTRL), 0);
    EXPECT_EQ(entry.maximumLength(), 8);
    entry.setMaximumLength(INT_MIN);
    EXPECT_EQ(entry.maximumLength(), 0);

    SDL_SetClipboardText("kept");
    entry.setText("secret word");
    entry.setMasked(2);
    EXPECT_EQ(entry.isMasked(), -1);
    key(SDLK_a, SDLK_LCTRL);
    EXPECT_EQ(key(SDLK_c, SDLK_LCTRL), 0);
    EXPECT_EQ(key(SDLK_x, SDLK_LCTRL), 0);
    EXPECT_STREQ(entry.text(), "secret word");
    EXPECT_EQ(_KXClipboardText(), "kept");
    EXPECT_EQ(key(SDLK_LEFT, SDLK_LCTRL), 0);
    EXPECT_EQ(selection(), "0"); // where its words end is a secret too
    EXPECT_EQ(key(SDLK_v, SDLK_LCTRL), -1);
    EXPECT_STREQ(entry.text(), "keptsecret word");
}

TEST_F(TextEntry, HeldKeysRepeatAndTheGameReadsThemToo) {
    entry.focus();
    typed("abcdefgh");
    keyDown(SDLK_LEFT);
    poll();
    EXPECT_EQ(KXKeyWithDelayedRepeat(keyLeft), -1);
    for (int held = 1; held < 30; ++held) {
        step();
        poll();
        EXPECT_EQ(entry.cursor(), 7);
        EXPECT_EQ(KXKeyWithDelayedRepeat(keyLeft), 0);
    }
    for (int cursor : {6, 5, 4}) {
        step();
        poll();
        EXPECT_EQ(entry.cursor(), cursor);
        EXPECT_EQ(KXKeyWithDelayedRepeat(keyLeft), -1);
    }
    // Another entry takes over: the key that is held was not meant for it, and the game's repeat goes on.
    other.setText("xyz");
    other.focus();
    for (int held = 0; held < 60; ++held) {
        poll();
        EXPECT_EQ(other.cursor(), 3);
        EXPECT_EQ(KXKeyWithDelayedRepeat(keyLeft), -1);
        step();
    }
    keyUp(SDLK_LEFT);
    key(SDLK_LEFT);
    EXPECT_EQ(other.cursor(), 2);
    EXPECT_EQ(entry.cursor(), 4);

    keyDown(SDLK_BACKSPACE);
    for (int held = 0; held < 33; ++held) {
        EXPECT_EQ(KXKey(keyBackspace, 1), held == 0 ? -1 : 0);
        other.poll();
        EXPECT_EQ(other.changed(), held == 0 || held == 30 ? -1 : 0) << held;
        step();
    }
    EXPECT_STREQ(other.text(), "z");
}

TEST_F(TextEntry, TheMousePlacesAndSelects) {
    entry.setText("one two WiWi");
    clickAt(widthOf("one t") + 1);
    EXPECT_EQ(selection(), "5");
    clickLater(widthOf("one t") - 1);
    EXPECT_EQ(selection(), "5");
    clickLater(1000); // not over the entry
    EXPECT_EQ(KXUIFocusedTextEntry(), nullptr);
    clickLater(96);
    EXPECT_EQ(selection(), "12");
    clickLater(-2);
    EXPECT_EQ(selection(), "0");

    keyDown(SDLK_LSHIFT);
    clickLater(widthOf("one"));
    EXPECT_EQ(selection(), "0+3");
    keyUp(SDLK_LSHIFT);

    step(100);
    pressAt(widthOf("one "));
    for (int x : {widthOf("one two"), widthOf("one two "), widthOf("o")}) {
        moveMouse(13 + x, 150);
        poll();
    }
    EXPECT_EQ(selection(), "1+3");
    EXPECT_EQ(entry.cursor(), 1);
    release();
    moveMouse(13 + widthOf("one two"), 18);
    poll();
    EXPECT_EQ(selection(), "1+3");

    const int x = widthOf("one tw");
    step(100);
    clickAt(x);
    EXPECT_EQ(selection(), "6");
    clickAt(x + 2);
    EXPECT_EQ(selection(), "4+3");
    clickAt(x);
    EXPECT_EQ(selection(), "0+12");
    clickAt(x);
    EXPECT_EQ(selection(), "6");
    clickAt(x + 10); // too far away
    EXPECT_EQ(selection(), "8");

    step(100);
    clickAt(x);
    pressAt(x); // a double click that drags on takes whole words
    moveMouse(13 + 1, 18);
    poll();
    EXPECT_EQ(selection(), "0+7");
    moveMouse(13 + widthOf("one two W"), 18);
    poll();
    EXPECT_EQ(selection(), "4+8");
    release();
}

TEST_F(TextEntry, DraggingOutOfTheBoxScrolls) {
    entry.setText("abcdefghijklmnopqrstuvwxyz0123456789abcdefghijklmnopqrstuvwxyz");
    entry.focus();
    poll();
    pressAt(-2); // at the padding: a press that rests there is a click
    const int first = entry.cursor();
    EXPECT_GT(first, 40);
    EXPECT_LT(first, 55);
    for (int wait = 0; wait < 10; ++wait) {
        step();
        poll();
    }
    EXPECT_EQ(entry.cursor(), first);
    EXPECT_EQ(entry.selectionLength(), 0);
    moveMouse(1, 150);
    poll();
    const int further = entry.cursor();
    EXPECT_LT(further, first);
    for (int wait = 0; wait < 100; ++wait) {
        step();
        poll();
    }
    EXPECT_EQ(selection(), "0+" + std::to_string(first));
    moveMouse(200, 18);
    for (int wait = 0; wait < 100; ++wait) {
        step();
        poll();
    }
    EXPECT_EQ(entry.cursor(), 62);
    EXPECT_EQ(entry.selectionStart(), first);
}

// The left edge of the text, for the mouse and for the cursor, is where the font prints it.
TEST_F(TextEntry, TheFontsOffsetCounts) {
    KXUISetGlobalFont(testFont(), KXAliasModeTexture, 12, {20, 0});
    KXUITextEntry moved;
    moved.setRect({10, 100}, {100, 20});
    moved.setText("one two");
    moved.poll();
    moveMouse(13 + 20 + widthOf("one"), 110);
    press();
    moved.poll();
    EXPECT_EQ(selection(moved), "3");
    moved.draw();
    EXPECT_EQ(Image::of(*window).at(13 + 20 + widthOf("one"), 102 + 14), (Pixel{255, 255, 255, 255}));
}

TEST_F(TextEntry, InputMethodsCompose) {
    const auto compose = [this](const char* text) {
        SDL_Event event = {};
        event.edit.type = SDL_TEXTEDITING;
        SDL_strlcpy(event.edit.text, text, sizeof event.edit.text);
        send(event);
        return poll();
    };
    entry.focus();
    typed("ab");
    entry.select(1, 0);
    EXPECT_EQ(compose("にほ"), 0);
    EXPECT_STREQ(entry.text(), "ab");
    EXPECT_EQ(key(SDLK_BACKSPACE), 0); // the input method's
    EXPECT_EQ(key(SDLK_RETURN), 0);
    EXPECT_EQ(key(SDLK_ESCAPE), 0);
    keyDown(SDLK_RETURN); // ends the composition
    EXPECT_EQ(typed("日本"), -1);
    EXPECT_EQ(entry.entered(), 0);
    EXPECT_STREQ(entry.text(), "a日本b");
    EXPECT_EQ(poll(), 0);
    keyUp(SDLK_RETURN);
    EXPECT_EQ(key(SDLK_RETURN), -1);

    compose("x");
    EXPECT_EQ(compose(""), 0);
    poll();
    EXPECT_EQ(key(SDLK_BACKSPACE), -1);
    EXPECT_STREQ(entry.text(), "a日b");
    compose("y");
    clickAt(90);
    other.focus();
    entry.draw();
    EXPECT_STREQ(entry.text(), "a日b");
}

// Only what is in view is measured. Were it the whole text, the long one would take a thousand times as long.
TEST_F(TextEntry, ALongTextTypesAsFastAsAShortOne) {
    const auto timeOfTyping = [this](std::size_t length) {
        entry.setText(std::string(length, 'm').c_str());
        entry.focus();
        auto best = std::chrono::steady_clock::duration::max();
        for (int attempt = 0; attempt < 5; ++attempt) {
            const auto start = std::chrono::steady_clock::now();
            for (int character = 0; character < 20; ++character) {
                typed("x");
                key(character % 2 ? SDLK_HOME : SDLK_END);
                entry.draw();
            }
            best = std::min(best, std::chrono::steady_clock::now() - start);
        }
        return best;
    };
    const auto brief = timeOfTyping(100);
    EXPECT_LT(timeOfTyping(100000), 20 * brief);
}
} // namespace
