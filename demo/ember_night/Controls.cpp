#include "Controls.h"

#include <iterator>

KXActions Controls::defaults() {
    constexpr KXKeyPosition keys[playerCount][actionsOfPlayer] = {
        {KXPositionLeft, KXPositionRight, KXPositionUp, KXPositionDown, KXPositionSpace},
        {KXPositionA, KXPositionD, KXPositionW, KXPositionS, KXPositionLeftShift}};
    constexpr KXPadButton buttons[actionsOfPlayer] = {KXPadDPadLeft, KXPadDPadRight, KXPadDPadUp,
                                                      KXPadDPadDown, KXPadA};
    constexpr KXPadButton sticks[] = {KXPadLeftStickLeft, KXPadLeftStickRight, KXPadLeftStickUp,
                                      KXPadLeftStickDown};
    KXActions actions;
    for (int player = 0; player < playerCount; ++player) {
        const auto& names = ofPlayer[player];
        for (int i = 0; i < actionsOfPlayer; ++i) {
            actions.bind(names[i], KXInputOfPosition(keys[player][i]));
            actions.bind(names[i], KXInputOfPad(buttons[i], player));
        }
        for (int i = 0; i < static_cast<int>(std::size(sticks)); ++i)
            actions.bind(names[i], KXInputOfPad(sticks[i], player));
    }
    actions.bind("second hop", KXInputOfPosition(KXPositionRightShift));
    actions.bind(pause, KXInputOfPosition(KXPositionReturn));
    actions.bind(pause, KXInputOfPosition(KXPositionP));
    actions.bind(pause, KXInputOfPad(KXPadStart, KXAnyPad));
    actions.bind(fullscreen, KXInputOfPosition(KXPositionF));
    return actions;
}

Input Controls::inputOf(const KXActions& actions, int player) {
    const auto does = [&](int i) {
        const char* const action = ofPlayer[player][i];
        return actions.held(action) || actions.wentDown(action);
    };
    return {does(0), does(1), does(2), does(3), does(4)};
}

Input Controls::withMouse(Input input, KXPoint feet) {
    constexpr float near = 4;
    if (KXMouseHeld(KXMouseLeft)) {
        input.left |= KXMousePoint.x < feet.x - near;
        input.right |= KXMousePoint.x > feet.x + near;
        input.up |= KXMousePoint.y < feet.y - near;
        input.down |= KXMousePoint.y > feet.y + near;
    }
    input.hop |= KXMouseHeld(KXMouseRight) || KXMouseWentDown(KXMouseRight);
    return input;
}
