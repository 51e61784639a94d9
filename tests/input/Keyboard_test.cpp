#include "InputTest.h"

#include <algorithm>
#include <climits>
#include <map>
#include <sstream>

namespace {
using Keyboard = InputTest;

TEST_F(Keyboard, EveryKeyIsSetByOneCode) {
    // Each run of keys: the first one's number and the platform's name of it, and how many codes rise with
    // it. What else there is sets none.
    std::istringstream runs(
        "1 A 26 53 Return 1 54 Tab 1 55 Delete 1 56 Backspace 1 57 ' 1 58 , 4 62 \\ 1 63 : 2 65 ( 2 67 [ 1 "
        "68 ] 1 69 Escape 1 70 ` 1 71 0 6 78 6 4 82 Keypad_0 1 83 Keypad_1 9 92 Keypad_. 1 93 Keypad_/ 5 "
        "98 Keypad_= 1 99 Up 1 100 Right 3 103 Home 1 104 End 1 105 PageUp 1 106 PageDown 1 107 F1 12 "
        "119 F13 3 122 Left_Shift 1 123 Right_Shift 1 124 Left_Alt 1 125 Right_Alt 1 126 Numlock 1 "
        "127 CapsLock 1 128 ScrollLock 1 133 Space 1 134 = 1 135 Left_Ctrl 1 "
        "136 Right_Ctrl 1");
    std::map<int, int> keys = {{INT_MIN, 0}, {-1, 0}, {INT_MAX, 0}};
    for (int code = 0; code < 512; ++code)
        keys[code] = keys[SDLK_SCANCODE_MASK | code] = 0;
    keys[SDLK_RGUI] = 131; // which are named after the system
    keys[SDLK_LGUI] = 132;
    std::string name;
    for (int key, count; runs >> key >> name >> count;) {
        std::ranges::replace(name, '_', ' ');
        for (int i = 0; i < count; ++i)
            keys[SDL_GetKeyFromName(name.c_str()) + i] = key + i;
    }
    for (const auto& [code, key] : keys) {
        _KXSetKey(code);
        EXPECT_EQ(KXKeyPressed(), key) << code;
        _KXUnsetKey(code);
        EXPECT_EQ(KXKeyPressed(), 0) << code;
    }
    std::string names;
    for (int key : {1, 26, 27, 53, 57, 62, 63, 64, 77, 81, 82, 91, 95, 100, 106, 121, 126, 129, 131, 136})
        names += std::string(KXKeyToString(key)) + "|";
    EXPECT_EQ(names, "A|Z|Unknown|Return|\"|\\|:|:|Unknown|9|0|9|Num Pad -|Right|Page Down|F15|Num Lock|"
                     "Left Super|Right Command|Right Control|");
    for (int key : {INT_MIN, -1, 0, 137, INT_MAX}) {
        EXPECT_EQ(KXKey(key) | KXKey(key, -1) | KXKeyWithDelayedRepeat(key), 0) << key;
        EXPECT_STREQ(KXKeyToString(key), "Unknown") << key;
    }
}

TEST_F(Keyboard, OnePressIsToldOnceToTheGameAndOnceToTextEntries) {
    const auto ask = [](int (*how)(int, int)) { return how(KXKeySpace, 1); };
    for (int press = 0; press < 2; ++press) {
        _KXSetKey(' ');
        EXPECT_EQ(KXKey(KXKeySpace), -1); // the level does not consume the press
        EXPECT_EQ(ask(KXKey) & ask(_KXKeyTextEntry), -1);
        _KXSetKey(' '); // the platform's own repeat is no new press
        EXPECT_EQ(ask(KXKey) | ask(_KXKeyTextEntry), 0);
        EXPECT_EQ(KXKey(KXKeySpace), -1);
        _KXUnsetKey(' ');
        EXPECT_EQ(KXKey(KXKeySpace) | ask(KXKey) | ask(_KXKeyTextEntry), 0);
        EXPECT_EQ(_KXKeysDownTime[KXKeySpace], 0x7FFFFFFF);
    }
}

TEST_F(Keyboard, HeldKeysRepeatOnceTheTimeOfThirtyStepsHasPassed) {
    _KXSetKey(' ');
    EXPECT_TRUE(KXKeyWithDelayedRepeat(KXKeySpace));
    for (int call = 2; call < 66; user.step(call++ % 2)) // two in each step
        EXPECT_EQ(KXKeyWithDelayedRepeat(KXKeySpace), call < 62 ? 0 : -1) << call;
    _KXLogicTimeRequiredPerLogicCycle = 0; // no speed set: nothing repeats
    EXPECT_EQ(KXKeyWithDelayedRepeat(KXKeySpace), 0);
}

TEST_F(Keyboard, AnyReleaseForgetsTheReportsOfKeysThatAreUp) {
    for (int code : {'a', 'b', 'c'})
        _KXSetKey(code);
    EXPECT_EQ(KXKey(KXKeyA, 1) & KXKey(KXKeyB, 1) & _KXKeyTextEntry(KXKeyB, 1), -1);
    _KXSetKeyToValue('b', 0); // its release was lost
    _KXUnsetKey('c');
    _KXSetKey('b');
    EXPECT_EQ(KXKey(KXKeyA, 1), 0); // still held, already told
    EXPECT_EQ(KXKey(KXKeyB, 1) & _KXKeyTextEntry(KXKeyB, 1), -1);
    KXUnsetKeys();
    EXPECT_EQ(_KXKeyboard, _KXKeyboardState());
}
} // namespace
