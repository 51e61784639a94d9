#include "InputTest.h"

#include <Kobaltrix/KXClipboard.h>
#include <Kobaltrix/KXFont.h>

#include <functional>
#include <string>
#include <utility>

namespace {
struct TextInput : InputTest {
    static constexpr auto mode = static_cast<KXKeyNumber>(200 + SDL_SCANCODE_MODE); // AltGr
    /// What of the last step's events is text for widgets.
    static std::string typed() {
        std::string text;
        for (const _KXPastEvent& past : _KXStep().past)
            if (past.event.type == KXInputEventText && !past.isOfShortcut)
                text += past.event.text;
        return text;
    }
    void typeWith(KXKeyNumber modifier, KXKeyNumber second = KXKeyLeftShift) {
        user.hold(modifier), user.hold(second);
        user.type("1");
        user.release(modifier), user.release(second);
    }
};

TEST_F(TextInput, OfAShortcutIsNoText) {
    const std::pair<std::function<void()>, const char*> rows[] = {
        {[&] { user.type("a\u00e9"), user.type("b"); }, "a\u00e9b"},
        // Whatever happens in the same step after it.
        {[&] { typeWith(KXKeyLeftControl), user.type("a"); }, "a"},
        {[&] { user.type("a"), typeWith(KXKeyRightCommand); }, "a"},
        {[&] { typeWith(KXKeyLeftControl, KXKeyRightAlt); }, "1"},
        {[&] { typeWith(KXKeyLeftControl, mode); }, "1"},
        {[&] { typeWith(KXKeyCapsLock); }, "1"},
    };
    for (const auto& [acts, text] : rows) {
        _KXForgetInput();
        acts();
        user.step();
        EXPECT_EQ(typed(), text);
    }
}

TEST_F(TextInput, OutlivesTheFontsButNotTheLibrary) {
    _KXBeginTextInput();
    KXClearGUIFontCache();
    _KXKeepTextInput();
    EXPECT_TRUE(SDL_IsTextInputActive());
    _KXEndTextInput();
    EXPECT_FALSE(SDL_IsTextInputActive()) << "it was off before";
    for (bool keeps : {true, false}) {
        _KXBeginTextInput();
        KXDeInit();
        KXInit();
        SDL_StopTextInput();
        keeps ? _KXKeepTextInput() : SDL_StartTextInput();
        EXPECT_TRUE(SDL_IsTextInputActive());
        _KXEndTextInput();
        EXPECT_EQ(SDL_IsTextInputActive() == SDL_FALSE, keeps) << "what a game began is not ended";
    }
    KXDeInit();
    _KXBeginTextInput();
    KXInit();
    SDL_StopTextInput();
    _KXKeepTextInput();
    EXPECT_TRUE(SDL_IsTextInputActive());
    _KXEndTextInput();
}

TEST_F(TextInput, TheClipboardKeepsAText) {
    EXPECT_EQ(KXSetClipboardText("Grüße"), -1);
    EXPECT_STREQ(KXClipboardText(), "Grüße");
    EXPECT_EQ(KXSetClipboardText("a\r\nb\n\rc\r"), -1);
    EXPECT_STREQ(KXClipboardText(), "a\nb\n\rc\r") << "lines end alike on every system";
    EXPECT_EQ(KXSetClipboardText(nullptr), -1);
    EXPECT_STREQ(KXClipboardText(), "");
}
} // namespace
