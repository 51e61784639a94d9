#include "input/TextInput.h"

#include "support/TestClock.h"

#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXInit.h>
#include <Kobaltrix/KXLogicLoop.h>

#include <SDL.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace {
/// What happens before the next logic step, in this order.
struct Event {
    Uint32 type;
    const char* text; ///< A key's name for key events.
    int modifiers = KMOD_NONE;
};

void push(const Event& row) {
    SDL_Event event = {};
    event.type = row.type;
    if (row.type == SDL_TEXTEDITING_EXT) {
        event.editExt.text = SDL_strdup(row.text);
    } else if (row.type == SDL_TEXTINPUT || row.type == SDL_TEXTEDITING) {
        std::copy_n(row.text, std::min(std::size(event.text.text), std::string(row.text).size()),
                    event.text.text);
    } else {
        event.key.keysym.sym = SDL_GetKeyFromName(row.text);
        event.key.keysym.mod = static_cast<Uint16>(row.modifiers);
    }
    EXPECT_EQ(SDL_PushEvent(&event), 1);
}

struct TextInput : testing::Test {
    TextInput() {
        EXPECT_EQ(KXInit(), -1);
        SDL_StopTextInput();
    }
    ~TextInput() override {
        _KXEndTextInput();
        KXDeInit();
    }

    static void step(const std::vector<Event>& events = {}) {
        std::ranges::for_each(events, push);
        KXResetLogicLoop();
        KXPreLogicLoop();
        EXPECT_EQ(KXLogicLoop(), -1);
        KXLogicUpdate();
        KXPostLogicLoop();
    }

    TestClock clock;
};

TEST_F(TextInput, ComesWithTheEventsOfAStepAndInTheirOrder) {
    constexpr auto text = SDL_TEXTINPUT, composes = SDL_TEXTEDITING, down = SDL_KEYDOWN, up = SDL_KEYUP;
    const struct {
        std::vector<Event> events;
        std::string typed, composed;
    } rows[] = {
        {{}, "", ""},
        {{{text, "a"}, {text, "\xc3\xa9"}, {text, ""}}, "a\xc3\xa9", ""},
        {{{text, "filled to the end, with no zero.and more"}}, "filled to the end, with no zero.", ""},
        {{{composes, "k"}, {composes, "ka"}}, "", "ka"},
        {{{composes, "longer than the text before it"}, {composes, "short"}}, "", "short"},
        {{{composes, "ka"}, {text, "か"}}, "か", ""},
        {{{text, "か"}, {composes, "n"}}, "か", "n"},
        {{{SDL_TEXTEDITING_EXT, "more than the thirty-two bytes of the short event"}},
         "",
         "more than the thirty-two bytes of the short event"},
        // A shortcut types nothing, whatever happens in the same step after it.
        {{{down, "Left Ctrl", KMOD_LCTRL},
          {down, "1", KMOD_LCTRL},
          {text, "1"},
          {up, "1", KMOD_LCTRL},
          {up, "Left Ctrl"},
          {text, "a"}},
         "a",
         ""},
        {{{text, "a"}, {down, "Right GUI", KMOD_RGUI}, {text, "b"}, {up, "Right GUI"}}, "a", ""},
        {{{down, "q", KMOD_LCTRL | KMOD_RALT}, {text, "@"}, {up, "q"}}, "@", ""},
        {{{down, "q", KMOD_LCTRL | KMOD_MODE}, {text, "@"}, {up, "q"}}, "@", ""},
        {{{down, "a", KMOD_LSHIFT | KMOD_CAPS | KMOD_NUM}, {text, "A"}, {up, "a"}}, "A", ""},
    };
    for (const auto& row : rows) {
        _KXBeginTextInput();
        step(row.events);
        EXPECT_EQ(_KXTakeTypedText(), row.typed);
        EXPECT_EQ(_KXTakeTypedText(), "") << "taken once";
        EXPECT_EQ(_KXComposedText(), row.composed);
    }
    // A composition that is longer than there is room for ends with a whole character.
    std::string longest;
    while (longest.size() < 1022)
        longest += "é";
    step({{SDL_TEXTEDITING_EXT, (longest + "éé").c_str()}});
    EXPECT_EQ(_KXComposedText(), longest);
    step({{SDL_TEXTEDITING_EXT, "x"}});
    EXPECT_EQ(_KXComposedText(), "x");
}

TEST_F(TextInput, IsDroppedWhenNobodyReads) {
    step({{SDL_TEXTINPUT, "a"}, {SDL_TEXTEDITING, "k"}});
    _KXBeginTextInput();
    EXPECT_EQ(_KXTakeTypedText() + _KXComposedText(), "");
    step(std::vector<Event>(150, {SDL_TEXTINPUT, "thirty bytes, then as many more"})); // 31 bytes
    EXPECT_EQ(_KXTakeTypedText().size(), 4096u / 31 * 31) << "what does not fit is dropped whole";
    step({{SDL_TEXTINPUT, "a"}, {SDL_TEXTEDITING, "k"}});
    _KXEndTextInput();
    EXPECT_EQ(_KXTakeTypedText() + _KXComposedText(), "");
}

TEST_F(TextInput, OutlivesTheFontsButNotTheLibrary) {
    _KXBeginTextInput();
    step({{SDL_TEXTINPUT, "a"}});
    push({SDL_TEXTINPUT, "b"});
    KXClearGUIFontCache();
    _KXKeepTextInput();
    step();
    EXPECT_EQ(_KXTakeTypedText(), "ab");
    _KXEndTextInput();
    EXPECT_FALSE(SDL_IsTextInputActive()) << "it was off before";

    for (bool keeps : {true, false}) {
        _KXBeginTextInput();
        KXDeInit();
        EXPECT_EQ(KXInit(), -1);
        SDL_StopTextInput();
        keeps ? _KXKeepTextInput() : SDL_StartTextInput();
        step({{SDL_TEXTINPUT, "c"}});
        EXPECT_TRUE(SDL_IsTextInputActive());
        EXPECT_EQ(_KXTakeTypedText(), "c");
        _KXEndTextInput();
        EXPECT_EQ(SDL_IsTextInputActive(), keeps ? SDL_FALSE : SDL_TRUE) << "what a game began is not ended";
    }
    KXDeInit();
    _KXBeginTextInput();
    EXPECT_EQ(KXInit(), -1);
    _KXKeepTextInput();
    step({{SDL_TEXTINPUT, "d"}});
    EXPECT_EQ(_KXTakeTypedText(), "d");
}
} // namespace
