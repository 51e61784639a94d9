#include "Controls.h"

#include "Keys.h"

static constexpr int hatUp = 0, hatDown = 1, hatLeft = 2, hatRight = 3;

static void addPad(Input& input) {
    input.left |= KXGamePadHat(hatLeft) || KXGamePadStickLeft(0, 0);
    input.right |= KXGamePadHat(hatRight) || KXGamePadStickRight(0, 0);
    input.up |= KXGamePadHat(hatUp) || KXGamePadStickUp(0, 0);
    input.down |= KXGamePadHat(hatDown) || KXGamePadStickDown(0, 0);
    input.hop |= KXGamePadButton(0) != 0;
}

Input firstPlayerInput(bool alsoPad) {
    Input input = {KXKey(Key::left) != 0, KXKey(Key::right) != 0, KXKey(Key::up) != 0, KXKey(Key::down) != 0,
                   KXKey(Key::space) != 0};
    if (alsoPad)
        addPad(input);
    return input;
}

Input secondPlayerInput(bool alsoPad) {
    Input input = {KXKey(Key::a) != 0, KXKey(Key::d) != 0, KXKey(Key::w) != 0, KXKey(Key::s) != 0,
                   KXKey(Key::leftShift) || KXKey(Key::rightShift)};
    if (alsoPad)
        addPad(input);
    return input;
}
