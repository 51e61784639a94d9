#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXKeyboard.h>
#include <Kobaltrix/KXTexture.h>
#include <Kobaltrix/KXUITextEntry.h>

#include "UITest.h"

#include "text/KXUIGlobalFont.h"
#include "ui/ClipScope.h"
#include "ui/TextInput.h"

#include <SDL.h>
#include <SDL_opengl.h>

#include <chrono>
#include <climits>
#include <cmath>
#include <thread>

namespace {
enum : int { keyReturn = 53, keyTab = 54, keyBackspace = 56, keyLeft = 101 };

struct TextEntry : UITest {
    TextEntry() {
        for (KXUITextEntry* e : {&entry, &other}) {
            e->setRect({10, e == &entry ? 10.0f : 50.0f}, {100, -1});
            poll();
        }
    }
    ~TextEntry() override { SDL_SetModState(KMOD_NONE); }

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

TEST_F(TextEntry, TabGoesRound) {
    KXUITextEntry third;
    const auto round = [&] {
        poll();
        third.poll();
    };
    const auto tab = [&](int modifier) {
        if (modifier)
            keyDown(modifier);
        keyDown(SDLK_TAB);
        round();
        keyUp(SDLK_TAB);
        keyUp(SDLK_LSHIFT);
        keyUp(SDLK_LALT);
        round();
        return KXUIFocusedTextEntry();
    };
    other.setText("all");
    entry.focus();
    EXPECT_EQ(tab(0), &other);
    EXPECT_EQ(selection(other), "0+3");
    EXPECT_EQ(tab(SDLK_LALT), &other); // the desktop's
    EXPECT_EQ(tab(0), &third);
    EXPECT_EQ(tab(0), &entry);
    EXPECT_EQ(tab(SDLK_LSHIFT), &third);
    EXPECT_EQ(tab(SDLK_LSHIFT), &other);
    EXPECT_EQ(KXKey(keyTab, 1), 0);

    // The only one that is polled keeps the focus, and takes what is typed while it offers it.
    for (int modifier : {0, static_cast<int>(SDLK_LSHIFT)}) {
        if (modifier)
            keyDown(modifier);
        keyDown(SDLK_TAB);
        other.poll();
        EXPECT_EQ(KXUIFocusedTextEntry(), &other);
        keyUp(SDLK_TAB);
        other.poll();
        EXPECT_EQ(KXUIFocusedTextEntry(), &other);
    }
    keyUp(SDLK_LSHIFT);
    keyDown(SDLK_TAB);
    other.poll();
    other.unfocus(); // takes the offer back
    round();
    EXPECT_EQ(KXUIFocusedTextEntry(), nullptr);
}

TEST_F(TextEntry, ThePressDecidesWhoHasTheFocus) {
    clickAt(5);
    EXPECT_EQ(KXUIFocusedTextEntry(), &entry);
    clickAt(5, 58);
    EXPECT_EQ(KXUIFocusedTextEntry(), &other);
    clickAt(5);
    EXPECT_EQ(KXUIFocusedTextEntry(), &entry);
    keyDown(SDLK_LCTRL);
    clickAt(5, 58); // a right click
    EXPECT_EQ(KXUIFocusedTextEntry(), &entry);
    keyUp(SDLK_LCTRL);
    clickAt(5, 120);
    EXPECT_EQ(KXUIFocusedTextEntry(), nullptr);

    // A press that goes on while an entry gets the focus, or appears, is none elsewhere.
    pressAt(5, 120);
    entry.focus();
    KXUITextEntry late;
    late.setRect({0, 100}, {100, 100});
    poll();
    late.poll();
    EXPECT_EQ(KXUIFocusedTextEntry(), &entry);
    release();
    poll();
    EXPECT_EQ(KXUIFocusedTextEntry(), &entry);
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

TEST_F(TextEntry, NeverNamesADestroyedEntry) {
    auto first = std::make_unique<KXUITextEntry>(), second = std::make_unique<KXUITextEntry>();
    first->focus();
    first->poll();
    keyDown(SDLK_TAB);
    first->poll(); // offers the focus
    first.reset();
    EXPECT_EQ(KXUIFocusedTextEntry(), nullptr);
    second->poll();
    EXPECT_EQ(KXUIFocusedTextEntry(), nullptr);
    keyUp(SDLK_TAB);

    second->focus();
    second->poll();
    entry.focus();
    second.reset(); // the one that Shift and Tab would go to
    keyDown(SDLK_LSHIFT);
    keyDown(SDLK_TAB);
    entry.poll();
    EXPECT_EQ(KXUIFocusedTextEntry(), &entry);

    // One that destroys the focused entry while it is polled itself.
    struct Destroyer : KXUITextEntry {
        std::unique_ptr<KXUITextEntry> victim = std::make_unique<KXUITextEntry>();
        int mouseOver() override {
            victim.reset();
            return KXUITextEntry::mouseOver();
        }
    } destroyer;
    destroyer.victim->focus();
    press();
    destroyer.poll();
    EXPECT_EQ(KXUIFocusedTextEntry(), nullptr);
}

TEST_F(TextEntry, SurvivesTheLibrary) {
    entry.focus();
    typed("a");
    window.reset();
    KXDeInit();
    poll();
    entry.draw();
    entry.unfocus();
    entry.focus();
    poll();
    EXPECT_EQ(KXUIFocusedTextEntry(), &entry);

    ASSERT_EQ(KXInit(), -1);
    window = std::make_unique<KXWindow>("Again", KXSize{320, 200});
    poll();
    EXPECT_EQ(typed("b"), -1);
    entry.draw(); // without its font
    EXPECT_EQ(entry.setFont(testFont(), KXAliasModeTexture), -1);
    entry.draw();
    KXDeInit(); // without unfocus()
    ASSERT_EQ(KXInit(), -1);
    poll();
    EXPECT_EQ(typed("c"), -1);
    EXPECT_STREQ(entry.text(), "abc");
}

TEST_F(TextEntry, LeavesTheTextEventsAndThePlatformsTextInputAsTheyWere) {
    for (bool active : {false, true}) {
        active ? SDL_StartTextInput() : SDL_StopTextInput();
        entry.focus();
        EXPECT_TRUE(SDL_IsTextInputActive());
        other.focus();
        EXPECT_TRUE(SDL_IsTextInputActive());
        other.unfocus();
        EXPECT_EQ(SDL_IsTextInputActive() == SDL_TRUE, active);
    }
    entry.focus();
    SDL_Event event = {};
    event.type = SDL_TEXTINPUT;
    SDL_strlcpy(event.text.text, "game", sizeof event.text.text);
    EXPECT_EQ(SDL_PushEvent(&event), 1);
    SDL_Event seen = {};
    EXPECT_EQ(SDL_PeepEvents(&seen, 1, SDL_GETEVENT, SDL_TEXTINPUT, SDL_TEXTINPUT), 1);
    EXPECT_STREQ(seen.text.text, "game");
    EXPECT_EQ(poll(), -1);
    EXPECT_STREQ(entry.text(), "game");
}

// On some platforms Control and a digit come with the digit as text.
TEST_F(TextEntry, TakesNoTextFromShortcuts) {
    entry.focus();
    const struct {
        int modifiers;
        const char* text;
    } rows[] = {{KMOD_LCTRL, ""},
                {KMOD_RGUI, ""},
                {KMOD_LCTRL | KMOD_RALT, "1"},
                {KMOD_LSHIFT, "1"},
                {KMOD_MODE | KMOD_LCTRL, "1"}};
    for (const auto& row : rows) {
        entry.setText("");
        SDL_SetModState(static_cast<SDL_Keymod>(row.modifiers));
        typed("1");
        EXPECT_STREQ(entry.text(), row.text) << row.modifiers;
    }
}

TEST_F(TextEntry, ReadsWhatOtherThreadsType) {
    entry.focus();
    const auto typeMuch = [this](const char* text) {
        for (int i = 0; i < 500; ++i) {
            SDL_Event event = {};
            event.type = SDL_TEXTINPUT;
            SDL_strlcpy(event.text.text, text, sizeof event.text.text);
            SDL_PushEvent(&event);
        }
    };
    std::thread a(typeMuch, "a"), b(typeMuch, "é");
    for (int i = 0; i < 50; ++i)
        poll();
    a.join();
    b.join();
    poll();
    EXPECT_EQ(entry.length(), 1000);

    std::thread c(typeMuch, "c");
    for (int i = 0; i < 50; ++i) {
        entry.unfocus();
        entry.focus();
    }
    c.join();
    entry.poll();
    entry.setText("");
    for (int i = 0; i < 3000; ++i) // no one reads: what is too much is dropped whole
        type("🙂");
    poll();
    EXPECT_EQ(entry.length(), 1024);
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
} // namespace
