#include "InputTest.h"

#include <Kobaltrix/KXClipboard.h>
#include <Kobaltrix/KXFont.h>

#include <functional>
#include <string>

namespace {
struct TextInput : InputTest {
    static constexpr auto mode = static_cast<KXKeyNumber>(200 + SDL_SCANCODE_MODE); // AltGr
    /// What is typed and composed by the end of a step: "typed|composed".
    std::string take(const char* types = "") {
        user.type(types);
        user.step();
        return _KXTakeTypedText() + "|" + _KXComposedText();
    }
    void typeWith(KXKeyNumber modifier, KXKeyNumber second = KXKeyLeftShift) {
        user.hold(modifier), user.hold(second);
        user.type("1");
        user.release(modifier), user.release(second);
    }
};

TEST_F(TextInput, ComesWithTheEventsOfAStepAndInTheirOrder) {
    std::string text, longest;
    for (int i = 0; i < 600; ++i)
        (i < 511 ? longest : text) += "é";
    const std::function<std::string()> rows[] = {
        [&] { return user.type("aé"), user.type("b"), "aéb|"; },
        [&] { return user.type(text.c_str()), text + "|"; },
        [&] { return user.compose("longer than"), user.compose("short"), "|short"; },
        [&] { return user.compose("k"), user.type("か"), "か|"; },
        [&] { return user.type("か"), user.compose("n"), "か|n"; },
        [&] { return user.compose((longest + text).c_str()), "|" + longest; }, // ends with a whole character
        // A shortcut types nothing, whatever happens in the same step after it.
        [&] { return typeWith(KXKeyLeftControl), user.type("a"), "a|"; },
        [&] { return user.type("a"), typeWith(KXKeyRightCommand), "a|"; },
        [&] { return typeWith(KXKeyLeftControl, KXKeyRightAlt), "1|"; },
        [&] { return typeWith(KXKeyLeftControl, mode), "1|"; },
        [&] { return typeWith(KXKeyCapsLock), "1|"; },
    };
    for (const auto& act : rows) {
        _KXBeginTextInput();
        const std::string expected = act();
        user.step();
        EXPECT_EQ(_KXTakeTypedText() + "|" + _KXComposedText(), expected);
        EXPECT_EQ(_KXTakeTypedText(), "") << "taken once";
    }
}

TEST_F(TextInput, IsDroppedWhenNobodyReads) {
    user.compose("k");
    EXPECT_EQ(take("a"), "|");
    _KXBeginTextInput();
    for (int i = 0; i < 150; ++i)
        user.type("thirty bytes, then many more -"); // what does not fit is dropped whole
    EXPECT_EQ(take().size(), 4096u / 30 * 30 + 1);
    user.type("a");
    user.compose("k");
    user.step();
    _KXEndTextInput();
    EXPECT_EQ(take(), "|");
}

TEST_F(TextInput, OutlivesTheFontsButNotTheLibrary) {
    _KXBeginTextInput();
    user.type("a");
    user.step();
    KXClearGUIFontCache();
    _KXKeepTextInput();
    EXPECT_EQ(take("b"), "ab|");
    _KXEndTextInput();
    EXPECT_FALSE(SDL_IsTextInputActive()) << "it was off before";
    for (bool keeps : {true, false}) {
        _KXBeginTextInput();
        KXDeInit();
        KXInit();
        SDL_StopTextInput();
        keeps ? _KXKeepTextInput() : SDL_StartTextInput();
        EXPECT_EQ(take("c"), "c|");
        EXPECT_TRUE(SDL_IsTextInputActive());
        _KXEndTextInput();
        EXPECT_EQ(SDL_IsTextInputActive() == SDL_FALSE, keeps) << "what a game began is not ended";
    }
    KXDeInit();
    _KXBeginTextInput();
    KXInit();
    _KXKeepTextInput();
    EXPECT_EQ(take("d"), "d|");
}

TEST_F(TextInput, TheClipboardKeepsAText) {
    EXPECT_EQ(KXSetClipboardText("Grüße"), -1);
    EXPECT_STREQ(KXClipboardText(), "Grüße");
    EXPECT_EQ(KXSetClipboardText(nullptr), -1);
    EXPECT_STREQ(KXClipboardText(), "");
}
} // namespace
