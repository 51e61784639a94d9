#include "input/Keyboard.h"

#include "LogicSteps.h"

#include <SDL_keycode.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <map>
#include <string>
#include <utility>

namespace {
using namespace std::string_literals;

struct Keyboard : testing::Test {
    Keyboard() { _KXInitKeys(); }
    ~Keyboard() override { _KXInitKeys(); }
    LogicSteps steps;
};

TEST_F(Keyboard, EveryKeyIsSetByOneCodeOrNone) {
    std::map<int, int> codes;
    const auto send = [&](int code) {
        _KXSetKey(code);
        const int key = KXKeyPressed();
        EXPECT_EQ(std::count(_KXKeys, _KXKeys + _KXKeyCount, -1), key ? 1 : 0) << code;
        EXPECT_TRUE(!key || codes.emplace(key, code).second) << code;
        _KXUnsetKey(code);
        EXPECT_EQ(KXKeyPressed(), 0) << code;
    };
    for (int code = 0; code < 512; ++code) {
        send(code);
        send(SDLK_SCANCODE_MASK | code);
    }
    for (int code : {INT_MIN, -1, INT_MAX})
        send(code);
    EXPECT_EQ(codes.size(), 107u);

    // The ends of every run of keys, and the keys that stand out of order; nothing sets those with code 0.
    const std::pair<int, int> ends[] = {
        {1, 'a'}, {26, 'z'}, {27, 0},   {52, 0},  {53, 13}, {54, 9},   {55, 127}, {56, 8},
        {57, 39}, {58, 44},  {59, 45},  {60, 46}, {61, 47}, {62, 92},  {63, 58},  {64, 59},
        {65, 40}, {66, 41},  {67, 91},  {68, 93}, {69, 27}, {70, 96},  {71, '0'}, {76, '5'},
        {77, 0},  {78, '6'}, {81, '9'}, {129, 0}, {130, 0}, {133, 32}, {134, 61}};
    for (const auto& [key, code] : ends)
        EXPECT_EQ(codes[key], code) << key;
    const std::pair<int, int> scancodes[] = {
        {82, SDLK_KP_0},        {83, SDLK_KP_1},        {91, SDLK_KP_9},     {92, SDLK_KP_PERIOD},
        {93, SDLK_KP_DIVIDE},   {96, SDLK_KP_PLUS},     {97, SDLK_KP_ENTER}, {98, SDLK_KP_EQUALS},
        {99, SDLK_UP},          {100, SDLK_RIGHT},      {101, SDLK_LEFT},    {102, SDLK_DOWN},
        {103, SDLK_HOME},       {106, SDLK_PAGEDOWN},   {107, SDLK_F1},      {121, SDLK_F15},
        {122, SDLK_LSHIFT},     {123, SDLK_RSHIFT},     {125, SDLK_RALT},    {126, SDLK_NUMLOCKCLEAR},
        {128, SDLK_SCROLLLOCK}, {131, SDLK_RGUI},       {132, SDLK_LGUI},    {135, SDLK_LCTRL},
        {136, SDLK_RCTRL},      {94, SDLK_KP_MULTIPLY}, {95, SDLK_KP_MINUS}, {104, SDLK_END},
        {105, SDLK_PAGEUP},     {119, SDLK_F13},        {124, SDLK_LALT},    {127, SDLK_CAPSLOCK}};
    for (const auto& [key, code] : scancodes)
        EXPECT_EQ(codes[key], code) << key;
    // Within a run the codes rise with the numbers, and letters and digits are called what they type.
    const std::pair<int, int> runs[] = {{1, 26}, {71, 76}, {78, 81}, {83, 91}, {107, 118}, {119, 121}};
    for (const auto& [first, last] : runs)
        for (int key = first; key <= last; ++key) {
            EXPECT_EQ(codes[key], codes[first] + key - first) << key;
            if (codes[key] < 128) {
                EXPECT_EQ(KXKeyToString(key)[0], std::toupper(codes[key])) << key;
            }
        }
    std::string names;
    for (int key :
         {1, 26, 27, 53, 56, 57, 62, 63, 64, 69, 77, 81, 82, 91, 95, 100, 106, 121, 126, 129, 131, 133, 136})
        names += KXKeyToString(key) + "|"s;
    EXPECT_EQ(names, "A|Z|Unknown|Return|Backspace|\"|\\|:|:|Escape|Unknown|9|0|9|Num Pad -|Right|Page "
                     "Down|F15|Num Lock|Left Super|"
                     "Right Command|Space|Right Control|");
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
    for (int step = 1; step < 33; ++step) {
        steps.advance(1);
        for (int times = 0; times < 2; ++times)
            EXPECT_EQ(KXKeyWithDelayedRepeat(133), step < 30 ? 0 : -1) << step;
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
    _KXSetKeyToValue('b', 0);     // its release was lost
    EXPECT_EQ(KXKeyPressed(), 1); // the lowest of those held
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
} // namespace
