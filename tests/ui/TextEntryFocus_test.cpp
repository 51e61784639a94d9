#include "TextEntryTest.h"

#include <Kobaltrix/KXKeyboard.h>

#include <SDL.h>

namespace {
struct TextEntryFocus : TextEntryTest {};

TEST_F(TextEntryFocus, TabGoesRound) {
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
    EXPECT_EQ(KXKey(_KXKeyTab, 1), 0);

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

TEST_F(TextEntryFocus, ThePressDecidesWhoHasTheFocus) {
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
    moveMouse(5, 120);
    press();
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

TEST_F(TextEntryFocus, KeysThatOpenedItAreNotForIt) {
    entry.setText("kept");
    for (int keycode : {SDLK_RETURN, SDLK_ESCAPE, SDLK_TAB, SDLK_BACKSPACE}) {
        keyDown(keycode);
        type("t");
        entry.focus();
        for (int held = 0; held < 40; ++held) {
            EXPECT_EQ(poll(), 0) << keycode;
            step();
        }
        EXPECT_EQ(KXUIFocusedTextEntry(), &entry) << keycode;
        keyUp(keycode);
        entry.unfocus();
    }
    EXPECT_STREQ(entry.text(), "kept");

    keyDown(SDLK_LEFT);
    KXKeyWithDelayedRepeat(_KXKeyLeft);
    step(30);
    entry.focus();
    poll();
    EXPECT_EQ(entry.cursor(), 4);
    EXPECT_EQ(KXKeyWithDelayedRepeat(_KXKeyLeft), -1); // the game's repeat does not begin anew
}

TEST_F(TextEntryFocus, WhatWasTypedBeforeItMovesGoesWhereItWas) {
    other.focus();
    type("other's");
    entry.focus();
    EXPECT_EQ(entry.poll(), 0);
    EXPECT_EQ(other.poll(), -1);
    EXPECT_EQ(other.changed(), -1);
    EXPECT_STREQ(entry.text(), "");
    EXPECT_STREQ(other.text(), "other's");
    EXPECT_EQ(other.poll(), 0);

    moveMouse(5, 120);
    press();
    type("entry's");
    EXPECT_EQ(poll(), -1);
    EXPECT_EQ(KXUIFocusedTextEntry(), nullptr);
    EXPECT_STREQ(entry.text(), "entry's");
}

TEST_F(TextEntryFocus, NeverNamesADestroyedEntry) {
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

TEST_F(TextEntryFocus, SurvivesTheLibrary) {
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

TEST_F(TextEntryFocus, LeavesThePlatformsTextInputAsItWas) {
    for (bool active : {false, true}) {
        active ? SDL_StartTextInput() : SDL_StopTextInput();
        entry.focus();
        EXPECT_TRUE(SDL_IsTextInputActive());
        other.focus();
        EXPECT_TRUE(SDL_IsTextInputActive());
        other.unfocus();
        EXPECT_EQ(SDL_IsTextInputActive() == SDL_TRUE, active);
    }
}
} // namespace
