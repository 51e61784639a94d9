#include "input/Keyboard.h"

#include "LogicSteps.h"

#include <SDL_keycode.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <map>
#include <string>
#include <vector>

namespace {
struct Keyboard : testing::Test {
    Keyboard() { _KXInitKeys(); }
    ~Keyboard() override { _KXInitKeys(); }
    LogicSteps steps;
};

struct Row {
    int first; // number of the row's first key
    std::vector<std::string> names;
    std::vector<int> keycodes; // empty: never set
};

std::vector<std::string> characters(char from, char to) {
    std::vector<std::string> names;
    for (char c = from; c <= to; ++c)
        names.emplace_back(1, c);
    return names;
}

std::vector<int> codes(int first, std::size_t count) {
    std::vector<int> keycodes(count);
    for (std::size_t i = 0; i < count; ++i)
        keycodes[i] = first + static_cast<int>(i);
    return keycodes;
}

const std::vector<Row>& rows() {
    static const std::vector<std::string> none(26, "Unknown");
    static const std::vector<Row> table = {
        {1, characters('A', 'Z'), codes(97, 26)},
        {27, none, {}},
        {53, {"Return", "Tab", "Delete", "Backspace"}, {13, 9, 127, 8}},
        {57, {"\"", ",", "-", ".", "/", "\\"}, {39, 44, 45, 46, 47, 92}},
        {63, {":", ":", "(", ")", "[", "]", "Escape", "`"}, {58, 59, 40, 41, 91, 93, 27, 96}},
        {71, characters('0', '5'), codes(48, 6)},
        {77, {"Unknown"}, {}},
        {78, characters('6', '9'), codes(54, 4)},
        {82, {"0"}, {SDLK_KP_0}},
        {83, characters('1', '9'), codes(SDLK_KP_1, 9)},
        {92, {"Num Pad .", "Num Pad /", "Num Pad *"}, {SDLK_KP_PERIOD, SDLK_KP_DIVIDE, SDLK_KP_MULTIPLY}},
        {95, {"Num Pad -", "Num Pad +"}, {SDLK_KP_MINUS, SDLK_KP_PLUS}},
        {97, {"Num Pad Enter", "Num Pad ="}, {SDLK_KP_ENTER, SDLK_KP_EQUALS}},
        {99, {"Up", "Right", "Left", "Down"}, {SDLK_UP, SDLK_RIGHT, SDLK_LEFT, SDLK_DOWN}},
        {103, {"Home", "End", "Page Up", "Page Down"}, {SDLK_HOME, SDLK_END, SDLK_PAGEUP, SDLK_PAGEDOWN}},
        {107,
         {"F1", "F2", "F3", "F4", "F5", "F6", "F7", "F8", "F9", "F10", "F11", "F12"},
         codes(SDLK_F1, 12)},
        {119, {"F13", "F14", "F15"}, codes(SDLK_F13, 3)},
        {122,
         {"Left Shift", "Right Shift", "Left Alt", "Right Alt"},
         {SDLK_LSHIFT, SDLK_RSHIFT, SDLK_LALT, SDLK_RALT}},
        {126, {"Num Lock", "Caps Lock", "Scroll Lock"}, {SDLK_NUMLOCKCLEAR, SDLK_CAPSLOCK, SDLK_SCROLLLOCK}},
        {129, {"Left Super", "Right Super"}, {}},
        {131, {"Right Command", "Left Command"}, {SDLK_RGUI, SDLK_LGUI}},
        {133, {"Space", "="}, {32, 61}},
        {135, {"Left Control", "Right Control"}, {SDLK_LCTRL, SDLK_RCTRL}},
    };
    return table;
}

TEST_F(Keyboard, NumbersNamesAndKeycodes) {
    std::map<int, int> keyOfCode;
    int next = 1;
    for (const Row& row : rows()) {
        ASSERT_EQ(row.first, next);
        for (std::size_t i = 0; i < row.names.size(); ++i, ++next) {
            EXPECT_EQ(KXKeyToString(next), row.names[i]) << next;
            if (!row.keycodes.empty())
                keyOfCode[row.keycodes.at(i)] = next;
        }
    }
    EXPECT_EQ(next, 137);

    // Every code the platform may send sets its one key, or none: upper-case letters for example.
    std::vector<int> sent = codes(-1, 258), scancodes = codes(SDLK_SCANCODE_MASK, 512);
    sent.insert(sent.end(), scancodes.begin(), scancodes.end());
    sent.insert(sent.end(), {INT_MIN, INT_MAX});
    for (int code : sent) {
        const int key = keyOfCode.contains(code) ? keyOfCode[code] : 0;
        _KXSetKey(code);
        EXPECT_EQ(std::count(_KXKeys, _KXKeys + _KXKeyCount, -1), key ? 1 : 0) << code;
        EXPECT_EQ(KXKeyPressed(), key) << code;
        EXPECT_EQ(KXKey(key), key ? -1 : 0) << code;
        _KXUnsetKey(code);
        EXPECT_EQ(KXKeyPressed(), 0) << code;
    }
}

TEST_F(Keyboard, NumbersThatAreNoKey) {
    for (int key : {INT_MIN, -1, 0, 137, INT_MAX}) {
        EXPECT_EQ(KXKey(key) | KXKey(key, -1) | KXKeyWithDelayedRepeat(key) | _KXKeyTextEntry(key, -1), 0)
            << key;
        EXPECT_STREQ(KXKeyToString(key), "Unknown") << key;
    }
}

TEST_F(Keyboard, OnePressIsToldOnceToTheGameAndOnceToTextEntries) {
    _KXSetKey(' ');
    for (int press = 0; press < 2; ++press) {
        EXPECT_EQ(KXKey(133), -1); // the level does not consume the press
        EXPECT_EQ(KXKey(133, 1), -1);
        EXPECT_EQ(KXKey(133, 1), 0);
        EXPECT_EQ(_KXKeyTextEntry(133, 1), -1);
        EXPECT_EQ(_KXKeyTextEntry(133, 1), 0);
        _KXSetKey(' '); // the platform's own repeat is no new press
        EXPECT_EQ(KXKey(133, 1) | _KXKeyTextEntry(133, 1), 0);
        EXPECT_EQ(KXKey(133), -1);
        _KXUnsetKey(' ');
        EXPECT_EQ(KXKey(133) | KXKey(133, 1) | _KXKeyTextEntry(133, 1), 0);
        EXPECT_EQ(_KXKeysDownTime[133], 0x7FFFFFFF);
        _KXSetKey(' ');
    }
}

TEST_F(Keyboard, HeldKeysRepeatFromTheThirtiethStepOn) {
    _KXSetKey(' ');
    EXPECT_EQ(KXKeyWithDelayedRepeat(133), -1);
    for (int step = 1; step < 30; ++step) {
        steps.advance(1);
        EXPECT_EQ(KXKeyWithDelayedRepeat(133), 0) << step;
    }
    for (int step = 30; step < 33; ++step) {
        steps.advance(1);
        EXPECT_EQ(KXKeyWithDelayedRepeat(133), -1) << step;
        EXPECT_EQ(KXKeyWithDelayedRepeat(133), -1) << step;
    }
    _KXUnsetKey(' ');
    EXPECT_EQ(KXKeyWithDelayedRepeat(133), 0);

    _KXSetKey(' ');
    _KXLogicTimeRequiredPerLogicCycle = 0; // no speed set: nothing repeats
    EXPECT_EQ(KXKeyWithDelayedRepeat(133), -1);
    _KXLogicCurrentTime += 100000;
    EXPECT_EQ(KXKeyWithDelayedRepeat(133), 0);
}

TEST_F(Keyboard, AnyReleaseForgetsTheReportsOfKeysThatAreUp) {
    for (int code : {'a', 'b', 'c'})
        _KXSetKey(code);
    EXPECT_EQ(KXKey(1, 1) & KXKey(2, 1) & _KXKeyTextEntry(2, 1), -1);
    _KXSetKeyToValue('b', 0); // its release was lost
    EXPECT_EQ(KXKeyPressed(), 1);
    _KXUnsetKey('c');
    for (int code : {'b', 'c'})
        _KXSetKey(code);
    EXPECT_EQ(KXKey(1, 1), 0); // still held, already told
    EXPECT_EQ(KXKey(2, 1), -1);
    EXPECT_EQ(_KXKeyTextEntry(2, 1), -1);

    KXUnsetKeys();
    EXPECT_EQ(KXKeyPressed(), 0);
    _KXSetKey('a');
    EXPECT_EQ(KXKey(1, 1), -1);
}

TEST_F(Keyboard, TheLowestHeldKeyIsThePressedOne) {
    _KXSetKey(' ');
    EXPECT_EQ(KXKeyPressed(), 133);
    _KXSetKey('a');
    EXPECT_EQ(KXKeyPressed(), 1);
}
} // namespace
