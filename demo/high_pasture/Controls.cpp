#include "Controls.h"

KXActions Controls::defaults() {
    KXActions actions;
    const auto bind = [&actions](const char* action, std::initializer_list<KXKeyPosition> keys,
                                 std::initializer_list<KXPadButton> buttons) {
        for (const KXKeyPosition key : keys)
            actions.bind(action, KXInputOfPosition(key));
        for (const KXPadButton button : buttons)
            actions.bind(action, KXInputOfPad(button, KXAnyPad));
    };
    bind(left, {KXPositionLeft, KXPositionA}, {KXPadDPadLeft, KXPadLeftStickLeft});
    bind(right, {KXPositionRight, KXPositionD}, {KXPadDPadRight, KXPadLeftStickRight});
    bind(jump, {KXPositionSpace, KXPositionUp, KXPositionW}, {KXPadA, KXPadB});
    bind(down, {KXPositionDown, KXPositionS}, {KXPadDPadDown, KXPadLeftStickDown});
    bind(pause, {KXPositionP, KXPositionReturn}, {KXPadStart});
    bind(fullscreen, {KXPositionF}, {});
    return actions;
}

Input Controls::inputOf(const KXActions& actions) {
    return {actions.value(right) - actions.value(left), actions.wentDown(jump) != 0, actions.held(jump) != 0,
            actions.wentDown(down) != 0};
}
