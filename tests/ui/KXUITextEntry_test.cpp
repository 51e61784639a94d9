#include "UITest.h"

#include "platform/Desktop.h"
#include "text/KXUIGlobalFont.h"

#include <ctime>

namespace {
/// A text entry and what a user does with it.
struct TextEntry : UITest {
    TextEntry() {
        entry.setRect({10, 10}, {100, -1});
        poll();
    }
    int poll() override { return entry.poll(); }
    /// "after abc" is in the entry, as far from where its text begins as that text is wide.
    KXPoint place(const std::string& name) const override {
        return name.starts_with("after") ? KXPoint{13 + widthOf(name.substr(6)), 18} : UITest::place(name);
    }
    static float widthOf(const std::string& text) {
        return std::floor(_KXUIGlobalFont->advance(text.c_str()));
    }
    std::string state() override {
        return std::string(entry.changed() ? "changed " : "") + (entry.entered() ? "entered " : "") +
               entry.text() + "|" + selection();
    }
    /// "start+length" of the selection, or the cursor's number.
    std::string selection() const {
        const std::string start = std::to_string(entry.selectionStart());
        return entry.selectionLength() ? start + "+" + std::to_string(entry.selectionLength()) : start;
    }
    KXUITextEntry entry;
};

TEST_F(TextEntry, TypingFromTheFirstClickToReturn) {
    expectEach(
        "type lost -> |0; click after  -> |0; type Gr\u00f6 -> told changed Gr\u00f6|3; "
        "type \u00dfe \U0001F642 -> told changed Gr\u00f6\u00dfe \U0001F642|7; "
        "Backspace -> told Gr\u00f6\u00dfe |6; hold Return -> told entered Gr\u00f6\u00dfe |6; "
        "wait 60, at after  -> Gr\u00f6\u00dfe |6; let Return -> Gr\u00f6\u00dfe |6; " // once, though held
        "hold Keypad Enter -> told entered Gr\u00f6\u00dfe |6; Left Alt+Return -> Gr\u00f6\u00dfe |6; "
        "Left Alt+Escape, type x -> told changed Gr\u00f6\u00dfe x|7; "
        "Escape, type more -> Gr\u00f6\u00dfe x|7");
    EXPECT_EQ(entry.length(), 7);
}

TEST_F(TextEntry, KeysEditAndMove) {
    expectEach("click after , type one two three -> told changed one two three|13; "
               "Left -> one two three|12; Left Shift+Left -> one two three|11+1; "
               "Right Ctrl+Right Shift+Left -> one two three|8+4; Backspace -> told one two e|8; "
               "Left Shift+Home -> one two e|0+8; Right -> one two e|8; Left Ctrl+Backspace -> told one e|4; "
               "Home -> one e|0; Backspace -> one e|0; Right -> one e|1; Left Ctrl+Right -> one e|3; "
               "Delete -> told onee|3; Right Shift+End -> onee|3+1; Left Shift+Left -> onee|3; "
               "Left Ctrl+Delete -> told one|3; Delete -> one|3; A -> one|3; Right Ctrl+A -> one|0+3; "
               "End -> one|3; Left Ctrl+Right Alt+A -> one|3; " // makes a letter on some layouts
               "Left Command+A -> one|0+3; Delete -> told |0; "
               "type x, hold A, hold Left Ctrl -> told x|1"); // A was held before Control came: no shortcut
}

TEST_F(TextEntry, TheClipboard) {
    entry.focus();
    act("type h\u00e9llo w\u00f6rld");
    entry.select(6, 5);
    expectEach("Left Ctrl+C -> h\u00e9llo w\u00f6rld|6+5; Left Ctrl+X -> told h\u00e9llo |6; "
               "Left Ctrl+V -> told h\u00e9llo w\u00f6rld|11; "
               "Left Command+V -> told h\u00e9llo w\u00f6rldw\u00f6rld|16; "
               "Left Ctrl+X -> h\u00e9llo w\u00f6rldw\u00f6rld|16"); // nothing is selected
    EXPECT_STREQ(KXClipboardText(), "w\u00f6rld");
    entry.setMaximumLength(8);
    EXPECT_STREQ(entry.text(), "h\u00e9llo w\u00f6");
    entry.select(0, 6);
    SDL_SetClipboardText("a\r\nb\x1b\xc3(\n\xe2\x82\xac ..............");
    const bool keepsBytes = std::string_view(KXClipboardText()).find("\ufffd") == std::string_view::npos;
    expectEach(std::string("Left Ctrl+V -> told a b") + (keepsBytes ? "?" : "\ufffd") + "( w\u00f6|6");
    EXPECT_EQ(entry.maximumLength(), 8);
    for (int none : {INT_MIN, 0}) {
        entry.setMaximumLength(none);
        EXPECT_EQ(entry.maximumLength(), 0);
    }
    SDL_SetClipboardText("kept");
    entry.setText("secret word");
    entry.setMasked(2);
    EXPECT_EQ(entry.isMasked(), -1);
    expectEach("Left Ctrl+A, Left Ctrl+C, Left Ctrl+X -> secret word|0+11; "
               "Left Ctrl+Left -> secret word|0; " // where its words end is a secret, too
               "Left Ctrl+V -> told keptsecret word|4");
}

TEST_F(TextEntry, SelectionsByTheGameAreKeptInTheText) {
    entry.setText("gr\u00f6\u00dfer");
    const std::pair<std::pair<int, int>, const char*> rows[] = {
        {{2, 2}, "2+2"}, {{-5, 3}, "0+3"}, {{3, INT_MAX}, "3+3"}, {{100, 1}, "6"}, {{3, -2}, "3"}};
    for (const auto& [given, selected] : rows) {
        entry.select(given.first, given.second);
        EXPECT_EQ(selection(), selected) << given.first;
        EXPECT_EQ(entry.cursor(), entry.selectionStart() + entry.selectionLength());
    }
}

TEST_F(TextEntry, HeldKeysRepeatAndTheGameReadsThemToo) {
    entry.focus();
    act("type abcdefgh");
    keyDown(KXKeyLeft);
    for (int held = 0; held < 33; ++held, step()) {
        poll();
        EXPECT_EQ(entry.cursor(), held < 30 ? 7 : 6 - (held - 30) / 2);
        EXPECT_EQ(KXKeyWithDelayedRepeat(KXKeyLeft), held == 0 || held >= 30 ? -1 : 0) << held;
    }
    expectEach("let Left, hold Backspace -> told changed abcdfgh|4; poll 29 -> abcdfgh|4; "
               "poll 2 -> told changed abcfgh|3; let Backspace -> abcfgh|3; hold A, poll 40 -> abcfgh|3");
    EXPECT_EQ(KXKey(KXKeyA, 1), -1);
    keyUp(KXKeyA);
    for (const auto& [speed, milliseconds, erased] : {std::tuple{240u, 150u, 1},
                                                      {60, 150, 1},
                                                      {240, 700, 8},
                                                      {60, 700, 8},
                                                      {10, 700, 8},
                                                      {1000, 700, 8}}) {
        _KXLogicSpeed = speed;
        entry.setText("twelve and 12");
        keyDown(KXKeyBackspace);
        for (unsigned left = speed * milliseconds / 1000 + 1; left > 0; --left, step())
            poll(), poll(); // the second one tells nothing new
        keyUp(KXKeyBackspace);
        EXPECT_EQ(entry.length(), 13 - erased) << speed;
    }
}

TEST_F(TextEntry, AStepIsHeardInTheOrderInWhichItCame) {
    entry.setText("one");
    entry.focus();
    expectEach("type X & Backspace & type Y & Return -> told changed entered oneY|4; poll 1 -> oneY|4; "
               "Left Ctrl+Left & type ab & Delete & Right & Right & type c -> told changed abnecY|5; "
               "type d & Escape & type lost -> told changed abnecdY|6; "
               "click after ab & type X & at 300 100 -> told changed abXnecdY|3; "
               "press after abXne & at after ab & release & at 300 100 & Delete -> told changed abcdY|2; "
               "Left Ctrl+A & Left Ctrl+X & type is & Left Ctrl+V & Return & click 300 100 & type no -> "
               "told changed entered isabcdY|7");
    EXPECT_FALSE(entry.isFocused());
}

TEST_F(TextEntry, ChangesAreTakenBackAndMadeAgain) {
    entry.setText("one");
    entry.focus();
    expectEach("Left Ctrl+Z -> one|3; type tw, type o -> told changed onetwo|6; "
               "Home, type x, End, Left Shift+Left, Backspace, Backspace, type s -> told changed xonets|6; "
               "Left Ctrl+Z -> told xonet|5; Left Ctrl+Z -> told xonetw|6; "
               "Left Ctrl+Z -> told xonetwo|6+1; Left Ctrl+Z -> told onetwo|0; "
               "Left Command+Z -> told one|3; Left Ctrl+Z -> one|3; Left Ctrl+Y -> told onetwo|6; "
               "Left Ctrl+Left Shift+Z -> told xonetwo|1; type y, Left Ctrl+Y -> told xyonetwo|2");
    entry.setMasked(-1);
    expectEach("type z, Left Ctrl+Z -> told xyzonetwo|3"); // nothing that was hidden comes back
    entry.setMasked(0);
    expectEach("Left Ctrl+Z -> xyzonetwo|3");
}

TEST_F(TextEntry, KeysOfTheOtherDesktop) {
    _KXIsMac = true;
    entry.setText("one two");
    entry.focus();
    expectEach("Left Alt+Left -> one two|4; Left Command+Left -> one two|0; Left Command+Left Shift+Right -> "
               "one two|0+7; "
               "Left Ctrl+C, Right, Left Ctrl+Left -> one two|6; Left Alt+Backspace -> told one o|4; "
               "Left Command+Z -> told one two|6; Left Command+A -> one two|0+7");
    _KXIsMac = false;
}

TEST_F(TextEntry, TheMousePlacesAndSelects) {
    entry.setText("one two WiWi");
    const std::string text = "one two WiWi|";
    const std::pair<const char*, const char*> rows[] = {
        {"click after one t", "5"},
        {"wait 100, click after one two WiWi  ", "12"},
        {"wait 100, click 11 18", "0"},
        {"wait 100, hold Left Shift, click after one, let Left Shift", "0+3"},
        {"wait 100, press after one ", "4"},
        {"at after one two, at after one two , at after o", "1+3"},
        {"release, at after one two", "1+3"}, // let go
        {"wait 100, click after one tw", "6"},
        {"click after one tw", "4+3"}, // a second one takes the word, a third one everything
        {"click after one tw", "0+12"},
        {"click after one tw", "6"},
        {"click after one two ", "8"}, // too far away for a second one
        {"wait 100, click after one tw, press after one tw", "4+3"},
        {"at after o", "0+7"}, // takes whole words
        {"at after one two W", "4+8"},
        {"hold Left Ctrl, at after one two", "4+3"}, // though it makes the left button the right one
        {"let Left Ctrl, release, at 300 18", "4+3"}};
    for (const auto& [does, selected] : rows)
        expectEach(does + (" -> " + text) + selected);
    EXPECT_EQ(entry.cursor(), 7);
}

TEST_F(TextEntry, DraggingOutOfTheBoxScrolls) {
    entry.setText("abcdefghijklmnopqrstuvwxyz0123456789");
    entry.focus();
    poll();
    act("press 11 18"); // at the padding: a press that rests there is a click
    const std::string text = std::string(" -> ") + entry.text(), first = selection();
    expectEach("poll 10" + text + "|" + first + "; at 1 150, poll 100" + text + "|0+" + first +
               "; at 200 18, poll 100" + text + "|" + first + "+" + std::to_string(36 - entry.cursor()));
    EXPECT_EQ(entry.cursor(), 36);
}

// The left edge of the text, for the mouse and for the cursor, is where the font prints it.
TEST_F(TextEntry, TheFontsOffsetCounts) {
    KXUISetGlobalFont(testFont(), KXAliasModeTexture, 12, {20, 0});
    entry.setText("one two");
    const float x = 13 + 20 + widthOf("one");
    expectEach("press " + std::to_string(x) + " 18 -> one two|3");
    entry.draw();
    EXPECT_EQ(Image::of(*window).at(static_cast<int>(x), 24), (Pixel{255, 255, 255, 255}));
}

TEST_F(TextEntry, InputMethodsCompose) {
    entry.focus();
    act("type ab");
    entry.select(1, 0);
    expectEach("compose \u306b\u307b -> ab|1; Backspace, Return, Escape -> ab|1"); // the input method's
    keyDown(KXKeyReturn);                                                          // ends the composition
    expectEach("type \u65e5\u672c -> told changed a\u65e5\u672cb|3; let Return -> a\u65e5\u672cb|3; "
               "Return -> told a\u65e5\u672cb|3; compose x, compose , Backspace -> told a\u65e5b|2; "
               "compose y, click 100 18 -> a\u65e5b|3");
    entry.unfocus();
    entry.draw();
    EXPECT_STREQ(entry.text(), "a\u65e5b");
}

// Only what is in view is measured. Were it the whole text, the long one would take a thousand times as long.
TEST_F(TextEntry, ALongTextTypesAsFastAsAShortOne) {
    const auto timeOfTyping = [this](std::size_t length) {
        entry.setText(std::string(length, 'm').c_str());
        entry.focus();
        const std::clock_t start = std::clock(); // of this program alone, however busy the machine is
        for (int character = 0; character < 100; ++character) {
            act(character % 2 ? "type x, Home" : "type x, End");
            entry.draw();
        }
        return std::clock() - start;
    };
    const auto brief = timeOfTyping(100);
    EXPECT_LT(timeOfTyping(100000), 20 * brief);
}

TEST_F(TextEntry, TheCursorBlinks) {
    entry.setText("blinking");
    entry.focus();
    const auto look = [this](unsigned milliseconds) {
        step(milliseconds / 16);
        poll();
        return picture([this] { entry.draw(); });
    };
    const Image on = look(0), off = look(512), again = look(512);
    EXPECT_EQ(differingPixels(on, again), 0);
    EXPECT_GT(differingPixels(on, off), 5);
    look(512);
    act("Left, Right"); // a cursor that moves is seen
    EXPECT_EQ(differingPixels(look(0), on), 0);
}

TEST_F(TextEntry, Looks) {
    const char* const pangram = "The quick brown fox jumps over the lazy dog";
    int count = 0;
    // Two in a row; each is drawn with the focus, but the first and the third.
    const auto show = [&](
                          const char* text,
                          const std::function<void(KXUITextEntry&)>& prepare = [](auto&) {}) {
        KXUITextEntry shown;
        const bool last = count >= 10, focused = count != 0 && count != 2;
        shown.setRect({count % 2 ? 165.0f : 10.0f, 10 + 30 * static_cast<float>(count / 2)},
                      {145, last ? 30.0f : -1});
        shown.setText(text);
        if (focused)
            shown.focus();
        shown.poll();
        prepare(shown);
        shown.poll();
        shown.draw();
        ++count;
    };
    show("", [](KXUITextEntry& e) { e.setPlaceholder("{C0.6,1,0.6,1}Name{EC} of the game"); });
    show("", [](KXUITextEntry& e) { e.setPlaceholder("Name"); });
    show(pangram);
    show("Typing \u00e9gal");
    show("some of it is selected", [](KXUITextEntry& e) { e.select(5, 5); });
    show(pangram);
    show(pangram, [](KXUITextEntry& e) { e.select(20, 1); });
    show("{C1,0,0,1}%s{EC}%%");
    show("secret", [](KXUITextEntry& e) { e.setMasked(-1), e.select(1, 2); });
    show("a b", [this](KXUITextEntry& e) { e.select(2, 0), compose("composed "); });
    show("Own colours", [](KXUITextEntry& e) {
        e.setBackgroundColor(1, 1, 0.8f, 1);
        e.setBorderColor(0.6f, 0.3f, 0, 1);
        e.setFocusColor(1, 0.5f, 0, 1);
        e.setTextColor(0, 0, 0.5f, 1);
        e.setSelectionColor(0.4f, 0.9f, 0.4f, 1);
        e.setPlaceholderColor(1, 0, 0, 1);
        e.selectAll();
    });
    show("no font", [](KXUITextEntry& e) { e.setFont("no/such/font.ttf", KXAliasModeTexture); });
    expectGolden(Image::of(*window), "ui/text_entry");
}
} // namespace
