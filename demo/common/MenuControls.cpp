#include "MenuControls.h"

static bool isPressed(KXPadButton dPad, KXPadButton stick) {
    return KXPadWentDown(KXAnyPad, dPad) || KXPadWentDown(KXAnyPad, stick);
}

KXPoint Controls::menuMoves() {
    const auto go = [](bool back, bool on) { return static_cast<float>(on - back); };
    return {go(KXKeyTyped(KXKeyLeft) || isPressed(KXPadDPadLeft, KXPadLeftStickLeft),
               KXKeyTyped(KXKeyRight) || isPressed(KXPadDPadRight, KXPadLeftStickRight)),
            go(KXKeyTyped(KXKeyUp) || isPressed(KXPadDPadUp, KXPadLeftStickUp),
               KXKeyTyped(KXKeyDown) || isPressed(KXPadDPadDown, KXPadLeftStickDown))};
}

bool Controls::menuChooses() { return KXKeyWentDown(KXKeyReturn) || KXPadWentDown(KXAnyPad, KXPadA); }
bool Controls::menuLeaves() { return KXKeyWentDown(KXKeyEscape) || KXPadWentDown(KXAnyPad, KXPadB); }
